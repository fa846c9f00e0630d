#pragma once
// Boxes answered without being shown, for the test suite that runs the real DLL under Wine:
// there no one is at the screen to press a button. The environment variable
// CORVINA_AUTOANSWER=yes|no|ok|cancel (read once, when the user interface is made) names the
// button to press; unset or anything else, boxes are shown as usual.
//
// The named button is pressed when the box has it. Otherwise "yes" and "ok" stand in for each
// other, as do "no" and "cancel"; failing both, an affirmative answer takes the box's first
// button and a negative one its last (closing the add-in's own box is Cancel).
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/user_interface.h"

namespace corvina::win32 {

enum class AutoAnswer { kYes, kNo, kOk, kCancel };

inline constexpr wchar_t kAutoAnswerVariable[] = L"CORVINA_AUTOANSWER";

std::optional<AutoAnswer> ParseAutoAnswer(std::wstring_view text);
// The value of CORVINA_AUTOANSWER, parsed.
std::optional<AutoAnswer> AutoAnswerFromEnvironment();

// The vb result a plain message box of `style` answers.
int32_t AutoMsgBoxResult(AutoAnswer answer, int32_t style);
// The add-in's own box answers among its visible buttons; the check box stays clear.
MsgBoxAnswer AutoShowMsgBoxAnswer(AutoAnswer answer, const MsgBoxView& view);

}  // namespace corvina::win32
