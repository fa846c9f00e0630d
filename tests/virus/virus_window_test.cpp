// frmVirusAlerter's commands and the rule wizard, as a user drives them.
#include <gtest/gtest.h>

#include "base/text.h"
#include "host/control_table.h"
#include "support/sim_world.h"
#include "virus/rule_wizard.h"
#include "virus/virus_alerter.h"

namespace corvina {
namespace {

using testing::SimWorld;

// Plays the wizard as a user: types the name, then the values; `sentences` gets what the
// wizard said the rule would match.
sim::ScriptedUserInterface::WizardPlay Type(RuleValues values,
                                            std::vector<std::wstring>* sentences = nullptr) {
  return [values, sentences](RuleWizardView& view, const RuleWizardEvents& events) {
    if (!events.accept_name(values.description)) return false;
    if (sentences) sentences->push_back(events.describe(values));
    if (!events.accept_values(values)) return false;
    view.values = values;
    return true;
  };
}

std::vector<std::wstring> RowTexts(const SimWorld& world) {
  std::vector<std::wstring> texts;
  for (const RuleListRow& row : world.ui.virus_view().rules.rows) texts.push_back(row.text);
  return texts;
}

class VirusWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    addin_ = world.StartOutlook();
    world.Bar()->FindControl(kTagVirusAlert)->Click();
  }
  AddIn& addin() { return addin_->addin(); }
  const VirusAlerterEvents& events() { return world.ui.virus_events(); }
  void Select(size_t row) { events().select(row); }

  SimWorld world;
  std::unique_ptr<DesVireo> addin_;
};

TEST_F(VirusWindowTest, ANewRuleComesThroughTheWizardAndCancelTakesItBack) {
  ASSERT_TRUE(addin().IsFormLoaded(kVirusAlerterFormName));
  std::vector<std::wstring> sentences;
  world.ui.QueueRuleWizard(Type({L" Worm ", L"Hello", L"", L"", L"Mallory", true}, &sentences));
  events().new_rule();
  EXPECT_EQ(RowTexts(world), std::vector<std::wstring>{L"Worm"});
  const Rule& worm = addin().rules.glbRules.Item(1);
  EXPECT_EQ(worm.Subject, L"Hello");
  EXPECT_EQ(worm.From, L"Mallory");
  EXPECT_TRUE(worm.Active);
  EXPECT_FALSE(addin().rules.editing.glbIsNewRule);
  ASSERT_EQ(sentences.size(), 1u);
  EXPECT_EQ(sentences[0],
            L"This rule matches a new mail when its sender's display name is exactly \"Mallory\", "
            L"or its subject is exactly \"Hello\". Each filled value is compared on its own, "
            L"letter case included: one equal value is enough, the values are not combined. A "
            L"matching mail is moved to Deleted Items when you scan.");
  // Stored at once.
  EXPECT_EQ(world.Setting(L"Configuration", L"VirusDescription"), L";Worm");
  EXPECT_EQ(world.Setting(L"Configuration", L"VirusFrom"), L";Mallory");
  // Cancelled, and refused values: the new rule is taken back either way.
  events().new_rule();
  world.ui.QueueRuleWizard(Type({L"Bad", L"a;b", L"", L"", L"", true}));
  events().new_rule();
  EXPECT_EQ(world.Boxes().back(), L"A rule's name and values can not contain \";\".");
  EXPECT_EQ(RowTexts(world), std::vector<std::wstring>{L"Worm"});
  EXPECT_EQ(addin().rules.glbRules.Count(), 1);
}

TEST_F(VirusWindowTest, TheWizardRefusesAnEmptyOrTakenName) {
  world.ui.QueueRuleWizard(Type({L"A", L"x", L"", L"", L"", true}));
  events().new_rule();
  world.ui.QueueRuleWizard(Type({L"B", L"y", L"", L"", L"", false}));
  events().new_rule();
  struct Case {
    const wchar_t* name;
    const wchar_t* box;
  };
  const Case cases[] = {
      {L"  ", L"Please enter a name for the rule."},
      {L"A", L"A rule named \"A\" already exists. Please choose another name."},
  };
  Select(1);  // editing B
  for (const Case& c : cases) {
    world.ui.QueueRuleWizard(Type({c.name, L"y", L"", L"", L"", false}));
    events().edit_rule();
    EXPECT_EQ(world.Boxes().back(), c.box) << ToUtf8(c.name);
  }
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"A", L"B"}));
  // Keeping its own name is no clash.
  world.ui.QueueRuleWizard(Type({L"B", L"z", L"", L"", L"", true}));
  events().edit_rule();
  EXPECT_EQ(addin().rules.glbRules.Item(2).Subject, L"z");
  EXPECT_TRUE(addin().rules.glbRules.Item(2).Active);
}

