#include "platform/win32/virus/frame_window.h"

#include <algorithm>

#include <commctrl.h>

#include "platform/win32/this_module.h"

namespace corvina::win32 {
namespace {

constexpr UINT_PTR kKeySubclass = 1;

bool ShiftDown() { return (GetKeyState(VK_SHIFT) & 0x8000) != 0; }

}  // namespace

FrameWindow::FrameWindow(const wchar_t* class_name) noexcept
    : class_(class_name, &FrameWindow::Procedure),
      font_(CreateMessageFont()),
      units_(MeasureDialogUnits(font_.get())) {}

FrameWindow::~FrameWindow() { Destroy(); }

void FrameWindow::Destroy() noexcept {
  if (!window_) return;
  // The handle is let go of first: messages the closing window still gets go by default.
  window_.reset();
  last_focus_ = nullptr;
}

bool FrameWindow::Create(const std::wstring& caption, SIZE size, bool right_to_left) noexcept {
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  const DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  const DWORD ex_style = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT | (right_to_left ? WS_EX_LAYOUTRTL : 0);
  const POINT at = CentredOrigin(GetActiveWindow(), size.cx, size.cy);
  window_.reset(CreateWindowExW(ex_style, class_.name(), caption.c_str(), style, at.x, at.y, size.cx,
                                size.cy, nullptr, nullptr, ThisModule(), this));
  return static_cast<bool>(window_);
}

HWND FrameWindow::AddChild(const wchar_t* window_class, const std::wstring& text, DWORD style,
                           int id, DWORD ex_style) noexcept {
  HWND child = CreateWindowExW(ex_style, window_class, text.c_str(), WS_CHILD | WS_VISIBLE | style,
                               0, 0, 0, 0, window_.get(),
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(),
                               nullptr);
  if (!child) return nullptr;
  if (font_) SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  SetWindowSubclass(child, &FrameWindow::KeyProcedure, kKeySubclass,
                    reinterpret_cast<DWORD_PTR>(this));
  return child;
}

LRESULT CALLBACK FrameWindow::KeyProcedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                           UINT_PTR /*id*/, DWORD_PTR /*self*/) {
  try {
    if (message == WM_KEYDOWN && wparam == VK_ESCAPE) {
      // Posted: the control must not go while it is handling its own key.
      PostMessageW(GetAncestor(hwnd, GA_ROOT), WM_CLOSE, 0, 0);
      return 0;
    }
    if (message == WM_KEYDOWN && wparam == VK_TAB) {
      if (HWND next = GetNextDlgTabItem(GetAncestor(hwnd, GA_ROOT), hwnd, ShiftDown())) SetFocus(next);
      return 0;
    }
    if (message == WM_CHAR && (wparam == L'\t' || wparam == 27)) return 0;  // no beep
    if (message == WM_NCDESTROY) RemoveWindowSubclass(hwnd, &FrameWindow::KeyProcedure, kKeySubclass);
    return DefSubclassProc(hwnd, message, wparam, lparam);
  } catch (...) {
    return 0;
  }
}

LRESULT CALLBACK FrameWindow::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  FrameWindow* self = WindowSelf<FrameWindow>(hwnd, message, lparam);
  if (message == WM_NCDESTROY) SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
  // Until CreateWindowExW returns, and once Destroy has begun, the window is not handled.
  if (!self || self->window_.get() != hwnd) return DefWindowProcW(hwnd, message, wparam, lparam);
  ++self->depth_;
  LRESULT result = 0;
  try {
    result = self->Common(message, wparam, lparam);
  } catch (...) {
    result = DefWindowProcW(hwnd, message, wparam, lparam);
  }
  --self->depth_;
  return result;
}

LRESULT FrameWindow::Common(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_ACTIVATE:
      // A plain window keeps no focus of its own: remember the control the user left and go
      // back to it, or to the first control.
      if (LOWORD(wparam) == WA_INACTIVE) {
        HWND focus = GetFocus();
        if (focus && IsChild(window_.get(), focus)) last_focus_ = focus;
      } else {
        HWND to = last_focus_ && IsChild(window_.get(), last_focus_)
                      ? last_focus_
                      : GetNextDlgTabItem(window_.get(), nullptr, FALSE);
        if (to) {
          SetFocus(to);
          return 0;
        }
      }
      break;
    case WM_KEYDOWN:
      if (wparam == VK_ESCAPE) {
        PostMessageW(window_.get(), WM_CLOSE, 0, 0);
        return 0;
      }
      break;
    case WM_CLOSE:
      // The core unloads the form, which closes this window; without a core, it closes itself.
      if (const std::function<void()>& close = CloseEvent())
        Fire(close);
      else
        Destroy();
      return 0;
    default:
      break;
  }
  return Handle(message, wparam, lparam);
}

void Place(HWND control, int x, int y, int width, int height) noexcept {
  if (control) MoveWindow(control, x, y, std::max(width, 0), std::max(height, 0), FALSE);
}

void SetTextIfChanged(HWND control, const std::wstring& text) {
  if (control && WindowText(control) != text) SetWindowTextW(control, text.c_str());
}

}  // namespace corvina::win32
