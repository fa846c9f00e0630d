#include "rules/rule_storage.h"

#include <deque>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace corvina {
namespace {

// A tab inside a name or a sender would split the pair list; it becomes a blank.
std::wstring NoTabs(std::wstring text) {
  for (wchar_t& c : text)
    if (c == L'\t') c = L' ';
  return text;
}

}  // namespace

void LoadRules(AddIn& addin) {
  const Config& c = addin.config;
  Rules& rules = addin.rules.glbRules;
  rules.Clear();
  rules.InitializeData(c.VirusDescription, kRuleDescription);
  rules.InitializeData(c.VirusActive, kRuleActive);
  rules.InitializeData(c.VirusSubject, kRuleSubject);
  rules.InitializeData(c.VirusBody, kRuleBody);
  rules.InitializeData(c.VirusAttachments, kRuleAttachment);
  rules.InitializeData(c.VirusFrom, kRuleFrom);
  addin.Run(L"LoadRuleOrigins", [&] { ApplyRuleOrigins(rules, c.VirusRuleOrigins); });
}

void StoreRules(AddIn& addin) {
  Config& c = addin.config;
  Rules& rules = addin.rules.glbRules;
  c.VirusDescription = rules.GetAllAsStringByType(kRuleDescription);
  c.VirusActive = rules.GetAllAsStringByType(kRuleActive);
  c.VirusSubject = rules.GetAllAsStringByType(kRuleSubject);
  c.VirusBody = rules.GetAllAsStringByType(kRuleBody);
  c.VirusFrom = rules.GetAllAsStringByType(kRuleFrom);
  c.VirusAttachments = rules.GetAllAsStringByType(kRuleAttachment);
  c.VirusRuleOrigins = RuleOriginsText(rules);
}

std::wstring RuleOriginsText(const Rules& rules) {
  std::wstring text;
  for (const auto& rule : rules) {
    if (rule->Origin.empty()) continue;
    if (!text.empty()) text += L'\t';
    text += NoTabs(rule->Description) + L'\t' + NoTabs(rule->Origin);
  }
  return text;
}

void ApplyRuleOrigins(Rules& rules, const std::wstring& text) {
  std::vector<std::wstring> fields;
  for (size_t from = 0; from <= text.size() && !text.empty();) {
    const size_t tab = text.find(L'\t', from);
    fields.push_back(text.substr(from, tab == std::wstring::npos ? std::wstring::npos : tab - from));
    if (tab == std::wstring::npos) break;
    from = tab + 1;
  }
  // The rules of each name that still lack a sender, in order: one pass over the rules, so a
  // long list loads in linear time.
  std::unordered_map<std::wstring, std::deque<Rule*>> waiting;
  for (int32_t n = 1; n <= rules.Count(); ++n) {
    Rule& rule = rules.Item(n);
    if (rule.Origin.empty()) waiting[rule.Description].push_back(&rule);
  }
  for (size_t i = 0; i + 1 < fields.size(); i += 2) {
    auto found = waiting.find(fields[i]);
    if (found == waiting.end() || found->second.empty()) continue;
    found->second.front()->Origin = fields[i + 1];
    found->second.pop_front();
  }
}

}  // namespace corvina
