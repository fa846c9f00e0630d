#include "rules/rule_editing.h"

#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "platform/user_interface.h"

namespace corvina {
namespace {

const std::wstring& SortText(const RuleListRow& row, int column) {
  switch (column) {
    case 1: return row.subject;
    case 2: return row.body;
    case 3: return row.attachment;
    case 4: return row.from;
    case 5: return row.origin;
    default: return row.text;
  }
}

}  // namespace

std::wstring NewRuleName(Date now) {
  const CivilTime t = ToCivil(now);
  wchar_t text[40];
  std::swprintf(text, std::size(text), L"New Rule %02d/%02d/%04d %02d:%02d:%02d", t.day, t.month,
                t.year, t.hour, t.minute, t.second);
  return text;
}

const RuleListRow* SelectedRow(const RuleListView& lsvRules) {
  for (const RuleListRow& row : lsvRules.rows)
    if (row.selected) return &row;
  return nullptr;
}

void RefillRuleList(AddIn& addin, RuleListView& lsvRules) {
  lsvRules.rows.clear();
  addin.rules.glbRules.FillListView(lsvRules);
  if (lsvRules.sort_column < 0) return;
  const int column = lsvRules.sort_column;
  const bool descending = lsvRules.sort_descending;
  std::stable_sort(lsvRules.rows.begin(), lsvRules.rows.end(),
                   [&](const RuleListRow& a, const RuleListRow& b) {
                     const std::wstring x = LCase(SortText(a, column));
                     const std::wstring y = LCase(SortText(b, column));
                     return descending ? y < x : x < y;
                   });
}

void CreateNewRuleItem(AddIn& addin, RuleListView& lsvRules,
                       const std::function<void()>& show_wizard) {
  addin.Run(L"CreateNewRuleItem", [&] {
    const std::wstring name = NewRuleName(addin.services.clock.Now());
    addin.rules.glbRules.Add(name, false, L"", L"", L"", L"");
    for (RuleListRow& row : lsvRules.rows) row.selected = false;
    RefillRuleList(addin, lsvRules);
    Rule& current = addin.rules.editing.glbCurrentRule;
    current = Rule{};
    current.Description = name;
    current.Active = true;
    show_wizard();
  });
}

void ApplyRuleToCurrentItem(AddIn& addin, RuleListView& lsvRules) {
  addin.Run(L"ApplyRuleToCurrentItem", [&] {
    const RuleListRow* selected = SelectedRow(lsvRules);
    if (!selected) {
      addin.services.ui.MsgBox(L"lsvRules.SelectedItem <> 1", vbOKOnly, kProductName);
      return;
    }
    const std::wstring name = selected->text;
    Rule* stored = addin.rules.glbRules.GetItemByDescription(name);
    const Rule& current = addin.rules.editing.glbCurrentRule;
    if (stored) {
      stored->Description = current.Description;
      stored->Active = current.Active;
      stored->Subject = current.Subject;
      stored->Body = current.Body;
      stored->From = current.From;
      stored->Attachment = current.Attachment;
    }
    // The edited rule stays the selected one under its new name.
    RefillRuleList(addin, lsvRules);
    for (RuleListRow& row : lsvRules.rows) {
      if (row.text == current.Description) {
        row.selected = true;
        break;
      }
    }
  });
}

void RemoveRuleItem(AddIn& addin, RuleListView& lsvRules) {
  addin.Run(L"RemoveRuleItem", [&] {
    const RuleListRow* selected = SelectedRow(lsvRules);
    Rules& rules = addin.rules.glbRules;
    if (selected) {
      for (int32_t i = 1; i <= rules.Count(); ++i) {
        if (rules.Item(i).Description == selected->text) {
          rules.Remove(i);
          break;
        }
      }
    }
    RefillRuleList(addin, lsvRules);
  });
}

}  // namespace corvina
