// Chat mail coming in through the new-mail event and the start-up sweep, and the chat window's
// commands, on the whole simulated Outlook.
#include <gtest/gtest.h>

#include "base/text.h"
#include "chat/chat_mail.h"
#include "chat/chat_receiver.h"
#include "chat/chat_window.h"
#include "host/control_table.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

constexpr wchar_t kBoard[] = L"C:\\Program Files\\Corvina\\Chat\\Chat.Html";

Date At(int day, int hour, int minute) { return FromCivil({2026, 11, day, hour, minute, 0}); }

sim::SimItemData ChatMail(const std::wstring& subject, const std::wstring& message,
                          const std::wstring& sender, Date when) {
  sim::SimItemData mail = sim::MakeMail(subject, when);
  mail.body = ComposeChatBody(message, L"http://home.example", sender, L"1.0");
  return mail;
}

std::string Board(SimWorld& world) {
  return world.files.FileExists(kBoard) ? world.files.ReadFile(kBoard) : std::string();
}

std::vector<std::wstring> Errors(SimWorld& world) { return world.LogLinesWith(L"| Error |"); }

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// One mail through the new-mail event under the chat settings; what happened to it.
TEST(ChatReceiving, NewMailRouteFollowsTheSettingsAndTheUserList) {
  struct Case {
    const char* label;
    std::wstring subject;
    std::vector<std::pair<std::wstring, std::wstring>> settings;  // "Chat" section
    bool with_attachment;
    // expected
    bool shown, deleted, unread;
    unsigned beeps;
    int users;  // in the list afterwards
    std::string on_board;
  };
  const std::wstring from = L"Chat message from: ben@example.com";
  const Case cases[] = {
      {"ordinary", from, {}, false, true, true, false, 1, 1, "ben@example.com Said :"},
      {"attachment kept", from, {}, true, true, false, false, 1, 1, "1 Attachments From"},
      {"no delete, no beep", from, {{L"ChatDeleteMsg", L"0"}, {L"ChatBeepOnMsg", L"0"}}, false,
       true, false, false, 0, 1, "Hello Anna"},
      {"no insertion", from, {{L"ChatAutoInsertUser", L"0"}}, false, true, true, false, 1, 0,
       "Unknown User Said :"},
      {"blocked user", from, {{L"ChatUserEmail", L"ben@example.com;"}, {L"ChatUserStatus", L"0;"}},
       false, false, false, true, 0, 1, ""},
      // The blocked test fetches the first user of the address in any letter case.
      {"blocked, behind an active case variant", from,
       {{L"ChatUserEmail", L"BEN@example.com;ben@example.com;"}, {L"ChatUserStatus", L"1;0;"}},
       false, true, true, false, 1, 2, "BEN@example.com Said :"},
      {"all blocked", from, {{L"ChatBlockAll", L"1"}}, false, false, false, true, 0, 0, ""},
      {"reply", L"RE: " + from, {}, false, true, true, false, 1, 0, "Unknown User Said :"},
      {"not a chat subject", L"chat message from: ben@example.com", {}, false, false, false, true,
       0, 0, ""},
      {"long message cut", from, {{L"ChatLong", L"5"}}, false, true, true, false, 1, 1, "Hello<"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.label);
    SimWorld world;
    for (const auto& [key, value] : c.settings) world.Store(L"Chat", key, value);
    auto addin = world.StartOutlook();
    const size_t errors = Errors(world).size();
    sim::SimItemData mail = ChatMail(c.subject, L"Hello Anna", L"ben@example.com", At(22, 9, 31));
    if (c.with_attachment) mail.attachments.push_back({L"plan.pdf", 1, "%PDF"});
    auto item = world.store.DeliverNewMail(mail);
    EXPECT_EQ(addin->addin().IsFormLoaded(kChatFormName), c.shown);
    EXPECT_EQ(item->deleted, c.deleted);
    EXPECT_EQ(item->unread, c.unread);
    EXPECT_EQ(world.beeper.beeps(), c.beeps);
    EXPECT_EQ(addin->addin().chat.users.Count(), c.users);
    if (!c.on_board.empty()) {
      EXPECT_TRUE(Has(Board(world), c.on_board)) << Board(world);
    }
    EXPECT_EQ(Has(Board(world), "Hello"), c.shown) << Board(world);
    EXPECT_EQ(Errors(world).size(), errors) << ToUtf8(Errors(world).back());
  }
}

