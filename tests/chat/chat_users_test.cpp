#include "chat/chat_users.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "support/error_number.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::ErrorNumberOf;
using testing::kAddinFolder;

class ChatUsersTest : public ::testing::Test {
 protected:
  void SetUp() override { log.StartLog(std::wstring(kAddinFolder) + L"\\Vireo.log"); }
  std::vector<std::wstring> ErrorLines() { return world.LogLinesWith(L"Error Source="); }
  std::wstring List(ChatUsers& list, int field) { return list.GetAllAsStringByType(field); }

  testing::SimWorld world;
  Log log{world.files, world.clock};
  ChatUsers users{log};
};

TEST_F(ChatUsersTest, SaveWritesSixListsInItsOrderAndLoadReadsThemBack) {
  EXPECT_EQ(List(users, kChatFieldEmail), L"");
  users.Add(L"a", L"Ann Lee", kChatUserActive, 255, 0xFF0000, L"5", L"");
  users.Add(L"b", L"Bob", kChatUserBlocked, 0, 0xFFFFFFFF, L"  ", L"");
  users.Add(L"c", L"", kChatUserDeleted, 8, 9, L"1", L"");
  EXPECT_EQ(List(users, 6), L"");
  ASSERT_TRUE(users.SaveConfig(world.settings));
  const std::pair<const wchar_t*, const wchar_t*> stored[] = {
      {L"ChatUserEmail", L"a;b;c;"},         {L"ChatUserNickName", L"Ann Lee;Bob;;"},
      {L"ChatUserIcon", L"5;2;1;"},          {L"ChatUserStatus", L"1;0;-1;"},
      {L"ChatUserColorChatUser", L"16711680;-1;9;"}, {L"ChatUserColorChatMessage", L"255;0;8;"}};
  const auto& keys = world.settings.table().sections().at(0).keys;
  ASSERT_EQ(keys.size(), 6u);
  for (size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(keys[i], stored[i].first);  // written in this order
    EXPECT_EQ(world.Setting(L"Chat", stored[i].first), stored[i].second) << ToUtf8(keys[i]);
  }
  const int load_order[] = {kChatFieldEmail,  kChatFieldNickName,      kChatFieldIcon,
                            kChatFieldStatus, kChatFieldColorChatUser, kChatFieldColorChatMessage};
  ChatUsers loaded{log};
  for (size_t i = 0; i < 6; ++i)
    EXPECT_TRUE(loaded.InitializeData(stored[i].second, load_order[i]));
  for (int field = 0; field < 6; ++field) EXPECT_EQ(List(loaded, field), List(users, field));
  EXPECT_EQ(loaded.Item(2).ColorChatUser(), 0xFFFFFFFFu);
  EXPECT_TRUE(ErrorLines().empty());
}

