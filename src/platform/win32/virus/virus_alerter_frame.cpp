#include "platform/win32/virus/virus_alerter_frame.h"

#include <algorithm>
#include <array>
#include <utility>

#include <commctrl.h>

#include "platform/win32/virus/rule_icons.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmVirusAlerter";
// A row's selection or check box changed. The list is still busy with the change when it
// says so, and the core may refill the list in answer: so the event is posted and fired
// once the list is done. wparam: the row; lparam: the list's fill count (times two, plus one
// for a ticked box).
constexpr UINT kRowSelected = WM_APP + 1;
constexpr UINT kRowChecked = WM_APP + 2;
constexpr SIZE kDefaultSize{760, 480};
constexpr int kColumns = 6;
// Each column's share of the list's width, in percent; the origin column takes the rest.
constexpr std::array<int, kColumns - 1> kColumnShares{22, 16, 16, 15, 15};
// The right-hand buttons, top to bottom; 0 marks a wider gap between groups.
constexpr std::array<int, 11> kSideButtons{kAlerterNew,      kAlerterEdit,       kAlerterRemove,
                                           0,                kAlerterActivate,   kAlerterDeactivate,
                                           0,                kAlerterScanNow,    kAlerterScanAlerts,
                                           kAlerterSendAlert, kAlerterShowLog};

class Applying {
 public:
  explicit Applying(bool& flag) noexcept : flag_(flag) { flag_ = true; }
  ~Applying() { flag_ = false; }
  Applying(const Applying&) = delete;
  Applying& operator=(const Applying&) = delete;

 private:
  bool& flag_;
};

const std::wstring& ButtonLabel(const VirusAlerterLabels& l, int id) {
  switch (id) {
    case kAlerterNew: return l.add;
    case kAlerterEdit: return l.edit;
    case kAlerterRemove: return l.remove;
    case kAlerterActivate: return l.activate;
    case kAlerterDeactivate: return l.deactivate;
    case kAlerterScanNow: return l.scan_now;
    case kAlerterScanAlerts: return l.scan_alerts;
    case kAlerterSendAlert: return l.send_alert;
    case kAlerterShowLog: return l.show_log;
    case kAlerterHelp: return l.help;
    case kAlerterApply: return l.apply;
    default: return l.close;
  }
}

std::array<const std::wstring*, kColumns> ColumnLabels(const VirusAlerterLabels& l) {
  return {&l.name_column, &l.subject_column, &l.body_column,
          &l.attachment_column, &l.from_column, &l.origin_column};
}

std::array<const std::wstring*, kColumns - 1> SubItems(const RuleListRow& row) {
  return {&row.subject, &row.body, &row.attachment, &row.from, &row.origin};
}

bool SameText(const RuleListRow& a, const RuleListRow& b) {
  return a.text == b.text && a.icon_key == b.icon_key && a.subject == b.subject &&
         a.body == b.body && a.attachment == b.attachment && a.from == b.from &&
         a.origin == b.origin;
}

int StateImage(UINT state) { return static_cast<int>((state & LVIS_STATEIMAGEMASK) >> 12); }

}  // namespace

VirusAlerterFrame::VirusAlerterFrame() noexcept : FrameWindow(kClassName) {}

VirusAlerterFrame::~VirusAlerterFrame() { Destroy(); }

void VirusAlerterFrame::Show(const VirusAlerterView& view, const VirusAlerterEvents& events) {
  events_ = events;
  // The reading direction is fixed when a window is made: a new direction needs a new one.
  if (hwnd() && view.right_to_left != view_.right_to_left) Destroy();
  if (!hwnd()) Create(view);
  if (!hwnd()) return;
  Applying applying(applying_);
  view_.caption = view.caption;
  SetTextIfChanged(hwnd(), view.caption);
  ApplyLabels(view.labels);
  ApplyRows(view.rules);
  ApplySort(view.rules);
  ApplySettings(view.settings);
}

