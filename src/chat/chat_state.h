#pragma once
// What chat keeps for one running add-in: the chat user list and, while frmChat is loaded,
// the window's model. The add-in context owns one.
#include <memory>

#include "chat/chat_users.h"
#include "settings/log.h"

namespace corvina {

class ChatWindow;

struct ChatState {
  explicit ChatState(Log& log);
  ~ChatState();
  ChatState(const ChatState&) = delete;
  ChatState& operator=(const ChatState&) = delete;

  ChatUsers users;
  std::unique_ptr<ChatWindow> window;  // frmChat while it is loaded
};

}  // namespace corvina
