#include "platform/win32/virus/virus_report_frame.h"

#include <algorithm>
#include <array>

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmVirusReport";
constexpr SIZE kDefaultSize{720, 460};
constexpr SIZE kMinimumSize{420, 300};
// The log's six tab-separated fields start on these stops, in dialog units: two times, the
// sender, the subject, the field's name, the action.
constexpr std::array<int, 5> kTabStops{72, 144, 248, 368, 420};
constexpr int kOriginLines = 4;

// The pixel width of a line with its tabs expanded at `stops` (pixels).
int TabbedWidth(HWND list, const std::wstring& line, const std::array<int, 5>& stops) {
  HDC dc = GetDC(list);
  if (!dc) return 0;
  DWORD size = 0;
  {
    ScopedSelect font(dc, reinterpret_cast<HFONT>(SendMessageW(list, WM_GETFONT, 0, 0)));
    size = GetTabbedTextExtentW(dc, line.c_str(), static_cast<int>(line.size()),
                                static_cast<int>(stops.size()), stops.data());
  }
  ReleaseDC(list, dc);
  return LOWORD(size);
}

}  // namespace

VirusReportFrame::VirusReportFrame() noexcept : FrameWindow(kClassName) {}

VirusReportFrame::~VirusReportFrame() { Destroy(); }

void VirusReportFrame::Show(const VirusReportView& view, const VirusReportEvents& events) {
  events_ = events;
  if (hwnd() && view.right_to_left != view_.right_to_left) Destroy();
  if (!hwnd()) Create(view);
  if (!hwnd()) return;
  view_.caption = view.caption;
  SetTextIfChanged(hwnd(), view.caption);
  const VirusReportLabels& l = view.labels;
  SetTextIfChanged(Item(kReportLogLabel), l.log);
  SetTextIfChanged(Item(kReportOriginsLabel), l.origins);
  SetTextIfChanged(Item(kReportClear), l.clear);
  SetTextIfChanged(Item(kReportClose), l.close);
  const int width = ButtonWidth();
  view_.labels = l;
  if (width != ButtonWidth()) Layout();
  Fill(kReportLog, view_.lines, view.lines);
  view_.lines = view.lines;
  Fill(kReportOrigins, view_.origins, view.origins);
  view_.origins = view.origins;
}

void VirusReportFrame::Create(const VirusReportView& view) {
  view_ = VirusReportView{};
  view_.right_to_left = view.right_to_left;
  view_.labels = view.labels;
  if (!FrameWindow::Create(view.caption, kDefaultSize, view.right_to_left)) return;
  const VirusReportLabels& l = view_.labels;
  AddChild(L"STATIC", l.log, SS_LEFT, kReportLogLabel);
  HWND log = AddChild(L"LISTBOX", L"",
                      LBS_NOINTEGRALHEIGHT | LBS_USETABSTOPS | WS_VSCROLL | WS_HSCROLL |
                          WS_TABSTOP,
                      kReportLog, WS_EX_CLIENTEDGE);
  std::array<int, 5> stops = kTabStops;
  SendMessageW(log, LB_SETTABSTOPS, stops.size(), reinterpret_cast<LPARAM>(stops.data()));
  AddChild(L"STATIC", l.origins, SS_LEFT, kReportOriginsLabel);
  AddChild(L"LISTBOX", L"", LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
           kReportOrigins, WS_EX_CLIENTEDGE);
  AddChild(L"BUTTON", l.clear, BS_PUSHBUTTON | WS_TABSTOP, kReportClear);
  AddChild(L"BUTTON", l.close, BS_PUSHBUTTON | WS_TABSTOP, kReportClose);
  Layout();
  ShowWindow(hwnd(), SW_SHOW);
  SetForegroundWindow(hwnd());
  SetFocus(log);
}

int VirusReportFrame::ButtonWidth() const {
  const int widest = std::max(TextWidth(font(), view_.labels.clear), TextWidth(font(), view_.labels.close));
  return std::max(widest + units().X(14), units().X(50));
}

void VirusReportFrame::Layout() {
  if (!hwnd()) return;
  const DialogUnits& u = units();
  RECT client{};
  GetClientRect(hwnd(), &client);
  const int width = client.right, height = client.bottom;
  const int margin = u.X(7), button = u.Y(14), label = u.text_height + 2;
  const int inner = width - 2 * margin;
  const int button_width = ButtonWidth();
  const int buttons_top = height - margin - button;
  Place(Item(kReportClose), width - margin - button_width, buttons_top, button_width, button);
  Place(Item(kReportClear), width - margin - 2 * button_width - u.X(4), buttons_top, button_width,
        button);
  const int origins_height = kOriginLines * u.text_height + 6;
  const int origins_top = buttons_top - u.Y(7) - origins_height;
  Place(Item(kReportOrigins), margin, origins_top, inner, origins_height);
  Place(Item(kReportOriginsLabel), margin, origins_top - u.Y(2) - label, inner, label);
  const int log_top = margin + label + u.Y(2);
  Place(Item(kReportLogLabel), margin, margin, inner, label);
  Place(Item(kReportLog), margin, log_top, inner, origins_top - u.Y(2) - label - u.Y(6) - log_top);
  InvalidateRect(hwnd(), nullptr, TRUE);
}

void VirusReportFrame::Fill(int id, const std::vector<std::wstring>& shown,
                            const std::vector<std::wstring>& lines) {
  if (lines == shown) return;
  HWND list = Item(id);
  const LRESULT top = SendMessageW(list, LB_GETTOPINDEX, 0, 0);
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LB_RESETCONTENT, 0, 0);
  // The list box counts its stops in quarters of its font's average character width.
  std::array<int, 5> stops{};
  for (size_t i = 0; i < stops.size(); ++i) stops[i] = units().X(kTabStops[i]);
  int widest = 0;
  for (const std::wstring& line : lines) {
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    widest = std::max(widest, TabbedWidth(list, line, stops));
  }
  // A long line scrolls sideways instead of being cut off.
  SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + 8), 0);
  // A grown log keeps the place the user was reading.
  if (top > 0 && static_cast<size_t>(top) < lines.size()) SendMessageW(list, LB_SETTOPINDEX, top, 0);
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

LRESULT VirusReportFrame::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = POINT{kMinimumSize.cx, kMinimumSize.cy};
      return 0;
    case WM_COMMAND:
      if (HIWORD(wparam) != BN_CLICKED) break;
      if (LOWORD(wparam) == kReportClear) Fire(events_.clear_log);
      // Closed as by the window's own X, once the button has finished its click.
      if (LOWORD(wparam) == kReportClose) PostMessageW(hwnd(), WM_CLOSE, 0, 0);
      return 0;
    default:
      break;
  }
  return Default(message, wparam, lparam);
}

}  // namespace corvina::win32
