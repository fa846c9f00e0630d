#pragma once
// What the virus-alert windows show and report: frmVirusAlerter (the rule list, the scans,
// the alert mails), the rule wizard and frmVirusReport. The virus core fills the views and
// handles the events; the windows only draw and forward.
#include <functional>
#include <string>
#include <vector>

#include "platform/rule_list_view.h"

namespace corvina {

// frmVirusAlerter's fixed texts ("&" marks the access key).
struct VirusAlerterLabels {
  std::wstring rules = L"Virus-alert rules:";
  std::wstring name_column = L"Name";
  std::wstring subject_column = L"Subject";
  std::wstring body_column = L"Body";
  std::wstring attachment_column = L"Attachment";
  std::wstring from_column = L"From";
  std::wstring origin_column = L"Sent by";
  std::wstring add = L"&New...";
  std::wstring edit = L"&Edit...";
  std::wstring remove = L"&Remove";
  std::wstring activate = L"Switch o&n";
  std::wstring deactivate = L"Switch o&ff";
  std::wstring scan_now = L"&Scan Inbox now";
  std::wstring scan_alerts = L"Scan for &alert mails";
  std::wstring send_alert = L"Se&nd alert...";
  std::wstring show_log = L"Show &log";
  std::wstring help = L"&Help";
  std::wstring apply = L"&Apply";
  std::wstring close = L"&Close";
  std::wstring preferences = L"Stored preferences (kept for later versions; the scans above do not read them):";
};

// One check box of the virus settings: its caption and state.
struct VirusSettingBox {
  std::wstring key;  // the setting's name
  std::wstring caption;
  bool checked = false;
};

struct VirusAlerterView {
  std::wstring caption;
  VirusAlerterLabels labels;
  RuleListView rules;
  std::vector<VirusSettingBox> settings;
  bool right_to_left = false;
};

// What frmVirusAlerter's controls do; the rows are 0-based positions in `rules.rows`.
struct VirusAlerterEvents {
  std::function<void(size_t row)> select;         // a click on a row
  std::function<void()> new_rule;                 // cmdAdd_Click, mnuNewRule_Click
  std::function<void()> edit_rule;                // mnuEditRule_Click, lsvRules_DblClick
  std::function<void()> remove_rule;
  std::function<void()> activate;                 // cmdActivate_Click, mnuCheck_Click
  std::function<void()> deactivate;               // cmdDeActivate_Click, mnuUnCheck_Click
  std::function<void(size_t row, bool checked)> item_check;  // lsvRules_ItemCheck
  std::function<void(int column)> column_click;   // lsvRules_ColumnClick
  std::function<void(size_t box, bool checked)> setting_click;
  std::function<void()> apply;
  std::function<void()> scan_now;
  std::function<void()> scan_alerts;
  std::function<void()> send_alert;
  std::function<void()> show_log;
  std::function<void()> help;
  std::function<void()> close;
};

// The rule wizard's fixed texts.
struct RuleWizardLabels {
  std::wstring name_step = L"Step 1 of 2: name the rule";
  std::wstring values_step = L"Step 2 of 2: what a dangerous mail looks like";
  std::wstring name = L"&Name:";
  std::wstring subject = L"&Subject:";
  std::wstring body = L"&Body:";
  std::wstring attachment = L"&Attachment name:";
  std::wstring from = L"Sender's &display name:";
  std::wstring active = L"Switch the rule &on";
  std::wstring back = L"< &Back";
  std::wstring next = L"&Next >";
  std::wstring finish = L"&Finish";
  std::wstring cancel = L"Cancel";
};

// The values the wizard edits.
struct RuleValues {
  std::wstring description;  // txtDescription
  std::wstring subject;
  std::wstring body;
  std::wstring attachment;
  std::wstring from;
  bool active = true;
};

struct RuleWizardView {
  std::wstring caption;
  RuleWizardLabels labels;
  RuleValues values;
  bool right_to_left = false;
};

// The wizard's checks: each answers while the wizard is open and may show a message box.
struct RuleWizardEvents {
  // Next on the name step: true lets the wizard go on to the values.
  std::function<bool(const std::wstring& description)> accept_name;
  // The sentence that says what the rule will match, for the values as they stand.
  std::function<std::wstring(const RuleValues& values)> describe;
  // Finish: true closes the wizard with these values.
  std::function<bool(const RuleValues& values)> accept_values;
};

// frmVirusReport's fixed texts.
struct VirusReportLabels {
  std::wstring log = L"Mails deleted by the scans (sent, received, sender, subject, field, action):";
  std::wstring origins = L"Rules taken from alert mails:";
  std::wstring clear = L"C&lear log";
  std::wstring close = L"&Close";
};

struct VirusReportView {
  std::wstring caption;
  VirusReportLabels labels;
  std::vector<std::wstring> lines;    // lstVirus: the log's lines, unchanged
  std::vector<std::wstring> origins;  // "rule name: sender" of each rule an alert mail brought
  bool right_to_left = false;
};

struct VirusReportEvents {
  std::function<void()> clear_log;  // cmdClearLog_Click
  std::function<void()> close;      // cmdClose_Click
};

}  // namespace corvina
