#pragma once
// The send-to list's status pictures: a small coloured dot per chat user status, drawn here so
// the list needs no picture files.
#include <string>

#include "platform/win32/windows_api.h"

#include <commctrl.h>

namespace corvina::win32 {

// A 16 x 16 image list with one dot per status key; the caller destroys it.
HIMAGELIST MakeStatusIcons();
// The list's image of a status key ("KeyChatUserActive" ...); an unknown key gets the
// unknown status's grey dot.
int StatusIconIndex(const std::wstring& key);

}  // namespace corvina::win32
