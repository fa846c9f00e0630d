// The rule wizard as a real modal dialog. A test hook types and presses buttons with the
// messages a user's input sends, or posts keys that the wizard's own loop handles.
#include "platform/win32/virus/rule_wizard.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"
#include "png_writer.h"

namespace corvina::win32 {
namespace {

void Type(HWND d, int id, const wchar_t* text) { SetWindowTextW(GetDlgItem(d, id), text); }
void Press(HWND d, int id) { SendMessageW(GetDlgItem(d, id), BM_CLICK, 0, 0); }
void Key(WPARAM key) { PostMessageW(GetFocus(), WM_KEYDOWN, key, 0); }
// 1 or 2 by the fields shown, 0 when neither or both.
int Step(HWND d) {
  const bool name = IsWindowVisible(GetDlgItem(d, kWizardDescription));
  const bool values = IsWindowVisible(GetDlgItem(d, kWizardSubject));
  return name == values ? 0 : name ? 1 : 2;
}

std::wstring Values(const RuleValues& v) {
  return v.description + L"|" + v.subject + L"|" + v.body + L"|" + v.attachment + L"|" + v.from + L"|" +
         (v.active ? L"on" : L"off");
}

class RuleWizardTest : public testing::Test {
 protected:
  void SetUp() override {
    owner_.reset(CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100,
                                 nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(owner_);
    view.caption = L"New rule";
    view.values = {L"Old name", L"", L"click here", L"", L"", true};
    events.accept_name = [this](const std::wstring& name) {
      log.push_back(L"name:" + name);
      return Answer();
    };
    events.describe = [this](const RuleValues& v) {
      log.push_back(L"describe:" + Values(v));
      return L"Deletes mails whose subject holds \"" + v.subject + L"\"\nand more";
    };
    events.accept_values = [this](const RuleValues& v) {
      log.push_back(L"values:" + Values(v));
      return Answer();
    };
  }
  void TearDown() override { SetRuleWizardShownHookForTesting({}); }

  bool Answer() {
    if (answers.empty()) return false;
    const bool answer = answers.front();
    answers.pop_front();
    return answer;
  }

  UniqueHWnd owner_;
  RuleWizardView view;
  RuleWizardEvents events;
  std::deque<bool> answers;  // for accept_name and accept_values, in turn
  std::vector<std::wstring> log;
};

TEST_F(RuleWizardTest, MovesOnAndFinishesOnlyWhenTheCoreAgrees) {
  const std::wstring described = L"describe:Mine|Win|click here|||on";
  const struct {
    const char* name;
    std::deque<bool> answers;
    std::function<void(HWND, std::vector<int>& steps)> act;
    std::vector<int> steps;  // Step() after each observation
    bool accepted;
    std::vector<std::wstring> log;
  } cases[] = {
      {"a refused name keeps the name step; Cancel",
       {false},
       [](HWND d, std::vector<int>& steps) {
         steps.push_back(Step(d));
         Type(d, kWizardDescription, L"Bad");
         Press(d, kWizardNext);
         steps.push_back(Step(d));
         Press(d, IDCANCEL);
       },
       {1, 1}, false, {L"name:Bad"}},
      {"the values are described as typed; Back and Next; Finish agreed",
       {true, true, true},
       [](HWND d, std::vector<int>& steps) {
         Type(d, kWizardDescription, L"Mine");
         Press(d, kWizardNext);
         steps.push_back(Step(d));
         Type(d, kWizardSubject, L"Win");
         EXPECT_EQ(WindowText(GetDlgItem(d, kWizardSentence)),
                   L"Deletes mails whose subject holds \"Win\"\r\nand more");
         EXPECT_EQ(WindowText(GetDlgItem(d, kWizardStep)), RuleWizardLabels{}.values_step);
         EXPECT_TRUE(WritePng(L"rule_wizard.png", d));
         Press(d, kWizardBack);
         steps.push_back(Step(d));
         Press(d, kWizardNext);
         steps.push_back(Step(d));
         Press(d, kWizardActive);
         Press(d, IDOK);
       },
       {2, 1, 2}, true,
       {L"name:Mine", L"describe:Mine||click here|||on", described, L"name:Mine", described,
        L"describe:Mine|Win|click here|||off", L"values:Mine|Win|click here|||off"}},
      {"a refused Finish keeps the wizard open; Escape",
       {true, false},
       [](HWND d, std::vector<int>& steps) {
         Type(d, kWizardDescription, L"Mine");
         Press(d, kWizardNext);
         Press(d, IDOK);
         steps.push_back(Step(d));
         Key(VK_ESCAPE);
       },
       {2}, false,
       {L"name:Mine", L"describe:Mine||click here|||on", L"values:Mine||click here|||on"}},
      {"Enter moves on, then finishes",
       {true, true},
       [](HWND d, std::vector<int>& steps) {
         steps.push_back(Step(d));
         Key(VK_RETURN);
         Key(VK_RETURN);
       },
       {1}, true,
       {L"name:Old name", L"describe:Old name||click here|||on", L"values:Old name||click here|||on"}},
      {"closing the window cancels", {}, [](HWND d, std::vector<int>&) { SendMessageW(d, WM_SYSCOMMAND, SC_CLOSE, 0); },
       {}, false, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    answers = c.answers;
    log.clear();
    std::vector<int> steps;
    bool shown = false, owner_enabled = true;
    SetRuleWizardShownHookForTesting([&](HWND d) {
      shown = true;
      owner_enabled = IsWindowEnabled(owner_.get());
      EXPECT_EQ(GetDlgCtrlID(GetFocus()), kWizardDescription);
      EXPECT_EQ(WindowText(d), L"New rule");
      c.act(d, steps);
    });
    RuleWizardView edited = view;
    EXPECT_EQ(RunRuleWizard(edited, events, owner_.get()), c.accepted);
    EXPECT_TRUE(shown);
    EXPECT_FALSE(owner_enabled) << "the owner takes input while the wizard is up";
    EXPECT_EQ(steps, c.steps);
    EXPECT_EQ(log, c.log);
    // The values as the core last agreed to them, or the view untouched.
    const std::wstring want = c.accepted ? log.back().substr(7) : Values(view.values);
    EXPECT_EQ(Values(edited.values), want);
  }
}

// Outlook closing the window the wizard belongs to ends the wizard, as cancelled.
TEST_F(RuleWizardTest, EndsWhenItsOwnerCloses) {
  answers = {true};
  SetRuleWizardShownHookForTesting([this](HWND d) {
    Press(d, kWizardNext);
    DestroyWindow(owner_.release());
  });
  RuleWizardView edited = view;
  EXPECT_FALSE(RunRuleWizard(edited, events, owner_.get()));
  EXPECT_EQ(Values(edited.values), Values(view.values));
}

}  // namespace
}  // namespace corvina::win32
