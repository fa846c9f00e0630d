#pragma once
// The user-visible texts of the toolbar and the host's messages. English is the only language
// table this build carries; choosing another language keeps its name (it is saved) and shows
// these texts.
#include <string>

namespace corvina {

struct ControlTexts {
  const wchar_t* caption;
  const wchar_t* tooltip;
};

// Caption and tooltip of the control with this index (empty texts for unknown indices).
ControlTexts TextsForControl(int index);

inline constexpr wchar_t kTextNotMailItem[] = L"Not a mail item";
inline constexpr wchar_t kTextHebrewWarning[] =
    L"Your system may not support Add-ins Hebrew fonts,\r\n"
    L"If Hebrew will not be displayed correctly, return to English";
inline constexpr wchar_t kTextMenu1[] = L"My_Menu1_Click  ";

// Told when a toolbar command's feature is not part of this build.
std::wstring NotInThisBuildText(const std::wstring& feature);

}  // namespace corvina
