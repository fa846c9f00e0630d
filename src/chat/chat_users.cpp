#include "chat/chat_users.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/error.h"
#include "base/text.h"
#include "settings/config.h"
#include "settings/guard.h"
#include "settings/stored_list.h"

namespace corvina {
namespace {

const std::wstring kContext = L"ChatUsers";

// What a classic collection raises for a key it already holds.
constexpr int32_t kErrKeyInUse = 457;

// Settings key of each field, indexed by field number.
constexpr const wchar_t* kFieldKeys[] = {
    L"ChatUserEmail",         L"ChatUserNickName",         L"ChatUserStatus",
    L"ChatUserColorChatMessage", L"ChatUserColorChatUser", L"ChatUserIcon"};

// The order SaveConfig writes the lists in.
constexpr std::array<int, 6> kSaveOrder = {kChatFieldEmail,         kChatFieldNickName,
                                           kChatFieldIcon,          kChatFieldStatus,
                                           kChatFieldColorChatUser, kChatFieldColorChatMessage};

bool IsField(int field) { return field >= kChatFieldEmail && field <= kChatFieldIcon; }

// A colour is loaded as a signed 32-bit number, so it is written as one: a pattern with the
// top bit set then reads back instead of overflowing.
std::wstring ColorText(ChatColor color) { return std::to_wstring(static_cast<int32_t>(color)); }

}  // namespace

ChatUser& ChatUsers::Add(const std::wstring& email, const std::wstring& nick_name, int16_t status,
                         ChatColor color_chat_message, ChatColor color_chat_user,
                         const std::wstring& icon, const std::wstring& key) {
  auto user = std::make_unique<ChatUser>();
  user->SetNickName(nick_name);
  user->SetEmail(email);
  user->SetStatus(status);
  user->SetColorChatMessage(color_chat_message);
  user->SetColorChatUser(color_chat_user);
  user->SetIcon(icon);
  ChatUser& added = *user;

  std::wstring folded = key.empty() ? std::wstring() : LCase(key);
  if (!key.empty() && keyed_.contains(folded))
    Raise(kErrKeyInUse, L"This key is already associated with an element of this collection");
  users_.push_back(Entry{key, std::move(user)});
  if (!key.empty()) {
    try {
      keyed_.emplace(std::move(folded), &added);
    } catch (...) {
      users_.pop_back();  // all or nothing: no user the key table does not know about
      throw;
    }
  }
  return added;
}

ChatUser& ChatUsers::Item(int32_t index) {
  if (index < 1 || index > Count()) Raise(kErrSubscript, L"Subscript out of range");
  return *users_[static_cast<size_t>(index - 1)].user;
}

ChatUser& ChatUsers::Item(const std::wstring& key) {
  auto found = keyed_.find(LCase(key));
  if (found == keyed_.end()) Raise(kErrSubscript, L"Subscript out of range");
  return *found->second;
}

void ChatUsers::Remove(int32_t index) {
  if (index < 1 || index > Count()) Raise(kErrSubscript, L"Subscript out of range");
  RemoveAt(static_cast<size_t>(index - 1));
}

void ChatUsers::Remove(const std::wstring& key) {
  auto found = keyed_.find(LCase(key));
  if (found == keyed_.end()) Raise(kErrSubscript, L"Subscript out of range");
  for (size_t i = 0; i < users_.size(); ++i) {
    if (users_[i].user.get() == found->second) {
      RemoveAt(i);
      return;
    }
  }
}

void ChatUsers::RemoveAt(size_t position) {
  auto at = users_.begin() + static_cast<std::ptrdiff_t>(position);
  if (!at->key.empty()) keyed_.erase(LCase(at->key));
  users_.erase(at);
}

// The lookups below walk the list in memory and cannot fail: unlike loading and saving, which
// meet stored text and the settings store, they need no error handler of their own.
bool ChatUsers::RemoveByEmail(const std::wstring& email) {
  const auto found = std::find_if(users_.begin(), users_.end(),
                                  [&](const Entry& entry) { return entry.user->Email() == email; });
  if (found == users_.end()) return false;
  RemoveAt(static_cast<size_t>(found - users_.begin()));
  return true;
}

bool ChatUsers::IsEmailAlreadyExists(const std::wstring& email) {
  for (const Entry& entry : users_)
    if (entry.user->Email() == email) return true;
  return false;
}

bool ChatUsers::IsEmailChangeWillCauseDuplication(const std::wstring& old_email,
                                                  const std::wstring& new_email) {
  return Trim(old_email) != Trim(new_email) && IsEmailAlreadyExists(new_email);
}

ChatUser* ChatUsers::GetChatUserByEmail(const std::wstring& email) {
  for (const Entry& entry : users_)
    if (EqualsIgnoreCase(entry.user->Email(), email)) return entry.user.get();
  return nullptr;
}

bool ChatUsers::FillListView(ChatListView& view, const std::wstring& image_list) {
  view.small_icons = image_list;
  for (const Entry& entry : users_) {
    const ChatUser& user = *entry.user;
    view.rows.push_back(ChatListRow{user.Email(), user.NickName(), StatusImageKey(user.Status()),
                                    user.ColorChatUser(), user.Email(), false});
  }
  return true;
}

bool ChatUsers::InitializeData(const std::wstring& data, int field) {
  return Guard(log_, kContext, L"InitializeData", false, [&] {
    // Sets the field of the position-th user (or, for the address list, adds the user). A
    // failure keeps its number; its text gains the list and position, so the one log line
    // tells where the stored list is damaged.
    auto load = [&](std::wstring_view value, int32_t position) {
      try {
        switch (field) {
          case kChatFieldEmail:
            Add(std::wstring(value), L"", kChatUserActive, 0, 0, L"2", L"");
            break;
          case kChatFieldNickName:
            Item(position).SetNickName(Trim(value));
            break;
          case kChatFieldStatus:
            Item(position).SetStatus(ToInteger(value));
            break;
          case kChatFieldColorChatMessage:
            Item(position).SetColorChatMessage(static_cast<ChatColor>(ToLong(value)));
            break;
          case kChatFieldColorChatUser:
            Item(position).SetColorChatUser(static_cast<ChatColor>(ToLong(value)));
            break;
          case kChatFieldIcon:
            Item(position).SetIcon(Trim(value));
            break;
          default:
            break;
        }
      } catch (const Error& e) {
        throw Error(e.number(), e.source(),
                    e.description() + L" (" + kFieldKeys[static_cast<size_t>(field)] +
                        L", value " + std::to_wstring(position) + L")");
      }
    };
    WalkStoredList(data, load);
    return true;
  });
}

std::wstring ChatUsers::ListText(int field) const {
  std::wstring text;
  if (!IsField(field)) return text;
  for (const Entry& entry : users_) {
    const ChatUser& user = *entry.user;
    switch (field) {
      case kChatFieldEmail:
        text += user.Email();
        break;
      case kChatFieldNickName:
        text += user.NickName();
        break;
      case kChatFieldStatus:
        text += std::to_wstring(user.Status());
        break;
      case kChatFieldColorChatMessage:
        text += ColorText(user.ColorChatMessage());
        break;
      case kChatFieldColorChatUser:
        text += ColorText(user.ColorChatUser());
        break;
      default:
        text += user.Icon();
        break;
    }
    text += L';';
  }
  return text;
}

std::wstring ChatUsers::GetAllAsStringByType(int field) {
  return Guard(log_, kContext, L"GetAllAsStringByType", std::wstring(),
               [&] { return ListText(field); });
}

bool ChatUsers::SaveConfig(SettingsTree& settings) {
  return Guard(log_, kContext, L"SaveConfig", false, [&] {
    for (int field : kSaveOrder)
      settings.Write(kAppName, L"Chat", kFieldKeys[static_cast<size_t>(field)], ListText(field));
    return true;
  });
}

}  // namespace corvina
