#include "platform/sim/scripted_user_interface.h"

#include <gtest/gtest.h>

#include <optional>

namespace corvina::sim {
namespace {

TEST(ScriptedUserInterfaceTest, MsgBoxAnswersFromTheQueueOrItsFirstButton) {
  const struct {
    int32_t style;
    std::optional<int32_t> queued;
    int32_t result;
    bool defaulted;
    bool rejected;
  } kCases[] = {
      {vbYesNo | vbQuestion, std::nullopt, vbYes, true, false},
      {vbOKOnly, std::nullopt, vbOK, true, false},
      {vbYesNoCancel, vbCancel, vbCancel, false, false},
      {vbYesNo, vbNo, vbNo, false, false},
      {vbOKCancel, vbYes, vbCancel, false, true},  // no Yes button on the box
  };
  for (const auto& c : kCases) {
    Faults faults;
    ScriptedUserInterface ui(faults);
    if (c.queued) ui.QueueMsgBoxAnswer(*c.queued);
    EXPECT_EQ(ui.MsgBox(L"Save?", c.style, L"Corvina"), c.result) << c.style;
    ASSERT_EQ(ui.events().size(), 1u);
    EXPECT_EQ(ui.events()[0].defaulted, c.defaulted) << c.style;
    EXPECT_EQ(ui.events()[0].rejected_answer, c.rejected) << c.style;
    EXPECT_EQ(ui.script_errors().size(), c.rejected ? 1u : 0u);
  }
}

TEST(ScriptedUserInterfaceTest, ShowMsgBoxAnswersOnlyWithVisibleButtons) {
  Faults faults;
  ScriptedUserInterface ui(faults);
  MsgBoxView view;
  view.caption = L"Corvina";
  view.text = L"Replace a.txt?";
  view.yes_visible = false;
  view.dont_show_visible = true;
  ui.QueueShowMsgBoxAnswer({MsgBoxButton::kNo, true});
  ui.QueueShowMsgBoxAnswer({MsgBoxButton::kOk, false});  // OK is hidden
  EXPECT_EQ(ui.ShowMsgBox(view).dont_show_checked, true);
  EXPECT_EQ(ui.ShowMsgBox(view).button, MsgBoxButton::kCancel);
  EXPECT_EQ(ui.ShowMsgBox(view).button, MsgBoxButton::kNo);  // first visible of Yes, OK, No
  view.no_visible = false;
  EXPECT_EQ(ui.ShowMsgBox(view).button, MsgBoxButton::kCancel);  // no button: closing
  EXPECT_EQ(ui.script_errors().size(), 1u);
  EXPECT_EQ(
      ui.Transcript()[0],
      L"[dialog] \"Corvina\" No +don't-show \"Replace a.txt?\" | \"\" -> No, don't show again");
}

TEST(ScriptedUserInterfaceTest, RecordsFormsProgressAndBoxesInOrder) {
  Faults faults;
  ScriptedUserInterface ui(faults);
  std::vector<std::wstring> echoed;
  ui.set_echo([&](const std::wstring& line) { echoed.push_back(line); });
  ui.LoadForm(L"frmInit");
  ui.SetProgressText(L"Loading rules ...");
  ui.DoEvents();
  ui.LoadForm(L"frmInit");
  ui.LoadForm(L"frmProperties");
  ui.QueueMsgBoxAnswer(vbNo);
  ui.MsgBox(L"Line one\r\nline two", vbYesNo | vbExclamation, L"Corvina");
  ui.UnloadForm(L"FRMINIT");
  EXPECT_EQ(ui.LoadedForms(), std::vector<std::wstring>{L"frmProperties"});
  EXPECT_EQ(ui.do_events_count(), 1u);
  const std::vector<std::wstring> kExpected = {
      L"[form] load frmInit",
      L"[progress] \"Loading rules ...\"",
      L"[form] load frmInit",
      L"[form] load frmProperties",
      L"[box] \"Corvina\" Yes/No ! \"Line one\\nline two\" -> No",
      L"[form] unload FRMINIT",
  };
  EXPECT_EQ(ui.Transcript(), kExpected);
  EXPECT_EQ(echoed, kExpected);
  EXPECT_EQ(faults.Calls(Service::kUserInterface), 8u);
}

TEST(ScriptedUserInterfaceTest, AFailedCallTakesNoAnswerAndRecordsNothing) {
  Faults faults;
  ScriptedUserInterface ui(faults);
  ui.QueueMsgBoxAnswer(vbNo);
  faults.FailNthCall(Service::kUserInterface, 1, Error(5, L"UserInterface", L"failed"));
  EXPECT_THROW(ui.MsgBox(L"?", vbYesNo, L"Corvina"), Error);
  EXPECT_TRUE(ui.events().empty());
  EXPECT_EQ(ui.PendingMsgBoxAnswers(), 1u);
}

}  // namespace
}  // namespace corvina::sim

namespace corvina::sim {
namespace {

// frmSaving's Cancel reaches the job through the handlers its form was shown with; once the
// form is unloaded its button is gone, and a press reaches nobody.
TEST(ScriptedUserInterfaceTest, CancelReachesOnlyTheSavingFormThatIsLoaded) {
  Faults faults;
  ScriptedUserInterface ui(faults);
  int cancels = 0;
  SavingFormEvents events;
  events.cancel = [&] { ++cancels; };
  ui.LoadForm(L"frmSaving");
  ui.ShowSavingForm(SavingFormView{}, events);
  ui.PressSavingCancel();
  ui.DoEvents();
  EXPECT_EQ(cancels, 1);
  ui.LoadForm(L"frmOther");
  ui.UnloadForm(L"frmOther");  // another form going leaves the buttons as they are
  ui.PressSavingCancel();
  ui.DoEvents();
  EXPECT_EQ(cancels, 2);
  ui.UnloadForm(L"FRMSAVING");
  ui.PressSavingCancel();
  ui.DoEvents();
  EXPECT_EQ(cancels, 2);
}

}  // namespace
}  // namespace corvina::sim

namespace corvina::sim {
namespace {

TEST(ScriptedUserInterfaceTest, OnlyALoadedFormComesToTheFrontAndTheCallCanFail) {
  Faults faults;
  ScriptedUserInterface ui(faults);
  ui.BringFormToFront(L"frmSaving");  // not loaded: nothing to show
  ui.LoadForm(L"frmSaving");
  faults.FailCall("BringFormToFront", Error(5, L"UserInterface", L"failed"));
  EXPECT_THROW(ui.BringFormToFront(L"frmSaving"), Error);
  ui.BringFormToFront(L"FRMSAVING");
  std::vector<std::wstring> lines = ui.Transcript();
  EXPECT_EQ(lines, (std::vector<std::wstring>{L"[form] load frmSaving", L"[form] to the front FRMSAVING"}));
}

}  // namespace
}  // namespace corvina::sim
