// Connection, start-up complete and disconnection as Outlook drives them.
#include <gtest/gtest.h>

#include "base/text.h"
#include "corvina/version.h"
#include "host/control_table.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

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

// The order, faces, captions, tips and visibility of the first start's buttons are pinned line
// by line by the simulator's sample transcript; here what it does not show.
TEST(StartupTest, ToolbarButtonsAreIconAndCaptionButtons) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto bar = world.Bar();
  ASSERT_TRUE(bar);
  EXPECT_TRUE(bar->visible);
  EXPECT_EQ(bar->controls.size(), 11u);  // the combo box is never created, only hidden
  for (const auto& c : bar->controls) {
    EXPECT_EQ(c->style, 3) << ToUtf8(c->tag);
    EXPECT_EQ(c->type, 1) << ToUtf8(c->tag);
  }
  // The missing combo box is the one expected error of a first start.
  EXPECT_EQ(world.LogLinesWith(L"Error Source=DesVireoCreateAddInComboBox\\Vireo;").size(), 1u);
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
