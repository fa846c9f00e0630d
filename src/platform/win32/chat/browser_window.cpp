#include "platform/win32/chat/browser_window.h"

namespace corvina::win32 {

namespace {

BOOL CALLBACK FindPage(HWND window, LPARAM found) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  if (lstrcmpW(name, L"Internet Explorer_Server") != 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

LPARAM KeyData(UINT key, bool up) {
  const UINT scan = MapVirtualKeyW(key, MAPVK_VK_TO_VSC);
  LPARAM data = 1 | static_cast<LPARAM>(scan << 16);
  if (up) data |= static_cast<LPARAM>(0xC0000000u);  // was down, is being released
  return data;
}

}  // namespace

HWND FindPageWindow(HWND control) noexcept {
  if (!control) return nullptr;
  HWND page = nullptr;
  EnumChildWindows(control, FindPage, reinterpret_cast<LPARAM>(&page));  // every descendant
  return page ? page : control;
}

void SendCtrlC(HWND window) noexcept {
  if (!window || !IsWindow(window)) return;
  BYTE keys[256] = {};
  const bool have_state = GetKeyboardState(keys) != FALSE;
  BYTE pressed[256];
  for (int i = 0; i < 256; ++i) pressed[i] = keys[i];
  pressed[VK_CONTROL] |= 0x80;
  pressed[VK_LCONTROL] |= 0x80;
  if (have_state) SetKeyboardState(pressed);
  SendMessageW(window, WM_KEYDOWN, VK_CONTROL, KeyData(VK_CONTROL, false));
  SendMessageW(window, WM_KEYDOWN, 'C', KeyData('C', false));
  SendMessageW(window, WM_KEYUP, 'C', KeyData('C', true));
  if (have_state) SetKeyboardState(keys);
  SendMessageW(window, WM_KEYUP, VK_CONTROL, KeyData(VK_CONTROL, true));
}

}  // namespace corvina::win32
