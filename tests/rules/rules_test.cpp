// The rule list: its stored form both ways, the match, the name check and the editing
// procedures.
#include <gtest/gtest.h>

#include "base/text.h"
#include "rules/rule_editing.h"
#include "rules/rule_storage.h"
#include "rules/rules.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

std::vector<std::wstring> Names(const Rules& rules) {
  std::vector<std::wstring> names;
  for (const auto& rule : rules) names.push_back(rule->Description);
  return names;
}

TEST(RulesTest, StoredListsReadTheWayTheyAreWritten) {
  struct Case {
    const wchar_t* descriptions;
    std::vector<std::wstring> names;
  };
  const Case cases[] = {
      {L"", {}},
      {L"   ", {}},
      {L";A;B", {L"A", L"B"}},
      {L";;A;;B;;", {L"A", L"", L"B"}},
      {L" A ; B ", {L"A", L"B"}},
  };
  for (const Case& c : cases) {
    SimWorld world;
    Log log(world.files, world.clock);
    Rules rules(log);
    EXPECT_TRUE(rules.InitializeData(c.descriptions, kRuleDescription));
    EXPECT_EQ(Names(rules), c.names) << ToUtf8(c.descriptions);
  }
}

TEST(RulesTest, EachListIsLedBySemicolonsAndAnEmptyListIsEmpty) {
  SimWorld world;
  Log log(world.files, world.clock);
  Rules rules(log);
  for (int type = 0; type <= 7; ++type) EXPECT_EQ(rules.GetAllAsStringByType(type), L"");
  rules.Add(L" A ", true, L" s ", L"b", L"att", L"f");
  rules.Add(L"B", false, L"", L"", L"", L"");
  const std::pair<int, const wchar_t*> expected[] = {
      {kRuleDescription, L";A;B"}, {kRuleActive, L";True;False"}, {kRuleSubject, L";s;"},
      {kRuleBody, L";b;"},         {kRuleFrom, L";f;"},            {kRuleAttachment, L";att;"},
      {0, L""},                    {7, L""}};
  for (const auto& [type, text] : expected) EXPECT_EQ(rules.GetAllAsStringByType(type), text) << type;
}

TEST(RulesTest, ASemicolonInAValueShiftsTheLaterRulesAndTheSurplusIsLogged) {
  SimWorld world;
  world.Store(L"Configuration", L"VirusDescription", L";A;B");
  world.Store(L"Configuration", L"VirusActive", L";True;True");
  world.Store(L"Configuration", L"VirusBody", L";x;y;z");
  world.Store(L"Configuration", L"VirusFrom", L";fa;fb");
  world.Store(L"Configuration", L"VirusAttachments", L";aa;ab");
  auto addin = world.StartOutlook();
  const Rules& rules = addin->addin().rules.glbRules;
  ASSERT_EQ(Names(rules), (std::vector<std::wstring>{L"A", L"B"}));
  EXPECT_EQ((*rules.begin())->Body, L"x");
  EXPECT_EQ((*(rules.begin() + 1))->Body, L"y");
  // From and Attachment are loaded into their own fields, not each other's.
  EXPECT_EQ((*(rules.begin() + 1))->From, L"fb");
  EXPECT_EQ((*(rules.begin() + 1))->Attachment, L"ab");
  EXPECT_EQ(world.LogLinesWith(L"InitializeData").size(), 1u);
}

