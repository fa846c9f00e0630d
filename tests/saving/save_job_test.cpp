// The Save button: folder menu, the job behind frmSaving, its questions and its limits.
#include "saving/save_job.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "host/control_table.h"
#include "platform/sim/ui_event.h"
#include "saving/disk_space.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

class SaveJobTest : public ::testing::Test {
 protected:
  void SetUp() override { addin = world.StartOutlook(); }

  sim::SimItemPtr Mail(std::vector<std::pair<std::wstring, int32_t>> attachments, int32_t size = 1000,
                       int32_t item_class = outlook::olMail) {
    auto data = item_class == outlook::olMail
                    ? sim::MakeMail(L"m", FromCivil({2026, 11, 1, 0, 0, 0}))
                    : sim::MakeMeetingRequest(L"r", FromCivil({2026, 11, 1, 0, 0, 0}));
    data.size = size;
    for (auto& [name, position] : attachments)
      data.attachments.push_back({name, position, "bytes of " + ToUtf8(name)});
    return world.store.AddToInbox(data);
  }
  void Select(std::vector<sim::SimItemPtr> items) { world.store.ActiveExplorer()->selection = items; }
  void ClickSave(int32_t menu_choice) {
    world.ui.QueueFolderMenuChoice(menu_choice);
    world.Bar()->FindControl(kTagSave)->Click();
  }
  Config& config() { return addin->addin().config; }
  std::wstring Folder(int i) { return config().glbFolder[static_cast<size_t>(i)]; }

  SimWorld world;
  std::unique_ptr<DesVireo> addin;
};

TEST_F(SaveJobTest, ChosenFolderReceivesEveryAttachmentBehindTheProgressForm) {
  Select({Mail({{L"a.pdf", 1}, {L"b.txt", 2}}), Mail({{L"c.jpg", 1}})});
  int32_t face_while_saving = 0;
  world.ui.set_do_events_hook([&] { face_while_saving = world.Bar()->FindControl(kTagSave)->face_id; });
  ClickSave(1);
  EXPECT_EQ(face_while_saving, kSaveBusyFace);
  EXPECT_EQ(config().Statistic2, L"1");  // the click counts as a use of saving
  for (const wchar_t* name : {L"a.pdf", L"b.txt", L"c.jpg"})
    EXPECT_EQ(world.files.Get(Folder(1) + L"\\" + name).value_or("-"), "bytes of " + ToUtf8(name));
  EXPECT_TRUE(addin->addin().saving.SaveDestination.empty());
  // frmSaving is gone; the hidden menu form stays loaded until disconnection.
  EXPECT_EQ(world.ui.LoadedForms(), std::vector<std::wstring>{L"frmMenu"});
  EXPECT_EQ(world.ui.saving_view().caption, L"Corvina - Saving files ...");
  EXPECT_EQ(world.ui.saving_view().progress_max, 3);
  EXPECT_EQ(world.ui.saving_view().progress_value, 2);  // shown before the last one was saved
  EXPECT_EQ(world.Bar()->FindControl(kTagSave)->face_id, kSaveFace);
  EXPECT_TRUE(world.files.DirectoryExists(std::wstring(testing::kAddinFolder) + L"\\VoiceMail"));
}

TEST_F(SaveJobTest, OnlyASelectionOverFiftyMegabytesAsks) {
  const std::pair<int32_t, bool> cases[] = {
      {50000000, false}, {50004999, false}, {50005000, true}, {60000000, true}};
  for (const auto& [size, asks] : cases) {
    Select({Mail({{L"x.bin", 1}}, size)});
    const size_t boxes = world.Boxes().size();
    world.ui.QueueMsgBoxAnswer(vbNo);
    ClickSave(0);
    EXPECT_EQ(world.Boxes().size(), boxes + (asks ? 1 : 0)) << size;
    if (asks) {
      EXPECT_EQ(world.Boxes().back(),
                L"You have selected 1 Emails to save their attachments \r\nwith approximately total "
                L"size In MB of " + FormatMegabytes(size / 1000000.0) +
                    L"\r\nthis may take a while\r\nare you sure you want to procced?");
      EXPECT_FALSE(addin->addin().saving.SaveDestination.empty());  // No leaves the destination set
    } else {
      EXPECT_TRUE(world.files.Get(Folder(0) + L"\\x.bin"));
    }
    world.ui.QueueMsgBoxAnswer(vbYes);  // drain a queued answer that was not asked for
    world.ui.MsgBox(L"drain", vbYesNo, L"t");
  }
}

