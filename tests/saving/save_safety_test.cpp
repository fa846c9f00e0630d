// Saving never destroys or loses a user's file: only the target itself is written, device
// names are saved under a safe name on every route, one job runs at a time, and questions show
// a name as it really is.
#include <gtest/gtest.h>

#include "base/text.h"
#include "host/control_table.h"
#include "platform/sim/ui_event.h"
#include "saving/disk_space.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

sim::SimItemData MailWith(std::vector<std::wstring> names, Date received = FromCivil({2026, 11, 1, 0, 0, 0})) {
  auto mail = sim::MakeMail(L"m", received);
  for (auto& n : names) mail.attachments.push_back({n, 1, "bytes of " + ToUtf8(n)});
  return mail;
}

bool LogHas(SimWorld& world, const std::wstring& text) { return !world.LogLinesWith(text).empty(); }

size_t Count(const SimWorld& world, sim::UiEventKind kind) {
  size_t n = 0;
  for (const auto& e : world.ui.events()) n += e.kind == kind;
  return n;
}

TEST(SaveSafetyTest, OnlyTheTargetIsWrittenWhateverElseLiesInTheFolder) {
  struct Case {
    const char* what;
    std::vector<std::pair<std::wstring, std::string>> existing;  // name, bytes ("ro" read-only)
    std::vector<std::wstring> attachments;
    uint64_t free_bytes;
    std::vector<std::pair<std::wstring, std::string>> expected;  // name, bytes afterwards
  };
  const std::wstring long_name = std::wstring(250, L'n') + L".pdf";  // "C:\O\" + 254 = 259
  const Case cases[] = {
      {"a user file named like a partial save stays as it is",
       {{L"~x.pdf.part", "user"}}, {L"x.pdf"}, 1 << 20,
       {{L"~x.pdf.part", "user"}, {L"x.pdf", "bytes of x.pdf"}}},
      {"a mail holding both names keeps both",
       {}, {L"~x.pdf.part", L"x.pdf"}, 1 << 20,
       {{L"~x.pdf.part", "bytes of ~x.pdf.part"}, {L"x.pdf", "bytes of x.pdf"}}},
      {"a read-only file of that name does not end the job",
       {{L"~x.pdf.part", "ro"}}, {L"x.pdf", L"y.pdf"}, 1 << 20,
       {{L"~x.pdf.part", "ro"}, {L"x.pdf", "bytes of x.pdf"}, {L"y.pdf", "bytes of y.pdf"}}},
      {"a failed save removes nothing of the user's",
       {{L"~x.pdf.part", "user"}}, {L"x.pdf"}, 4,
       {{L"~x.pdf.part", "user"}}},
      {"a name of 254 characters is saved", {}, {long_name}, 1 << 20,
       {{long_name, "bytes of " + ToUtf8(long_name)}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SimWorld world;
    world.files.AddDrive(L'D', 1 << 20);
    world.files.PutDirectory(L"D:\\O");
    for (const auto& [name, bytes] : c.existing) {
      world.files.Put(L"D:\\O\\" + name, bytes);
      if (bytes == "ro") world.files.SetReadOnly(L"D:\\O\\" + name);
    }
    world.files.SetFreeBytes(L'D', c.free_bytes);
    auto addin = world.StartOutlook();
    addin->addin().config.AutoReplace = L"0";
    addin->addin().config.glbFolder = {L"D:\\O"};
    world.store.ActiveExplorer()->selection = {world.store.AddToInbox(MailWith(c.attachments))};
    world.ui.QueueFolderMenuChoice(0);
    world.Bar()->FindControl(kTagSave)->Click();
    std::vector<std::wstring> listed;
    for (const auto& file : world.files.ListAll())
      if (file.starts_with(L"D:\\O\\") && file != L"D:\\O\\") listed.push_back(file.substr(5));
    ASSERT_EQ(listed.size(), c.expected.size());
    for (const auto& [name, bytes] : c.expected)
      EXPECT_EQ(world.files.Get(L"D:\\O\\" + name).value_or("<none>"), bytes) << ToUtf8(name);
    EXPECT_TRUE(world.Boxes().empty());  // nothing here is a question of replacing
  }
}

// What Windows would do with the name, and what the add-in saves instead, on all three routes.
TEST(SaveSafetyTest, DeviceNamesAreSavedUnderASafeNameOnEveryRoute) {
  const std::pair<const wchar_t*, const wchar_t*> names[] = {
      {L"nul.pdf", L"nul_.pdf"}, {L"CON.pdf", L"CON_.pdf"}, {L"Com1.pdf", L"Com1_.pdf"},
      {L"lpt9.tar.pdf", L"lpt9_.tar.pdf"}, {L"AUX .pdf", L"AUX_ .pdf"}, {L"prn.pdf", L"prn_.pdf"}};
  enum Route { kSaveButton, kStartupSweep, kNewMail };
  for (Route route : {kSaveButton, kStartupSweep, kNewMail}) {
    SCOPED_TRACE(route);
    SimWorld world;
    world.files.PutDirectory(L"C:\\Out");
    world.Store(L"Configuration", L"ExtName ", L"pdf;tar.pdf;.pdf;.tar.pdf");
    world.Store(L"Configuration", L"ExtDest ", L"C:\\Out;C:\\Out;C:\\Out;C:\\Out");
    world.Store(L"Configuration", L"ExtChecked ", route == kSaveButton ? L"0;0;0;0" : L"1;1;1;1");
    std::vector<std::wstring> attachments;
    for (const auto& [name, safe] : names) attachments.push_back(name);
    const Date now = FromCivil({2026, 11, 22, 9, 30, 0});
    if (route == kStartupSweep) world.store.AddToInbox(MailWith(attachments, now));
    auto addin = world.StartOutlook();
    if (route == kSaveButton) {
      addin->addin().config.glbFolder = {L"C:\\Out"};
      world.store.ActiveExplorer()->selection = {world.store.AddToInbox(MailWith(attachments))};
      world.ui.QueueFolderMenuChoice(0);
      world.Bar()->FindControl(kTagSave)->Click();
    } else if (route == kNewMail) {
      world.store.DeliverNewMail(MailWith(attachments, now));
    }
    for (const auto& [name, safe] : names) {
      EXPECT_EQ(world.files.Get(std::wstring(L"C:\\Out\\") + safe).value_or("<none>"),
                "bytes of " + ToUtf8(name))
          << ToUtf8(safe);
      EXPECT_TRUE(LogHas(world, std::wstring(L"\"") + name + L"\" is a Windows device name; saved as \"" +
                                    safe + L"\""))
          << ToUtf8(name);
    }
  }
}

TEST(SaveSafetyTest, AClickOfSaveDuringAJobShowsThatJobAndStartsNothing) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto first = world.store.AddToInbox(MailWith({L"1.pdf", L"2.pdf"}));
  world.store.ActiveExplorer()->selection = {first, world.store.AddToInbox(MailWith({L"3.pdf"}))};
  auto window = world.store.OpenInspector(first);
  bool clicked = false;
  world.ui.set_do_events_hook([&] {
    if (clicked || world.store.attachments_saved != 1) return;
    clicked = true;
    world.ui.QueueFolderMenuChoice(1);  // would be taken by a second job's menu
    world.Bar()->FindControl(kTagSave)->Click();
    window->command_bars->Find(kInspectorBarName)->FindControl(kTagSave)->Click();
    world.ui.PressSavingCancel();  // reaches the job that runs, not one that ended
  });
  world.ui.QueueFolderMenuChoice(0);
  world.Bar()->FindControl(kTagSave)->Click();
  EXPECT_EQ(Count(world, sim::UiEventKind::kFolderMenu), 1u);
  EXPECT_EQ(Count(world, sim::UiEventKind::kFormToFront), 2u);
  const std::wstring folder0 = addin->addin().config.glbFolder[0];
  EXPECT_TRUE(world.files.Get(folder0 + L"\\1.pdf"));
  EXPECT_FALSE(world.files.Get(folder0 + L"\\2.pdf"));  // cancelled after the first
  EXPECT_FALSE(world.files.Get(addin->addin().config.glbFolder[1] + L"\\1.pdf"));
  EXPECT_FALSE(addin->addin().saving.JobRunning);
  EXPECT_FALSE(addin->addin().IsFormLoaded(L"frmSaving"));
  // The next click, after the job, starts a job again.
  world.ui.set_do_events_hook({});
  world.ui.QueueFolderMenuChoice(1);
  world.Bar()->FindControl(kTagSave)->Click();
  EXPECT_TRUE(world.files.Get(addin->addin().config.glbFolder[1] + L"\\3.pdf"));
}

TEST(SaveSafetyTest, ANewMailOrADisconnectionDuringAJobTouchesNothingReleased) {
  for (bool disconnect : {false, true}) {
    SCOPED_TRACE(disconnect);
    SimWorld world;
    world.Store(L"Configuration", L"ExtName ", L".txt");
    world.Store(L"Configuration", L"ExtDest ", L"C:\\Texts");
    world.Store(L"Configuration", L"ExtChecked ", L"1");
    world.files.PutDirectory(L"C:\\Texts");
    auto addin = world.StartOutlook();
    world.store.ActiveExplorer()->selection = {world.store.AddToInbox(MailWith({L"1.pdf", L"2.pdf"})),
                                               world.store.AddToInbox(MailWith({L"3.pdf"}))};
    bool done = false;
    world.ui.set_do_events_hook([&] {
      if (done || world.store.attachments_saved != 1) return;
      done = true;
      world.store.DeliverNewMail(MailWith({L"note.txt"}, FromCivil({2026, 11, 22, 9, 30, 0})));
      if (disconnect) addin->IDTExtensibility2_OnDisconnection(ext_dm_UserClosed);
    });
    world.ui.QueueFolderMenuChoice(0);
    world.Bar()->FindControl(kTagSave)->Click();
    const std::wstring folder0 = addin->addin().config.glbFolder[0];
    EXPECT_TRUE(world.files.Get(L"C:\\Texts\\note.txt"));
    EXPECT_TRUE(world.files.Get(folder0 + L"\\1.pdf"));
    // A disconnection stops the job at its next test; a new mail lets it finish.
    EXPECT_EQ(world.files.Get(folder0 + L"\\3.pdf").has_value(), !disconnect);
    EXPECT_FALSE(addin->addin().IsFormLoaded(L"frmSaving"));
    // Nothing failed (the toolbar's language box is missing by design and says so at start-up).
    for (const auto& line : world.LogLines()) {
      const bool failure = ContainsText(line, L"Error Source=") &&
                           !ContainsText(line, L"CreateAddInComboBox");
      EXPECT_FALSE(failure) << ToUtf8(line);
    }
  }
}

TEST(SaveSafetyTest, ANewMailReplacesAFileOnlyOnYes) {
  struct Case {
    const char* what;
    int32_t answer;  // 0: the box fails
    std::string expected;
  };
  const Case cases[] = {{"yes", vbYes, "bytes of x.txt"}, {"no", vbNo, "old"},
                        {"the box answers OK", vbOK, "old"}, {"the box fails", 0, "old"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SimWorld world;
    world.Store(L"Configuration", L"ExtName ", L".txt");
    world.Store(L"Configuration", L"ExtDest ", L"C:\\Texts");
    world.Store(L"Configuration", L"ExtChecked ", L"1");
    world.Store(L"Configuration", L"AutoReplace", L"0");
    world.files.Put(L"C:\\Texts\\x.txt", "old");
    auto addin = world.StartOutlook();
    if (c.answer) {
      world.ui.QueueMsgBoxAnswer(c.answer);
    } else {
      world.faults.FailCall("MsgBox", Error(-2147467259, L"UI", L"the box could not be shown"));
    }
    world.store.DeliverNewMail(MailWith({L"x.txt", L"y.txt"}, FromCivil({2026, 11, 22, 9, 30, 0})));
    EXPECT_EQ(world.files.Get(L"C:\\Texts\\x.txt").value_or("-"), c.expected);
    EXPECT_TRUE(world.files.Get(L"C:\\Texts\\y.txt"));  // the next attachment is still copied
    EXPECT_EQ(LogHas(world, L"DesVireooApplication_NewMail\\UI; Error Description=the box could not be shown"),
              c.answer == 0);
  }
}

TEST(SaveSafetyTest, QuestionsShowBidirectionalControlsAndTheFileKeepsItsName) {
  SimWorld world;
  const std::wstring spoofed = L"invoice\u202Efdp.exe";
  world.files.PutDirectory(L"C:\\Out\\\u202Eab");
  world.files.Put(L"C:\\Out\\\u202Eab\\" + spoofed, "old");
  auto addin = world.StartOutlook();
  addin->addin().config.AutoReplace = L"0";
  addin->addin().config.glbFolder = {L"C:\\Out\\\u202Eab", L"C:\\New\u2066"};
  world.store.ActiveExplorer()->selection = {world.store.AddToInbox(MailWith({spoofed}))};
  world.ui.QueueMsgBoxAnswer(vbYes);
  world.ui.QueueFolderMenuChoice(0);
  world.Bar()->FindControl(kTagSave)->Click();
  world.ui.QueueMsgBoxAnswer(vbNo);
  world.ui.QueueFolderMenuChoice(1);
  world.Bar()->FindControl(kTagSave)->Click();
  const auto boxes = world.Boxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0], L"The file C:\\Out\\<U+202E>ab\\invoice<U+202E>fdp.exe Already exsists.\r\n"
                      L"Do you want to replace it ?");
  EXPECT_EQ(boxes[1], L"Destination directory C:\\New<U+2066>\\ does not exist\r\nDo you want to create it ?");
  EXPECT_EQ(world.files.Get(L"C:\\Out\\\u202Eab\\" + spoofed).value_or("-"), "bytes of " + ToUtf8(spoofed));
}

