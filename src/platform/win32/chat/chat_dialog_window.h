#pragma once
// What the chat dialogs share: a modal frame built in code with the message font, its
// controls, and the loop that runs it. Enter presses OK (IDOK is the default button), Escape
// and closing the window press Cancel. No exception leaves the window procedure: one that
// escapes a handler ends the dialog as cancelled.
#include <string>

#include "platform/win32/chat/chat_dialog_units.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"

namespace corvina::win32 {

class ChatDialogWindow {
 public:
  explicit ChatDialogWindow(const wchar_t* class_name) noexcept;
  virtual ~ChatDialogWindow() = default;
  ChatDialogWindow(const ChatDialogWindow&) = delete;
  ChatDialogWindow& operator=(const ChatDialogWindow&) = delete;

  const DialogUnits& units() const noexcept { return units_; }
  HFONT font() const noexcept { return font_.get(); }
  HWND hwnd() const noexcept { return window_.get(); }

  // The frame, hidden, with a client area of `client` pixels, centred on the owner's
  // monitor. False when it cannot be made (no display).
  bool Create(HWND owner, const std::wstring& caption, SIZE client, bool right_to_left) noexcept;
  // A child control in the message font; `r` is in client pixels.
  HWND AddControl(const wchar_t* window_class, const std::wstring& text, DWORD style, int id,
                  RECT r, DWORD ex_style = 0) noexcept;
  // A drop-down list whose closed field fills `r`, with list items `item_height` pixels high
  // and up to `visible_items` of them shown before the list scrolls.
  HWND AddDropDownList(int id, RECT r, DWORD extra_style, int item_height,
                       int visible_items) noexcept;
  // OK and Cancel, right-aligned (left-aligned in a right-to-left layout) on row `top`.
  void AddButtons(int top, int client_width) noexcept;

  // Shows the frame modal to the owner with the focus on `first`, and runs until OK or
  // Cancel. True when OK was pressed and Accept() succeeded.
  bool RunModal(HWND first);

  std::wstring ControlText(int id) const;

 protected:
  // OK was pressed: read the fields. A throw here ends the dialog as cancelled.
  virtual void Accept() {}
  // WM_DRAWITEM of an owner-drawn control; true when handled.
  virtual bool DrawItem(const DRAWITEMSTRUCT& /*item*/) { return false; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void Finish(bool accepted) noexcept;

  // Members are released in reverse: the window goes before its font and its class.
  ScopedWindowClass class_;
  UniqueHFont font_;
  DialogUnits units_;
  HWND owner_ = nullptr;
  HWND last_focus_ = nullptr;
  bool done_ = false;
  bool accepted_ = false;
  UniqueHWnd window_;
};

}  // namespace corvina::win32
