#include "rules/rules_stage.h"

namespace corvina {

void LoadRules(AddIn& addin) { addin.Run(L"InitializeData", [] {}); }

}  // namespace corvina
