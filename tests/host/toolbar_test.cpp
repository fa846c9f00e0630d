// Clicks, the busy faces and the combo box.
#include <gtest/gtest.h>

#include "base/text.h"
#include "corvina/version.h"
#include "host/command_bars.h"
#include "host/control_table.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

TEST(ToolbarTest, EveryButtonIsRoutedAndSaysWhatItDoes) {
  struct Case {
    const wchar_t* tag;
    const wchar_t* box;  // text of the box the click shows
  };
  const Case cases[] = {
      {kTagCoolMail, L"Not a mail item"},  // no mail window is open
      {kTagConfiguration, L"The properties dialog is not part of this build of Corvina.\r\nOpen the virus-alert window?"},
      {kTagPreview, L"The picture preview is not part of this build of Corvina."},
      {kTagSmartSender, L"The distribution-list menu is not part of this build of Corvina."},
      {kTagHebrew, L"The keyboard-layout translator is not part of this build of Corvina."},
      {kTagSearch, L"The attachment search is not part of this build of Corvina."},
      {kTagVoiceMail, L"Not a mail item"},
  };
  SimWorld world;
  auto addin = world.StartOutlook();
  for (const Case& c : cases) {
    const size_t shown = world.Boxes().size();
    world.Bar()->FindControl(c.tag)->Click();
    ASSERT_EQ(world.Boxes().size(), shown + 1) << ToUtf8(c.tag);
    EXPECT_EQ(world.Boxes().back(), c.box) << ToUtf8(c.tag);
  }
  EXPECT_EQ(world.ui.events().back().title, L"Corvina");
}

TEST(ToolbarTest, MailWindowCommandsNeedAMailItem) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto post = world.store.AddToInbox(sim::MakePost(L"post", FromCivil({2026, 11, 1, 0, 0, 0})));
  world.store.OpenInspector(post);
  world.Bar()->FindControl(kTagVoiceMail)->Click();
  EXPECT_EQ(world.Boxes().back(), L"Not a mail item");
  auto mail = world.store.AddToInbox(sim::MakeMail(L"mail", FromCivil({2026, 11, 1, 0, 0, 0})));
  world.store.OpenInspector(mail);
  world.Bar()->FindControl(kTagVoiceMail)->Click();
  EXPECT_EQ(world.Boxes().back(), L"The voice recorder is not part of this build of Corvina.");
  world.Bar()->FindControl(kTagCoolMail)->Click();
  EXPECT_EQ(world.Boxes().back(), L"The stationery picker is not part of this build of Corvina.");
}

TEST(ToolbarTest, AboutCountsItsUseAndNamesTheVersion) {
  SimWorld world;
  auto addin = world.StartOutlook();
  world.Bar()->FindControl(kTagAbout)->Click();
  world.Bar()->FindControl(kTagAbout)->Click();
  EXPECT_EQ(world.Boxes().back(), L"Corvina " + std::to_wstring(kVersionMajor) + L"." +
                                      std::to_wstring(kVersionMinor) + L"." +
                                      std::to_wstring(kVersionRevision) +
                                      L"\r\nAttachments, chat and virus alerts for Outlook.");
  EXPECT_EQ(addin->addin().config.Statistic9, L"2");
}

TEST(ToolbarTest, SaveFaceFlipsWhileBusyAndRestores) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto save = world.Bar()->FindControl(kTagSave);
  const std::pair<bool, int32_t> steps[] = {{true, 2649}, {true, 1975}, {true, 2649}, {false, 1975}};
  for (const auto& [flag, face] : steps) {
    ToggleSaveFaceID(addin->addin(), flag);
    EXPECT_EQ(save->face_id, face);
    EXPECT_TRUE(save->visible);
  }
  auto smart = world.Bar()->FindControl(kTagSmartSender);
  ToggleSmartSenderFaceID(addin->addin(), true);
  EXPECT_EQ(smart->face_id, 602);
  ToggleSmartSenderFaceID(addin->addin(), false);
  EXPECT_EQ(smart->face_id, 3203);
}

TEST(ToolbarTest, ExistingLanguageComboIsHiddenAndAppliesAChoice) {
  SimWorld world;
  {
    auto first = world.StartOutlook();
    auto combo = world.Bar()->AddControl(outlook::msoControlComboBox, false);
    combo->tag = kTagLanguage;
    first->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
  }
  auto addin = world.StartOutlook();
  auto combo = world.Bar()->FindControl(kTagLanguage);
  EXPECT_FALSE(combo->visible);
  combo->Change(L"Hebrew");
  EXPECT_TRUE(ContainsText(world.Boxes().back(), L"Your system may not support Add-ins Hebrew fonts,"));
  EXPECT_EQ(world.Setting(L"Configuration", L"Interfacelanguage"), L"Hebrew");
  EXPECT_TRUE(world.LogLinesWith(L"CreateAddInComboBox").empty());
}

TEST(ToolbarTest, ExplorerCloseStopsItsEvents) {
  SimWorld world;
  auto addin = world.StartOutlook();
  auto explorer = world.store.ActiveExplorer();
  explorer->deactivate.Raise();
  world.store.CloseExplorer(explorer);
  EXPECT_FALSE(addin->main_explorer());
  for (const auto& line : world.LogLines()) EXPECT_FALSE(ContainsText(line, L"Error Source=DesVireooMain"));
}

}  // namespace
}  // namespace corvina

namespace corvina {
namespace {

TEST(ToolbarTest, MailWindowBarCarriesItsCommandsOnce) {
  testing::SimWorld world;
  auto addin = world.StartOutlook();
  auto mail = world.store.AddToInbox(sim::MakeMail(L"m", FromCivil({2026, 11, 1, 0, 0, 0})));
  auto window = world.store.OpenInspector(mail);
  auto inspector = world.application->ActiveInspector();
  for (int round = 0; round < 2; ++round) {
    auto bar = CreateAddInCommandBarInspector(addin->addin(), *inspector);
    ASSERT_TRUE(bar);
    for (int index : InspectorCreationOrder())
      CreateAddInButtonInspector(addin->addin(), *inspector, index);
  }
  auto data = window->command_bars->Find(kInspectorBarName);
  ASSERT_TRUE(data);
  ASSERT_EQ(data->controls.size(), 3u);
  EXPECT_EQ(data->controls[0]->tag, kTagCoolMail);
  EXPECT_EQ(data->controls[1]->tag, kTagSave);
  EXPECT_EQ(data->controls[2]->tag, kTagVoiceMail);
}

}  // namespace
}  // namespace corvina