// Bad footers give their log line, and the message is still handled as far as it can be.
TEST(ChatReceiving, DamagedFootersAreLoggedAndNothingElseBreaks) {
  SimWorld world;
  auto addin = world.StartOutlook();
  const size_t errors = Errors(world).size();
  const std::wstring from = L"Chat message from: x@example.com";
  sim::SimItemData far = sim::MakeMail(from, At(22, 9, 31));
  far.body = std::wstring(40000, L'a') + L"<Email>x@example.com</Email>";
  auto far_item = world.store.DeliverNewMail(far);
  sim::SimItemData early = sim::MakeMail(from, At(22, 9, 32));
  early.body = L"abc" + std::wstring(kChatSeparator) + L"<Email>y@example.com</Email>";
  auto early_item = world.store.DeliverNewMail(early);
  // A footer past the 16-bit positions without its closing tag: the overflow's line only.
  sim::SimItemData far_open = sim::MakeMail(from, At(22, 9, 33));
  far_open.body = std::wstring(32761, L'a') + L"<Email>x@example.com";
  world.store.DeliverNewMail(far_open);
  sim::SimItemData open = sim::MakeMail(from, At(22, 9, 33));
  open.body = L"hi\r\n\r\n\r\n" + std::wstring(kChatSeparator) + L"\r\n<Email>z@example.com";
  world.store.DeliverNewMail(open);
  EXPECT_EQ(world.LogLinesWith(L"| Warning | A chat mail has no sender address in its footer").size(), 1u);
  auto log = Errors(world);
  log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(errors));
  ASSERT_EQ(log.size(), 3u);
  EXPECT_TRUE(ContainsText(log[2], L"GetUserEmailFromBody") && ContainsText(log[2], L"Overflow"))
      << ToUtf8(log[2]);
  EXPECT_TRUE(ContainsText(log[0], L"GetUserEmailFromBody") && ContainsText(log[0], L"Overflow"))
      << ToUtf8(log[0]);
  EXPECT_TRUE(ContainsText(log[1], L"Source=frmChatShowIncomingMessage")) << ToUtf8(log[1]);
  // The far footer gave no sender: shown as unknown, nobody inserted; the early separator lost
  // the display but the user from its footer was still inserted, as the route does.
  EXPECT_TRUE(far_item->deleted);
  EXPECT_TRUE(early_item->deleted);
  EXPECT_EQ(addin->addin().chat.users.Count(), 1);
  EXPECT_EQ(addin->addin().chat.users.Item(1).Email(), L"y@example.com");
}

