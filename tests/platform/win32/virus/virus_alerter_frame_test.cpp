// frmVirusAlerter's real window: it draws the rule list, the buttons and the preferences the
// core's view says, and hands each control's action to the core's events exactly once.
#include "platform/win32/virus/virus_alerter_frame.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/win32/virus/rule_icons.h"
#include "png_writer.h"
#include "window_pump.h"

namespace corvina::win32 {
namespace {

RuleListRow Row(const wchar_t* name, const wchar_t* icon, const wchar_t* subject, const wchar_t* body,
                const wchar_t* attachment, const wchar_t* from, const wchar_t* origin, bool checked,
                bool selected) {
  return RuleListRow{name, icon, subject, body, attachment, from, origin, checked, selected};
}

VirusAlerterView FirstView() {
  VirusAlerterView view;
  view.caption = L"Corvina Virus Alerter";
  view.rules.rows = {
      Row(L"Love letter", kRuleOnIcon, L"ILOVEYOU", L"", L"LOVE-LETTER-FOR-YOU.TXT.vbs", L"", L"",
          true, false),
      Row(L"Invoice", kRuleOffIcon, L"Invoice", L"open the attachment", L"invoice.exe", L"Billing",
          L"ann@example.com", false, true),
      Row(L"Odd key", L"KeyUnknown", L"", L"", L"", L"", L"", true, false)};
  view.rules.sort_column = 1;
  view.settings = {{L"DeleteAlerts", L"Delete alert mails once read", true},
                   {L"WarnSender", L"Warn the sender of a dangerous mail", false},
                   {L"ScanOnStart", L"Scan the Inbox when Outlook starts", true}};
  return view;
}

std::wstring ItemText(HWND list, int row, int column) {
  wchar_t text[128] = {};
  ListView_GetItemText(list, row, column, text, 128);
  return text;
}

// The window's content read back through the controls' own messages.
struct Drawn {
  std::wstring caption;
  std::vector<std::wstring> headers;
  std::vector<RuleListRow> rows;  // icon_key holds the picture's index
  std::vector<VirusSettingBox> settings;
  std::wstring new_button;
  int sorted_up = -1;
};

Drawn Read(const VirusAlerterFrame& frame) {
  Drawn d;
  d.caption = WindowText(frame.hwnd());
  HWND list = frame.Item(kAlerterRules);
  HWND header = ListView_GetHeader(list);
  for (int c = 0; c < Header_GetItemCount(header); ++c) {
    wchar_t text[64] = {};
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = text;
    item.cchTextMax = 64;
    Header_GetItem(header, c, &item);
    d.headers.push_back(text);
    if (item.fmt & HDF_SORTUP) d.sorted_up = c;
  }
  for (int r = 0; r < ListView_GetItemCount(list); ++r) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = r;
    ListView_GetItem(list, &item);
    d.rows.push_back(Row(ItemText(list, r, 0).c_str(), std::to_wstring(item.iImage).c_str(),
                         ItemText(list, r, 1).c_str(), ItemText(list, r, 2).c_str(),
                         ItemText(list, r, 3).c_str(), ItemText(list, r, 4).c_str(),
                         ItemText(list, r, 5).c_str(), ListView_GetCheckState(list, r) != 0,
                         ListView_GetItemState(list, r, LVIS_SELECTED) != 0));
  }
  for (int i = 0; HWND box = frame.Item(kAlerterSettingFirst + i); ++i)
    d.settings.push_back({L"", WindowText(box), SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED});
  d.new_button = WindowText(frame.Item(kAlerterNew));
  return d;
}

Drawn Expected(const VirusAlerterView& view) {
  Drawn d;
  d.caption = view.caption;
  const VirusAlerterLabels& l = view.labels;
  d.headers = {l.name_column, l.subject_column, l.body_column, l.attachment_column, l.from_column,
               l.origin_column};
  for (RuleListRow row : view.rules.rows) {
    row.icon_key = std::to_wstring(RuleIconIndex(row.icon_key));
    d.rows.push_back(row);
  }
  for (const VirusSettingBox& box : view.settings) d.settings.push_back({L"", box.caption, box.checked});
  d.new_button = l.add;
  d.sorted_up = view.rules.sort_descending ? -1 : view.rules.sort_column;
  return d;
}

void ExpectDrawn(const Drawn& got, const Drawn& want) {
  EXPECT_EQ(got.caption, want.caption);
  EXPECT_EQ(got.headers, want.headers);
  EXPECT_EQ(got.new_button, want.new_button);
  EXPECT_EQ(got.sorted_up, want.sorted_up);
  ASSERT_EQ(got.rows.size(), want.rows.size());
  for (size_t i = 0; i < got.rows.size(); ++i) {
    SCOPED_TRACE(i);
    const RuleListRow &g = got.rows[i], &w = want.rows[i];
    EXPECT_EQ(std::vector({g.text, g.icon_key, g.subject, g.body, g.attachment, g.from, g.origin}),
              std::vector({w.text, w.icon_key, w.subject, w.body, w.attachment, w.from, w.origin}));
    EXPECT_EQ(g.checked, w.checked);
    EXPECT_EQ(g.selected, w.selected);
  }
  ASSERT_EQ(got.settings.size(), want.settings.size());
  for (size_t i = 0; i < got.settings.size(); ++i) {
    EXPECT_EQ(got.settings[i].caption, want.settings[i].caption);
    EXPECT_EQ(got.settings[i].checked, want.settings[i].checked);
  }
}

class VirusAlerterFrameTest : public testing::Test {
 protected:
  void SetUp() override {
    auto log = [this](std::wstring what) { fired.push_back(std::move(what)); };
    events.select = [log](size_t row) { log(L"select:" + std::to_wstring(row)); };
    events.new_rule = [log] { log(L"new"); };
    events.edit_rule = [log] { log(L"edit"); };
    events.remove_rule = [log] { log(L"remove"); };
    events.activate = [log] { log(L"on"); };
    events.deactivate = [log] { log(L"off"); };
    events.item_check = [log](size_t row, bool on) {
      log(L"check:" + std::to_wstring(row) + L":" + std::to_wstring(on));
    };
    events.column_click = [log](int column) { log(L"column:" + std::to_wstring(column)); };
    events.setting_click = [log](size_t box, bool on) {
      log(L"setting:" + std::to_wstring(box) + L":" + std::to_wstring(on));
    };
    events.apply = [log] { log(L"apply"); };
    events.scan_now = [log] { log(L"scan"); };
    events.scan_alerts = [log] { log(L"scan alerts"); };
    events.send_alert = [log] { log(L"send alert"); };
    events.show_log = [log] { log(L"log"); };
    events.help = [log] { log(L"help"); };
    events.close = [log] { log(L"close"); };
  }

