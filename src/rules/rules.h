#pragma once
// glbRules: the user's virus-alert patterns, 1-based and in insertion order, each possibly
// keyed. Stored column-wise: one ";"-led list per field (see GetAllAsStringByType).
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/rule_list_view.h"
#include "rules/rule.h"
#include "settings/log.h"

namespace corvina {

class Rules {
 public:
  // Errors are logged under the class name "Rules" and the operation's own name.
  explicit Rules(Log& log) : log_(log) {}

  // The first rule whose Description is exactly `description`; nothing when none is.
  Rule* GetItemByDescription(const std::wstring& description);
  // One stored list: ";" and the field's value for every rule, so a non-empty list begins
  // with ";". Active is written "True" or "False"; an unknown type gives "".
  std::wstring GetAllAsStringByType(int type);
  // Loads one stored list. Only the Description list creates rules; the others fill the
  // rules that exist by position, and a list longer than the rules ends in the error handler.
  bool InitializeData(const std::wstring& data, int type);
  // Appends one row per rule (the caller clears the list first).
  void FillListView(RuleListView& view);
  // The last non-empty argument alone decides: some active rule must hold exactly that value
  // in that field. Costs the same for ten rules or a thousand.
  bool IsMatchRuleAndActive(const std::wstring& subject, const std::wstring& body,
                            const std::wstring& attachment, const std::wstring& from);
  // Whether `description` counts as a name already taken. Mode 2: any rule of that name.
  // Otherwise an existing rule renamed to a taken name, or a new rule whose name three rules
  // already carry.
  bool IsDescriptionAlreadyExists(const std::wstring& description, int32_t mode,
                                  const RuleEditing& editing);
  // Whether some active rule has a non-empty value in this field: when none has, the scans
  // need not read the field from a mail, since an empty value never equals a non-empty one.
  bool AnyActiveValue(int type);

  // Every string is trimmed before it is stored; keyed when `key` is not empty.
  Rule& Add(const std::wstring& description, bool active, const std::wstring& subject,
            const std::wstring& body, const std::wstring& attachment, const std::wstring& from,
            const std::wstring& key = L"");
  // 1-based position, or key; error 9 when there is no such rule. The reference handed out
  // may be changed until the next match or the next change of the collection.
  Rule& Item(int32_t index);
  Rule& Item(const std::wstring& key);
  int32_t Count() const { return static_cast<int32_t>(rules_.size()); }
  void Remove(int32_t index);
  void Remove(const std::wstring& key);
  void Clear();
  // The rules in order (each a std::unique_ptr<Rule>).
  auto begin() const { return rules_.begin(); }
  auto end() const { return rules_.end(); }

 private:
  void RemoveAt(size_t position);
  // The values of the active rules per field, built again after any change.
  void Index();

  Log& log_;
  std::vector<std::unique_ptr<Rule>> rules_;
  std::vector<std::wstring> keys_;  // beside rules_, "" for an unkeyed rule
  std::unordered_map<std::wstring, Rule*> keyed_;  // by the key folded to lower case
  bool indexed_ = false;
  std::array<std::unordered_set<std::wstring>, 4> active_values_;  // subject, body, attachment, from
};

}  // namespace corvina