// Chat mails that came while Outlook was closed: the sweep takes every chat subject back to
// the last monitor time, blocked senders included, and deletes even mails with attachments.
TEST(ChatReceiving, StartUpSweepTakesWhatArrivedWhileOutlookWasClosed) {
  for (bool newest_first : {true, false}) {
    SCOPED_TRACE(newest_first ? "newest first" : "oldest first");
    SimWorld world;
    // A monitor time ahead of the clock is kept as stored, so the sweep reaches back to it.
    world.clock.Set(At(22, 7, 0));
    world.Store(L"Configuration", L"LastMailMonitorTime", L"202611220800");
    world.Store(L"Chat", L"ChatUserEmail", L"ben@example.com;");
    world.Store(L"Chat", L"ChatUserStatus", L"0;");
    world.Store(L"Chat", L"ChatBeepOnMsg", L"0");
    std::vector<sim::SimItemData> mails = {
        ChatMail(L"Chat message from: old@example.com", L"too old", L"old@example.com", At(22, 7, 59)),
        ChatMail(L"chat MESSAGE from: ben@example.com", L"from ben", L"ben@example.com", At(22, 8, 0)),
        sim::MakeMail(L"Lunch", At(22, 8, 30)),
        ChatMail(L"Chat message from: cleo@example.com", L"from cleo", L"nobody@example.com", At(22, 9, 0)),
        ChatMail(L"Chat message from:dan@example.com", L"no blank", L"dan@example.com", At(22, 9, 10)),
    };
    mails[3].attachments.push_back({L"a.txt", 1, "a"});
    if (newest_first) std::reverse(mails.begin(), mails.end());
    std::vector<sim::SimItemPtr> items;
    for (auto& m : mails) items.push_back(world.store.AddToInbox(m));
    world.faults.set_record(true);
    auto addin = world.StartOutlook();
    const std::string board = Board(world);
    for (const auto& item : items) {
      const bool taken = item->subject.find(L"from: ben") != std::wstring::npos ||
                         item->subject.find(L"from: cleo") != std::wstring::npos;
      EXPECT_EQ(item->deleted, taken) << ToUtf8(item->subject);
      EXPECT_EQ(item->unread, !taken) << ToUtf8(item->subject);
    }
    EXPECT_TRUE(Has(board, "from ben") && Has(board, "from cleo")) << board;
    EXPECT_FALSE(Has(board, "too old") || Has(board, "no blank")) << board;
    EXPECT_EQ(world.beeper.beeps(), 2u);  // regardless of ChatBeepOnMsg
    // Sender from the subject, not the footer: cleo, unknown to the list.
    EXPECT_TRUE(Has(board, "Unknown User Said :")) << board;
    // Only the chat mails' bodies were read.
    size_t body_reads = 0;
    for (const std::string& call : world.faults.recorded()) body_reads += call == "Outlook.Item.Body";
    EXPECT_EQ(body_reads, 2u);
  }
}

class ChatWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    world.Store(L"Chat", L"ChatEmail", L"anna@example.com");
    world.Store(L"Chat", L"ChatUserEmail", L"ben@example.com;cleo@example.com;");
    world.Store(L"Chat", L"ChatUserNickName", L"Ben;Cleo;");
    addin = world.StartOutlook();
    world.Bar()->FindControl(kTagChat)->Click();
    window = addin->addin().chat.window.get();
    ASSERT_NE(window, nullptr);
  }
  std::vector<sim::SimItemPtr> Sent() { return world.store.Folder(outlook::olFolderSentMail).items; }

  SimWorld world;
  std::unique_ptr<DesVireo> addin;
  ChatWindow* window = nullptr;
};

TEST_F(ChatWindowTest, SendWritesTheChatMailAndReportsIt) {
  EXPECT_FALSE(window->cmdSend_Click());
  EXPECT_EQ(world.Boxes().back(), L"Please select at least one recipient !");
  EXPECT_EQ(world.ui.events().back().title, L"Corvina Chat.");

  window->SelectUsers({L"BEN@example.com", L"cleo@example.com"});
  window->SetMessage(L"Plans for Friday?");
  window->SetFormat(true, false, true);
  EXPECT_TRUE(world.ui.chat_view().bold && world.ui.chat_view().underline);  // drawn at once
  window->AddAttachment(L"C:\\plan.txt");
  world.files.Put(L"C:\\plan.txt", "plan");
  ASSERT_TRUE(window->cmdSend_Click());
  ASSERT_EQ(Sent().size(), 1u);
  const auto& mail = *Sent()[0];
  EXPECT_EQ(mail.subject, L"Chat message from: anna@example.com");
  EXPECT_EQ(mail.to, L"ben@example.com;cleo@example.com");
  EXPECT_EQ(ChatMessageText(mail.body, 0), L"Plans for Friday?");
  EXPECT_EQ(GetUserEmailFromBody(mail.body), L"anna@example.com");
  ASSERT_EQ(mail.attachments.size(), 1u);
  EXPECT_EQ(window->view().status, L"Last message sent successfully to: Ben, Cleo");
  EXPECT_TRUE(window->view().message.empty());
  const std::string board = Board(world);
  EXPECT_TRUE(Has(board, "You have said") && Has(board, "<B><U>Plans for Friday?</U></B>")) << board;

  // A second message of the same speaker has no header row; a failing send is reported.
  window->SetMessage(L"Or Saturday");
  world.faults.FailCall("Item.Send", Error(-2147467259, L"Outlook", L"no connection"));
  EXPECT_FALSE(window->cmdSend_Click());
  EXPECT_TRUE(window->view().status.starts_with(
      L"ERROR - Failed to send last message to: Ben, Cleo (ben@example.com;cleo@example.com) At 09:30:00 !!!"))
      << ToUtf8(window->view().status);
  EXPECT_EQ(window->view().message, L"Or Saturday");  // kept for another try
  ASSERT_TRUE(window->cmdSend_Click());
  EXPECT_EQ(Board(world).find("You have said", board.size()), std::string::npos);
}

