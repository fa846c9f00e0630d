#include "platform/win32/msg_box_window.h"

#include <iterator>
#include <string>

#include "platform/win32/this_module.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmMsgBox";
constexpr int kDontShowId = 100;

// Layout in pixels of the client area.
constexpr int kMargin = 12, kTextWidth = 380, kGap = 8;
constexpr int kButtonWidth = 84, kButtonHeight = 26, kCheckHeight = 20;

struct Button {
  int id;
  MsgBoxButton result;
  bool visible;
  const std::wstring* caption;
};

struct State {
  Button buttons[4];
  bool dont_show_visible = false;
  HWND check = nullptr;
  bool done = false;
  MsgBoxAnswer answer;

  const Button* Find(int id) const {
    for (const Button& b : buttons)
      if (b.id == id) return &b;
    return nullptr;
  }
  int DefaultId() const {
    for (const Button& b : buttons)
      if (b.visible) return b.id;
    return IDCANCEL;
  }
  void Finish(MsgBoxButton button) {
    answer.button = button;
    answer.dont_show_checked =
        dont_show_visible && check && SendMessageW(check, BM_GETCHECK, 0, 0) == BST_CHECKED;
    done = true;
  }
};

LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  State* state = WindowSelf<State>(hwnd, message, lparam);
  if (state) {
    switch (message) {
      case DM_GETDEFID:  // Enter presses the first visible button
        return MAKELRESULT(state->DefaultId(), DC_HASDEFID);
      case WM_COMMAND: {
        const int id = LOWORD(wparam);
        const Button* b = state->Find(id);
        // Escape arrives as IDCANCEL even when Cancel is hidden: it closes the box.
        if (id == IDCANCEL) state->Finish(MsgBoxButton::kCancel);
        else if (b && b->visible) state->Finish(b->result);
        return 0;
      }
      case WM_CLOSE:
        state->Finish(MsgBoxButton::kCancel);
        return 0;
    }
  }
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

// Height of `text` word-wrapped to the label width in `font`.
int TextHeight(const std::wstring& text, HFONT font) {
  if (text.empty()) return 0;
  HDC dc = GetDC(nullptr);
  HGDIOBJ old = SelectObject(dc, font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT));
  RECT r{0, 0, kTextWidth, 0};
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &r,
            DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
  SelectObject(dc, old);
  ReleaseDC(nullptr, dc);
  return r.bottom - r.top;
}

HWND Child(HWND parent, const wchar_t* cls, const std::wstring& text, DWORD style, int id,
           RECT r, HFONT font) {
  HWND child = CreateWindowExW(0, cls, text.c_str(), WS_CHILD | WS_VISIBLE | style, r.left, r.top,
                               r.right - r.left, r.bottom - r.top, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(),
                               nullptr);
  if (child && font) SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return child;
}

}  // namespace

MsgBoxAnswer RunMsgBoxWindow(const MsgBoxView& view, HWND owner) {
  State state{{{IDYES, MsgBoxButton::kYes, view.yes_visible, &view.yes_caption},
               {IDNO, MsgBoxButton::kNo, view.no_visible, &view.no_caption},
               {IDOK, MsgBoxButton::kOk, view.ok_visible, &view.ok_caption},
               {IDCANCEL, MsgBoxButton::kCancel, view.cancel_visible, &view.cancel_caption}},
              view.dont_show_visible, nullptr, false, MsgBoxAnswer{}};
  ScopedWindowClass window_class(kClassName, Procedure);
  UniqueHFont font(CreateMessageFont());

  // Labels stacked, then the check box, then the row of visible buttons on the right.
  const int h1 = TextHeight(view.text, font.get());
  const int h2 = TextHeight(view.second_text, font.get());
  int y = kMargin;
  const RECT label1{kMargin, y, kMargin + kTextWidth, y + h1};
  y += h1 + (h2 ? kGap : 0);
  const RECT label2{kMargin, y, kMargin + kTextWidth, y + h2};
  y += h2 + kGap * 2;
  const RECT check{kMargin, y, kMargin + kTextWidth, y + kCheckHeight};
  if (view.dont_show_visible) y += kCheckHeight + kGap;
  const int width = kTextWidth + 2 * kMargin;
  const int height = y + kButtonHeight + kMargin;

  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  const DWORD ex_style = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
  RECT frame{0, 0, width, height};
  AdjustWindowRectEx(&frame, style, FALSE, ex_style);
  const int fw = frame.right - frame.left, fh = frame.bottom - frame.top;
  const POINT at = CentredOrigin(owner, fw, fh);
  UniqueHWnd window(CreateWindowExW(ex_style, kClassName, view.caption.c_str(), style, at.x, at.y,
                                    fw, fh, owner, nullptr, ThisModule(), &state));
  if (!window) return MsgBoxAnswer{};
  HWND hwnd = window.get();

  const DWORD label_style = SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL;
  Child(hwnd, L"STATIC", view.text, label_style, -1, label1, font.get());
  Child(hwnd, L"STATIC", view.second_text, label_style, -1, label2, font.get());
  if (view.dont_show_visible)
    state.check = Child(hwnd, L"BUTTON", view.dont_show_caption, BS_AUTOCHECKBOX | WS_TABSTOP,
                        kDontShowId, check, font.get());
  int bx = width - kMargin;
  HWND first_button = nullptr;
  for (auto b = std::rbegin(state.buttons); b != std::rend(state.buttons); ++b) {
    if (!b->visible) continue;
    bx -= kButtonWidth;
    const RECT r{bx, y, bx + kButtonWidth, y + kButtonHeight};
    const DWORD kind = b->id == state.DefaultId() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    first_button = Child(hwnd, L"BUTTON", *b->caption, kind | WS_TABSTOP, b->id, r, font.get());
    bx -= kGap;
  }

  // Modal to the owner: it takes no input until the box is gone.
  const bool disable_owner = owner && IsWindowEnabled(owner);
  if (disable_owner) EnableWindow(owner, FALSE);
  ShowWindow(hwnd, SW_SHOW);
  SetForegroundWindow(hwnd);
  if (first_button) SetFocus(first_button);

  MSG msg;
  while (!state.done) {
    const BOOL got = GetMessageW(&msg, nullptr, 0, 0);
    if (got <= 0) {
      // WM_QUIT belongs to the host's own loop: hand it back and close the box.
      if (got == 0) PostQuitMessage(static_cast<int>(msg.wParam));
      state.Finish(MsgBoxButton::kCancel);
      break;
    }
    if (!IsDialogMessageW(hwnd, &msg)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  }
  // The owner is enabled again before the box goes, so Windows gives it back the focus.
  if (disable_owner) EnableWindow(owner, TRUE);
  return state.answer;
}

}  // namespace corvina::win32