TEST_F(SaveJobTest, FloppyDriveWithoutDiskStopsInAnyLetterCase) {
  world.files.AddDriveWithoutDisk(L'A');
  config().glbFolder = {L"a:\\", L"A:"};
  Select({Mail({{L"x.pdf", 1}})});
  for (int entry : {0, 1}) {
    ClickSave(entry);
    EXPECT_EQ(world.Boxes().back(), L"First, insert floppy, action canceled !");
    EXPECT_EQ(world.ui.events().back().kind, sim::UiEventKind::kUnloadForm);
  }
}

TEST_F(SaveJobTest, MissingFolderIsCreatedOneLevelAfterAsking) {
  config().glbFolder = {L"C:\\New", L"C:\\No\\Such\\Deep"};
  Select({Mail({{L"x.pdf", 1}})});
  world.ui.QueueMsgBoxAnswer(vbNo);
  ClickSave(0);
  EXPECT_EQ(world.Boxes().back(),
            L"Destination directory C:\\New\\ does not exist\r\nDo you want to create it ?");
  EXPECT_FALSE(world.files.DirectoryExists(L"C:\\New"));
  world.ui.QueueMsgBoxAnswer(vbYes);
  ClickSave(0);
  EXPECT_TRUE(world.files.Get(L"C:\\New\\x.pdf"));
  world.ui.QueueMsgBoxAnswer(vbYes);
  ClickSave(1);  // one level only: the parent is missing, so the job fails and logs
  EXPECT_EQ(world.LogLinesWith(L"Error Source=DesVireoGetSelectedItems\\Files;").size(), 1u);
}

TEST_F(SaveJobTest, ExistingFilesAreReplacedSilentlyOrAfterAQuestion) {
  world.files.Put(Folder(0) + L"\\x.pdf", "old");
  Select({Mail({{L"x.pdf", 1}})});
  ClickSave(0);  // AutoReplace "1": overwritten, never renamed
  EXPECT_EQ(world.files.Get(Folder(0) + L"\\x.pdf").value_or("-"), "bytes of x.pdf");
  EXPECT_FALSE(world.files.Get(Folder(0) + L"\\x(1).pdf"));
  world.files.Put(Folder(0) + L"\\x.pdf", "old");
  config().AutoReplace = L"0";
  world.ui.QueueMsgBoxAnswer(vbNo);
  ClickSave(0);
  EXPECT_EQ(world.Boxes().back(), L"The file " + Folder(0) +
                                      L"\\x.pdf Already exsists.\r\nDo you want to replace it ?");
  EXPECT_EQ(world.files.Get(Folder(0) + L"\\x.pdf").value_or("-"), "old");
}

TEST_F(SaveJobTest, EmbeddedPicturesAreLeftOutOfMailItemsOnly) {
  config().IncludeHtmlEmbeded = L"0";
  Select({Mail({{L"logo.png", 0}, {L"doc.pdf", 1}}),
          Mail({{L"invite.png", 0}}, 1000, outlook::olMeetingRequest)});
  ClickSave(2);
  EXPECT_FALSE(world.files.Get(Folder(2) + L"\\logo.png"));
  EXPECT_TRUE(world.files.Get(Folder(2) + L"\\doc.pdf"));
  EXPECT_TRUE(world.files.Get(Folder(2) + L"\\invite.png"));
}