// Without a chat address of their own the user is asked for one before the first send.
TEST_F(ChatWindowTest, SendAsksForTheUsersOwnAddressFirst) {
  addin->addin().config.ChatEmail = L" ";
  window->SelectUsers({L"ben@example.com"});
  window->SetMessage(L"hi");
  world.ui.QueueChatAddress(L"anna at example");
  world.ui.QueueChatAddress(L"anna@corvina.example");
  ASSERT_TRUE(window->cmdSend_Click());
  const auto lines = world.ui.Transcript();
  const size_t n = lines.size();
  ASSERT_GE(n, 3u);
  EXPECT_EQ(lines[n - 3], L"[address] \"Your chat address (others see your messages as from it)\" -> \"anna at example\"");
  EXPECT_EQ(lines[n - 2], L"[box] \"Corvina Chat.\" OK ! \"The Email you have entered is invalid\" -> OK (default)");
  EXPECT_EQ(Sent().back()->subject, L"Chat message from: anna@corvina.example");
  // Cancelled: nothing is sent.
  addin->addin().config.ChatEmail.clear();
  EXPECT_FALSE(window->cmdSend_Click());
  EXPECT_TRUE(world.ui.Transcript().back().ends_with(L"-> (cancelled) (default)"));
  EXPECT_EQ(Sent().size(), 1u);
}

// The address dialog asks again until it gets an address a mail can go to.
TEST_F(ChatWindowTest, AddressDialogRefusesWhatNoMailCanReach) {
  const wchar_t* const refused[] = {L"@x.example", L"a@b@x.example", L"a@.example", L"a@x.",
                                    L"a b@x.example", L"dan;eve@x.example", L"dan@example"};
  for (const wchar_t* address : refused) world.ui.QueueChatAddress(address);
  world.ui.QueueChatAddress(L" dan@x.example ");
  window->mnuAddUser_Click();
  const auto boxes = world.Boxes();
  ASSERT_EQ(boxes.size(), std::size(refused));
  for (const std::wstring& box : boxes) EXPECT_EQ(box, L"The Email you have entered is invalid");
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserEmail"), L"ben@example.com;cleo@example.com;dan@x.example;");
}

// The dialog's five checks come in their order; a refused edit shows the dialog again.
TEST_F(ChatWindowTest, UserPropertiesAreCheckedInOrder) {
  EXPECT_EQ(window->view().caption, L"Corvina Chat");
  // Closing the dialog changes nothing.
  EXPECT_FALSE(window->ShowUserProperties(L"ben@example.com"));
  EXPECT_EQ(world.ui.Transcript().back(), L"[dialog] \"Ben Properties\" -> Cancel (default)");
  const size_t shown = world.Boxes().size();
  const struct {
    const wchar_t *email, *nick;
    const wchar_t* refusal;  // nullptr: accepted
  } cases[] = {
      {L"ben", L"B;en", L"Invalid Email !"},
      {L"b;en@example.com", L"B;en", L"Email should not contains ;"},
      {L"ben@example.com", L"  ", L"Please enter a NickName."},
      {L"ben@example.com", L"B;en", L"NickName should not contains ;"},
      {L"cleo@example.com", L"Ben", L"Email already exists !"},
      {L" ben@example.com ", L"Benny", nullptr},
  };
  for (const auto& c : cases) {
    world.ui.QueueChatUserProperties([&](ChatUserPropertiesView& v) {
      EXPECT_EQ(v.caption, L"Ben Properties");
      v.email = c.email;
      v.nick_name = c.nick;
      v.color_user = L"Fuschia";
      v.status = kChatUserBlocked;
      return true;
    });
  }
  EXPECT_TRUE(window->ShowUserProperties(L"ben@example.com"));
  const auto boxes = world.Boxes();
  ASSERT_EQ(boxes.size(), shown + 5);
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(boxes[shown + i], cases[i].refusal);
  const ChatUser& ben = addin->addin().chat.users.Item(1);
  EXPECT_EQ(ben.NickName(), L"Benny");
  EXPECT_EQ(ben.ColorChatUser(), 0xFF00FFu);
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserNickName"), L"Benny;Cleo;");
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserStatus"), L"0;1;");
  EXPECT_EQ(window->view().users.rows[0].icon_key, L"KeyChatUserBlocked");
}

