#include "virus/virus_alerter.h"

#include "base/text.h"
#include "rules/rule_editing.h"
#include "rules/rule_storage.h"
#include "settings/config_store.h"
#include "virus/alert_mail.h"
#include "virus/rule_wizard.h"
#include "virus/virus_report.h"
#include "virus/virus_scan.h"

namespace corvina {
namespace {

// The virus settings the window keeps as check boxes ("1" ticked). No scan reads them: they
// are stored for the user's choice and shown as such.
struct SettingBox {
  std::wstring Config::*member;
  const wchar_t* key;
  const wchar_t* caption;
};
const SettingBox kSettingBoxes[] = {
    {&Config::AllowAutoUpdateVirusList, L"AllowAutoUpdateVirusList",
     L"Take in rules from alert mails"},
    {&Config::PromtForIncomingVirusAutoUpdate, L"PromtForIncomingVirusAutoUpdate",
     L"Ask before taking in a rule from an alert mail"},
    {&Config::PromtForIncomingVirus, L"PromtForIncomingVirus",
     L"Ask before deleting an infected mail"},
    {&Config::AutoDeleteInfectedMessage, L"AutoDeleteInfectedMessage",
     L"Delete infected mails without asking"},
    {&Config::BeepForIncomingVirus, L"BeepForIncomingVirus", L"Beep when a mail is deleted"},
    {&Config::ScanForVirusAtStartup, L"ScanForVirusAtStartup", L"Scan the Inbox at start-up"},
    {&Config::ScanForVirusAlertAtStartup, L"ScanForVirusAlertAtStartup",
     L"Scan for alert mails at start-up"},
};

}  // namespace

VirusAlerter::VirusAlerter(AddIn& addin) : addin_(addin), events_(MakeEvents()) {}

VirusAlerterEvents VirusAlerter::MakeEvents() {
  // Each handler reaches the window through the add-in: closing ends this object.
  AddIn& addin = addin_;
  auto on = [&addin](const wchar_t* procedure, auto method) {
    return [&addin, procedure, method] {
      addin.Run(procedure, [&] {
        if (addin.virus.window) (addin.virus.window.get()->*method)();
      });
    };
  };
  VirusAlerterEvents e;
  e.select = [&addin](size_t row) {
    if (addin.virus.window) addin.virus.window->lsvRules_Click(row);
  };
  e.new_rule = on(L"cmdAdd_Click", &VirusAlerter::cmdAdd_Click);
  e.edit_rule = on(L"mnuEditRule_Click", &VirusAlerter::mnuEditRule_Click);
  e.remove_rule = on(L"cmdRemove_Click", &VirusAlerter::cmdRemove_Click);
  e.activate = on(L"cmdActivate_Click", &VirusAlerter::cmdActivate_Click);
  e.deactivate = on(L"cmdDeActivate_Click", &VirusAlerter::cmdDeActivate_Click);
  e.item_check = [&addin](size_t row, bool checked) {
    addin.Run(L"lsvRules_ItemCheck", [&] {
      if (addin.virus.window) addin.virus.window->lsvRules_ItemCheck(row, checked);
    });
  };
  e.column_click = [&addin](int column) {
    addin.Run(L"lsvRules_ColumnClick", [&] {
      if (addin.virus.window) addin.virus.window->lsvRules_ColumnClick(column);
    });
  };
  e.setting_click = [&addin](size_t box, bool checked) {
    addin.Run(L"chkAllowAutoUpdateVirusList_Click", [&] {
      if (addin.virus.window) addin.virus.window->chkSetting_Click(box, checked);
    });
  };
  e.apply = on(L"cmdApply_Click", &VirusAlerter::cmdApply_Click);
  e.scan_now = on(L"cmdScanInboxForVirusNow_Click", &VirusAlerter::cmdScanInboxForVirusNow_Click);
  e.scan_alerts =
      on(L"cmdScanInboxForVirusAlerts_Click", &VirusAlerter::cmdScanInboxForVirusAlerts_Click);
  e.send_alert = on(L"cmdSendAutoVirusAlert_Click", &VirusAlerter::cmdSendAutoVirusAlert_Click);
  e.show_log = on(L"cmdShowLog_Click", &VirusAlerter::cmdShowLog_Click);
  e.help = on(L"imgWebHelp_Click", &VirusAlerter::imgWebHelp_Click);
  e.close = [&addin] { addin.Run(L"Form_Unload", [&] { CloseVirusAlerter(addin); }); };
  return e;
}

void VirusAlerter::Draw() { addin_.services.ui.ShowVirusAlerter(view_, events_); }

void VirusAlerter::Tell(const std::wstring& text, int32_t style) {
  addin_.services.ui.MsgBox(text, style, kProductName);
}

void VirusAlerter::Form_Load() {
  addin_.Run(L"Form_Load", [&] {
    view_.caption = addin_.Text(TextId::kVirusAlerterCaption);
    view_.settings.clear();
    for (const SettingBox& box : kSettingBoxes)
      view_.settings.push_back({box.key, box.caption, addin_.config.*box.member == L"1"});
    RefillRuleList(addin_, view_.rules);
    Draw();
  });
}

void VirusAlerter::RefreshRules() {
  std::wstring selected;
  if (const RuleListRow* row = SelectedRow(view_.rules)) selected = row->text;
  RefillRuleList(addin_, view_.rules);
  for (RuleListRow& row : view_.rules.rows) {
    if (!selected.empty() && row.text == selected) {
      row.selected = true;
      break;
    }
  }
  Draw();
}

void VirusAlerter::lsvRules_Click(size_t row) {
  for (size_t i = 0; i < view_.rules.rows.size(); ++i) view_.rules.rows[i].selected = i == row;
  Draw();
}

Rule* VirusAlerter::SelectedRule() {
  const RuleListRow* row = SelectedRow(view_.rules);
  Rule* rule = row ? addin_.rules.glbRules.GetItemByDescription(row->text) : nullptr;
  if (!rule) Tell(addin_.Text(TextId::kVirusSelectRule), vbExclamation);
  return rule;
}

void VirusAlerter::SaveRules() {
  StoreRules(addin_);
  ConfigStore store = addin_.Store();
  SaveConfig(addin_.config, store);
}

void VirusAlerter::cmdAdd_Click() {
  RuleEditing& editing = addin_.rules.editing;
  editing.glbIsNewRule = true;
  CreateNewRuleItem(addin_, view_.rules, [&] {
    Rules& rules = addin_.rules.glbRules;
    const int32_t added = rules.Count();  // CreateNewRuleItem appended it
    // Finish applies to the selected row: the new rule's.
    for (RuleListRow& row : view_.rules.rows) row.selected = row.text == editing.glbCurrentRule.Description;
    if (RunRuleWizard(addin_)) {
      ApplyRuleToCurrentItem(addin_, view_.rules);
    } else {
      rules.Remove(added);
      RefillRuleList(addin_, view_.rules);
    }
  });
  editing.glbIsNewRule = false;
  SaveRules();
  Draw();
}

void VirusAlerter::mnuEditRule_Click() {
  Rule* rule = SelectedRule();
  if (!rule) return;
  RuleEditing& editing = addin_.rules.editing;
  editing.glbIsNewRule = false;
  editing.glbCurrentRule = *rule;
  if (!RunRuleWizard(addin_)) return;
  ApplyRuleToCurrentItem(addin_, view_.rules);
  SaveRules();
  Draw();
}

void VirusAlerter::cmdRemove_Click() {
  Rule* rule = SelectedRule();
  if (!rule) return;
  if (addin_.services.ui.MsgBox(addin_.Text(TextId::kVirusRemoveQuestion, {rule->Description}),
                                vbYesNo | vbQuestion | vbDefaultButton2, kProductName) != vbYes)
    return;
  RemoveRuleItem(addin_, view_.rules);
  SaveRules();
  Draw();
}

void VirusAlerter::SetActive(Rule& rule, bool active) {
  rule.Active = active;
  SaveRules();
  RefreshRules();
}

void VirusAlerter::cmdActivate_Click() {
  if (Rule* rule = SelectedRule()) SetActive(*rule, true);
}

void VirusAlerter::cmdDeActivate_Click() {
  if (Rule* rule = SelectedRule()) SetActive(*rule, false);
}

void VirusAlerter::lsvRules_ItemCheck(size_t row, bool checked) {
  if (row >= view_.rules.rows.size()) return;
  Rule* rule = addin_.rules.glbRules.GetItemByDescription(view_.rules.rows[row].text);
  if (rule) SetActive(*rule, checked);
}

void VirusAlerter::lsvRules_ColumnClick(int column) {
  RuleListView& list = view_.rules;
  list.sort_descending = list.sort_column == column && !list.sort_descending;
  list.sort_column = column;
  RefreshRules();
}

void VirusAlerter::chkSetting_Click(size_t box, bool checked) {
  if (box >= view_.settings.size() || box >= std::size(kSettingBoxes)) return;
  view_.settings[box].checked = checked;
  addin_.config.*kSettingBoxes[box].member = checked ? L"1" : L"0";
  Draw();
}

void VirusAlerter::cmdApply_Click() {
  for (size_t i = 0; i < view_.settings.size() && i < std::size(kSettingBoxes); ++i)
    addin_.config.*kSettingBoxes[i].member = view_.settings[i].checked ? L"1" : L"0";
  SaveRules();
}

void VirusAlerter::cmdScanInboxForVirusNow_Click() {
  const int32_t count = DeleteInfectedItems(addin_);
  if (count != 0) Tell(std::to_wstring(count) + addin_.Text(TextId::kVirusItemsDeleted), vbInformation);
}

void VirusAlerter::cmdScanInboxForVirusAlerts_Click() {
  const int32_t count = LoopForVirusAlerts(addin_);
  if (count != 0) Tell(std::to_wstring(count) + addin_.Text(TextId::kVirusAlertsTakenIn), vbInformation);
  // Each stored list is walked once more, in this order, as the alert read always has.
  const std::pair<std::wstring Config::*, int> lists[] = {
      {&Config::VirusSubject, kRuleSubject},         {&Config::VirusFrom, kRuleFrom},
      {&Config::VirusBody, kRuleBody},               {&Config::VirusAttachments, kRuleAttachment},
      {&Config::VirusDescription, kRuleDescription}, {&Config::VirusActive, kRuleActive}};
  for (const auto& [list, type] : lists) SplitString(addin_, addin_.config.*list, type);
  RefreshRules();
}

void VirusAlerter::cmdSendAutoVirusAlert_Click() {
  if (Rule* rule = SelectedRule()) SendVirusAlert(addin_, Rule(*rule));
}

void VirusAlerter::cmdShowLog_Click() {
  OpenVirusReport(addin_);
  addin_.services.ui.BringFormToFront(kVirusReportFormName);
}

void VirusAlerter::imgWebHelp_Click() { Tell(addin_.Text(TextId::kVirusWebHelp), vbInformation); }

VirusAlerter& OpenVirusAlerter(AddIn& addin) {
  if (addin.virus.window && addin.IsFormLoaded(kVirusAlerterFormName)) return *addin.virus.window;
  addin.virus.window = std::make_unique<VirusAlerter>(addin);
  addin.services.ui.LoadForm(kVirusAlerterFormName);
  addin.virus.window->Form_Load();
  return *addin.virus.window;
}

void CloseVirusAlerter(AddIn& addin) {
  if (!addin.virus.window) return;
  std::unique_ptr<VirusAlerter> closing = std::move(addin.virus.window);
  addin.services.ui.UnloadForm(kVirusAlerterFormName);
}

void RefreshVirusAlerter(AddIn& addin) {
  if (addin.virus.window) addin.virus.window->RefreshRules();
}

}  // namespace corvina