TEST_F(SaveJobTest, CancelBetweenAttachmentsKeepsWhatWasSavedAndTheDestination) {
  Select({Mail({{L"1.pdf", 1}, {L"2.pdf", 2}}), Mail({{L"3.pdf", 1}})});
  world.ui.set_do_events_hook([&] {
    if (world.store.attachments_saved == 1) world.ui.PressSavingCancel();
  });
  ClickSave(0);
  EXPECT_TRUE(world.files.Get(Folder(0) + L"\\1.pdf"));
  EXPECT_FALSE(world.files.Get(Folder(0) + L"\\2.pdf"));
  EXPECT_FALSE(world.files.Get(Folder(0) + L"\\3.pdf"));
  EXPECT_EQ(addin->addin().saving.SaveDestination, Folder(0));
}

TEST_F(SaveJobTest, NamesThatLeaveTheFolderAreRefusedAndTheJobGoesOn) {
  Select({Mail({{L"..\\..\\evil.exe", 1}, {L"C:x.pdf", 2}, {L"good.pdf", 3}})});
  ClickSave(0);
  EXPECT_TRUE(world.files.Get(Folder(0) + L"\\good.pdf"));
  EXPECT_EQ(world.LogLinesWith(L"Error Source=DesVireoGetSelectedItems\\Vireo; Error Description="
                               L"Attachment name refused").size(), 2u);
  for (const auto& file : world.files.ListAll()) EXPECT_FALSE(ContainsText(file, L"evil")) << ToUtf8(file);
}

TEST_F(SaveJobTest, FullDiskEndsTheJobWithoutAHalfWrittenFile) {
  world.files.AddDrive(L'D', 20);
  config().glbFolder = {L"D:\\"};
  Select({Mail({{L"a", 1}, {L"big.pdf", 2}, {L"c", 3}})});  // "bytes of a" fits, the next not
  ClickSave(0);
  EXPECT_TRUE(world.files.Get(L"D:\\a"));
  EXPECT_FALSE(world.files.Get(L"D:\\big.pdf"));
  EXPECT_FALSE(world.files.Get(L"D:\\c"));
  for (const auto& file : world.files.ListAll()) EXPECT_FALSE(ContainsText(file, L".part")) << ToUtf8(file);
  EXPECT_FALSE(world.LogLinesWith(L"DesVireoGetSelectedItems\\Files;").empty());
}

TEST_F(SaveJobTest, MailWindowJobHasItsOwnQuestionAndNoFloppyCheck) {
  auto mail = Mail({{L"w.pdf", 1}}, 70000000);
  world.store.OpenInspector(mail);
  addin->addin().saving.SaveDestination = L"a:\\";
  world.files.AddDriveWithoutDisk(L'A');
  world.ui.QueueMsgBoxAnswer(vbYes);
  world.ui.QueueMsgBoxAnswer(vbNo);
  auto inspector = world.application->ActiveInspector();
  GetSelectedItemsInspector(addin->addin(), *inspector->CurrentItem());
  const auto boxes = world.Boxes();
  ASSERT_GE(boxes.size(), 2u);
  EXPECT_EQ(boxes[boxes.size() - 2],
            L"You have selected  Emails to save their attachments \r\nwith approximately total size "
            L"In MB of 70.00\r\nthis may take a while\r\nare you sure you want to procced?");
  EXPECT_EQ(boxes.back(), L"Destination directory a:\\ does not exist\r\nDo you want to create it ?");
}

TEST_F(SaveJobTest, BrowserStartsAtTheLastChosenFolder) {
  Select({Mail({{L"x.pdf", 1}})});
  world.files.PutDirectory(L"C:\\Picked");
  world.ui.QueueBrowseResult(L"C:\\Picked");
  ClickSave(kFolderMenuBrowse);
  world.ui.QueueBrowseResult(L"");
  ClickSave(kFolderMenuBrowse);
  std::vector<std::wstring> starts;
  for (const auto& e : world.ui.events())
    if (e.kind == sim::UiEventKind::kBrowse) {
      starts.push_back(e.text);
      EXPECT_EQ(e.title, L"Please Select A Folder...");
    }
  EXPECT_EQ(starts, (std::vector<std::wstring>{L"c:\\", L"C:\\Picked"}));
  EXPECT_TRUE(world.files.Get(L"C:\\Picked\\x.pdf"));
}