TEST_F(ChatWindowTest, BoardClicksAndUsersFromMessages) {
  auto mail = sim::MakeMail(L"Chat message from: dan@example.com", At(22, 9, 40));
  mail.body = ComposeChatBody(L"see the file", L"h", L"dan@example.com", L"1.0");
  mail.attachments.push_back({L"a.txt", 1, "a"});
  auto item = world.store.DeliverNewMail(mail);
  ASSERT_EQ(addin->addin().chat.users.Count(), 3);  // dan inserted
  const std::string block = Board(world);
  auto image = [&](const char* tag) {
    const size_t end = block.find(tag);
    const size_t begin = block.rfind("<IMG", end);
    return FromUtf8(block.substr(begin, block.find('>', end) - begin + 1));
  };
  window->Board_Click(image("CorvinaTag1"));
  EXPECT_TRUE(window->view().users.rows[2].selected);
  EXPECT_FALSE(window->view().users.rows[0].selected);
  window->Board_Click(image("CorvinaTag2"));
  EXPECT_EQ(item->displayed, 1);
  const size_t boxes = world.Boxes().size();
  window->Board_Click(L"<img id=\"0000DEAD\" CorvinaTag2=\"1\">");
  EXPECT_EQ(world.Boxes().back(), L"Can not locate mail, open manually !");
  window->mnuBrowserAddUser_Click(image("CorvinaTag1"));
  EXPECT_EQ(world.Boxes().back(), L"User dan@example.com already exists, action canceled !");
  window->mnuBrowserAddUser_Click(L"<img alt=\"Unknown User\" CorvinaTag1=\"Unknown User\">");
  EXPECT_EQ(world.Boxes().back(), L"Can not extract user, action canceled !");
  addin->addin().chat.users.RemoveByEmail(L"dan@example.com");
  window->mnuBrowserAddUser_Click(image("CorvinaTag1"));
  EXPECT_EQ(world.Boxes().size(), boxes + 3);
  ASSERT_EQ(item->displayed, 1);
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserEmail"), L"ben@example.com;cleo@example.com;dan@example.com;");
  // The board's context menu: the mail of a file picture, the properties of a sender's.
  window->CallmnuBrowserShowAttachments_Click(image("CorvinaTag1"));
  window->CallmnuBrowserShowAttachments_Click(image("CorvinaTag2"));
  EXPECT_EQ(item->displayed, 2);
  world.ui.QueueChatUserProperties([](ChatUserPropertiesView& v) {
    v.nick_name = L"Dan";
    return true;
  });
  window->CallmnuBrowserUserProperties_Click(image("CorvinaTag1"));
  EXPECT_EQ(addin->addin().chat.users.Item(3).NickName(), L"Dan");
  window->CallmnuBrowserUserProperties_Click(L"<img alt=\"Unknown User\" CorvinaTag1=\"Unknown User\">");
  EXPECT_EQ(world.Boxes().back(), L"Can not extract user, action canceled !");
  window->SelectUsers({L"CLEO@example.com", L"dan@example.com"});
  window->mnuRemoveUser_Click();
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserEmail"), L"ben@example.com;");
  ASSERT_EQ(window->view().users.rows.size(), 1u);
  // Two senders in a row join the list, each as a user of its own.
  for (const wchar_t* sender : {L"eve@example.com", L"fay@example.com"}) {
    world.store.DeliverNewMail(ChatMail(std::wstring(L"Chat message from: ") + sender, L"hello",
                                        sender, At(22, 9, 45)));
  }
  EXPECT_EQ(addin->addin().chat.users.Count(), 3);
  // ... and so do two added back from their pictures.
  const std::string all = Board(world);
  auto picture_of = [&](const std::string& sender) {
    const size_t tag = all.rfind("CorvinaTag1=\"" + sender);
    const size_t begin = all.rfind("<IMG", tag);
    return FromUtf8(all.substr(begin, all.find('>', tag) - begin + 1));
  };
  addin->addin().chat.users.RemoveByEmail(L"eve@example.com");
  addin->addin().chat.users.RemoveByEmail(L"fay@example.com");
  window->mnuBrowserAddUser_Click(picture_of("eve@example.com"));
  window->mnuBrowserAddUser_Click(picture_of("fay@example.com"));
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserEmail"), L"ben@example.com;eve@example.com;fay@example.com;");
  EXPECT_EQ(GetSubjectTypeClicked(L"<td CorvinaTag1=\"x\">"), BoardClick::kNothing);
  EXPECT_EQ(GetUserEmailFromInnerHtml(L"<img corvinatag1=\"a&quot;b&amp;c&lt;@x\">"), L"a\"b&c<@x");
  EXPECT_EQ(GetUserEmailFromInnerHtml(L"<img corvinatag1=\"&#39;&#x27;&#96;&#x60;&gt;\">"), L"''``>");
  EXPECT_EQ(GetEmailEntryIdFromInnerHtml(L"<img src=\"a\" id=\"00AB\" alt=\"x\">"), L"00AB");
  EXPECT_EQ(GetEmailEntryIdFromInnerHtml(L"<img id=\"\" alt=\"x\">"), L"");
}