TEST(RulesTest, TheLastFilledArgumentAloneDecides) {
  SimWorld world;
  Log log(world.files, world.clock);
  Rules rules(log);
  rules.Add(L"hello", true, L"Hello", L"", L"", L"");
  rules.Add(L"sender", true, L"Other", L"", L"", L"alerts-sender");
  rules.Add(L"off", false, L"Off", L"", L"", L"");
  rules.Add(L"body", true, L"", L"Body text", L"x.exe", L"");
  struct Case {
    const wchar_t *subject, *body, *attachment, *from;
    bool match;
  };
  const Case cases[] = {
      {L"Hello", L"", L"", L"", true},
      {L"hello", L"", L"", L"", false},            // letter case counts
      {L"Hell", L"", L"", L"", false},             // no substring
      {L"Hello", L"", L"", L"alerts-sender", true},
      {L"Hello", L"", L"", L"nobody", false},      // the subject's match is replaced
      {L"Nothing", L"", L"", L"alerts-sender", true},
      {L"Off", L"", L"", L"", false},              // an inactive rule never matches
      {L"", L"Body text", L"", L"", true},
      {L"", L"Body text", L"y.exe", L"", false},
      {L"", L"", L"x.exe", L"", true},
      {L"", L"", L"", L"", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(rules.IsMatchRuleAndActive(c.subject, c.body, c.attachment, c.from), c.match)
        << ToUtf8(c.subject) << "|" << ToUtf8(c.body) << "|" << ToUtf8(c.attachment) << "|"
        << ToUtf8(c.from);
  }
  // A change through Item is seen by the next match.
  rules.Item(3).Active = true;
  EXPECT_TRUE(rules.IsMatchRuleAndActive(L"Off", L"", L"", L""));
  rules.Remove(1);
  EXPECT_FALSE(rules.IsMatchRuleAndActive(L"Hello", L"", L"", L""));
  EXPECT_TRUE(rules.AnyActiveValue(kRuleFrom));
  EXPECT_FALSE(rules.AnyActiveValue(kRuleDescription));
}

TEST(RulesTest, AFieldCountsAsHeldOnlyByAnActiveRuleWithAValueThere) {
  const int fields[] = {kRuleSubject, kRuleBody, kRuleAttachment, kRuleFrom};
  for (const int held : fields) {
    SimWorld world;
    Log log(world.files, world.clock);
    Rules rules(log);
    auto value = [&](int field) { return field == held ? L"v" : L""; };
    rules.Add(L"on", true, value(kRuleSubject), value(kRuleBody), value(kRuleAttachment),
              value(kRuleFrom));
    rules.Add(L"off", false, L"s", L"b", L"a", L"f");
    for (const int field : fields) EXPECT_EQ(rules.AnyActiveValue(field), field == held) << held << field;
  }
}

TEST(RulesTest, NameCheckCountsDuplicatesAsTheWizardNeedsThem) {
  struct Case {
    const wchar_t* name;
    int copies;  // rules named "X"
    int32_t mode;
    bool is_new;
    const wchar_t* current;      // glbCurrentRule.Description
    const wchar_t* wizard_name;  // glbRuleWizardName
    bool taken;
  };
  const Case cases[] = {
      {L"new rule, two others", 2, 1, true, L"N", L"X", false},
      {L"new rule, three others", 3, 1, true, L"N", L"X", true},
      {L"edit keeps its own name", 1, 1, false, L"X", L"X", false},
      {L"edit onto another's name", 1, 1, false, L"Y", L"X", true},
      {L"mode 2, any copy", 1, 2, true, L"N", L"X", true},
      {L"no copy", 0, 2, false, L"Y", L"X", false},
  };
  for (const Case& c : cases) {
    SimWorld world;
    Log log(world.files, world.clock);
    Rules rules(log);
    rules.Add(L"Y", true, L"", L"", L"", L"");
    for (int i = 0; i < c.copies; ++i) rules.Add(L"X", true, L"", L"", L"", L"");
    RuleEditing editing;
    editing.glbIsNewRule = c.is_new;
    editing.glbCurrentRule.Description = c.current;
    editing.glbRuleWizardName = c.wizard_name;
    EXPECT_EQ(rules.IsDescriptionAlreadyExists(L"X", c.mode, editing), c.taken) << ToUtf8(c.name);
  }
}

TEST(RulesTest, KeysFindRulesWithoutRegardToCaseAndRefuseADuplicate) {
  SimWorld world;
  Log log(world.files, world.clock);
  Rules rules(log);
  rules.Add(L"A", true, L"", L"", L"", L"", L"KeyA");
  rules.Add(L"B", true, L"", L"", L"", L"");
  EXPECT_EQ(rules.Item(L"keya").Description, L"A");
  EXPECT_THROW(rules.Add(L"C", true, L"", L"", L"", L"", L"KEYA"), Error);
  EXPECT_EQ(rules.Count(), 2);
  rules.Remove(L"KeyA");
  EXPECT_EQ(Names(rules), std::vector<std::wstring>{L"B"});
  EXPECT_THROW(rules.Item(L"KeyA"), Error);
  EXPECT_THROW(rules.Item(2), Error);
}

TEST(RulesTest, NewRulesAreNamedByTheSecondAndTheSameSecondGivesTheSameName) {
  EXPECT_EQ(NewRuleName(FromCivil({2007, 3, 5, 14, 7, 9})), L"New Rule 05/03/2007 14:07:09");
  SimWorld world;
  auto addin = world.StartOutlook();
  AddIn& a = addin->addin();
  RuleListView list;
  int wizards = 0;
  CreateNewRuleItem(a, list, [&] { ++wizards; });
  CreateNewRuleItem(a, list, [&] { ++wizards; });
  EXPECT_EQ(wizards, 2);
  EXPECT_EQ(Names(a.rules.glbRules), (std::vector<std::wstring>{L"New Rule 22/11/2026 09:30:00",
                                                                L"New Rule 22/11/2026 09:30:00"}));
  EXPECT_TRUE(a.rules.editing.glbCurrentRule.Active);
  EXPECT_EQ(list.rows.size(), 2u);
  // Until the wizard fills it, a new rule holds nothing and is switched off.
  const Rule& made = a.rules.glbRules.Item(2);
  EXPECT_EQ(made.Subject + made.Body + made.Attachment + made.From, L"");
  EXPECT_FALSE(made.Active);
}

TEST(RulesTest, EditingNeedsASelectedRowAndChangesOnlyThatRule) {
  SimWorld world;
  auto addin = world.StartOutlook();
  AddIn& a = addin->addin();
  a.rules.glbRules.Add(L"A", true, L"s", L"", L"", L"");
  a.rules.glbRules.Add(L"B", false, L"t", L"", L"", L"");
  RuleListView list;
  RefillRuleList(a, list);
  a.rules.editing.glbCurrentRule = Rule{L"B2", L"from", L"", L"", L"subj", true, L""};
  ApplyRuleToCurrentItem(a, list);
  EXPECT_EQ(world.Boxes().back(), L"lsvRules.SelectedItem <> 1");
  EXPECT_EQ(Names(a.rules.glbRules), (std::vector<std::wstring>{L"A", L"B"}));
  list.rows[1].selected = true;
  ApplyRuleToCurrentItem(a, list);
  const Rule& b = a.rules.glbRules.Item(2);
  EXPECT_EQ(b.Description, L"B2");
  EXPECT_EQ(b.Subject, L"subj");
  EXPECT_EQ(b.From, L"from");
  EXPECT_TRUE(b.Active);
  ASSERT_EQ(list.rows.size(), 2u);
  EXPECT_EQ(list.rows[1].icon_key, L"KeyRuleOn");
  EXPECT_TRUE(list.rows[1].selected);
  RemoveRuleItem(a, list);
  EXPECT_EQ(Names(a.rules.glbRules), std::vector<std::wstring>{L"A"});
}

TEST(RulesTest, WhoSentARuleSurvivesTheStoredLists) {
  SimWorld world;
  Log log(world.files, world.clock);
  Rules rules(log);
  rules.Add(L"A", true, L"", L"", L"", L"").Origin = L"Anna\tSmith";
  rules.Add(L"Mine", true, L"", L"", L"", L"");
  rules.Add(L"A", true, L"", L"", L"", L"").Origin = L"Ben";
  const std::wstring text = RuleOriginsText(rules);
  Rules loaded(log);
  for (const wchar_t* name : {L"A", L"Mine", L"A"}) loaded.Add(name, true, L"", L"", L"", L"");
  ApplyRuleOrigins(loaded, text + L"\tGone\tCleo\tA\tDave");
  EXPECT_EQ(loaded.Item(1).Origin, L"Anna Smith");
  EXPECT_EQ(loaded.Item(2).Origin, L"");
  EXPECT_EQ(loaded.Item(3).Origin, L"Ben");  // a third sender of "A" finds no rule left
}

}  // namespace
}  // namespace corvina
