#include "settings/msg_box.h"

#include "settings/config.h"

namespace corvina {

MsgBoxView MsgBoxForm::DesignTimeView(std::wstring_view language) {
  MsgBoxView view;
  view.caption = kProductName;
  view.yes_caption = LanguageText(language, TextId::kMsgBoxYes);
  view.no_caption = LanguageText(language, TextId::kMsgBoxNo);
  view.ok_caption = LanguageText(language, TextId::kMsgBoxOk);
  view.cancel_caption = LanguageText(language, TextId::kMsgBoxCancel);
  view.dont_show_caption = LanguageText(language, TextId::kMsgBoxDontShow);
  return view;
}

MsgBoxView MsgBoxForm::Prepare(const std::wstring& text, const std::wstring& second_text,
                               const std::wstring& caption, int32_t InMsgBoxButtons,
                               int32_t InMsgBoxDontShowAgain, std::wstring_view language) {
  MsgBoxView view = DesignTimeView(language);
  view.text = text;
  if (!second_text.empty()) view.second_text = second_text;
  if (!caption.empty()) view.caption = caption;
  // Only the value 2 changes the buttons (it adds Cancel). The box has a single-OK layout for
  // the value 0, but it was only ever reached from inside the non-zero test, so 0 has always
  // shown the design-time buttons; callers depend on that, and it is kept.
  if (InMsgBoxButtons != 0 && InMsgBoxButtons == 2) view.cancel_visible = true;
  if (InMsgBoxDontShowAgain == 2) view.dont_show_visible = true;
  return view;
}

void MsgBoxForm::ShowMsgBox(UserInterface& ui, const std::wstring& text,
                            const std::wstring& second_text, const std::wstring& caption,
                            int32_t InMsgBoxButtons, int32_t InMsgBoxDontShowAgain) {
  const MsgBoxView view = Prepare(text, second_text, caption, InMsgBoxButtons,
                                  InMsgBoxDontShowAgain, language_);
  ui.LoadForm(L"frmMsgBox");
  MsgBoxAnswer answer;
  try {
    answer = ui.ShowMsgBox(view);
  } catch (...) {
    ui.UnloadForm(L"frmMsgBox");
    throw;
  }
  ui.UnloadForm(L"frmMsgBox");
  switch (answer.button) {
    case MsgBoxButton::kYes: MsgBoxResult = kMsgBoxYes; break;
    case MsgBoxButton::kNo: MsgBoxResult = kMsgBoxNo; break;
    case MsgBoxButton::kCancel: MsgBoxResult = kMsgBoxCancel; break;
    case MsgBoxButton::kOk: MsgBoxResult = kMsgBoxOk; break;
  }
  DontShowAgainResult = answer.dont_show_checked ? kDontShowTicked : kDontShowClear;
}

}  // namespace corvina
