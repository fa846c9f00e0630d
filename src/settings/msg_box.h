#pragma once
// frmMsgBox: the add-in's own modal question box. The caller reads the two result values
// after ShowMsgBox returns.
#include <cstdint>
#include <string>

#include "language/language.h"
#include "platform/user_interface.h"

namespace corvina {

inline constexpr int32_t kMsgBoxYes = 1;
inline constexpr int32_t kMsgBoxNo = 2;
inline constexpr int32_t kMsgBoxCancel = 3;
inline constexpr int32_t kMsgBoxOk = 4;
inline constexpr int32_t kDontShowTicked = 1;
inline constexpr int32_t kDontShowClear = 2;

class MsgBoxForm {
 public:
  explicit MsgBoxForm(std::wstring language = L"English") : language_(std::move(language)) {}

  // The box as designed, its captions in `language`: Yes and No showing, OK, Cancel and the
  // check box hidden.
  static MsgBoxView DesignTimeView(std::wstring_view language);

  // What the box looks like for these arguments (no window involved).
  static MsgBoxView Prepare(const std::wstring& text, const std::wstring& second_text,
                            const std::wstring& caption, int32_t InMsgBoxButtons,
                            int32_t InMsgBoxDontShowAgain, std::wstring_view language = L"English");

  // Shows the box modally through `ui` and records the pressed button and the check box.
  void ShowMsgBox(UserInterface& ui, const std::wstring& text, const std::wstring& second_text,
                  const std::wstring& caption, int32_t InMsgBoxButtons,
                  int32_t InMsgBoxDontShowAgain);

  int32_t MsgBoxResult = 0;
  int32_t DontShowAgainResult = kDontShowClear;

 private:
  std::wstring language_;
};

}  // namespace corvina
