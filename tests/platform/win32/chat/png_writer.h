#pragma once
// A window's picture as a PNG file, for tests that keep screenshots of real windows to look at.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// Captures `window` with its frame (as drawn on screen, children included) and writes it as a
// 24-bit PNG at `path`. False when the window cannot be captured or the file written.
bool WritePng(const std::wstring& path, HWND window);

}  // namespace corvina::win32
