#pragma once
// frmMsgBox drawn as a real window, built in code: the two labels, the buttons the view says
// are visible, the "don't show again" check box and the caption. Modal: the owner is disabled
// and a message loop runs until a button is pressed or the window is closed (Cancel).
#include "platform/user_interface.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// A box that cannot be created (no display) answers Cancel, as if it were closed.
MsgBoxAnswer RunMsgBoxWindow(const MsgBoxView& view, HWND owner);

}  // namespace corvina::win32
