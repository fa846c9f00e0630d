#pragma once
// A window class registered on this module for as long as the object lives. Classes a DLL
// registers outlive it unless removed, and would point at freed code after Outlook unloads
// the add-in; so each window registers its class while it exists and removes it after.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

class ScopedWindowClass {
 public:
  ScopedWindowClass(const wchar_t* name, WNDPROC procedure) noexcept;
  ~ScopedWindowClass();
  ScopedWindowClass(const ScopedWindowClass&) = delete;
  ScopedWindowClass& operator=(const ScopedWindowClass&) = delete;
  const wchar_t* name() const noexcept { return name_; }

 private:
  const wchar_t* name_;
};

// The font Windows uses for message boxes; nullptr when it cannot be had (the stock font is
// then used).
HFONT CreateMessageFont() noexcept;

// Top-left corner that centres a window of this size on the work area of the owner's monitor
// (the primary one without an owner), at a third of the height as message boxes sit.
POINT CentredOrigin(HWND owner, int width, int height) noexcept;

// A window's or control's text.
std::wstring WindowText(HWND window);

// Stores `self` with the window at WM_NCCREATE and finds it again afterwards.
template <class T>
T* WindowSelf(HWND hwnd, UINT message, LPARAM lparam) noexcept {
  if (message == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  return reinterpret_cast<T*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
}

}  // namespace corvina::win32
