// Connection, start-up complete and disconnection as Outlook drives them.
#include <gtest/gtest.h>

#include "base/text.h"
#include "corvina/version.h"
#include "host/control_table.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

std::vector<std::wstring> Tags(const sim::SimCommandBarData& bar) {
  std::vector<std::wstring> tags;
  for (const auto& c : bar.controls) tags.push_back(c->tag);
  return tags;
}

const sim::SimControlData* Control(const sim::SimCommandBarData& bar, const std::wstring& tag) {
  for (const auto& c : bar.controls)
    if (c->tag == tag) return c.get();
  return nullptr;
}

TEST(StartupTest, WithoutAMainWindowTheAddInStaysInert) {
  SimWorld world;
  world.store.CloseExplorer(world.store.ActiveExplorer());
  auto addin = world.StartOutlook();
  addin->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  EXPECT_TRUE(addin->addin().LoadedIndirectly);
  EXPECT_TRUE(world.ui.events().empty());
  EXPECT_EQ(world.settings.table().size(), 0u);
  EXPECT_FALSE(world.files.FileExists(std::wstring(testing::kAddinFolder) + L"\\Vireo.log"));
  const uint64_t calls = world.faults.TotalCalls();
  world.store.new_mail().Raise();  // no handler was ever connected
  EXPECT_EQ(world.faults.TotalCalls(), calls);
}

TEST(StartupTest, FirstStartShowsEveryProgressMessageInOrder) {
  SimWorld world;
  world.Store(L"Configuration", L"ExtName ", L"pdf");
  world.Store(L"Configuration", L"ExtChecked ", L"1");
  world.Store(L"Configuration", L"HideDistListOnServer", L"0");
  auto addin = world.StartOutlook();
  const std::vector<std::wstring> expected = {
      L"Applying Version ...",
      L"Initializing Application ...",
      L"Applying Configuration Settings \u2026",
      L"Applying V Settings \u2026",
      L"Applying Tray Settings \u2026",
      L"Applying Chat User List \u2026",
      L"Verifying Chat Folder Structure \u2026",
      L"Continue Loading \u2026",
      L"Applying Language Settings \u2026",
      L"Creating Corvina Toolbar ...",
      L"Creating Corvina Toolbar Buttons ...",
      L"Applying Local Distribution Lists ...",
      L"Applying Public Distribution Lists ...",
      L"Applying Extension List ...",
      L"Applying Auto Copy File Types ...",
      L"Finishing Loading Process ...",
      L"Loading Completed Successfully.",
      L"Applying New Chat Messages ...",
  };
  EXPECT_EQ(world.ProgressTexts(), expected);
  EXPECT_TRUE(world.ui.LoadedForms().empty());  // frmInit is gone after start-up
  EXPECT_EQ(world.Setting(L"Configuration", L"IsFirstTime"), L"1");
  EXPECT_TRUE(world.files.DirectoryExists(std::wstring(testing::kAddinFolder) + L"\\Chat\\Images"));
  EXPECT_EQ(addin->addin().saving.extension_list.names.size(), 2u);  // row 0 stays empty
}

TEST(StartupTest, OptionalStepsAreSkippedWhenTheirSettingsAreEmpty) {
  SimWorld world;
  world.Store(L"Chat", L"ChatBlockAll", L"1");
  world.StartOutlook();
  for (const auto& text : world.ProgressTexts()) {
    EXPECT_NE(text, L"Applying Extension List ...");
    EXPECT_NE(text, L"Applying Auto Copy File Types ...");
    EXPECT_NE(text, L"Applying Public Distribution Lists ...");
    EXPECT_NE(text, L"Applying New Chat Messages ...");
  }
}

TEST(StartupTest, ToolbarIsBuiltInOrderWithFacesStylesAndTexts) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto bar = world.Bar();
  ASSERT_TRUE(bar);
  EXPECT_TRUE(bar->visible);
  // The combo box is never created: only an existing one would be hidden.
  const std::vector<std::wstring> order = {
      L"Vireo_CoolMail...", L"Vireo_Save...",       L"Vireo_Configuration",
      L"Vireo_Preview",     L"Vireo_Smart sender...", L"Vireo_2 Hebrew",
      L"Vireo_Virus Alert", L"Vireo_About",         L"Vireo_Chat",
      L"Vireo_SearchAttachments", L"Vireo_VoiceMail"};
  EXPECT_EQ(Tags(*bar), order);
  struct Expect {
    const wchar_t* tag;
    int32_t face;
    bool visible;
    const wchar_t* caption;
    const wchar_t* tooltip;
  };
  // First run: the reset list decides, Hebrew and Virus Alert keep their new-button state.
  // The texts are what the user reads on the toolbar (the About button shows its icon only).
  const Expect expected[] = {
      {kTagCoolMail, 59, true, L"Cool Mail", L"Choose a stationery for this mail"},
      {kTagSave, 1975, true, L"Save", L"Save the attachments of the selected mails"},
      {kTagConfiguration, 222, true, L"Configuration", L"Corvina settings"},
      {kTagPreview, 1362, true, L"Preview", L"Preview the pictures attached to the selected mails"},
      {kTagSmartSender, 3203, false, L"Smart Sender", L"Send to a distribution list"},
      {kTagHebrew, 3540, true, L"Hebrew", L"Translate text typed with the wrong keyboard layout"},
      {kTagVirusAlert, 719, true, L"Virus Alert", L"Virus-alert patterns and scans"},
      {kTagAbout, 49, true, L"", L"About Corvina"},
      {kTagChat, 3735, false, L"Chat", L"Chat with other Corvina users"},
      {kTagSearch, 1744, false, L"Search", L"Search the mail folders for attachments"},
      {kTagVoiceMail, 27, false, L"Voice Mail", L"Record a voice message for this mail"}};
  for (const Expect& e : expected) {
    const auto* c = Control(*bar, e.tag);
    ASSERT_TRUE(c) << ToUtf8(e.tag);
    EXPECT_EQ(c->face_id, e.face) << ToUtf8(e.tag);
    EXPECT_EQ(c->visible, e.visible) << ToUtf8(e.tag);
    EXPECT_EQ(c->style, 3) << ToUtf8(e.tag);
    EXPECT_EQ(c->type, 1) << ToUtf8(e.tag);
    EXPECT_EQ(c->caption, e.caption) << ToUtf8(e.tag);
    EXPECT_EQ(c->tooltip_text, e.tooltip) << ToUtf8(e.tag);
  }
  // The missing combo box is the one expected error of a first start.
  bool combo_logged = false;
  for (const auto& line : world.LogLines())
    combo_logged |= ContainsText(line, L"Error Source=DesVireoCreateAddInComboBox\\Vireo;");
  EXPECT_TRUE(combo_logged);
}

