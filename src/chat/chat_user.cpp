#include "chat/chat_user.h"

#include "base/text.h"

namespace corvina {

const wchar_t* StatusImageKey(int16_t status) {
  switch (status) {
    case kChatUserDeleted:
      return L"KeyChatUserDeleted";
    case kChatUserBlocked:
      return L"KeyChatUserBlocked";
    case kChatUserActive:
      return L"KeyChatUserActive";
    case kChatUserWaiting:
      return L"KeyChatUserWaiting";
    case kChatUserRejected:
      return L"KeyChatUserRejected";
    default:
      return L"KeyChatUserUnKnown";
  }
}

void ChatUser::SetIcon(const std::wstring& value) {
  // A blank icon would leave the user without a picture on the board.
  icon_ = Trim(value).empty() ? std::wstring(L"2") : value;
}

}  // namespace corvina
