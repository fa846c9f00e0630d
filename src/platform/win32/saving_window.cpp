#include "platform/win32/saving_window.h"

#include <commctrl.h>

#include "platform/win32/this_module.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmSaving";
constexpr int kWidth = 380, kHeight = 150, kMargin = 12;
constexpr int kCancelId = 1, kHideId = 2;

HWND Child(HWND parent, const wchar_t* cls, const wchar_t* text, DWORD style, int x, int y, int w,
           int h, int id, HFONT font) {
  HWND child = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), nullptr);
  if (child && font) SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return child;
}

}  // namespace

SavingWindow::SavingWindow(const SavingFormView& view)
    : class_(kClassName, &SavingWindow::Procedure), font_(CreateMessageFont()) {
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&controls);
  const DWORD style = WS_POPUP | WS_CAPTION | WS_BORDER;
  const DWORD ex_style = WS_EX_TOOLWINDOW | (view.right_to_left ? WS_EX_LAYOUTRTL : 0);
  RECT frame{0, 0, kWidth, kHeight};
  AdjustWindowRectEx(&frame, style, FALSE, ex_style);
  const int w = frame.right - frame.left, h = frame.bottom - frame.top;
  window_.reset(CreateWindowExW(ex_style, kClassName, view.caption.c_str(), style,
                                (GetSystemMetrics(SM_CXSCREEN) - w) / 2,
                                (GetSystemMetrics(SM_CYSCREEN) - h) / 2, w, h, nullptr, nullptr,
                                ThisModule(), this));
  if (!window_) return;
  HWND wnd = window_.get();
  HFONT font = font_.get();
  const int inner = kWidth - 2 * kMargin;
  caption_ = Child(wnd, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, kMargin, kMargin, inner, 18, 0, font);
  total_ = Child(wnd, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, kMargin, 36, inner / 2, 18, 0, font);
  saved_ = Child(wnd, L"STATIC", L"", SS_RIGHT | SS_NOPREFIX, kMargin + inner / 2, 36, inner / 2, 18, 0, font);
  progress_ = Child(wnd, PROGRESS_CLASSW, L"", 0, kMargin, 60, inner, 18, 0, nullptr);
  Child(wnd, L"BUTTON", view.cancel_caption.c_str(), BS_PUSHBUTTON | WS_TABSTOP,
        kWidth - kMargin - 90, 104, 90, 28, kCancelId, font);
  Child(wnd, L"BUTTON", view.hide_caption.c_str(), BS_PUSHBUTTON | WS_TABSTOP,
        kWidth - kMargin - 190, 104, 90, 28, kHideId, font);
  ShowWindow(wnd, SW_SHOWNOACTIVATE);
}

void SavingWindow::Show(const SavingFormView& view, const SavingFormEvents& events) {
  events_ = events;
  if (!window_) return;
  SetWindowTextW(window_.get(), view.caption.c_str());
  SetWindowTextW(caption_, view.caption_label.c_str());
  SetWindowTextW(total_, view.total_label.c_str());
  SetWindowTextW(saved_, view.saved_label.c_str());
  SendMessageW(progress_, PBM_SETRANGE32, 0, view.progress_max > 0 ? view.progress_max : 1);
  SendMessageW(progress_, PBM_SETPOS, static_cast<WPARAM>(view.progress_value), 0);
  UpdateWindow(window_.get());
}

void SavingWindow::BringToFront() {
  if (!window_) return;
  ShowWindow(window_.get(), SW_SHOWNORMAL);
  SetForegroundWindow(window_.get());
}

LRESULT CALLBACK SavingWindow::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = WindowSelf<SavingWindow>(hwnd, message, lparam);
  if (self && message == WM_COMMAND && HIWORD(wparam) == BN_CLICKED) {
    // Buttons only raise flags or bring Outlook forward; a failure there is of no use to the
    // user and must not unwind through the message loop.
    try {
      if (LOWORD(wparam) == kCancelId && self->events_.cancel) self->events_.cancel();
      if (LOWORD(wparam) == kHideId && self->events_.hide) self->events_.hide();
    } catch (...) {
    }
    return 0;
  }
  if (message == WM_CLOSE) return 0;  // closed by the add-in only, when the job ends
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

}  // namespace corvina::win32