TEST_F(SaveJobTest, DiskSpaceCheckComparesDecimalMegabytes) {
  world.files.AddDrive(L'E', 5000000);
  Select({Mail({{L"x", 1}}, 6000000)});
  EXPECT_FALSE(CheckDiskSpace(addin->addin(), 0, L" E:\\Target"));
  EXPECT_EQ(world.Boxes().back(), L"You do not have enought free disk space on the selected drive");
  EXPECT_TRUE(CheckDiskSpace(addin->addin(), 1, L"E:\\Target"));   // test skipped
  EXPECT_TRUE(CheckDiskSpace(addin->addin(), 0, L"Q:\\Unknown"));  // free space unknown
  Select({Mail({{L"x", 1}}, 51000000)});
  world.ui.QueueMsgBoxAnswer(vbNo);
  EXPECT_FALSE(CheckDiskSpace(addin->addin(), 0, L"C:\\"));
}

}  // namespace
}  // namespace corvina

namespace corvina {
namespace {

TEST(MailWindowSaveTest, EachMailWindowGetsItsBarAndSavesItsOwnMail) {
  testing::SimWorld world;
  auto addin = world.StartOutlook();
  auto mail = sim::MakeMail(L"first", FromCivil({2026, 11, 1, 0, 0, 0}));
  mail.attachments.push_back({L"first.pdf", 1, "1"});
  auto other = sim::MakeMail(L"second", FromCivil({2026, 11, 1, 0, 0, 0}));
  other.attachments.push_back({L"second.pdf", 1, "2"});
  auto first_window = world.store.OpenInspector(world.store.AddToInbox(mail));
  world.store.OpenInspector(world.store.AddToInbox(other));  // the active one now
  world.store.OpenInspector(world.store.AddToInbox(sim::MakePost(L"post", FromCivil({2026, 11, 1, 0, 0, 0}))));
  EXPECT_EQ(addin->inspector_bars().open_windows(), 2u);  // no bar on the post's window

  auto bar = first_window->command_bars->Find(kInspectorBarName);
  ASSERT_TRUE(bar);
  ASSERT_EQ(bar->controls.size(), 3u);
  world.ui.QueueFolderMenuChoice(0);
  bar->FindControl(kTagSave)->Click();
  const std::wstring folder = addin->addin().config.glbFolder[0];
  EXPECT_TRUE(world.files.Get(folder + L"\\first.pdf"));
  EXPECT_FALSE(world.files.Get(folder + L"\\second.pdf"));

  world.store.CloseInspector(first_window);
  EXPECT_EQ(addin->inspector_bars().open_windows(), 1u);
  addin->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  EXPECT_EQ(world.store.new_inspector().connected_count(), 0u);
}

}  // namespace
}  // namespace corvina

