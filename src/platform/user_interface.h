#pragma once
// What the add-in shows the user. Windows' state and rules live in the core (the forms are
// thin); this interface only draws them and returns what the user did. The sim answers from a
// script and records everything it was shown.
#include <cstdint>
#include <string>
#include <vector>

namespace corvina {

// Classic message box style bits and results.
inline constexpr int32_t vbOKOnly = 0;
inline constexpr int32_t vbOKCancel = 1;
inline constexpr int32_t vbYesNoCancel = 3;
inline constexpr int32_t vbYesNo = 4;
inline constexpr int32_t vbCritical = 16;
inline constexpr int32_t vbQuestion = 32;
inline constexpr int32_t vbExclamation = 48;
inline constexpr int32_t vbInformation = 64;
inline constexpr int32_t vbDefaultButton2 = 256;

inline constexpr int32_t vbOK = 1;
inline constexpr int32_t vbCancel = 2;
inline constexpr int32_t vbYes = 6;
inline constexpr int32_t vbNo = 7;

// The add-in's own question box as it is about to be shown: labels, caption and which of its
// four buttons and its "don't show again" box are visible.
struct MsgBoxView {
  std::wstring text;
  std::wstring second_text;
  std::wstring caption;
  bool yes_visible = true;
  bool no_visible = true;
  bool ok_visible = false;
  bool cancel_visible = false;
  bool dont_show_visible = false;
  std::wstring yes_caption = L"Yes";
  std::wstring no_caption = L"No";
  std::wstring ok_caption = L"OK";
  std::wstring cancel_caption = L"Cancel";
};

enum class MsgBoxButton { kYes, kNo, kOk, kCancel };

struct MsgBoxAnswer {
  MsgBoxButton button = MsgBoxButton::kCancel;
  bool dont_show_checked = false;
};

class UserInterface {
 public:
  virtual ~UserInterface() = default;
  // A plain system message box; returns vbOK, vbCancel, vbYes or vbNo.
  virtual int32_t MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) = 0;
  // The add-in's own modal box; returns when the user pressed one of the visible buttons
  // (closing the window counts as Cancel).
  virtual MsgBoxAnswer ShowMsgBox(const MsgBoxView& view) = 0;

  // Forms by name: load (and show) one, unload one, list those loaded, in load order.
  virtual void LoadForm(const std::wstring& name) = 0;
  virtual void UnloadForm(const std::wstring& name) = 0;
  virtual std::vector<std::wstring> LoadedForms() = 0;

  // The status label of the progress form "frmInit".
  virtual void SetProgressText(const std::wstring& text) = 0;
  // Lets pending window messages run (DoEvents).
  virtual void DoEvents() = 0;
};

}  // namespace corvina
