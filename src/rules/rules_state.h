#pragma once
// What the rules keep for one running add-in: glbRules and the wizard's editing state.
#include "rules/rule.h"
#include "rules/rules.h"
#include "settings/log.h"

namespace corvina {

struct RulesState {
  explicit RulesState(Log& log) : glbRules(log) {}
  Rules glbRules;
  RuleEditing editing;  // glbCurrentRule, glbRuleWizardName, glbIsNewRule
};

}  // namespace corvina
