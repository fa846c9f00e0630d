#pragma once
// What the two non-modal virus windows share: a resizable top-level window in the message
// font, laid out in dialog units, whose procedure lets no exception out. The host's message
// loop is Outlook's, which knows nothing of dialogs, so the controls themselves turn Escape
// into closing the window and Tab into moving to the next control.
#include <functional>
#include <string>
#include <utility>

#include "platform/win32/chat/chat_dialog_units.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

class FrameWindow {
 public:
  explicit FrameWindow(const wchar_t* class_name) noexcept;
  virtual ~FrameWindow();
  FrameWindow(const FrameWindow&) = delete;
  FrameWindow& operator=(const FrameWindow&) = delete;

  HWND hwnd() const noexcept { return window_.get(); }
  HWND Item(int id) const noexcept { return GetDlgItem(window_.get(), id); }
  // Closes the window; safe from inside its own message handling, and the object may still
  // be called afterwards (a later Show opens a new window).
  void Destroy() noexcept;
  // True while one of the window's messages is being handled: the object must outlive that.
  bool busy() const noexcept { return depth_ > 0; }

 protected:
  // The window, shown and in front, `size` pixels with its frame, centred on the active
  // window's monitor. False when it cannot be made (no display).
  bool Create(const std::wstring& caption, SIZE size, bool right_to_left) noexcept;
  // A child control in the message font, placed later by the layout.
  HWND AddChild(const wchar_t* window_class, const std::wstring& text, DWORD style, int id,
                DWORD ex_style = 0) noexcept;
  HFONT font() const noexcept { return font_.get(); }
  const DialogUnits& units() const noexcept { return units_; }

  // What closing the window (its X, Escape, a Close button) reports to the core.
  virtual const std::function<void()>& CloseEvent() const noexcept = 0;
  // The window's messages; anything not handled goes to Default.
  virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) = 0;
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return DefWindowProcW(window_.get(), message, wparam, lparam);
  }
  // Runs an event with a copy of its handler: the handler may replace the events or close
  // the window. The core logs its own failures; nothing may leave a window procedure.
  template <class F, class... Args>
  static void Fire(const F& handler, Args&&... args) noexcept {
    try {
      F copy = handler;
      if (copy) copy(std::forward<Args>(args)...);
    } catch (...) {
    }
  }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  static LRESULT CALLBACK KeyProcedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                       UINT_PTR id, DWORD_PTR self);
  LRESULT Common(UINT message, WPARAM wparam, LPARAM lparam);

  ScopedWindowClass class_;
  UniqueHFont font_;
  DialogUnits units_;
  int depth_ = 0;
  HWND last_focus_ = nullptr;
  UniqueHWnd window_;
};

// Positions a control (nothing for a missing one); sizes below zero count as zero.
void Place(HWND control, int x, int y, int width, int height) noexcept;
// Sets a control's text only when it differs, so an unchanged view does not flicker.
void SetTextIfChanged(HWND control, const std::wstring& text);

}  // namespace corvina::win32
