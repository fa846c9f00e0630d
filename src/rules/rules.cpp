#include "rules/rules.h"

#include <algorithm>
#include <string_view>

#include "base/error.h"
#include "base/text.h"
#include "settings/guard.h"
#include "settings/stored_list.h"

namespace corvina {
namespace {

const std::wstring kContext = L"Rules";
constexpr int32_t kErrKeyInUse = 457;

// Slot of a tested field in the index: subject, body, attachment, from.
int Slot(int type) {
  switch (type) {
    case kRuleSubject: return 0;
    case kRuleBody: return 1;
    case kRuleAttachment: return 2;
    case kRuleFrom: return 3;
    default: return -1;
  }
}

const std::wstring& FieldOf(const Rule& rule, int slot) {
  switch (slot) {
    case 0: return rule.Subject;
    case 1: return rule.Body;
    case 2: return rule.Attachment;
    default: return rule.From;
  }
}

}  // namespace

Rule* Rules::GetItemByDescription(const std::wstring& description) {
  for (const auto& rule : rules_) {
    if (rule->Description == description) {
      indexed_ = false;  // the caller may change the rule it gets
      return rule.get();
    }
  }
  return nullptr;
}

std::wstring Rules::GetAllAsStringByType(int type) {
  return Guard(log_, kContext, L"GetAllAsStringByType", std::wstring(), [&] {
    std::wstring all;
    for (const auto& rule : rules_) {
      switch (type) {
        case kRuleDescription: all += L";" + rule->Description; break;
        case kRuleActive: all += L";" + BoolText(rule->Active); break;
        case kRuleSubject: all += L";" + rule->Subject; break;
        case kRuleBody: all += L";" + rule->Body; break;
        case kRuleFrom: all += L";" + rule->From; break;
        case kRuleAttachment: all += L";" + rule->Attachment; break;
        default: break;
      }
    }
    return all;
  });
}

bool Rules::InitializeData(const std::wstring& data, int type) {
  return Guard(log_, kContext, L"InitializeData", false, [&] {
    // Only the Description list adds rules; the others fill the rule at the element's
    // position, and one beyond the last rule ends the list here.
    WalkStoredList(data, [&](std::wstring_view element, int32_t position) {
      switch (type) {
        case kRuleDescription: Add(std::wstring(element), false, L"", L"", L"", L""); break;
        case kRuleActive: Item(position).Active = ToBoolean(element); break;
        case kRuleSubject: Item(position).Subject = Trim(element); break;
        case kRuleBody: Item(position).Body = Trim(element); break;
        case kRuleFrom: Item(position).From = Trim(element); break;
        case kRuleAttachment: Item(position).Attachment = Trim(element); break;
        default: break;
      }
    });
    return true;
  });
}

void Rules::FillListView(RuleListView& view) {
  Guard(log_, kContext, L"FillListView", [&] {
    for (const auto& rule : rules_) {
      view.rows.push_back(RuleListRow{rule->Description,
                                      rule->Active ? kRuleOnIcon : kRuleOffIcon,
                                      rule->Subject, rule->Body, rule->Attachment, rule->From,
                                      rule->Origin, rule->Active, false});
    }
  });
}

void Rules::Index() {
  if (indexed_) return;
  for (auto& values : active_values_) values.clear();
  for (const auto& rule : rules_) {
    if (!rule->Active) continue;
    for (int slot = 0; slot < 4; ++slot) {
      const std::wstring& value = FieldOf(*rule, slot);
      if (!value.empty()) active_values_[static_cast<size_t>(slot)].insert(value);
    }
  }
  indexed_ = true;
}

bool Rules::IsMatchRuleAndActive(const std::wstring& subject, const std::wstring& body,
                                 const std::wstring& attachment, const std::wstring& from) {
  return Guard(log_, kContext, L"IsMatchRuleAndActive", false, [&] {
    // Each comparison that runs replaces the one before, so the last non-empty argument is
    // the only one that counts; an active rule matches when that field equals it exactly.
    int slot = -1;
    const std::wstring* value = nullptr;
    const std::wstring* arguments[] = {&subject, &body, &attachment, &from};
    for (int i = 0; i < 4; ++i) {
      if (!arguments[i]->empty()) {
        slot = i;
        value = arguments[i];
      }
    }
    if (!value) return false;
    Index();
    return active_values_[static_cast<size_t>(slot)].contains(*value);
  });
}

bool Rules::AnyActiveValue(int type) {
  const int slot = Slot(type);
  if (slot < 0) return false;
  Index();
  return !active_values_[static_cast<size_t>(slot)].empty();
}

bool Rules::IsDescriptionAlreadyExists(const std::wstring& description, int32_t mode,
                                       const RuleEditing& editing) {
  return Guard(log_, kContext, L"IsDescriptionAlreadyExists", false, [&] {
    int32_t hits = 0;
    for (const auto& rule : rules_) {
      if (rule->Description != description) continue;
      ++hits;
      const bool renamed_onto_another =
          hits == 1 && !editing.glbIsNewRule &&
          editing.glbCurrentRule.Description != editing.glbRuleWizardName;
      // A new rule's own row is already in the list, so a new name is taken only at the third
      // rule carrying it: the threshold is kept as the rule lists have always had it.
      if (renamed_onto_another || (hits == 3 && editing.glbIsNewRule) || mode == 2) return true;
    }
    return false;
  });
}

Rule& Rules::Add(const std::wstring& description, bool active, const std::wstring& subject,
                 const std::wstring& body, const std::wstring& attachment,
                 const std::wstring& from, const std::wstring& key) {
  auto rule = std::make_unique<Rule>();
  rule->Description = Trim(description);
  rule->Active = active;
  rule->Subject = Trim(subject);
  rule->Body = Trim(body);
  rule->Attachment = Trim(attachment);
  rule->From = Trim(from);
  std::wstring folded = LCase(key);
  if (!key.empty() && keyed_.contains(folded))
    Raise(kErrKeyInUse, L"This key is already associated with an element of this collection");
  Rule& added = *rule;
  rules_.push_back(std::move(rule));
  try {
    keys_.push_back(key);
    if (!key.empty()) keyed_.emplace(std::move(folded), &added);
  } catch (...) {
    rules_.pop_back();  // all or nothing
    if (keys_.size() > rules_.size()) keys_.pop_back();
    throw;
  }
  indexed_ = false;
  return added;
}

Rule& Rules::Item(int32_t index) {
  if (index < 1 || index > Count()) Raise(kErrSubscript, L"Subscript out of range");
  indexed_ = false;
  return *rules_[static_cast<size_t>(index - 1)];
}

Rule& Rules::Item(const std::wstring& key) {
  auto found = keyed_.find(LCase(key));
  if (found == keyed_.end()) Raise(kErrSubscript, L"Subscript out of range");
  indexed_ = false;
  return *found->second;
}

void Rules::Remove(int32_t index) {
  if (index < 1 || index > Count()) Raise(kErrSubscript, L"Subscript out of range");
  RemoveAt(static_cast<size_t>(index - 1));
}

void Rules::Remove(const std::wstring& key) {
  auto found = keyed_.find(LCase(key));
  if (found == keyed_.end()) Raise(kErrSubscript, L"Subscript out of range");
  auto at = std::find_if(rules_.begin(), rules_.end(),
                         [&](const auto& rule) { return rule.get() == found->second; });
  RemoveAt(static_cast<size_t>(at - rules_.begin()));
}

void Rules::Clear() {
  rules_.clear();
  keys_.clear();
  keyed_.clear();
  indexed_ = false;
}

void Rules::RemoveAt(size_t position) {
  if (!keys_[position].empty()) keyed_.erase(LCase(keys_[position]));
  keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(position));
  rules_.erase(rules_.begin() + static_cast<std::ptrdiff_t>(position));
  indexed_ = false;
}

}  // namespace corvina
