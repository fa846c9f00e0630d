#pragma once
// The rule list's editing procedures. They work on the virus-alert window's list (lsvRules)
// and glbRules; the caller stores the settings after a change.
#include <functional>

#include "addin/addin.h"
#include "platform/rule_list_view.h"

namespace corvina {

// Adds a rule named "New Rule dd/mm/yyyy hh:mm:ss" (now), unselects and refills the list,
// makes it glbCurrentRule (switched on) and runs `show_wizard` on it.
void CreateNewRuleItem(AddIn& addin, RuleListView& lsvRules,
                       const std::function<void()>& show_wizard);
// Copies glbCurrentRule into the stored rule named by the selected row and refills the list.
// Without a selected row the user is told "lsvRules.SelectedItem <> 1" and nothing changes.
void ApplyRuleToCurrentItem(AddIn& addin, RuleListView& lsvRules);
// Removes the rule named by the selected row and refills the list.
void RemoveRuleItem(AddIn& addin, RuleListView& lsvRules);
// The list cleared and filled again from glbRules, in the list's current sort order.
void RefillRuleList(AddIn& addin, RuleListView& lsvRules);
// The selected row, or null.
const RuleListRow* SelectedRow(const RuleListView& lsvRules);
// The name a rule made now gets.
std::wstring NewRuleName(Date now);

}  // namespace corvina