  VirusAlerterEvents events;
  std::vector<std::wstring> fired;
};

// Each view is drawn whole: rows, pictures, sub-items, checks, selection, labels, boxes; and
// drawing it is not the user's doing, so no event fires.
TEST_F(VirusAlerterFrameTest, DrawsEachViewWithoutFiringEvents) {
  VirusAlerterFrame frame;
  const VirusAlerterView first = FirstView();
  VirusAlerterView checks = first;  // only checks and selection change
  checks.rules.rows[0].checked = false;
  checks.rules.rows[1].checked = true;
  checks.rules.rows[1].selected = false;
  checks.rules.rows[2].selected = true;
  VirusAlerterView fewer = first;  // a rule gone, one renamed, new labels, one box fewer
  fewer.caption = L"Virus alerts";
  fewer.rules.rows.erase(fewer.rules.rows.begin());
  fewer.rules.rows[0].text = L"Invoice (old)";
  fewer.rules.rows[0].icon_key = kRuleOnIcon;
  fewer.rules.sort_column = 0;
  fewer.rules.sort_descending = true;
  fewer.labels.add = L"&Add a rule...";
  fewer.labels.origin_column = L"Origin";
  fewer.settings.pop_back();
  fewer.settings[1].checked = true;
  const struct {
    const char* label;
    const VirusAlerterView& view;
  } views[] = {{"first", first}, {"checks and selection", checks}, {"fewer", fewer}, {"again", first}};
  for (const auto& v : views) {
    SCOPED_TRACE(v.label);
    frame.Show(v.view, events);
    ASSERT_TRUE(frame.hwnd());
    PumpMessages(30);
    ExpectDrawn(Read(frame), Expected(v.view));
    EXPECT_TRUE(fired.empty()) << ToUtf8(fired.front());
    fired.clear();
  }
  RECT r{};
  GetWindowRect(frame.hwnd(), &r);
  EXPECT_EQ(r.right - r.left, 760);
  EXPECT_EQ(r.bottom - r.top, 480);
  EXPECT_TRUE(WritePng(L"virus_alerter.png", frame.hwnd()));

  // The pictures: a green key for "on", a grey one for "off".
  HIMAGELIST icons = ListView_GetImageList(frame.Item(kAlerterRules), LVSIL_SMALL);
  ASSERT_EQ(ImageList_GetImageCount(icons), 2);
  for (int image = 0; image < 2; ++image) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, kRuleIconSize, kRuleIconSize);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(dc, bitmap);
    const RECT all{0, 0, kRuleIconSize, kRuleIconSize};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    ImageList_Draw(icons, image, dc, 0, 0, ILD_NORMAL);
    int green = 0, grey = 0;
    for (int y = 0; y < kRuleIconSize; ++y)
      for (int x = 0; x < kRuleIconSize; ++x) {
        const COLORREF c = GetPixel(dc, x, y);
        const int red = GetRValue(c), g = GetGValue(c), blue = GetBValue(c);
        if (g > red + 60 && g > blue + 60) ++green;
        if (red < 200 && std::abs(red - g) < 12 && std::abs(g - blue) < 12) ++grey;
      }
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    EXPECT_EQ(green > 20, image == 0) << "image " << image;
    EXPECT_EQ(grey > 20, image == 1) << "image " << image;
  }
}

