#include "platform/win32/auto_answer.h"

#include <gtest/gtest.h>

#include "platform/win32/win32_user_interface.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

TEST(AutoAnswerTest, ParsesTheFourAnswersInAnyCase) {
  EXPECT_EQ(ParseAutoAnswer(L"YES"), AutoAnswer::kYes);
  EXPECT_EQ(ParseAutoAnswer(L" no "), AutoAnswer::kNo);
  EXPECT_EQ(ParseAutoAnswer(L"Ok"), AutoAnswer::kOk);
  EXPECT_EQ(ParseAutoAnswer(L"cancel"), AutoAnswer::kCancel);
  EXPECT_EQ(ParseAutoAnswer(L""), std::nullopt);
  EXPECT_EQ(ParseAutoAnswer(L"maybe"), std::nullopt);
}

TEST(AutoAnswerTest, PlainBoxPressesTheNamedButtonOrItsStandIn) {
  constexpr int32_t vbAbortRetryIgnore = 2, vbRetryCancel = 5, vbAbort = 3, vbIgnore = 5, vbRetry = 4;
  struct Row {
    AutoAnswer answer;
    int32_t style;
    int32_t result;
  } rows[] = {
      {AutoAnswer::kYes, vbYesNo | vbQuestion, vbYes},
      {AutoAnswer::kNo, vbYesNoCancel, vbNo},
      {AutoAnswer::kCancel, vbYesNoCancel | vbDefaultButton2, vbCancel},
      {AutoAnswer::kCancel, vbYesNo, vbNo},
      {AutoAnswer::kYes, vbOKCancel, vbOK},
      {AutoAnswer::kNo, vbOKCancel, vbCancel},
      {AutoAnswer::kOk, vbYesNo, vbYes},
      {AutoAnswer::kNo, vbOKOnly | vbCritical, vbOK},
      {AutoAnswer::kYes, vbAbortRetryIgnore, vbAbort},
      {AutoAnswer::kNo, vbAbortRetryIgnore, vbIgnore},
      {AutoAnswer::kOk, vbRetryCancel, vbRetry},
  };
  for (const Row& r : rows)
    EXPECT_EQ(AutoMsgBoxResult(r.answer, r.style), r.result)
        << static_cast<int>(r.answer) << " style " << r.style;
}

TEST(AutoAnswerTest, OwnBoxAnswersAmongItsVisibleButtonsAndLeavesTheCheckBoxClear) {
  MsgBoxView yes_no;  // Yes and No visible
  MsgBoxView ok_only;
  ok_only.yes_visible = ok_only.no_visible = false;
  ok_only.ok_visible = ok_only.dont_show_visible = true;
  struct Row {
    AutoAnswer answer;
    const MsgBoxView& view;
    MsgBoxButton button;
  } rows[] = {
      {AutoAnswer::kYes, yes_no, MsgBoxButton::kYes},  {AutoAnswer::kOk, yes_no, MsgBoxButton::kYes},
      {AutoAnswer::kNo, yes_no, MsgBoxButton::kNo},    {AutoAnswer::kCancel, yes_no, MsgBoxButton::kCancel},
      {AutoAnswer::kYes, ok_only, MsgBoxButton::kOk},  {AutoAnswer::kNo, ok_only, MsgBoxButton::kCancel},
  };
  for (const Row& r : rows) {
    const MsgBoxAnswer a = AutoShowMsgBoxAnswer(r.answer, r.view);
    EXPECT_EQ(a.button, r.button) << static_cast<int>(r.answer);
    EXPECT_FALSE(a.dont_show_checked);
  }
}

TEST(Win32UserInterfaceTest, FormsAreListedOnceInLoadOrderAndBoxesAnswerFromTheEnvironment) {
  SetEnvironmentVariableW(kAutoAnswerVariable, L"no");
  Win32UserInterface ui;  // reads the variable now; the progress window needs no answer
  SetEnvironmentVariableW(kAutoAnswerVariable, L"yes");
  ui.LoadForm(L"frmInit");
  ui.SetProgressText(L"Applying Version ...");
  ui.LoadForm(L"frmTrayMenu");
  ui.LoadForm(L"FRMINIT");
  ui.LoadForm(L"frmChat");
  ui.DoEvents();
  EXPECT_EQ(ui.LoadedForms(), (std::vector<std::wstring>{L"frmInit", L"frmTrayMenu", L"frmChat"}));
  ui.UnloadForm(L"frminit");
  ui.UnloadForm(L"frmNeverLoaded");
  EXPECT_EQ(ui.LoadedForms(), (std::vector<std::wstring>{L"frmTrayMenu", L"frmChat"}));
  EXPECT_EQ(ui.MsgBox(L"Delete?", vbYesNo, L"Corvina"), vbNo);
  EXPECT_EQ(ui.ShowMsgBox(MsgBoxView{}).button, MsgBoxButton::kNo);
}

}  // namespace
}  // namespace corvina::win32