TEST_F(VirusWindowTest, RulesAreSwitchedSortedAndRemovedFromTheList) {
  for (const wchar_t* name : {L"b", L"C", L"a"}) {
    world.ui.QueueRuleWizard(Type({name, name, L"", L"", L"", false}));
    events().new_rule();
  }
  Select(99);  // a click beside the rows selects nothing
  events().activate();
  ASSERT_FALSE(world.Boxes().empty());
  EXPECT_EQ(world.Boxes().back(), L"Please select a rule first.");
  Select(0);
  events().activate();
  EXPECT_EQ(world.ui.virus_view().rules.rows[0].icon_key, L"KeyRuleOn");
  EXPECT_TRUE(world.ui.virus_view().rules.rows[0].checked);
  Select(1);
  events().deactivate();  // the list is filled again; the selection stays on its rule
  EXPECT_FALSE(world.ui.virus_view().rules.rows[0].selected);
  EXPECT_TRUE(world.ui.virus_view().rules.rows[1].selected);
  Select(0);
  events().item_check(2, true);
  EXPECT_EQ(world.Setting(L"Configuration", L"VirusActive"), L";True;False;True");
  events().deactivate();
  EXPECT_EQ(world.Setting(L"Configuration", L"VirusActive"), L";False;False;True");
  events().column_click(0);
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"a", L"b", L"C"}));
  events().column_click(0);
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"C", L"b", L"a"}));
  // Equal values keep the rules' own order, in either direction (every Body is empty).
  events().column_click(2);
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"b", L"C", L"a"}));
  events().column_click(2);
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"b", L"C", L"a"}));
  events().column_click(0);
  events().column_click(0);
  Select(1);
  world.ui.QueueMsgBoxAnswer(vbNo);
  events().remove_rule();
  EXPECT_EQ(addin().rules.glbRules.Count(), 3);
  world.ui.QueueMsgBoxAnswer(vbYes);
  events().remove_rule();
  EXPECT_EQ(RowTexts(world), (std::vector<std::wstring>{L"C", L"a"}));
  EXPECT_EQ(world.Setting(L"Configuration", L"VirusDescription"), L";C;a");
}

TEST_F(VirusWindowTest, CheckBoxesAreStoredPreferencesWrittenByApply) {
  const auto& boxes = world.ui.virus_view().settings;
  const std::pair<const wchar_t*, const wchar_t*> expected[] = {
      {L"AllowAutoUpdateVirusList", L"Take in rules from alert mails"},
      {L"PromtForIncomingVirusAutoUpdate", L"Ask before taking in a rule from an alert mail"},
      {L"PromtForIncomingVirus", L"Ask before deleting an infected mail"},
      {L"AutoDeleteInfectedMessage", L"Delete infected mails without asking"},
      {L"BeepForIncomingVirus", L"Beep when a mail is deleted"},
      {L"ScanForVirusAtStartup", L"Scan the Inbox at start-up"},
      {L"ScanForVirusAlertAtStartup", L"Scan for alert mails at start-up"}};
  ASSERT_EQ(boxes.size(), std::size(expected));
  for (size_t i = 0; i < boxes.size(); ++i) {
    EXPECT_EQ(boxes[i].key, expected[i].first);
    EXPECT_EQ(boxes[i].caption, expected[i].second);
  }
  EXPECT_TRUE(boxes[0].checked);  // "1" by default
  EXPECT_FALSE(boxes[3].checked);  // "" by default
  events().setting_click(0, false);
  events().setting_click(6, true);
  EXPECT_FALSE(boxes[0].checked);  // drawn again at once
  EXPECT_TRUE(boxes[6].checked);
  EXPECT_FALSE(world.HasSetting(L"Configuration", L"AllowAutoUpdateVirusList"));
  events().apply();
  EXPECT_EQ(world.Setting(L"Configuration", L"AllowAutoUpdateVirusList"), L"0");
  EXPECT_EQ(world.Setting(L"Configuration", L"ScanForVirusAlertAtStartup"), L"1");
}

TEST_F(VirusWindowTest, ScansReportTheirCountsAndClosingUnloads) {
  world.ui.QueueRuleWizard(Type({L"W", L"", L"", L"", L"Mallory", true}));
  events().new_rule();
  for (int i = 0; i < 2; ++i) {
    sim::SimItemData mail = sim::MakeMail(L"hi", FromCivil({2026, 11, 22, 10, 0, 0}));
    mail.sender_name = L"Mallory";
    world.store.AddToInbox(std::move(mail));
  }
  const size_t boxes = world.Boxes().size();
  events().scan_alerts();  // none: no box
  EXPECT_EQ(world.Boxes().size(), boxes);
  events().scan_now();
  EXPECT_EQ(world.Boxes().back(), L"2 mail(s) matching an active rule were moved to Deleted Items.");
  events().show_log();
  EXPECT_EQ(world.ui.report_view().lines.size(), 2u);
  auto close = events().close;
  close();
  EXPECT_FALSE(addin().IsFormLoaded(kVirusAlerterFormName));
  EXPECT_EQ(addin().virus.window, nullptr);
}

TEST(VirusWindowStartsTest, TheWindowStaysReachableWhenTheSecondStartHidesItsButton) {
  SimWorld world;
  {
    auto first = world.StartOutlook();
    EXPECT_TRUE(world.Bar()->FindControl(kTagVirusAlert)->visible);
    first->IDTExtensibility2_OnDisconnection(0);
  }
  auto second = world.StartOutlook();
  EXPECT_FALSE(world.Bar()->FindControl(kTagVirusAlert)->visible);
  world.ui.QueueMsgBoxAnswer(vbYes);
  world.Bar()->FindControl(kTagConfiguration)->Click();
  EXPECT_TRUE(second->addin().IsFormLoaded(kVirusAlerterFormName));
}

}  // namespace
}  // namespace corvina
