#pragma once
// The chat window's two modal dialogs, drawn from the model's views: frmChatUserProperties
// (one chat user's address, nick name, status, two colours from the fifteen-colour pickers,
// and picture) and frmChatMail (one address). They check nothing themselves: the model
// validates what they return and shows them again with its message when it refuses.
#include <string>

#include "platform/user_interface.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// frmChatUserProperties. True when the user pressed OK; `view` then holds the edits (the
// colour fields hold names of `view.colors`, the icon the chosen picture's number).
bool RunChatUserDialog(ChatUserPropertiesView& view, HWND owner, bool right_to_left);

// frmChatMail: the address typed, "" when cancelled.
std::wstring RunChatAddressDialog(const std::wstring& caption, HWND owner, bool right_to_left);

}  // namespace corvina::win32
