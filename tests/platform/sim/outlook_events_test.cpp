#include <stdexcept>

#include "platform/sim/outlook_fixture.h"

namespace corvina::sim {
namespace {

using OutlookEventsTest = OutlookTest;

TEST_F(OutlookEventsTest, NewMailReachesConnectedHandlersUntilDisconnected) {
  int first = 0, second = 0;
  auto keep = app.OnNewMail([&] { ++first; });
  {
    auto scoped = app.OnNewMail([&] { ++second; });
    store.DeliverNewMail(MakeMail(L"one", Jan(5, 10)));
  }
  store.DeliverNewMail(MakeMail(L"two", Jan(5, 9)));  // older, still appended at the end
  EXPECT_EQ(first, 2);
  EXPECT_EQ(second, 1);
  EXPECT_EQ(Subjects(*Inbox()), L"one two");
  keep.Reset();
  store.DeliverNewMail(MakeMail(L"three", Jan(5, 11)));
  EXPECT_EQ(first, 2);
}

TEST_F(OutlookEventsTest, EscapingHandlerErrorReachesTheTestAndLeavesTheMailStored) {
  auto thrower = app.OnNewMail([] { throw std::runtime_error("escaped"); });
  EXPECT_THROW(store.DeliverNewMail(MakeMail(L"kept", Jan(5, 10))), std::runtime_error);
  EXPECT_EQ(Subjects(*Inbox()), L"kept");
}

TEST_F(OutlookEventsTest, ExplorerIsStillListedWhileItsCloseRuns) {
  auto explorer = app.ActiveExplorer();
  int32_t count_during_close = -1;
  bool deactivated = false;
  auto on_close = explorer->OnClose([&] { count_during_close = app.Explorers()->Count(); });
  auto on_deactivate = explorer->OnDeactivate([&] { deactivated = true; });
  store.DeactivateExplorer(store.ActiveExplorer());
  store.CloseExplorer(store.ActiveExplorer());
  EXPECT_TRUE(deactivated);
  EXPECT_EQ(count_during_close, 1);
  EXPECT_EQ(app.Explorers()->Count(), 0);
}

TEST_F(OutlookEventsTest, CommandBarControlsClickChangeAndDelete) {
  auto bars = app.ActiveExplorer()->CommandBars();
  auto bar = bars->Add(L"Vireo", outlook::msoBarTop, false);
  EXPECT_EQ(CaughtError([&] { bars->Add(L"vireo", 1, false); }).number(), kInvalidArgument);
  auto button = bar->Controls()->Add(outlook::msoControlButton, false);
  button->SetTag(L"Vireo_Save");
  auto combo = bar->Controls()->Add(outlook::msoControlComboBox, false);
  combo->SetTag(L"Vireo_Folder");

  int clicks = 0;
  std::wstring changed_to;
  auto on_click = button->OnClick([&] { ++clicks; });
  auto on_change = combo->OnChange([&] { changed_to = combo->Text(); });
  auto data = store.ActiveExplorer()->command_bars->Find(L"Vireo");
  ASSERT_NE(data, nullptr);
  data->FindControl(L"Vireo_Save")->Click();
  data->FindControl(L"Vireo_Folder")->Change(L"D:\\Saved");
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(changed_to, L"D:\\Saved");

  on_click.Reset();
  data->FindControl(L"Vireo_Save")->Click();
  EXPECT_EQ(clicks, 1);

  button->Delete();
  EXPECT_EQ(data->controls.size(), 1u);
  EXPECT_EQ(CaughtError([&] { button->Caption(); }).number(), kObjectDisconnected);
  EXPECT_EQ(CaughtError([&] { bars->Item(2)->Delete(); }).number(), kFail);  // Outlook's own bar
}

TEST_F(OutlookEventsTest, PermanentBarsOutliveTheAddInAndOutlookRestarts) {
  {
    SimApplication first_run(store);
    auto bars = first_run.ActiveExplorer()->CommandBars();
    bars->Add(L"Vireo", 1, false)->Controls()->Add(outlook::msoControlButton, false);
    bars->Add(L"Scratch", 1, true);
  }
  SimApplication second_run(store);
  EXPECT_EQ(second_run.ActiveExplorer()->CommandBars()->Count(), 5);  // 3 of Outlook's + 2
  store.DropTemporaryCommandBars();
  auto& explorer_bars = *store.ActiveExplorer()->command_bars;
  EXPECT_EQ(explorer_bars.Find(L"Scratch"), nullptr);
  ASSERT_NE(explorer_bars.Find(L"Vireo"), nullptr);
  EXPECT_EQ(explorer_bars.Find(L"Vireo")->controls.size(), 1u);
}

}  // namespace
}  // namespace corvina::sim