TEST_F(ChatWindowTest, FlashClearSaveAndClose) {
  world.store.DeliverNewMail(ChatMail(L"Chat message from: ben@example.com", L"ping",
                                      L"ben@example.com", At(22, 9, 40)));
  EXPECT_TRUE(window->flashing());
  window->tmrFlash_Timer();
  EXPECT_TRUE(world.ui.chat_flash_on());
  window->tmrFlash_Timer();
  EXPECT_FALSE(world.ui.chat_flash_on());
  window->tmrFlash_Timer();
  window->Form_Activate();
  EXPECT_FALSE(window->flashing());
  EXPECT_FALSE(world.ui.chat_flash_on());
  const uint64_t ticks = world.ui.chat_flash_ticks();
  window->tmrFlash_Timer();
  EXPECT_EQ(world.ui.chat_flash_ticks(), ticks);

  world.ui.QueueMsgBoxAnswer(vbNo);
  window->mnuClearBoard_Click();
  EXPECT_EQ(world.Boxes().back(), L"Are you sure u want to clear the message board ?");
  EXPECT_TRUE(Has(Board(world), "ping"));
  world.ui.QueueSaveFileResult(L"C:\\Saved\\chat.html");
  window->mnuSaveBoard_Click();
  EXPECT_EQ(world.Boxes().back(), L"Error saving to a file !");  // no such folder
  world.files.PutDirectory(L"C:\\Saved");
  world.ui.QueueSaveFileResult(L"C:\\Saved\\chat.html");
  window->mnuSaveBoard_Click();
  const std::string saved = world.files.ReadFile(L"C:\\Saved\\chat.html");
  EXPECT_TRUE(Has(saved, "ping") && saved.ends_with("</BOdy></HTML>")) << saved;
  world.ui.QueueMsgBoxAnswer(vbYes);
  window->mnuClearBoard_Click();
  EXPECT_FALSE(Has(Board(world), "ping"));

  // Closing saves the list and, by default, clears the board.
  world.store.DeliverNewMail(ChatMail(L"Chat message from: ben@example.com", L"pong",
                                      L"ben@example.com", At(22, 9, 41)));
  world.settings.Write(L"Vireo", L"Chat", L"ChatUserEmail", L"");
  CloseChatWindow(addin->addin());
  EXPECT_FALSE(addin->addin().IsFormLoaded(kChatFormName));
  EXPECT_EQ(world.Setting(L"Chat", L"ChatUserEmail"), L"ben@example.com;cleo@example.com;");
  EXPECT_FALSE(Has(Board(world), "pong"));
}

