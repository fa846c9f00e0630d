#pragma once
// The two pictures of lsvRules' rows, drawn in code so the window needs no resources: a green
// key for a rule that is on, a grey one for a rule that is off.
#include <string>

#include "platform/win32/unique_handle.h"

namespace corvina::win32 {

inline constexpr int kRuleIconSize = 16;

// An image list of kRuleIconSize pixels holding the "on" picture at 0 and the "off" one at 1;
// empty when it cannot be made (the rows then go without pictures).
UniqueHImageList MakeRuleIcons() noexcept;

// The picture for a row's icon key (kRuleOnIcon, kRuleOffIcon); I_IMAGENONE for any other.
int RuleIconIndex(const std::wstring& key) noexcept;

}  // namespace corvina::win32
