#pragma once
// The chat user list: the user's address book for chat, kept in memory while the add-in runs
// and stored as six parallel ";"-terminated lists in the settings' "Chat" section.
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "chat/chat_user.h"
#include "platform/chat_list_view.h"
#include "platform/settings_tree.h"
#include "settings/log.h"

namespace corvina {

// Field numbers of the stored lists.
inline constexpr int kChatFieldEmail = 0;
inline constexpr int kChatFieldNickName = 1;
inline constexpr int kChatFieldStatus = 2;
inline constexpr int kChatFieldColorChatMessage = 3;
inline constexpr int kChatFieldColorChatUser = 4;
inline constexpr int kChatFieldIcon = 5;

class ChatUsers {
 public:
  // Errors are logged under the class name "ChatUsers" and the operation's own name.
  explicit ChatUsers(Log& log) : log_(log) {}

  // Appends a user; keyed when `key` is not empty. No duplicate test: callers test first.
  ChatUser& Add(const std::wstring& email, const std::wstring& nick_name, int16_t status,
                ChatColor color_chat_message, ChatColor color_chat_user, const std::wstring& icon,
                const std::wstring& key);
  // 1-based position, or key. Error 9 when there is no such user.
  ChatUser& Item(int32_t index);
  ChatUser& Item(const std::wstring& key);
  int32_t Count() const { return static_cast<int32_t>(users_.size()); }
  void Remove(int32_t index);
  void Remove(const std::wstring& key);
  // Exact, case-sensitive: removes the first match.
  bool RemoveByEmail(const std::wstring& email);
  // NewEnum: the users in order.
  auto begin() { return UserIterator(users_.begin()); }
  auto end() { return UserIterator(users_.end()); }

  // Exact, case-sensitive, no trimming.
  bool IsEmailAlreadyExists(const std::wstring& email);
  // False when the addresses are equal after trimming; else whether some user has `new_email`
  // exactly.
  bool IsEmailChangeWillCauseDuplication(const std::wstring& old_email,
                                         const std::wstring& new_email);
  // Ignoring case, unlike IsEmailAlreadyExists. Nothing when no user matches.
  ChatUser* GetChatUserByEmail(const std::wstring& email);

  // Appends one row per user (the caller clears the list first).
  bool FillListView(ChatListView& view, const std::wstring& image_list);

  // Loads one stored list; the address list first, since it creates the users the others fill.
  bool InitializeData(const std::wstring& data, int field);
  // One stored list: each user's value of the field followed by ";".
  std::wstring GetAllAsStringByType(int field);
  // Writes the six lists to application "Vireo", section "Chat".
  bool SaveConfig(SettingsTree& settings);

 private:
  struct Entry {
    std::wstring key;  // as given; empty when the user was added without one
    // On the heap: a returned ChatUser& stays valid while others are added or removed.
    std::unique_ptr<ChatUser> user;
  };
  // Hands out the users themselves: the keys are the collection's bookkeeping.
  class UserIterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = ChatUser;
    using difference_type = std::ptrdiff_t;
    using pointer = ChatUser*;
    using reference = ChatUser&;
    UserIterator() = default;
    explicit UserIterator(std::vector<Entry>::iterator at) : at_(at) {}
    ChatUser& operator*() const { return *at_->user; }
    ChatUser* operator->() const { return at_->user.get(); }
    UserIterator& operator++() {
      ++at_;
      return *this;
    }
    UserIterator operator++(int) {
      UserIterator before = *this;
      ++at_;
      return before;
    }
    bool operator==(const UserIterator&) const = default;

   private:
    std::vector<Entry>::iterator at_;
  };

  // One stored list, unguarded: SaveConfig must not write a list it failed to build.
  std::wstring ListText(int field) const;
  void RemoveAt(size_t position);

  Log& log_;
  // Positions are looked up by number on every load step, so the load stays linear.
  std::vector<Entry> users_;
  // Lower-cased key -> user: keys compare without case, as a classic collection's do.
  std::unordered_map<std::wstring, ChatUser*> keyed_;
};

}  // namespace corvina
