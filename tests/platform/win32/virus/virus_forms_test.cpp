// frmVirusReport and frmVirusAlerter as the core uses them, through Win32UserInterface: loaded,
// shown, and closed by the core from inside the window's own handlers.
#include "platform/win32/win32_user_interface.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/win32/virus/virus_alerter_frame.h"
#include "platform/win32/virus/virus_report_frame.h"
#include "png_writer.h"
#include "window_pump.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kReport[] = L"frmVirusReport";
constexpr wchar_t kAlerter[] = L"frmVirusAlerter";

std::vector<std::wstring> ListLines(HWND list) {
  std::vector<std::wstring> lines;
  const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    std::wstring line(static_cast<size_t>(SendMessageW(list, LB_GETTEXTLEN, i, 0)) + 1, L'\0');
    line.resize(static_cast<size_t>(SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(line.data()))));
    lines.push_back(line);
  }
  return lines;
}

HWND FindForm(const wchar_t* window_class) { return FindWindowW(window_class, nullptr); }

// The report shows the log and the origins as given, redraws on each view, and its buttons
// and its closing reach the core; the core's unloading closes it from inside its own handler.
TEST(VirusFormsTest, ReportDrawsTheLogAndTheCoreClosesIt) {
  Win32UserInterface ui;
  std::vector<std::wstring> fired;
  VirusReportEvents events;
  events.clear_log = [&] { fired.push_back(L"clear"); };
  events.close = [&] {
    fired.push_back(L"close");
    ui.UnloadForm(kReport);
  };
  VirusReportView view;
  view.caption = L"Virus log";
  view.lines = {L"01/02/2024 10:11\t01/02/2024 10:12\tann@example.com\tILOVEYOU\tSubject\tDeleted",
                L"03/02/2024 08:00\t03/02/2024 08:05\tBilling <bill@example.org>\tYour invoice\tAttachment\tDeleted"};
  view.origins = {L"Love letter: ben@example.com"};

  ui.ShowVirusReport(view, events);
  EXPECT_FALSE(FindForm(L"Corvina.frmVirusReport")) << "a form not loaded has no window";
  ui.LoadForm(kReport);
  ui.ShowVirusReport(view, events);
  HWND window = FindForm(L"Corvina.frmVirusReport");
  ASSERT_TRUE(window);
  const auto item = [&](int id) { return GetDlgItem(window, id); };
  EXPECT_EQ(WindowText(window), L"Virus log");
  EXPECT_EQ(ListLines(item(kReportLog)), view.lines);
  EXPECT_EQ(ListLines(item(kReportOrigins)), view.origins);
  EXPECT_EQ(WindowText(item(kReportOriginsLabel)), VirusReportLabels{}.origins);
  EXPECT_TRUE(WritePng(L"virus_report.png", window));

  SendMessageW(item(kReportClear), BM_CLICK, 0, 0);
  EXPECT_EQ(fired, std::vector<std::wstring>{L"clear"});
  view.lines.clear();
  view.origins.push_back(L"Invoice: carl@example.net");
  ui.ShowVirusReport(view, events);
  EXPECT_EQ(FindForm(L"Corvina.frmVirusReport"), window) << "a view redraws the same window";
  EXPECT_EQ(ListLines(item(kReportLog)), view.lines);
  EXPECT_EQ(ListLines(item(kReportOrigins)), view.origins);

  fired.clear();
  SendMessageW(item(kReportClose), BM_CLICK, 0, 0);
  PumpMessages(30);
  EXPECT_EQ(fired, std::vector<std::wstring>{L"close"});
  EXPECT_FALSE(IsWindow(window));
  EXPECT_TRUE(ui.LoadedForms().empty());
}

// The core may unload frmVirusAlerter from any of its handlers: from the window's X, from a
// button, and after it was opened again.
TEST(VirusFormsTest, TheCoreClosesTheAlerterFromInsideItsHandlers) {
  Win32UserInterface ui;
  int closes = 0;
  VirusAlerterEvents events;
  const auto unload = [&] {
    ++closes;
    ui.UnloadForm(kAlerter);
  };
  events.close = unload;
  events.new_rule = unload;
  VirusAlerterView view;
  view.caption = L"Virus alerts";
  view.right_to_left = true;
  view.rules.rows = {RuleListRow{L"Love letter", kRuleOnIcon, L"ILOVEYOU", L"", L"", L"", L"", true, true}};
  const struct {
    const char* how;
    std::function<void(HWND)> close;
  } rows[] = {
      {"the window's X", [](HWND w) { SendMessageW(w, WM_SYSCOMMAND, SC_CLOSE, 0); }},
      {"a button whose handler unloads", [](HWND w) { SendMessageW(GetDlgItem(w, kAlerterNew), BM_CLICK, 0, 0); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.how);
    closes = 0;
    ui.LoadForm(kAlerter);
    ui.ShowVirusAlerter(view, events);
    HWND window = FindForm(L"Corvina.frmVirusAlerter");
    ASSERT_TRUE(window);
    EXPECT_TRUE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL);
    ui.BringFormToFront(kAlerter);
    row.close(window);
    PumpMessages(30);
    EXPECT_EQ(closes, 1);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(ui.LoadedForms().empty());
  }
}

}  // namespace
}  // namespace corvina::win32