void VirusAlerterFrame::Create(const VirusAlerterView& view) {
  view_ = VirusAlerterView{};
  view_.right_to_left = view.right_to_left;
  view_.labels = view.labels;
  view_.settings = view.settings;
  RECT minimum{0, 0, MinimumSize().cx, MinimumSize().cy};
  AdjustWindowRectEx(&minimum, WS_OVERLAPPEDWINDOW, FALSE, 0);
  const SIZE size{std::max<LONG>(kDefaultSize.cx, minimum.right - minimum.left),
                  std::max<LONG>(kDefaultSize.cy, minimum.bottom - minimum.top)};
  if (!FrameWindow::Create(view.caption, size, view.right_to_left)) return;
  MakeControls();
  Layout();
  ShowWindow(hwnd(), SW_SHOW);
  SetForegroundWindow(hwnd());
  SetFocus(Item(kAlerterRules));
}

void VirusAlerterFrame::MakeControls() {
  const VirusAlerterLabels& l = view_.labels;
  AddChild(L"STATIC", l.rules, SS_LEFT, kAlerterRulesLabel);
  // One rule at a time: Edit, Remove and the switches act on the selected rule.
  HWND list = AddChild(WC_LISTVIEWW, L"",
                       LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS |
                           WS_TABSTOP | WS_GROUP,
                       kAlerterRules, WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(
      list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  icons_ = MakeRuleIcons();
  if (icons_) ListView_SetImageList(list, icons_.get(), LVSIL_SMALL);
  const auto headers = ColumnLabels(l);
  for (int i = 0; i < kColumns; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(headers[static_cast<size_t>(i)]->c_str());
    column.iSubItem = i;
    ListView_InsertColumn(list, i, &column);
  }
  for (int id : kSideButtons)
    if (id) AddChild(L"BUTTON", ButtonLabel(l, id), BS_PUSHBUTTON | WS_TABSTOP, id);
  AddChild(L"STATIC", l.preferences, SS_LEFT, kAlerterPreferences);
  for (size_t i = 0; i < view_.settings.size(); ++i)
    AddChild(L"BUTTON", view_.settings[i].caption, BS_AUTOCHECKBOX | WS_TABSTOP,
             kAlerterSettingFirst + static_cast<int>(i));
  AddChild(L"STATIC", L"", SS_ETCHEDHORZ, kAlerterRule);
  for (int id : {kAlerterHelp, kAlerterApply, kAlerterClose})
    AddChild(L"BUTTON", ButtonLabel(l, id), BS_PUSHBUTTON | WS_TABSTOP, id);

  // The columns share the list's first width; after that they are the user's to change.
  Layout();
  RECT inside{};
  GetClientRect(list, &inside);
  const int width = std::max<int>(inside.right - GetSystemMetrics(SM_CXVSCROLL), 300);
  int used = 0;
  for (int i = 0; i < kColumns; ++i) {
    const int cx = i + 1 < kColumns ? width * kColumnShares[static_cast<size_t>(i)] / 100 : width - used;
    ListView_SetColumnWidth(list, i, cx);
    used += cx;
  }
}

int VirusAlerterFrame::ButtonWidth() const {
  int widest = 0;
  for (int id : kSideButtons)
    if (id) widest = std::max(widest, TextWidth(font(), ButtonLabel(view_.labels, id)));
  return std::max(widest + units().X(14), units().X(64));
}

int VirusAlerterFrame::BottomButtonWidth() const {
  int widest = 0;
  for (int id : {kAlerterHelp, kAlerterApply, kAlerterClose})
    widest = std::max(widest, TextWidth(font(), ButtonLabel(view_.labels, id)));
  return std::max(widest + units().X(14), units().X(50));
}

SIZE VirusAlerterFrame::MinimumSize() const {
  const DialogUnits& u = units();
  const int button = u.Y(14), label = u.text_height + 2;
  int column = 0;
  for (int id : kSideButtons) column += id ? button + u.Y(3) : u.Y(4);
  const size_t boxes = view_.settings.size();
  const int rows = static_cast<int>(boxes > 1 ? (boxes + 1) / 2 : boxes);
  const int settings = boxes ? label + rows * (u.Y(10) + u.Y(2)) + u.Y(6) : 0;
  const int height = u.X(7) + label + u.Y(2) + column + settings + u.Y(10) + button + u.X(7);
  return SIZE{ButtonWidth() + u.X(6) + 2 * u.X(7) + 280, height};
}

void VirusAlerterFrame::Layout() {
  if (!hwnd()) return;
  const DialogUnits& u = units();
  RECT client{};
  GetClientRect(hwnd(), &client);
  const int width = client.right, height = client.bottom;
  const int margin = u.X(7), button = u.Y(14), label = u.text_height + 2, box = u.Y(10);
  const int side = ButtonWidth();

  // Bottom up: Help, Apply and Close under a line, the preferences over it.
  const int bottom_width = BottomButtonWidth();
  const int buttons_top = height - margin - button;
  Place(Item(kAlerterHelp), margin, buttons_top, bottom_width, button);
  Place(Item(kAlerterApply), width - margin - 2 * bottom_width - u.X(4), buttons_top, bottom_width, button);
  Place(Item(kAlerterClose), width - margin - bottom_width, buttons_top, bottom_width, button);
  const int rule_top = buttons_top - u.Y(5) - 2;
  Place(Item(kAlerterRule), margin, rule_top, width - 2 * margin, 2);

  const size_t boxes = view_.settings.size();
  const size_t rows = boxes > 1 ? (boxes + 1) / 2 : boxes;
  const int columns = boxes > 1 ? 2 : 1;
  const int settings_height =
      boxes ? label + u.Y(2) + static_cast<int>(rows) * (box + u.Y(2)) - u.Y(2) : 0;
  const int settings_top = rule_top - u.Y(5) - settings_height;
  ShowWindow(Item(kAlerterPreferences), boxes ? SW_SHOWNA : SW_HIDE);
  Place(Item(kAlerterPreferences), margin, settings_top, width - 2 * margin, label);
  const int column_width = (width - 2 * margin) / columns;
  for (size_t i = 0; i < boxes; ++i) {
    // Down the first column, then the second.
    const int x = margin + static_cast<int>(i / rows) * column_width;
    const int y = settings_top + label + u.Y(2) + static_cast<int>(i % rows) * (box + u.Y(2));
    Place(Item(kAlerterSettingFirst + static_cast<int>(i)), x, y, column_width - u.X(4), box);
  }

  const int list_top = margin + label + u.Y(2);
  const int list_bottom = boxes ? settings_top - u.Y(6) : rule_top - u.Y(5);
  const int list_width = width - 2 * margin - u.X(6) - side;
  Place(Item(kAlerterRulesLabel), margin, margin, list_width, label);
  Place(Item(kAlerterRules), margin, list_top, list_width, list_bottom - list_top);
  int y = list_top;
  for (int id : kSideButtons) {
    if (!id) {
      y += u.Y(4);
      continue;
    }
    Place(Item(id), width - margin - side, y, side, button);
    y += button + u.Y(3);
  }
  InvalidateRect(hwnd(), nullptr, TRUE);
}

void VirusAlerterFrame::ApplyLabels(const VirusAlerterLabels& labels) {
  SetTextIfChanged(Item(kAlerterRulesLabel), labels.rules);
  SetTextIfChanged(Item(kAlerterPreferences), labels.preferences);
  for (int id : kSideButtons)
    if (id) SetTextIfChanged(Item(id), ButtonLabel(labels, id));
  for (int id : {kAlerterHelp, kAlerterApply, kAlerterClose})
    SetTextIfChanged(Item(id), ButtonLabel(labels, id));
  const auto shown = ColumnLabels(view_.labels), wanted = ColumnLabels(labels);
  for (int i = 0; i < kColumns; ++i) {
    const std::wstring& text = *wanted[static_cast<size_t>(i)];
    if (text == *shown[static_cast<size_t>(i)]) continue;
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(text.c_str());
    ListView_SetColumn(Item(kAlerterRules), i, &column);
  }
  // New captions may need wider buttons.
  const std::pair<int, int> widths{ButtonWidth(), BottomButtonWidth()};
  view_.labels = labels;
  if (widths != std::pair{ButtonWidth(), BottomButtonWidth()}) Layout();
}

void VirusAlerterFrame::ApplyRows(const RuleListView& rules) {
  HWND list = Item(kAlerterRules);
  const bool same = rules.rows.size() == view_.rules.rows.size() &&
                    std::equal(rules.rows.begin(), rules.rows.end(), view_.rules.rows.begin(), SameText);
  if (!same) {
    // Filled out of sight, then shown once.
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list);
    for (size_t i = 0; i < rules.rows.size(); ++i) {
      const RuleListRow& row = rules.rows[i];
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
      item.iItem = static_cast<int>(i);
      item.pszText = const_cast<wchar_t*>(row.text.c_str());
      item.iImage = RuleIconIndex(row.icon_key);
      item.lParam = static_cast<LPARAM>(i);
      const int at = ListView_InsertItem(list, &item);
      if (at < 0) continue;
      int sub = 1;
      for (const std::wstring* text : SubItems(row))
        ListView_SetItemText(list, at, sub++, const_cast<wchar_t*>(text->c_str()));
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
    ++fill_;
  }
  int first_selected = -1;
  for (size_t i = 0; i < rules.rows.size(); ++i) {
    const int at = static_cast<int>(i);
    ListView_SetCheckState(list, at, rules.rows[i].checked ? TRUE : FALSE);
    const UINT state = rules.rows[i].selected ? LVIS_SELECTED | LVIS_FOCUSED : 0;
    ListView_SetItemState(list, at, state, LVIS_SELECTED | LVIS_FOCUSED);
    if (rules.rows[i].selected && first_selected < 0) first_selected = at;
  }
  if (!same && first_selected >= 0) ListView_EnsureVisible(list, first_selected, FALSE);
  view_.rules = rules;
}

void VirusAlerterFrame::ApplySort(const RuleListView& rules) {
  // The sorted column's header shows the direction.
  HWND header = ListView_GetHeader(Item(kAlerterRules));
  for (int i = 0; i < kColumns; ++i) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    if (!Header_GetItem(header, i, &item)) continue;
    int format = item.fmt & ~(HDF_SORTUP | HDF_SORTDOWN);
    if (i == rules.sort_column) format |= rules.sort_descending ? HDF_SORTDOWN : HDF_SORTUP;
    if (format == item.fmt) continue;
    item.fmt = format;
    Header_SetItem(header, i, &item);
  }
}

void VirusAlerterFrame::ApplySettings(const std::vector<VirusSettingBox>& settings) {
  if (settings.size() != view_.settings.size()) {
    for (size_t i = 0; i < view_.settings.size(); ++i)
      DestroyWindow(Item(kAlerterSettingFirst + static_cast<int>(i)));
    // The boxes come after the label in the Tab order, as they stand on the screen.
    HWND after = Item(kAlerterPreferences);
    for (size_t i = 0; i < settings.size(); ++i) {
      HWND box = AddChild(L"BUTTON", settings[i].caption, BS_AUTOCHECKBOX | WS_TABSTOP,
                          kAlerterSettingFirst + static_cast<int>(i));
      SetWindowPos(box, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      after = box;
    }
    view_.settings = settings;
    Layout();
  }
  for (size_t i = 0; i < settings.size(); ++i) {
    HWND box = Item(kAlerterSettingFirst + static_cast<int>(i));
    SetTextIfChanged(box, settings[i].caption);
    SendMessageW(box, BM_SETCHECK, settings[i].checked ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  view_.settings = settings;
}

bool VirusAlerterFrame::HasSelection() const {
  return ListView_GetNextItem(Item(kAlerterRules), -1, LVNI_SELECTED) >= 0;
}

void VirusAlerterFrame::ShowRuleMenu(POINT screen) {
  const VirusAlerterLabels& l = view_.labels;
  UniqueHMenu menu(CreatePopupMenu());
  if (!menu) return;
  const UINT on_row = MF_STRING | (HasSelection() ? 0 : MF_GRAYED);
  AppendMenuW(menu.get(), MF_STRING, kAlerterNew, l.add.c_str());
  AppendMenuW(menu.get(), on_row, kAlerterEdit, l.edit.c_str());
  AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu.get(), on_row, kAlerterActivate, l.activate.c_str());
  AppendMenuW(menu.get(), on_row, kAlerterDeactivate, l.deactivate.c_str());
  AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu.get(), on_row, kAlerterRemove, l.remove.c_str());
  int chosen = 0;
  if (choose_) {
    chosen = choose_(menu.get(), screen);
  } else {
    const UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | (view_.right_to_left ? TPM_LAYOUTRTL : 0);
    chosen = static_cast<int>(TrackPopupMenu(menu.get(), flags, screen.x, screen.y, 0, hwnd(), nullptr));
  }
  menu.reset();
  if (chosen) OnCommand(chosen, BN_CLICKED);
}

void VirusAlerterFrame::OnCommand(int id, int code) {
  if (code != BN_CLICKED) return;
  const VirusAlerterEvents& e = events_;
  switch (id) {
    case kAlerterNew: Fire(e.new_rule); return;
    case kAlerterEdit: Fire(e.edit_rule); return;
    case kAlerterRemove: Fire(e.remove_rule); return;
    case kAlerterActivate: Fire(e.activate); return;
    case kAlerterDeactivate: Fire(e.deactivate); return;
    case kAlerterScanNow: Fire(e.scan_now); return;
    case kAlerterScanAlerts: Fire(e.scan_alerts); return;
    case kAlerterSendAlert: Fire(e.send_alert); return;
    case kAlerterShowLog: Fire(e.show_log); return;
    case kAlerterHelp: Fire(e.help); return;
    case kAlerterApply: Fire(e.apply); return;
    // Closed as by the window's own X, once the button has finished its click.
    case kAlerterClose: PostMessageW(hwnd(), WM_CLOSE, 0, 0); return;
    default: break;
  }
  const size_t box = static_cast<size_t>(id - kAlerterSettingFirst);
  if (id >= kAlerterSettingFirst && box < view_.settings.size()) {
    const bool checked = SendMessageW(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
    view_.settings[box].checked = checked;
    Fire(e.setting_click, box, checked);
  }
}

void VirusAlerterFrame::OnNotify(const NMHDR& header) {
  if (header.idFrom != static_cast<UINT_PTR>(kAlerterRules)) return;
  switch (header.code) {
    case LVN_ITEMCHANGED: {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
      if (applying_ || !(change.uChanged & LVIF_STATE) || change.iItem < 0) return;
      const WPARAM row = static_cast<WPARAM>(change.iItem);
      const int before = StateImage(change.uOldState), after = StateImage(change.uNewState);
      // A box that had no state yet is being made, not ticked.
      if (before && after && before != after)
        PostMessageW(hwnd(), kRowChecked, row, static_cast<LPARAM>(fill_) * 2 + (after == 2 ? 1 : 0));
      if (!(change.uOldState & LVIS_SELECTED) && (change.uNewState & LVIS_SELECTED))
        PostMessageW(hwnd(), kRowSelected, row, static_cast<LPARAM>(fill_));
      return;
    }
    case NM_DBLCLK:
      if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) Fire(events_.edit_rule);
      return;
    case LVN_COLUMNCLICK:
      Fire(events_.column_click, reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
      return;
    default:
      return;
  }
}

LRESULT VirusAlerterFrame::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_GETMINMAXINFO: {
      RECT r{0, 0, MinimumSize().cx, MinimumSize().cy};
      AdjustWindowRectEx(&r, WS_OVERLAPPEDWINDOW, FALSE, 0);
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = POINT{r.right - r.left, r.bottom - r.top};
      return 0;
    }
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_NOTIFY:
      OnNotify(*reinterpret_cast<const NMHDR*>(lparam));
      return 0;
    case WM_CONTEXTMENU: {
      HWND list = Item(kAlerterRules);
      if (reinterpret_cast<HWND>(wparam) != list) break;
      POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
      if (lparam == -1) {
        // From the keyboard: under the selected row, or the list's corner.
        RECT r{};
        const int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
        if (row < 0 || !ListView_GetItemRect(list, row, &r, LVIR_LABEL)) GetClientRect(list, &r);
        at = POINT{r.left, r.bottom};
        ClientToScreen(list, &at);
      }
      ShowRuleMenu(at);
      return 0;
    }
    case kRowSelected:
      if (static_cast<uint32_t>(lparam) == fill_ && wparam < view_.rules.rows.size())
        Fire(events_.select, static_cast<size_t>(wparam));
      return 0;
    case kRowChecked: {
      const bool checked = (lparam & 1) != 0;
      if (static_cast<uint32_t>(lparam >> 1) != fill_ || wparam >= view_.rules.rows.size()) return 0;
      view_.rules.rows[wparam].checked = checked;
      Fire(events_.item_check, static_cast<size_t>(wparam), checked);
      return 0;
    }
    default:
      break;
  }
  return Default(message, wparam, lparam);
}

}  // namespace corvina::win32