// The window's controls, pressed as a user would: each reaches its command of the model.
TEST_F(ChatWindowTest, TheWindowsControlsReachTheModel) {
  // The button again, with the window open: the same window comes to the front.
  world.Bar()->FindControl(kTagChat)->Click();
  EXPECT_EQ(addin->addin().chat.window.get(), window);
  EXPECT_EQ(world.ui.events().back().kind, sim::UiEventKind::kFormToFront);
  const ChatWindowEvents& press = world.ui.chat_events();
  press.select_users({L"cleo@example.com"});
  press.message_changed(L"typed");
  press.format_changed(false, true, false);
  press.color_changed(0x800000);
  press.add_attachment(L"C:\\a.txt");
  press.add_attachment(L"C:\\b.txt");
  press.remove_attachment(0);
  press.remove_attachment(5);  // gone already: nothing
  const ChatWindowView& v = world.ui.chat_view();
  EXPECT_EQ(v.users.rows.at(1).selected, true);
  EXPECT_EQ(v.users.rows.at(0).selected, false);
  EXPECT_TRUE(v.italic && !v.bold);
  EXPECT_EQ(v.color, 0x800000u);
  EXPECT_EQ(v.attachments, std::vector<std::wstring>{L"C:\\b.txt"});
  world.files.Put(L"C:\\b.txt", "b");
  press.send();
  ASSERT_EQ(Sent().size(), 1u);
  EXPECT_EQ(ChatMessageText(Sent()[0]->body, 0), L"typed");

  world.ui.QueueChatAddress(L"dan@example.com");
  press.add_user();
  press.select_users({L"ben@example.com"});
  press.remove_users();
  std::vector<std::wstring> listed;
  for (const ChatListRow& row : world.ui.chat_view().users.rows) listed.push_back(row.key);
  EXPECT_EQ(listed, (std::vector<std::wstring>{L"cleo@example.com", L"dan@example.com"}));
  world.ui.QueueChatUserProperties([](ChatUserPropertiesView& p) {
    p.nick_name = L"Danny";
    return true;
  });
  press.user_properties(L"dan@example.com");
  EXPECT_EQ(world.ui.chat_view().users.rows.at(1).text, L"Danny");
  press.board_click(L"<img CorvinaTag1=\"cleo@example.com\">");
  EXPECT_TRUE(world.ui.chat_view().users.rows.at(0).selected);
  press.board_add_user(L"<img CorvinaTag1=\"Unknown User\">");
  EXPECT_EQ(world.Boxes().back(), L"Can not extract user, action canceled !");
  world.ui.QueueMsgBoxAnswer(vbYes);
  press.clear_board();
  EXPECT_FALSE(Has(Board(world), "typed"));

  // Moved, then closed with the window's own button: the place is kept, the window gone.
  press.placed(120, -40, 640, 480);
  press.close();
  EXPECT_FALSE(addin->addin().IsFormLoaded(kChatFormName));
  EXPECT_EQ(addin->addin().chat.window, nullptr);
  const Config& c = addin->addin().config;
  EXPECT_EQ(c.ChatFormLeft + L"," + c.ChatFormTop + L"," + c.ChatFormWidth + L"," + c.ChatFormHeight,
            L"120,-40,640,480");
}

