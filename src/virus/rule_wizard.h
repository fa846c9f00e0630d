#pragma once
// The rule wizard: a name, then the four values with a sentence that says plainly what the
// rule will delete. It edits glbCurrentRule.
#include <string>

#include "addin/addin.h"
#include "platform/virus_windows.h"

namespace corvina {

inline constexpr wchar_t kRuleWizardFormName[] = L"frmRuleWiz0";

// Shows the wizard on glbCurrentRule. On Finish glbCurrentRule holds the new values and the
// answer is true; glbIsNewRule is False again either way.
bool RunRuleWizard(AddIn& addin);
// "This rule matches a new mail when ...", for these values.
std::wstring DescribeRule(const AddIn& addin, const RuleValues& values);

}  // namespace corvina
