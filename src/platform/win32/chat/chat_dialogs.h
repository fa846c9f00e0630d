#pragma once
// The chat window's two modal dialogs, drawn from the model's views: frmChatUserProperties
// (one chat user's address, nick name, status, two colours from the fifteen-colour pickers,
// and picture) and frmChatMail (one address). They check nothing themselves: the model
// validates what they return and shows them again with its message when it refuses.
//
// Both are built in code: modal to `owner` (disabled while they run), Enter is OK, Escape and
// closing the window are Cancel. Neither lets an error out: a dialog that cannot be made or
// run answers as if cancelled.
#include <functional>
#include <string>

#include "platform/user_interface.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// frmChatUserProperties. True when the user pressed OK; `view` then holds the edits (the
// colour fields hold names of `view.colors`, the icon the chosen picture's number). Cancel
// leaves `view` as it was.
bool RunChatUserDialog(ChatUserPropertiesView& view, HWND owner, bool right_to_left);

// frmChatMail: the address typed (untrimmed), "" when cancelled.
std::wstring RunChatAddressDialog(const std::wstring& caption, HWND owner, bool right_to_left);

// Control ids, found with GetDlgItem. OK and Cancel are IDOK and IDCANCEL in both dialogs.
inline constexpr int kChatUserEmailId = 1001;         // edit
inline constexpr int kChatUserNickNameId = 1002;      // edit
inline constexpr int kChatUserStatusId = 1003;        // drop-down list, item data = status
inline constexpr int kChatUserColorUserId = 1004;     // drop-down list, in `view.colors` order
inline constexpr int kChatUserColorMessageId = 1005;  // drop-down list, in `view.colors` order
inline constexpr int kChatUserIconId = 1006;          // drop-down list: "1".."9", then any other
inline constexpr int kChatAddressEditId = 1101;       // edit

// For tests only: `hook` is called with each chat dialog once it is shown and focused, before
// its message loop starts, so a test can fill fields and press buttons with real messages (or
// post keys that the loop then handles). An empty function removes it. Not for the add-in.
void SetChatDialogShownHookForTesting(std::function<void(HWND dialog)> hook);

}  // namespace corvina::win32
