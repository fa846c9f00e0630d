#pragma once
#include "addin/addin.h"

namespace corvina {

// Rebuilds the virus-alert patterns from their six stored columns at start-up.
// Not part of this build yet: the rule list arrives with the virus-alert feature.
void LoadRules(AddIn& addin);

}  // namespace corvina