// Each block written to the board reaches the window once, in order, even across a failed
// repaint; a cleared board is shown anew from its file.
TEST_F(ChatWindowTest, EveryBoardBlockReachesTheWindowOnce) {
  const uint32_t serial = world.ui.chat_view().board_serial;
  window->SelectUsers({L"ben@example.com"});
  window->SetMessage(L"one");
  ASSERT_TRUE(window->cmdSend_Click());
  world.faults.FailCall("ShowChatWindow", Error(5, L"frmChat", L"repaint failed"));
  world.store.DeliverNewMail(ChatMail(L"Chat message from: ben@example.com", L"two",
                                      L"ben@example.com", At(22, 9, 40)));
  EXPECT_EQ(world.LogLinesWith(L"Error Source=frmChatForm_Paint").size(), 1u);
  window->SetMessage(L"three");
  ASSERT_TRUE(window->cmdSend_Click());
  const std::vector<std::string>& shown = world.ui.chat_blocks_shown();
  ASSERT_EQ(shown.size(), 3u);
  EXPECT_EQ(Board(world).substr(Board(world).size() - shown[0].size() - shown[1].size() -
                                shown[2].size()),
            shown[0] + shown[1] + shown[2]);
  EXPECT_TRUE(Has(shown[1], "two") && Has(shown[2], "three"));
  EXPECT_EQ(world.ui.chat_view().board_serial, serial);
  world.ui.QueueMsgBoxAnswer(vbYes);
  window->mnuClearBoard_Click();
  EXPECT_NE(world.ui.chat_view().board_serial, serial);
  EXPECT_TRUE(world.ui.chat_blocks_shown().empty());
}

// A stored placement is used when it is a whole number; anything else means "not placed".
TEST(ChatWindowSettings, StoredPlacementIsReadAsPixels) {
  SimWorld world;
  world.Store(L"Chat", L"ChatFormLeft", L" 120 ");
  world.Store(L"Chat", L"ChatFormTop", L"-40");
  world.Store(L"Chat", L"ChatFormWidth", L"+800");
  world.Store(L"Chat", L"ChatFormHeight", L"99999999999");
  auto addin = world.StartOutlook();
  world.Bar()->FindControl(kTagChat)->Click();
  const ChatWindowView& v = world.ui.chat_view();
  EXPECT_EQ(std::vector<int32_t>({v.left, v.top, v.width, v.height}),
            std::vector<int32_t>({120, -40, 0, 0}));
  EXPECT_TRUE(world.LogLinesWith(L"Error Source=frmChat").empty());
  // Never placed: nothing is stored over the settings at closing.
  CloseChatWindow(addin->addin());
  EXPECT_EQ(addin->addin().config.ChatFormWidth, L"+800");
}

// Inserting a user answers true; a window that cannot be opened makes it log and answer false.
TEST(ChatReceiving, AutoInsertUserAnswersWhetherItWorked) {
  for (const bool window_fails : {false, true}) {
    SCOPED_TRACE(window_fails);
    SimWorld world;
    auto addin = world.StartOutlook();
    if (window_fails) world.faults.FailCall("LoadForm", Error(5, L"frmChat", L"no window"));
    EXPECT_EQ(AutoInsertUser(addin->addin(), L" dan@example.com "), !window_fails);
    EXPECT_EQ(world.LogLinesWith(L"AutoInsertUser\\frmChat; Error Description=no window").size(), window_fails ? 1u : 0u);
    EXPECT_TRUE(addin->addin().chat.users.IsEmailAlreadyExists(L"dan@example.com"));
  }
}

// A right-to-left board, kept between sessions when the user says so.
TEST(ChatWindowSettings, RightToLeftBoardKeptOverClosing) {
  SimWorld world;
  world.Store(L"Chat", L"ChatRTL", L"1");
  world.Store(L"Chat", L"ChatClearBoardOnClose", L"0");
  auto addin = world.StartOutlook();
  world.store.DeliverNewMail(
      ChatMail(L"Chat message from: ben@example.com", L"shalom", L"ben@example.com", At(22, 9, 31)));
  EXPECT_TRUE(addin->addin().chat.window->view().right_to_left);
  EXPECT_TRUE(Board(world).starts_with("<HTML Dir=RTL>")) << Board(world);
  CloseChatWindow(addin->addin());
  world.Bar()->FindControl(kTagChat)->Click();
  EXPECT_TRUE(Has(Board(world), "shalom")) << Board(world);
}

}  // namespace
}  // namespace corvina
