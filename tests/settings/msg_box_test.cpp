#include "settings/msg_box.h"

#include <gtest/gtest.h>

#include "support/sim_world.h"

namespace corvina {
namespace {

TEST(MsgBoxTest, ButtonsChangeOnlyForTwoAndZeroKeepsTheDesignTimeLayout) {
  struct Case {
    int32_t buttons;
    int32_t dont_show;
    bool yes, no, ok, cancel, check;
  };
  const Case cases[] = {
      {0, 0, true, true, false, false, false},  // the "OK only" layout never applies
      {1, 1, true, true, false, false, false},
      {2, 0, true, true, false, true, false},
      {2, 2, true, true, false, true, true},
      {3, 2, true, true, false, false, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.buttons * 10 + c.dont_show);
    MsgBoxView v = MsgBoxForm::Prepare(L"t", L"", L"", c.buttons, c.dont_show);
    EXPECT_EQ(v.yes_visible, c.yes);
    EXPECT_EQ(v.no_visible, c.no);
    EXPECT_EQ(v.ok_visible, c.ok);
    EXPECT_EQ(v.cancel_visible, c.cancel);
    EXPECT_EQ(v.dont_show_visible, c.check);
  }
  // The buttons' captions come from the language table, whatever the layout.
  const MsgBoxView v = MsgBoxForm::Prepare(L"t", L"", L"", 2, 2);
  EXPECT_EQ(v.yes_caption, L"Yes");
  EXPECT_EQ(v.no_caption, L"No");
  EXPECT_EQ(v.ok_caption, L"OK");
  EXPECT_EQ(v.cancel_caption, L"Cancel");
  EXPECT_EQ(v.dont_show_caption, L"Don't show this message again");
}

TEST(MsgBoxTest, EmptyCaptionKeepsTheFormCaption) {
  EXPECT_EQ(MsgBoxForm::Prepare(L"t", L"", L"", 0, 0).caption, L"Corvina");
  EXPECT_EQ(MsgBoxForm::Prepare(L"t", L"", L"Own", 0, 0).caption, L"Own");
  MsgBoxView v = MsgBoxForm::Prepare(L"first", L"second", L"", 0, 0);
  EXPECT_EQ(v.text, L"first");
  EXPECT_EQ(v.second_text, L"second");
}

TEST(MsgBoxTest, ResultValuesFollowThePressedButton) {
  testing::SimWorld world;
  const std::pair<MsgBoxAnswer, std::pair<int32_t, int32_t>> cases[] = {
      {{MsgBoxButton::kYes, false}, {1, 2}},
      {{MsgBoxButton::kNo, true}, {2, 1}},
      {{MsgBoxButton::kCancel, false}, {3, 2}},
  };
  for (const auto& [answer, expected] : cases) {
    world.ui.QueueShowMsgBoxAnswer(answer);
    MsgBoxForm form;
    form.ShowMsgBox(world.ui, L"Sure?", L"", L"", 2, 2);
    EXPECT_EQ(form.MsgBoxResult, expected.first);
    EXPECT_EQ(form.DontShowAgainResult, expected.second);
  }
  EXPECT_EQ(world.Boxes().size(), 3u);
  EXPECT_TRUE(world.ui.LoadedForms().empty());  // the modal form is gone afterwards
}

}  // namespace
}  // namespace corvina
