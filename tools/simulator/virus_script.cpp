#include "simulator/virus_script.h"

#include <vector>

#include "base/text.h"
#include "simulator/script.h"
#include "virus/virus_alerter.h"
#include "virus/virus_report.h"

namespace corvina::simulator {
namespace {

using SayFn = std::function<void(const std::wstring&)>;

// `name=value` words set the wizard's fields; "off" leaves the rule switched off.
RuleValues Edited(RuleValues values, const std::vector<std::wstring>& words, size_t from) {
  for (size_t i = from; i < words.size(); ++i) {
    const std::wstring& word = words[i];
    const size_t equals = word.find(L'=');
    if (equals == std::wstring::npos) {
      if (EqualsIgnoreCase(word, L"off")) values.active = false;
      if (EqualsIgnoreCase(word, L"on")) values.active = true;
      continue;
    }
    const std::wstring key = LCase(word.substr(0, equals));
    const std::wstring value = word.substr(equals + 1);
    if (key == L"name") values.description = value;
    if (key == L"subject") values.subject = value;
    if (key == L"body") values.body = value;
    if (key == L"attachment") values.attachment = value;
    if (key == L"from") values.from = value;
  }
  return values;
}

// Plays the wizard as the user would: the name step, then the values; the sentence the wizard
// shows is told.
sim::ScriptedUserInterface::WizardPlay Play(RuleValues values, SayFn say) {
  return [values, say](RuleWizardView& view, const RuleWizardEvents& events) {
    if (!events.accept_name(values.description)) return false;
    say(L"  [wizard says] " + events.describe(values));
    if (!events.accept_values(values)) return false;
    view.values = values;
    return true;
  };
}

void PrintRules(const VirusAlerterView& view, const SayFn& say) {
  if (view.rules.rows.empty()) say(L"  [rules] (none)");
  if (view.rules.sort_column >= 0) {
    say(L"  [rules] sorted by column " + std::to_wstring(view.rules.sort_column) +
        (view.rules.sort_descending ? L", descending" : L", ascending"));
  }
  int n = 0;
  for (const RuleListRow& row : view.rules.rows) {
    std::wstring line = L"  [rules] " + std::to_wstring(++n) + L". " + row.text +
                        (row.checked ? L" (on)" : L" (off)");
    const std::pair<const wchar_t*, const std::wstring*> fields[] = {
        {L"subject", &row.subject}, {L"body", &row.body}, {L"attachment", &row.attachment},
        {L"from", &row.from}, {L"sent by", &row.origin}};
    for (const auto& [name, value] : fields)
      if (!value->empty()) line += std::wstring(L", ") + name + L" \"" + *value + L"\"";
    if (row.selected) line += L" <selected>";
    say(line);
  }
}

}  // namespace

bool PerformVirus(AddIn& addin, sim::ScriptedUserInterface& ui, sim::SimStore& store,
                  const std::wstring& command, const SayFn& say) {
  const std::vector<std::wstring> words = ScriptWords(command);
  if (words.empty()) return false;
  const std::wstring verb = LCase(words[0]);
  if (!addin.virus.window) {
    say(L"  the virus-alert window is not open (click Vireo_Virus Alert)");
    return false;
  }
  // Copies: a command may close the window, and with it the events it came from.
  const VirusAlerterEvents events = ui.virus_events();
  const size_t rows = ui.virus_view().rules.rows.size();
  // Commands on one rule name it by its row, 1-based as the list shows it.
  auto select_row = [&]() -> bool {
    int32_t row = 0;
    try {
      row = words.size() > 1 ? ToLong(words[1]) : 0;
    } catch (const Error&) {
    }
    if (row < 1 || static_cast<size_t>(row) > rows) {
      say(L"  there is no rule " + (words.size() > 1 ? words[1] : std::wstring()) + L" in the list");
      return false;
    }
    events.select(static_cast<size_t>(row - 1));
    return true;
  };
  bool tell_rules = true;
  if (verb == L"new") {
    RuleValues values;
    values.description = words.size() > 1 ? words[1] : L"";
    ui.QueueRuleWizard(Play(Edited(values, words, 2), say));
    events.new_rule();
  } else if (verb == L"cancel-new") {
    events.new_rule();  // nothing queued: the wizard is cancelled
  } else if (verb == L"edit") {
    if (!select_row()) return false;
    const RuleListRow& row = ui.virus_view().rules.rows[static_cast<size_t>(ToLong(words[1]) - 1)];
    RuleValues values{row.text, row.subject, row.body, row.attachment, row.from, row.checked};
    ui.QueueRuleWizard(Play(Edited(values, words, 2), say));
    events.edit_rule();
  } else if (verb == L"select") {
    if (!select_row()) return false;
  } else if (verb == L"on" || verb == L"off") {
    if (!select_row()) return false;
    verb == L"on" ? events.activate() : events.deactivate();
  } else if (verb == L"remove") {
    if (!select_row()) return false;
    events.remove_rule();
  } else if (verb == L"sort") {
    events.column_click(words.size() > 1 ? ToLong(words[1]) : 0);
  } else if (verb == L"scan") {
    events.scan_now();
  } else if (verb == L"scan-alerts") {
    events.scan_alerts();
  } else if (verb == L"send") {
    if (!select_row()) return false;
    // The select-names dialog's pick: the addresses after the row, ";"-separated.
    std::vector<std::wstring> picked;
    const size_t at = command.find(words[1]) + words[1].size();
    for (const std::wstring& part : ScriptWords(Replace(command.substr(at), L";", L" ")))
      picked.push_back(part);
    store.select_names_answers.push_back(picked);
    events.send_alert();
    tell_rules = false;
  } else if (verb == L"log" || verb == L"clear-log" || verb == L"close-log") {
    if (verb == L"log") events.show_log();
    if (verb != L"log" && !addin.virus.report) {
      say(L"  the virus log window is not open (virus log)");
      return false;
    }
    const VirusReportEvents report = ui.report_events();
    if (verb == L"clear-log") report.clear_log();
    if (verb == L"close-log") report.close();
    if (addin.virus.report) {
      for (const std::wstring& line : ui.report_view().lines)
        say(L"  [log] " + Replace(line, L"\t", L" | "));
      for (const std::wstring& origin : ui.report_view().origins)
        say(L"  [from alert mails] " + origin);
    }
    tell_rules = false;
  } else if (verb == L"apply") {
    events.apply();
    tell_rules = false;
  } else if (verb == L"close") {
    events.close();
    tell_rules = false;
  }
  if (tell_rules && addin.virus.window) PrintRules(ui.virus_view(), say);
  return true;
}

}  // namespace corvina::simulator
