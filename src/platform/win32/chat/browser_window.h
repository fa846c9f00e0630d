#pragma once
// The browser control's windows. The in-place object's window is only a frame: the page's
// own window, the one that holds the selection and takes keys, is a descendant of the class
// "Internet Explorer_Server".
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// The page's window under `control` (the in-place object's window); `control` itself when
// there is none (yet); nullptr for nullptr.
HWND FindPageWindow(HWND control) noexcept;

// The key stroke Ctrl+C sent to `window`: Ctrl down, C down, C up, Ctrl up. While it is sent
// the thread's keyboard state says Ctrl is down, since the page asks for that state rather
// than remembering the Ctrl message. Nothing for nullptr.
void SendCtrlC(HWND window) noexcept;

}  // namespace corvina::win32