// Each case loads its lists into an empty collection; the last load's result, the lists
// afterwards and the one error line (if any) are checked.
TEST_F(ChatUsersTest, LoadingCutsTrimsAndStopsAtTheFirstBadValue) {
  struct Case {
    std::vector<std::pair<int, const wchar_t*>> loads;
    bool ok;
    int field;  // the list checked besides the addresses
    const wchar_t* emails;
    const wchar_t* values;
    const wchar_t* error;  // the log line's end, or nothing
  };
  const Case cases[] = {
      {{{0, L";;a;b;;"}}, true, 0, L"a;b;", L"a;b;", nullptr},
      {{{0, L"   "}}, true, 0, L"", L"", nullptr},
      {{{0, L" a ; b "}}, true, 0, L"a ;b;", L"a ;b;", nullptr},  // only the last is trimmed
      {{{0, L"x;"}, {1, L" Solo "}}, true, 1, L"x;", L"Solo;", nullptr},
      {{{0, L"a;b"}, {5, L"7;  ;"}}, true, 5, L"a;b;", L"7;2;", nullptr},
      {{{0, L"a;b"}, {2, L"-1;4;"}}, true, 2, L"a;b;", L"-1;4;", nullptr},
      {{{0, L"a;b"}, {1, L" A ;B;C;"}}, false, 1, L"a;b;", L"A;B;",
       L"Subscript out of range (ChatUserNickName, value 3)"},
      {{{0, L"a;b;c"}, {2, L"0;x;0"}}, false, 2, L"a;b;c;", L"0;1;1;",
       L"Type mismatch (ChatUserStatus, value 2)"},
      {{{0, L"a;b"}, {2, L"70000"}}, false, 2, L"a;b;", L"1;1;",
       L"Overflow (ChatUserStatus, value 1)"},
      {{{0, L"a;b"}, {4, L"255;red"}}, false, 4, L"a;b;", L"255;0;",
       L"Type mismatch (ChatUserColorChatUser, value 2)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(ToUtf8(c.loads.back().second));
    const size_t errors_before = ErrorLines().size();
    ChatUsers loaded{log};
    bool ok = false;
    for (const auto& [field, data] : c.loads) ok = loaded.InitializeData(data, field);
    EXPECT_EQ(ok, c.ok);
    EXPECT_EQ(List(loaded, kChatFieldEmail), c.emails);
    EXPECT_EQ(List(loaded, c.field), c.values);
    const auto errors = ErrorLines();
    ASSERT_EQ(errors.size() - errors_before, c.error ? 1u : 0u);
    if (c.error) {
      const std::wstring line = L"Error Source=ChatUsersInitializeData\\Vireo; Error Description=" +
                                std::wstring(c.error);
      EXPECT_TRUE(ContainsText(errors.back(), line)) << ToUtf8(errors.back());
    }
  }
}

TEST_F(ChatUsersTest, AddressTestsDifferInCaseAndBlanks) {
  for (const wchar_t* email : {L"Ann@x.org", L"bob@x.org", L" carl@x.org", L"bob@x.org"})
    users.Add(email, email, kChatUserActive, 0, 0, L"", L"");
  const std::pair<const wchar_t*, bool> exists[] = {
      {L"Ann@x.org", true}, {L"ann@x.org", false}, {L" carl@x.org", true}, {L"carl@x.org", false}};
  for (const auto& [email, expected] : exists)
    EXPECT_EQ(users.IsEmailAlreadyExists(email), expected);
  const std::tuple<const wchar_t*, const wchar_t*, bool> changes[] = {
      {L"carl@x.org", L" carl@x.org", false},  // blanks only, though a user has the new one
      {L"zed@x.org", L"Ann@x.org", true},
      {L"zed@x.org", L"ANN@x.org", false},
      {L"ann@x.org", L"Ann@x.org", true}};
  for (const auto& [old_email, new_email, expected] : changes)
    EXPECT_EQ(users.IsEmailChangeWillCauseDuplication(old_email, new_email), expected);
  EXPECT_EQ(users.GetChatUserByEmail(L"ANN@X.ORG"), &users.Item(1));
  EXPECT_EQ(users.GetChatUserByEmail(L"Bob@X.org"), &users.Item(2));
  EXPECT_EQ(users.GetChatUserByEmail(L"carl@x.org"), nullptr);

  EXPECT_FALSE(users.RemoveByEmail(L"BOB@x.org"));
  EXPECT_TRUE(users.RemoveByEmail(L"bob@x.org"));
  EXPECT_EQ(List(users, kChatFieldEmail), L"Ann@x.org; carl@x.org;bob@x.org;");
}

TEST_F(ChatUsersTest, KeysPositionsAndIterationBehaveLikeAClassicCollection) {
  ChatUser& first = users.Add(L"a", L"", kChatUserActive, 0, 0, L"", L"Key");
  EXPECT_EQ(ErrorNumberOf([&] { users.Add(L"b", L"", 1, 0, 0, L"", L"KEY"); }), 457);
  for (int i = 0; i < 100; ++i) users.Add(std::to_wstring(i), L"", 1, 0, 0, L"", L"");
  EXPECT_EQ(&users.Item(L"key"), &first);  // still valid after the list grew
  for (auto call : std::vector<std::function<void()>>{
           [&] { users.Item(0); }, [&] { users.Item(102); }, [&] { users.Item(L"none"); },
           [&] { users.Remove(102); }, [&] { users.Remove(L"none"); }})
    EXPECT_EQ(ErrorNumberOf(call), kErrSubscript);
  for (auto call : std::vector<std::function<void()>>{[&] { users.Remove(102); },
                                                     [&] { users.Item(L"none"); }}) {
    bool raised = false;
    try {
      call();
    } catch (const Error& e) {
      raised = e.description() == L"Subscript out of range";
    }
    EXPECT_TRUE(raised);
  }
  users.Remove(L"kEY");
  users.Remove(100);
  EXPECT_EQ(users.Count(), 99);
  EXPECT_EQ(users.Item(1).Email(), L"0");
  ChatUser& again = users.Add(L"b", L"", 1, 0, 0, L"", L"key");  // the removed key is free
  EXPECT_EQ(&users.Item(L"Key"), &again);
  std::wstring walked;
  for (ChatUser& user : users) walked += user.Email();
  EXPECT_EQ(walked.substr(walked.size() - 5), L"9798b");
}

TEST_F(ChatUsersTest, ListViewGetsOneRowPerUserAfterThoseItHad) {
  ChatListView view;
  view.rows.push_back({L"kept", L"", L"", 0, L"", false});
  const std::pair<int16_t, const wchar_t*> statuses[] = {
      {-1, L"KeyChatUserDeleted"}, {0, L"KeyChatUserBlocked"}, {1, L"KeyChatUserActive"},
      {2, L"KeyChatUserUnKnown"},  {3, L"KeyChatUserWaiting"}, {4, L"KeyChatUserRejected"},
      {5, L"KeyChatUserUnKnown"},  {-2, L"KeyChatUserUnKnown"}};
  for (const auto& [status, key] : statuses)
    users.Add(L"u" + std::to_wstring(status), L"Nick", status, 1, 100 + status, L"", L"");
  ASSERT_TRUE(users.FillListView(view, L"ImageListChat"));
  EXPECT_EQ(view.small_icons, L"ImageListChat");
  ASSERT_EQ(view.rows.size(), 9u);
  EXPECT_EQ(view.rows[0].key, L"kept");
  for (size_t i = 0; i < 8; ++i) {
    const ChatListRow& row = view.rows[i + 1];
    const std::wstring email = L"u" + std::to_wstring(statuses[i].first);
    EXPECT_EQ(row.icon_key, statuses[i].second);
    EXPECT_EQ(row.key, email);
    EXPECT_EQ(row.sub_item, email);
    EXPECT_EQ(row.text, L"Nick");
    EXPECT_EQ(row.fore_color, static_cast<ChatColor>(100 + statuses[i].first));
  }
}

}  // namespace
}  // namespace corvina
