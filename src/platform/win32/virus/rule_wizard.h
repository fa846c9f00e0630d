#pragma once
// The rule wizard on Windows: a modal dialog in two steps, the rule's name and then what a
// dangerous mail looks like, with a sentence that says what the rule will match as the user
// types. It decides nothing itself: the core's events accept the name, word the sentence and
// accept the values (showing their own message when they refuse).
#include <functional>

#include "platform/virus_windows.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// True when Finish was pressed and `events.accept_values` agreed; `view.values` then holds
// what the user entered. Cancel, Escape and closing leave `view` as it was and answer false,
// as does a wizard that cannot be shown.
bool RunRuleWizard(RuleWizardView& view, const RuleWizardEvents& events, HWND owner);

// Control ids, found with GetDlgItem. Finish is IDOK and Cancel IDCANCEL.
inline constexpr int kWizardStep = 1201;         // the step's caption
inline constexpr int kWizardDescription = 1202;  // txtDescription, step 1
inline constexpr int kWizardSubject = 1203;      // step 2
inline constexpr int kWizardBody = 1204;
inline constexpr int kWizardAttachment = 1205;
inline constexpr int kWizardFrom = 1206;
inline constexpr int kWizardActive = 1207;       // check box
inline constexpr int kWizardSentence = 1208;     // read-only, what the rule matches
inline constexpr int kWizardBack = 1209;
inline constexpr int kWizardNext = 1210;

// For tests only: `hook` is called with the wizard once it is shown, from inside its message
// loop, so a test can type and press buttons with the messages a user's input sends (or post
// keys for the loop to handle). An empty function removes it. Not for the add-in.
void SetRuleWizardShownHookForTesting(std::function<void(HWND wizard)> hook);

}  // namespace corvina::win32
