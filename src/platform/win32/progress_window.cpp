#include "platform/win32/progress_window.h"

#include "platform/win32/this_module.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmInit";
constexpr wchar_t kCaption[] = L"Corvina";
constexpr int kWidth = 360, kHeight = 64, kMargin = 16;

}  // namespace

ProgressWindow::ProgressWindow(const std::wstring& text)
    : class_(kClassName, DefWindowProcW), font_(CreateMessageFont()) {
  // No system menu: the user cannot close it; the add-in unloads it when start-up is done.
  const DWORD style = WS_POPUP | WS_CAPTION | WS_BORDER;
  RECT frame{0, 0, kWidth, kHeight};
  AdjustWindowRectEx(&frame, style, FALSE, WS_EX_TOOLWINDOW);
  const int w = frame.right - frame.left, h = frame.bottom - frame.top;
  const POINT at = CentredOrigin(GetActiveWindow(), w, h);
  window_.reset(CreateWindowExW(WS_EX_TOOLWINDOW, kClassName, kCaption, style, at.x, at.y, w, h,
                                nullptr, nullptr, ThisModule(), nullptr));
  if (!window_) return;
  label_ = CreateWindowExW(0, L"STATIC", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX,
                           kMargin, kMargin, kWidth - 2 * kMargin, kHeight - 2 * kMargin,
                           window_.get(), nullptr, ThisModule(), nullptr);
  if (label_ && font_) SendMessageW(label_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  // Shown without taking the focus from Outlook.
  ShowWindow(window_.get(), SW_SHOWNOACTIVATE);
  UpdateWindow(window_.get());
}

void ProgressWindow::SetText(const std::wstring& text) {
  if (!label_) return;
  SetWindowTextW(label_, text.c_str());
  UpdateWindow(window_.get());
}

}  // namespace corvina::win32