// Every button, the list, the boxes and the context menu, used as a user would: one event each.
TEST_F(VirusAlerterFrameTest, EachControlFiresItsEventOnce) {
  VirusAlerterFrame frame;
  std::vector<std::wstring> offered;
  int answer = 0;
  frame.set_menu_chooser_for_testing([&](HMENU menu, POINT) {
    offered.clear();
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      wchar_t text[64] = {};
      GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
      const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
      if (!(state & MF_SEPARATOR)) offered.push_back(std::wstring(text) + ((state & MF_GRAYED) ? L" (off)" : L""));
    }
    return answer;
  });
  frame.Show(FirstView(), events);
  PumpMessages(30);
  fired.clear();
  HWND list = frame.Item(kAlerterRules);
  const auto press = [&](int id) { return [&frame, id] { SendMessageW(frame.Item(id), BM_CLICK, 0, 0); }; };
  const auto menu = [&](int command) {
    return [&, command] {
      answer = command;
      RECT r{};
      GetWindowRect(list, &r);
      SendMessageW(frame.hwnd(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), MAKELPARAM(r.left + 20, r.top + 30));
    };
  };
  const auto notify_row = [&](UINT code, int row) {
    return [&, code, row] {
      NMITEMACTIVATE item{};
      item.hdr = NMHDR{list, static_cast<UINT_PTR>(kAlerterRules), code};
      item.iItem = row;
      SendMessageW(frame.hwnd(), WM_NOTIFY, kAlerterRules, reinterpret_cast<LPARAM>(&item));
    };
  };
  const struct {
    const char* action;
    std::function<void()> act;
    std::vector<std::wstring> fired;
  } rows[] = {
      {"New", press(kAlerterNew), {L"new"}},
      {"Edit", press(kAlerterEdit), {L"edit"}},
      {"Remove", press(kAlerterRemove), {L"remove"}},
      {"Switch on", press(kAlerterActivate), {L"on"}},
      {"Switch off", press(kAlerterDeactivate), {L"off"}},
      {"Scan Inbox now", press(kAlerterScanNow), {L"scan"}},
      {"Scan for alert mails", press(kAlerterScanAlerts), {L"scan alerts"}},
      {"Send alert", press(kAlerterSendAlert), {L"send alert"}},
      {"Show log", press(kAlerterShowLog), {L"log"}},
      {"Help", press(kAlerterHelp), {L"help"}},
      {"Apply", press(kAlerterApply), {L"apply"}},
      {"Close", press(kAlerterClose), {L"close"}},
      {"the second box ticked", press(kAlerterSettingFirst + 1), {L"setting:1:1"}},
      {"the first box cleared", press(kAlerterSettingFirst), {L"setting:0:0"}},
      {"a click on the first row", [&] { ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED); }, {L"select:0"}},
      {"the user ticks the second row", [&] { ListView_SetCheckState(list, 1, TRUE); }, {L"check:1:1"}},
      {"the user clears the first row", [&] { ListView_SetCheckState(list, 0, FALSE); }, {L"check:0:0"}},
      {"a double click on a row", notify_row(NM_DBLCLK, 0), {L"edit"}},
      {"a double click beside the rows", notify_row(NM_DBLCLK, -1), {}},
      {"a click on the Body header",
       [&] {
         HWND header = ListView_GetHeader(list);
         RECT r{};
         Header_GetItemRect(header, 2, &r);
         const LPARAM at = MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2);
         SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
         SendMessageW(header, WM_LBUTTONUP, 0, at);
       },
       {L"column:2"}},
      {"Escape in the list", [&] { SendMessageW(list, WM_KEYDOWN, VK_ESCAPE, 0); }, {L"close"}},
      {"the window's X", [&] { SendMessageW(frame.hwnd(), WM_SYSCOMMAND, SC_CLOSE, 0); }, {L"close"}},
      {"menu: New", menu(kAlerterNew), {L"new"}},
      {"menu: Edit", menu(kAlerterEdit), {L"edit"}},
      {"menu: Switch on", menu(kAlerterActivate), {L"on"}},
      {"menu: Switch off", menu(kAlerterDeactivate), {L"off"}},
      {"menu: Remove", menu(kAlerterRemove), {L"remove"}},
      {"menu dismissed", menu(0), {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.action);
    fired.clear();
    row.act();
    PumpMessages(30);  // what the window posts to itself runs
    EXPECT_EQ(fired, row.fired);
  }
  const VirusAlerterLabels l;
  EXPECT_EQ(offered, (std::vector<std::wstring>{l.add, l.edit, l.activate, l.deactivate, l.remove}));
  // With no rule selected, the menu offers only a new one.
  VirusAlerterView none = FirstView();
  none.rules.rows[1].selected = false;
  frame.Show(none, events);
  menu(0)();
  EXPECT_EQ(offered, (std::vector<std::wstring>{l.add, l.edit + L" (off)", l.activate + L" (off)",
                                                 l.deactivate + L" (off)", l.remove + L" (off)"}));
}

}  // namespace
}  // namespace corvina::win32
