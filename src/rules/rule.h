#pragma once
// One virus-alert pattern: a named set of values for a dangerous mail's sender, subject, body
// and attachment name, with an on/off switch.
#include <string>

namespace corvina {

// The field numbers of the stored lists (and of the values a scan tests).
enum RuleFieldType : int {
  kRuleDescription = 1,
  kRuleActive = 2,
  kRuleSubject = 3,
  kRuleBody = 4,
  kRuleFrom = 5,
  kRuleAttachment = 6,
};

struct Rule {
  std::wstring Description;
  std::wstring From;
  std::wstring Attachment;
  std::wstring Body;
  std::wstring Subject;
  bool Active = false;
  // Who sent this rule in an alert mail; empty for a rule the user made. Kept beside the six
  // stored lists, never inside them.
  std::wstring Origin;
};

// The rule being edited and the wizard's state, which the name check consults.
struct RuleEditing {
  Rule glbCurrentRule;
  std::wstring glbRuleWizardName;
  bool glbIsNewRule = false;
};

}  // namespace corvina
