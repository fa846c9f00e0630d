#pragma once
// One chat correspondent.
#include <cstdint>
#include <optional>
#include <string>

#include "base/date.h"
#include "chat/chat_colors.h"

namespace corvina {

// Status values. Only kBlocked changes how mail is handled: a blocked user's mails are left
// alone in the Inbox.
inline constexpr int16_t kChatUserDeleted = -1;
inline constexpr int16_t kChatUserBlocked = 0;
inline constexpr int16_t kChatUserActive = 1;
inline constexpr int16_t kChatUserUnknown = 2;
inline constexpr int16_t kChatUserWaiting = 3;
inline constexpr int16_t kChatUserRejected = 4;

// The list's image key for a status ("KeyChatUserActive" ...); any other value shows as
// unknown.
const wchar_t* StatusImageKey(int16_t status);

class ChatUser {
 public:
  ChatColor ColorChatUser() const { return color_chat_user_; }
  void SetColorChatUser(ChatColor value) { color_chat_user_ = value; }
  ChatColor ColorChatMessage() const { return color_chat_message_; }
  void SetColorChatMessage(ChatColor value) { color_chat_message_ = value; }
  int16_t Status() const { return status_; }
  void SetStatus(int16_t value) { status_ = value; }
  const std::wstring& Email() const { return email_; }
  void SetEmail(std::wstring value) { email_ = std::move(value); }
  const std::wstring& NickName() const { return nick_name_; }
  void SetNickName(std::wstring value) { nick_name_ = std::move(value); }
  // A value that is empty after trimming is kept as "2", the default icon.
  const std::wstring& Icon() const { return icon_; }
  void SetIcon(const std::wstring& value);
  // Not stored; nothing until the user's first message.
  std::optional<Date> LastMessageDate() const { return last_message_date_; }
  void SetLastMessageDate(Date value) { last_message_date_ = value; }

 private:
  ChatColor color_chat_user_ = 0;
  ChatColor color_chat_message_ = 0;
  int16_t status_ = kChatUserActive;
  std::wstring email_;
  std::wstring nick_name_;
  std::wstring icon_ = L"2";
  std::optional<Date> last_message_date_;
};

}  // namespace corvina
