#include "platform/win32/chat/chat_dialog_window.h"

#include <functional>
#include <utility>

#include "platform/win32/chat/chat_dialogs.h"
#include "platform/win32/this_module.h"

namespace corvina::win32 {
namespace {

std::function<void(HWND)>& ShownHook() {
  static std::function<void(HWND)> hook;
  return hook;
}

bool IsEdit(HWND control) {
  wchar_t name[16] = {};
  GetClassNameW(control, name, 16);
  return lstrcmpiW(name, L"Edit") == 0;
}

}  // namespace

void SetChatDialogShownHookForTesting(std::function<void(HWND dialog)> hook) {
  ShownHook() = std::move(hook);
}

ChatDialogWindow::ChatDialogWindow(const wchar_t* class_name) noexcept
    : class_(class_name, &ChatDialogWindow::Procedure),
      font_(CreateMessageFont()),
      units_(MeasureDialogUnits(font_.get())) {}

bool ChatDialogWindow::Create(HWND owner, const std::wstring& caption, SIZE client,
                              bool right_to_left) noexcept {
  owner_ = owner;
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  const DWORD ex_style =
      WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT | (right_to_left ? WS_EX_LAYOUTRTL : 0);
  RECT frame{0, 0, client.cx, client.cy};
  AdjustWindowRectEx(&frame, style, FALSE, ex_style);
  const int width = frame.right - frame.left, height = frame.bottom - frame.top;
  const POINT at = CentredOrigin(owner, width, height);
  window_.reset(CreateWindowExW(ex_style, class_.name(), caption.c_str(), style, at.x, at.y, width,
                                height, owner, nullptr, ThisModule(), this));
  return static_cast<bool>(window_);
}

HWND ChatDialogWindow::AddControl(const wchar_t* window_class, const std::wstring& text,
                                  DWORD style, int id, RECT r, DWORD ex_style) noexcept {
  HWND child = CreateWindowExW(ex_style, window_class, text.c_str(), WS_CHILD | WS_VISIBLE | style,
                               r.left, r.top, r.right - r.left, r.bottom - r.top, window_.get(),
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(),
                               nullptr);
  if (child && font_) SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  return child;
}

HWND ChatDialogWindow::AddDropDownList(int id, RECT r, DWORD extra_style, int item_height,
                                       int visible_items) noexcept {
  const int field = r.bottom - r.top;
  r.bottom = r.top + field + visible_items * item_height + 2;  // the height a dropped list gets
  HWND combo = AddControl(L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | WS_GROUP |
                                                extra_style, id, r);
  if (!combo) return nullptr;
  SendMessageW(combo, CB_SETITEMHEIGHT, 0, item_height);
  // The closed field is its item height plus a border the system decides: measure the border
  // so the field lines up with the edits beside it.
  RECT shown{};
  GetWindowRect(combo, &shown);
  const int current = static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
  const int wanted = current + field - (shown.bottom - shown.top);
  if (current > 0 && wanted > 0)
    SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), wanted);
  return combo;
}

void ChatDialogWindow::AddButtons(int top, int client_width) noexcept {
  const int width = units_.X(50), height = units_.Y(14), gap = units_.X(4);
  const int right = client_width - units_.X(7);
  AddControl(L"BUTTON", L"OK", BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP, IDOK,
             RECT{right - 2 * width - gap, top, right - width - gap, top + height});
  AddControl(L"BUTTON", L"Cancel", BS_PUSHBUTTON | WS_TABSTOP, IDCANCEL,
             RECT{right - width, top, right, top + height});
}

std::wstring ChatDialogWindow::ControlText(int id) const {
  return WindowText(GetDlgItem(window_.get(), id));
}

bool ChatDialogWindow::RunModal(HWND first) {
  HWND hwnd = window_.get();
  if (!hwnd) return false;
  // Modal to the owner: it takes no input until the dialog is gone.
  const bool disable_owner = owner_ && IsWindowEnabled(owner_);
  if (disable_owner) EnableWindow(owner_, FALSE);
  ShowWindow(hwnd, SW_SHOW);
  SetForegroundWindow(hwnd);
  if (first) {
    SetFocus(first);
    if (IsEdit(first)) SendMessageW(first, EM_SETSEL, 0, -1);
  }
  UpdateWindow(hwnd);
  if (ShownHook()) {
    try {
      ShownHook()(hwnd);
    } catch (...) {
      Finish(false);
    }
  }

  MSG msg;
  while (!done_) {
    const BOOL got = GetMessageW(&msg, nullptr, 0, 0);
    if (got <= 0) {
      // WM_QUIT belongs to the host's own loop: hand it back and cancel.
      if (got == 0) PostQuitMessage(static_cast<int>(msg.wParam));
      Finish(false);
      break;
    }
    if (!IsDialogMessageW(hwnd, &msg)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  }
  // The owner is enabled before the dialog goes, so Windows gives it back the focus.
  if (disable_owner) EnableWindow(owner_, TRUE);
  ShowWindow(hwnd, SW_HIDE);
  return accepted_;
}

void ChatDialogWindow::Finish(bool accepted) noexcept {
  accepted_ = accepted;
  done_ = true;
}

LRESULT ChatDialogWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case DM_GETDEFID:
      return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_COMMAND:
      if (done_) return 0;  // a second press while the loop winds down
      if (LOWORD(wparam) == IDOK && HIWORD(wparam) == BN_CLICKED) {
        Accept();
        Finish(true);
        return 0;
      }
      if (LOWORD(wparam) == IDCANCEL) {
        Finish(false);
        return 0;
      }
      break;
    case WM_CLOSE:
      Finish(false);
      return 0;
    case WM_ACTIVATE:
      // A window that is not a system dialog keeps no focus of its own: remember the field
      // the user left and go back to it.
      if (LOWORD(wparam) == WA_INACTIVE) {
        last_focus_ = GetFocus();
      } else if (last_focus_ && IsChild(window_.get(), last_focus_)) {
        SetFocus(last_focus_);
        return 0;
      }
      break;
    case WM_DRAWITEM:
      if (DrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam))) return TRUE;
      break;
  }
  return DefWindowProcW(window_.get(), message, wparam, lparam);
}

LRESULT CALLBACK ChatDialogWindow::Procedure(HWND hwnd, UINT message, WPARAM wparam,
                                             LPARAM lparam) {
  auto* self = WindowSelf<ChatDialogWindow>(hwnd, message, lparam);
  // Until CreateWindowExW returns, window_ does not hold the handle yet.
  if (!self || self->window_.get() != hwnd) return DefWindowProcW(hwnd, message, wparam, lparam);
  try {
    return self->Handle(message, wparam, lparam);
  } catch (...) {
    self->Finish(false);  // a field that could not be read: the view stays as it was
    return 0;
  }
}

}  // namespace corvina::win32
