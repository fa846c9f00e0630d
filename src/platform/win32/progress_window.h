#pragma once
// frmInit: the small modeless window with one status label shown while the add-in starts.
#include <string>

#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"

namespace corvina::win32 {

class ProgressWindow {
 public:
  // Shows the window at once. Without a display there is no window, and SetText does nothing.
  explicit ProgressWindow(const std::wstring& text);
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  // Changes the label and repaints now: the add-in is busy and pumps no messages meanwhile.
  void SetText(const std::wstring& text);
  bool has_window() const { return static_cast<bool>(window_); }

 private:
  // Declared in this order so the window goes before its font and its class.
  ScopedWindowClass class_;
  UniqueHFont font_;
  UniqueHWnd window_;
  HWND label_ = nullptr;
};

}  // namespace corvina::win32