namespace corvina {
namespace {

// The checks the job makes for every mail and every attachment, in their order: the cancel
// flag before each mail, the folder check for each mail, the overwrite question before the
// embedded-picture skip.
TEST(SaveJobOrderTest, EachMailIsCheckedAgainAndTheQuestionComesBeforeTheSkip) {
  struct Case {
    const char* what;
    bool cancel_after_first_mail;
    bool remove_folder_after_first_mail;
    std::vector<std::wstring> boxes_after_start;
    bool second_saved;
  };
  const Case cases[] = {
      {"the folder is checked for each mail", false, true,
       {L"Destination directory C:\\Out\\ does not exist\r\nDo you want to create it ?"}, true},
      {"a cancel before a mail stops before its folder check", true, true, {}, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    testing::SimWorld world;
    world.files.PutDirectory(L"C:\\Out");
    auto addin = world.StartOutlook();
    addin->addin().config.glbFolder = {L"C:\\Out"};
    auto one = sim::MakeMail(L"1", FromCivil({2026, 11, 1, 0, 0, 0}));
    one.attachments.push_back({L"first.pdf", 1, "1"});
    auto two = sim::MakeMail(L"2", FromCivil({2026, 11, 1, 0, 0, 0}));
    two.attachments.push_back({L"second.pdf", 1, "2"});
    world.store.ActiveExplorer()->selection = {world.store.AddToInbox(one), world.store.AddToInbox(two)};
    bool acted = false;
    world.ui.set_do_events_hook([&] {
      if (acted || world.store.attachments_saved != 1) return;
      acted = true;
      if (c.remove_folder_after_first_mail) {
        world.files.Erase(L"C:\\Out\\first.pdf");
        world.files.Erase(L"C:\\Out");
      }
      if (c.cancel_after_first_mail) world.ui.PressSavingCancel();
    });
    const size_t before = world.Boxes().size();
    world.ui.QueueMsgBoxAnswer(vbYes);
    world.ui.QueueFolderMenuChoice(0);
    world.Bar()->FindControl(kTagSave)->Click();
    const auto boxes = world.Boxes();
    EXPECT_EQ(std::vector<std::wstring>(boxes.begin() + static_cast<long>(before), boxes.end()),
              c.boxes_after_start);
    EXPECT_EQ(world.files.Get(L"C:\\Out\\second.pdf").has_value(), c.second_saved);
  }
}

TEST(SaveJobOrderTest, AnEmbeddedPictureIsAskedAboutBeforeItIsLeftOut) {
  testing::SimWorld world;
  world.files.Put(L"C:\\Out\\logo.png", "mine");
  auto addin = world.StartOutlook();
  addin->addin().config.glbFolder = {L"C:\\Out"};
  addin->addin().config.AutoReplace = L"0";
  addin->addin().config.IncludeHtmlEmbeded = L"0";
  auto mail = sim::MakeMail(L"html", FromCivil({2026, 11, 1, 0, 0, 0}));
  mail.attachments.push_back({L"logo.png", 0, "embedded"});
  world.store.ActiveExplorer()->selection = {world.store.AddToInbox(mail)};
  world.ui.QueueMsgBoxAnswer(vbYes);
  world.ui.QueueFolderMenuChoice(0);
  world.Bar()->FindControl(kTagSave)->Click();
  EXPECT_EQ(world.Boxes().back(), L"The file C:\\Out\\logo.png Already exsists.\r\nDo you want to replace it ?");
  EXPECT_EQ(world.files.Get(L"C:\\Out\\logo.png").value_or("-"), "mine");  // asked, then left out
}

}  // namespace
}  // namespace corvina

namespace corvina {
namespace {

TEST(FolderMenuTest, EachEntryLogsUnderItsOwnHandlerAndTheJobStillRuns) {
  const std::pair<int32_t, const wchar_t*> cases[] = {{0, L"mnu_Folder_Click"},
                                                      {kFolderMenuBrowse, L"mnu_FolderBrowse_Click"}};
  for (const auto& [choice, handler] : cases) {
    SCOPED_TRACE(ToUtf8(handler));
    testing::SimWorld world;
    world.files.PutDirectory(L"C:\\Picked");
    auto addin = world.StartOutlook();
    auto mail = sim::MakeMail(L"m", FromCivil({2026, 11, 1, 0, 0, 0}));
    mail.attachments.push_back({L"x.pdf", 1, "x"});
    world.store.ActiveExplorer()->selection = {world.store.AddToInbox(mail)};
    addin->addin().config.glbFolder = {L"C:\\Picked"};
    world.ui.QueueBrowseResult(L"C:\\Picked");
    world.ui.QueueFolderMenuChoice(choice);
    world.faults.FailCall("Explorer.Activate", Error(5, L"Outlook", L"no focus"));
    world.Bar()->FindControl(kTagSave)->Click();
    EXPECT_FALSE(world.LogLinesWith(L"Error Source=DesVireo" + std::wstring(handler) +
                                    L"\\Outlook; Error Description=no focus").empty());
    EXPECT_TRUE(world.files.Get(L"C:\\Picked\\x.pdf"));
  }
}

}  // namespace
}  // namespace corvina
