#pragma once
// glbRules between memory and the six stored lists (and the list of who sent which rule).
#include "addin/addin.h"

namespace corvina {

// Start-up: a new rule list filled from the six lists, the Description list first since it
// alone creates rules, then who sent the rules that came in alert mails.
void LoadRules(AddIn& addin);
// The six lists and the senders set from glbRules (the settings are written by the caller).
void StoreRules(AddIn& addin);
// The senders' list of the current rules: rule name and sender, tab-separated pairs.
std::wstring RuleOriginsText(const Rules& rules);
// Gives each listed sender to the first rule of that name that has none yet.
void ApplyRuleOrigins(Rules& rules, const std::wstring& text);

}  // namespace corvina
