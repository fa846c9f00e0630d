#pragma once
// frmSaving: the non-modal progress window of a save job, with its two count labels, the
// progress bar, Cancel and a button that hides it behind Outlook.
#include <string>

#include "platform/user_interface.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"

namespace corvina::win32 {

class SavingWindow {
 public:
  explicit SavingWindow(const SavingFormView& view);
  SavingWindow(const SavingWindow&) = delete;
  SavingWindow& operator=(const SavingWindow&) = delete;

  // Shows `view` and repaints at once (the job pumps messages only between attachments).
  void Show(const SavingFormView& view, const SavingFormEvents& events);
  // Shows the window again if hidden and puts it in front of Outlook's.
  void BringToFront();

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);

  ScopedWindowClass class_;
  UniqueHFont font_;
  UniqueHWnd window_;
  HWND caption_ = nullptr;
  HWND total_ = nullptr;
  HWND saved_ = nullptr;
  HWND progress_ = nullptr;
  SavingFormEvents events_;
};

}  // namespace corvina::win32