TEST(StartupTest, HideAllTextLeavesEveryButtonWithoutCaption) {
  SimWorld world;
  world.Store(L"Configuration", L"HideAllText", L"1");
  world.StartOutlook();
  for (const auto& c : world.Bar()->controls) EXPECT_TRUE(c->caption.empty()) << ToUtf8(c->tag);
}

TEST(StartupTest, ReconnectingReusesTheBarHidesHebrewAndVirusAlert) {
  SimWorld world;
  {
    auto first = world.StartOutlook();
    world.Bar()->FindControl(kTagChat)->visible = true;  // the user showed Chat
    first->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  }
  ASSERT_TRUE(world.Bar());
  const size_t count = world.Bar()->controls.size();
  auto second = world.StartOutlook();
  auto bar = world.Bar();
  EXPECT_EQ(bar->controls.size(), count);
  EXPECT_FALSE(bar->FindControl(kTagHebrew)->visible);
  EXPECT_FALSE(bar->FindControl(kTagVirusAlert)->visible);
  EXPECT_TRUE(bar->FindControl(kTagChat)->visible);  // same version: no reset
  EXPECT_FALSE(second->button(5));                   // the hidden ones are not held
  EXPECT_TRUE(second->button(1));
}

TEST(StartupTest, NewVersionResetsTheButtons) {
  SimWorld world;
  {
    auto first = world.StartOutlook();
    world.Bar()->FindControl(kTagChat)->visible = true;
    first->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  }
  EXPECT_EQ(world.Setting(L"Configuration", L"VersionMajor"), std::to_wstring(kVersionMajor));
  world.Store(L"Configuration", L"VersionRevision", L"999");
  auto second = world.StartOutlook();
  EXPECT_FALSE(world.Bar()->FindControl(kTagChat)->visible);
  EXPECT_EQ(world.Setting(L"Configuration", L"VersionRevision"), std::to_wstring(kVersionRevision));
}

TEST(StartupTest, ToolbarIsRemovedOnlyWhenTheUserRemovesTheAddIn) {
  for (int32_t mode : {ext_dm_HostShutdown, ext_dm_UserClosed}) {
    SimWorld world;
    auto addin = world.StartOutlook();
    addin->IDTExtensibility2_OnDisconnection(mode);
    EXPECT_EQ(world.Bar() != nullptr, mode == ext_dm_HostShutdown);
    auto lines = world.LogLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(ContainsText(lines.back(), L"Corvina was removed successfully at 11/22/2026"));
    EXPECT_FALSE(addin->main_explorer());
    EXPECT_FALSE(addin->addin().oApplication);
  }
}

TEST(StartupTest, DisconnectionClearsTheTempFoldersAndUnloadsForms) {
  SimWorld world;
  auto addin = world.StartOutlook();
  const std::wstring temp = std::wstring(testing::kAddinFolder) + L"\\Temp";
  world.files.Put(temp + L"\\a.txt", "a");
  world.files.Put(temp + L"\\ClipBoard\\b.txt", "b");
  world.ui.LoadForm(L"frmSaving");
  world.ui.LoadForm(L"frmSoundRec");
  addin->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  EXPECT_FALSE(world.files.FileExists(temp + L"\\a.txt"));
  EXPECT_FALSE(world.files.FileExists(temp + L"\\ClipBoard\\b.txt"));
  EXPECT_TRUE(world.files.DirectoryExists(temp + L"\\ClipBoard"));
  // Only the forms of the fixed list are unloaded.
  EXPECT_EQ(world.ui.LoadedForms(), std::vector<std::wstring>{L"frmSoundRec"});
}

TEST(StartupTest, SecondStartLogHoldsNothingOfTheFirst) {
  SimWorld world;
  {
    auto first = world.StartOutlook();
    first->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  }
  world.clock.Advance(3600);
  auto second = world.StartOutlook();
  for (const auto& line : world.LogLines())
    EXPECT_TRUE(ContainsText(line, L"10:30:00 AM")) << ToUtf8(line);
}

TEST(StartupTest, ConnectingAfterOutlookStartedCompletesStartupItself) {
  SimWorld world;
  auto addin = world.NewAddIn();
  addin->IDTExtensibility2_OnConnection(world.application, ext_cm_AfterStartup);
  EXPECT_TRUE(addin->main_explorer());
  EXPECT_TRUE(world.ui.LoadedForms().empty());
}

}  // namespace
}  // namespace corvina