TEST(SaveSafetyTest, DiskSpaceCheckFetchesOutlookAgainWhenItsObjectHasGone) {
  SimWorld world;
  auto addin = world.StartOutlook();
  world.store.ActiveExplorer()->selection = {world.store.AddToInbox(MailWith({L"x"}))};
  world.faults.FailCall("Application.ActiveExplorer",
                        Error(kErrServerUnavailable, L"Outlook", L"The remote server is unavailable"));
  EXPECT_TRUE(CheckDiskSpace(addin->addin(), 1, L"C:\\"));
  EXPECT_TRUE(world.faults.injected());
  EXPECT_FALSE(LogHas(world, L"CheckDiskSpace"));
  // An application object already let go of is fetched again as well.
  addin->addin().oApplication.reset();
  EXPECT_TRUE(CheckDiskSpace(addin->addin(), 1, L"C:\\"));
  EXPECT_TRUE(addin->addin().oApplication);
  // Any other failure is not a vanished Outlook: it is logged and the check says no.
  world.faults.FailCall("Application.ActiveExplorer", Error(5, L"Outlook", L"busy"));
  EXPECT_FALSE(CheckDiskSpace(addin->addin(), 1, L"C:\\"));
  EXPECT_TRUE(LogHas(world, L"DesVireoCheckDiskSpace\\Outlook; Error Description=busy"));
}

}  // namespace
}  // namespace corvina
