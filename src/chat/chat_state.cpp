#include "chat/chat_state.h"

#include "chat/chat_window.h"

namespace corvina {

ChatState::ChatState(Log& log) : users(log) {}
ChatState::~ChatState() = default;

}  // namespace corvina
