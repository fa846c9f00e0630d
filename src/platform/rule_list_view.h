#pragma once
// The virus-alert window's rule list (lsvRules) as it is drawn: one row per rule. The rules
// core fills it; the window (or the sim) only draws it.
#include <string>
#include <vector>

namespace corvina {

inline constexpr wchar_t kRuleOnIcon[] = L"KeyRuleOn";
inline constexpr wchar_t kRuleOffIcon[] = L"KeyRuleOff";

struct RuleListRow {
  std::wstring text;      // the rule's Description
  std::wstring icon_key;  // kRuleOnIcon or kRuleOffIcon
  // Sub-items 1 to 4: Subject, Body, Attachment, From.
  std::wstring subject;
  std::wstring body;
  std::wstring attachment;
  std::wstring from;
  // Who sent the rule in an alert mail; empty for the user's own rules.
  std::wstring origin;
  bool checked = false;   // the row's check box: the rule is active
  bool selected = false;
};

struct RuleListView {
  std::vector<RuleListRow> rows;
  // The column the rows are sorted by (0 the name, 1 to 4 the sub-items), -1 for the
  // collection's own order; and the direction.
  int sort_column = -1;
  bool sort_descending = false;
};

}  // namespace corvina
