#include "platform/win32/window_class.h"

#include "platform/win32/this_module.h"

namespace corvina::win32 {

ScopedWindowClass::ScopedWindowClass(const wchar_t* name, WNDPROC procedure) noexcept
    : name_(name) {
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = procedure;
  wc.hInstance = ThisModule();
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  wc.lpszClassName = name;
  // Already registered means a window of this class is open (a box over a box): it is used.
  RegisterClassExW(&wc);
}

ScopedWindowClass::~ScopedWindowClass() {
  // Fails, harmlessly, while another window of the class is still open.
  UnregisterClassW(name_, ThisModule());
}

HFONT CreateMessageFont() noexcept {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

POINT CentredOrigin(HWND owner, int width, int height) noexcept {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  if (GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &info)) area = info.rcWork;
  const LONG x = area.left + (area.right - area.left - width) / 2;
  const LONG y = area.top + (area.bottom - area.top - height) / 3;
  return POINT{x > area.left ? x : area.left, y > area.top ? y : area.top};
}

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

}  // namespace corvina::win32
