#include "platform/win32/chat/chat_frame.h"

#include <algorithm>

#include <commctrl.h>
#include <commdlg.h>

#include "base/text.h"
#include "platform/board_text.h"
#include "platform/win32/chat/chat_status_icons.h"
#include "platform/win32/this_module.h"
#include "platform/win32/win32_file_system.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmChat";
constexpr UINT_PTR kFlashTimer = 1;  // tmrFlash
constexpr UINT_PTR kLoadTimer = 2;   // the board's page must load within kBoardLoadTimeoutMs
constexpr UINT kFlashIntervalMs = 600;
// The user list's selection, told to the model once after a burst of item changes.
constexpr UINT kUsersChanged = WM_APP + 1;
constexpr int kMargin = 8, kGap = 6, kButton = 90, kRow = 26;
constexpr int kMessageHeight = 72, kAttachmentsHeight = 52, kStatusHeight = 18;
constexpr int kMinWidth = 520, kMinHeight = 400;

HWND Child(HWND parent, const wchar_t* cls, const wchar_t* text, DWORD style, int id, HFONT font,
           DWORD ex_style = 0) {
  HWND child = CreateWindowExW(ex_style, cls, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                               parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               ThisModule(), nullptr);
  if (child && font) SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return child;
}

void SetTextIfChanged(HWND window, const std::wstring& text) {
  if (window && WindowText(window) != text) SetWindowTextW(window, text.c_str());
}

UniqueHFont VariantFont(HFONT base, bool bold, bool italic, bool underline) {
  LOGFONTW font{};
  if (!base || !GetObjectW(base, sizeof font, &font)) {
    font.lfHeight = -12;
    wcscpy_s(font.lfFaceName, L"MS Shell Dlg");
  }
  font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  font.lfItalic = italic ? TRUE : FALSE;
  font.lfUnderline = underline ? TRUE : FALSE;
  return UniqueHFont(CreateFontIndirectW(&font));
}

void Place(HWND window, int x, int y, int w, int h) {
  if (window) MoveWindow(window, x, y, std::max(w, 0), std::max(h, 0), FALSE);
}

// A stored placement is used only when the window would be reachable on a monitor now.
bool OnSomeMonitor(const RECT& r) {
  RECT caption{r.left, r.top, r.right, r.top + 24};
  return MonitorFromRect(&caption, MONITOR_DEFAULTTONULL) != nullptr;
}

}  // namespace

ChatFrame::ChatFrame(BoardBrowser::Factory browser)
    : browser_factory_(std::move(browser)),
      class_(kClassName, &ChatFrame::Procedure),
      font_(CreateMessageFont()),
      bold_font_(VariantFont(font_.get(), true, false, false)),
      italic_font_(VariantFont(font_.get(), false, true, false)),
      underline_font_(VariantFont(font_.get(), false, false, true)) {}

ChatFrame::~ChatFrame() {
  Destroy();
  if (status_icons_) ImageList_Destroy(status_icons_);
}

template <class F, class... Args>
void ChatFrame::Fire(const F& handler, Args&&... args) {
  F copy = handler;
  if (!copy) return;
  try {
    copy(std::forward<Args>(args)...);
  } catch (...) {
    // The model logs its own failures; nothing may leave a window procedure.
  }
}

void ChatFrame::Show(const ChatWindowView& view, const ChatWindowEvents& events) {
  events_ = events;
  if (!window_) Create(view);
  if (!window_) return;
  applying_ = true;
  view_.caption = view.caption;
  SetTextIfChanged(window_.get(), view.caption);
  ApplyUsers(view.users);
  SetTextIfChanged(Item(kChatMessage), view.message);
  ApplyFormat(view);
  HWND attachments = Item(kChatAttachments);
  if (view.attachments != view_.attachments) {
    SendMessageW(attachments, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& path : view.attachments)
      SendMessageW(attachments, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(path.c_str()));
  }
  view_.attachments = view.attachments;
  view_.colors = view.colors;
  SetTextIfChanged(Item(kChatStatus), view.status);
  ApplyBoard(view);
  applying_ = false;
}

void ChatFrame::Flash(bool on) {
  if (window_) FlashWindow(window_.get(), on ? TRUE : FALSE);
}

void ChatFrame::Destroy() {
  if (!window_) return;
  KillTimer(window_.get(), kFlashTimer);
  KillTimer(window_.get(), kLoadTimer);
  browser_.reset();  // the control is closed while its window still exists
  window_.reset();
}

void ChatFrame::Create(const ChatWindowView& view) {
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  view_.right_to_left = view.right_to_left;
  view_.labels = view.labels;
  const DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  const DWORD ex_style = WS_EX_APPWINDOW | (view.right_to_left ? WS_EX_LAYOUTRTL : 0);
  RECT r{view.left, view.top, view.left + view.width, view.top + view.height};
  if (view.width < kMinWidth || view.height < kMinHeight || !OnSomeMonitor(r)) {
    const int w = 760, h = 560;
    const POINT at = CentredOrigin(GetActiveWindow(), w, h);
    r = RECT{at.x, at.y, at.x + w, at.y + h};
  }
  const ChatWindowLabels& l = view.labels;
  menu_ = CreateMenu();
  HMENU chat = CreatePopupMenu();
  AppendMenuW(chat, MF_STRING, kCmdSaveBoard, l.save_board.c_str());
  AppendMenuW(chat, MF_STRING, kCmdClearBoard, l.clear_board.c_str());
  AppendMenuW(chat, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(chat, MF_STRING, kCmdClose, l.close.c_str());
  HMENU users = CreatePopupMenu();
  AppendMenuW(users, MF_STRING, kCmdAddUser, l.add_user.c_str());
  AppendMenuW(users, MF_STRING, kCmdRemoveUser, l.remove_user.c_str());
  AppendMenuW(users, MF_STRING, kCmdUserProperties, l.user_properties.c_str());
  AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(chat), l.chat_menu.c_str());
  AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(users), l.users_menu.c_str());
  window_.reset(CreateWindowExW(ex_style, kClassName, view.caption.c_str(), style, r.left, r.top,
                                r.right - r.left, r.bottom - r.top, nullptr, menu_, ThisModule(),
                                this));
  if (!window_) {
    DestroyMenu(menu_);
    menu_ = nullptr;
    return;
  }
  MakeControls();
  Layout();
  SetTimer(window_.get(), kFlashTimer, kFlashIntervalMs, nullptr);
  ShowWindow(window_.get(), SW_SHOW);
  SetForegroundWindow(window_.get());
  SetFocus(Item(kChatMessage));
}

void ChatFrame::MakeControls() {
  HWND w = window_.get();
  HFONT font = font_.get();
  const ChatWindowLabels& l = view_.labels;
  Child(w, L"EDIT", L"",
        WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_NOHIDESEL,
        kChatBoardText, font, WS_EX_CLIENTEDGE);
  ShowWindow(Item(kChatBoardText), SW_HIDE);
  Child(w, L"STATIC", l.send_to.c_str(), SS_LEFT, kChatSendToLabel, font);
  HWND list = Child(w, WC_LISTVIEWW, L"",
                    LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | WS_TABSTOP,
                    kChatUsers, font, WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  status_icons_ = MakeStatusIcons();
  if (status_icons_) ListView_SetImageList(list, status_icons_, LVSIL_SMALL);
  // The widths come with the layout.
  const std::wstring* headers[] = {&l.name_column, &l.email_column};
  for (int i = 0; i < 2; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = const_cast<wchar_t*>(headers[i]->c_str());
    ListView_InsertColumn(list, i, &column);
  }

  Child(w, L"BUTTON", l.bold.c_str(), BS_AUTOCHECKBOX | BS_PUSHLIKE | WS_TABSTOP, kChatBold,
        bold_font_.get());
  Child(w, L"BUTTON", l.italic.c_str(), BS_AUTOCHECKBOX | BS_PUSHLIKE | WS_TABSTOP, kChatItalic,
        italic_font_.get());
  Child(w, L"BUTTON", l.underline.c_str(), BS_AUTOCHECKBOX | BS_PUSHLIKE | WS_TABSTOP,
        kChatUnderline, underline_font_.get());
  Child(w, L"BUTTON", l.color.c_str(), BS_OWNERDRAW | WS_TABSTOP, kChatColor, font);
  HWND message = Child(w, L"EDIT", L"",
                       WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_TABSTOP,
                       kChatMessage, font, WS_EX_CLIENTEDGE);
  SetWindowSubclass(message, &ChatFrame::MessageProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
  Child(w, L"BUTTON", l.send.c_str(), BS_DEFPUSHBUTTON | WS_TABSTOP, kChatSend, font);
  Child(w, L"STATIC", l.attachments.c_str(), SS_LEFT, kChatAttachmentsLabel, font);
  Child(w, L"LISTBOX", L"", LBS_NOINTEGRALHEIGHT | LBS_NOTIFY | WS_VSCROLL | WS_TABSTOP,
        kChatAttachments, font, WS_EX_CLIENTEDGE);
  Child(w, L"BUTTON", l.attach.c_str(), BS_PUSHBUTTON | WS_TABSTOP, kChatAttach, font);
  Child(w, L"BUTTON", l.remove_attachment.c_str(), BS_PUSHBUTTON | WS_TABSTOP,
        kChatRemoveAttachment, font);
  Child(w, L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, kChatStatus, font);

  BoardBrowser::Events board;
  board.click = [this](const std::wstring& html) { Fire(events_.board_click, html); };
  board.context_menu = [this](const std::wstring& html, POINT at) { ShowBoardMenu(html, at); };
  board.document_complete = [this] { KillTimer(window_.get(), kLoadTimer); };
  browser_ = std::make_unique<BoardBrowser>(w, browser_factory_, std::move(board));
  if (!browser_->Create(RECT{0, 0, 1, 1})) {
    browser_.reset();
    plain_ = true;
  }
}

void ChatFrame::Layout() {
  if (!window_) return;
  RECT client{};
  GetClientRect(window_.get(), &client);
  const int width = client.right, height = client.bottom;
  const int side = std::clamp(width * 3 / 10, 180, 300);
  const int bottom = kRow + kGap + kMessageHeight + kGap + kAttachmentsHeight + kGap +
                     kStatusHeight + kMargin;
  const int board_height = std::max(height - bottom - 2 * kMargin, 40);
  const int board_width = width - side - 3 * kMargin;
  const RECT board{kMargin, kMargin, kMargin + board_width, kMargin + board_height};
  Place(Item(kChatBoardText), board.left, board.top, board_width, board_height);
  if (browser_) browser_->Move(board);
  const int side_left = width - side - kMargin;
  Place(Item(kChatSendToLabel), side_left, kMargin, side, 18);
  Place(Item(kChatUsers), side_left, kMargin + 20, side, board_height - 20);
  // Both columns fit the list's width: no sideways scrolling to see an address.
  const int columns = side - GetSystemMetrics(SM_CXVSCROLL) - 6;
  ListView_SetColumnWidth(Item(kChatUsers), 0, columns * 2 / 5);
  ListView_SetColumnWidth(Item(kChatUsers), 1, columns - columns * 2 / 5);

  int y = kMargin + board_height + kMargin;
  int x = kMargin;
  for (int id : {kChatBold, kChatItalic, kChatUnderline}) {
    Place(Item(id), x, y, 30, kRow);
    x += 30 + 2;
  }
  Place(Item(kChatColor), x + kGap, y, kButton + 10, kRow);
  y += kRow + kGap;
  Place(Item(kChatMessage), kMargin, y, width - 3 * kMargin - kButton, kMessageHeight);
  Place(Item(kChatSend), width - kMargin - kButton, y + kMessageHeight - 32, kButton, 32);
  y += kMessageHeight + kGap;
  Place(Item(kChatAttachmentsLabel), kMargin, y + 4, kButton, 18);
  const int list_left = kMargin + kButton + kGap;
  Place(Item(kChatAttachments), list_left, y, width - list_left - 2 * kMargin - kButton,
        kAttachmentsHeight);
  Place(Item(kChatAttach), width - kMargin - kButton, y, kButton, 24);
  Place(Item(kChatRemoveAttachment), width - kMargin - kButton, y + 28, kButton, 24);
  y += kAttachmentsHeight + kGap;
  Place(Item(kChatStatus), kMargin, y, width - 2 * kMargin, kStatusHeight);
  InvalidateRect(window_.get(), nullptr, TRUE);
}

void ChatFrame::ApplyUsers(const ChatListView& users) {
  HWND list = Item(kChatUsers);
  auto same_row = [](const ChatListRow& a, const ChatListRow& b) {
    return a.key == b.key && a.text == b.text && a.icon_key == b.icon_key &&
           a.fore_color == b.fore_color && a.sub_item == b.sub_item;
  };
  const bool same = users.rows.size() == view_.users.rows.size() &&
                    std::equal(users.rows.begin(), users.rows.end(), view_.users.rows.begin(), same_row);
  if (!same) {
    ListView_DeleteAllItems(list);
    for (size_t i = 0; i < users.rows.size(); ++i) {
      const ChatListRow& row = users.rows[i];
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
      item.iItem = static_cast<int>(i);
      item.pszText = const_cast<wchar_t*>(row.text.empty() ? row.key.c_str() : row.text.c_str());
      item.iImage = StatusIconIndex(row.icon_key);
      item.lParam = static_cast<LPARAM>(i);
      const int at = ListView_InsertItem(list, &item);
      ListView_SetItemText(list, at, 1, const_cast<wchar_t*>(row.sub_item.c_str()));
    }
  }
  for (size_t i = 0; i < users.rows.size(); ++i) {
    const UINT state = users.rows[i].selected ? LVIS_SELECTED : 0;
    ListView_SetItemState(list, static_cast<int>(i), state, LVIS_SELECTED);
  }
  view_.users = users;
}

void ChatFrame::ApplyFormat(const ChatWindowView& view) {
  const std::pair<int, bool> states[] = {
      {kChatBold, view.bold}, {kChatItalic, view.italic}, {kChatUnderline, view.underline}};
  for (const auto& [id, on] : states)
    SendMessageW(Item(id), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
  const bool font_changed = !message_font_ || view.bold != view_.bold ||
                            view.italic != view_.italic || view.underline != view_.underline;
  const bool color_changed = view.color != view_.color;
  view_.bold = view.bold;
  view_.italic = view.italic;
  view_.underline = view.underline;
  view_.color = view.color;
  // The message is written as it will be shown: in its format and colour.
  if (font_changed) {
    message_font_ = VariantFont(font_.get(), view.bold, view.italic, view.underline);
    SendMessageW(Item(kChatMessage), WM_SETFONT, reinterpret_cast<WPARAM>(message_font_.get()), TRUE);
  }
  if (color_changed) {
    InvalidateRect(Item(kChatMessage), nullptr, TRUE);
    InvalidateRect(Item(kChatColor), nullptr, TRUE);
  }
}

void ChatFrame::ApplyBoard(const ChatWindowView& view) {
  const bool anew = !board_shown_ || view.board_serial != shown_serial_ ||
                    view.board_path != view_.board_path;
  view_.board_path = view.board_path;
  shown_serial_ = view.board_serial;
  board_shown_ = true;
  if (anew) {
    // The file holds every block written so far: the page is shown from it.
    if (plain_) {
      ShowPlainBoard();
    } else {
      browser_->Navigate(view.board_path);
      SetTimer(window_.get(), kLoadTimer, kBoardLoadTimeoutMs, nullptr);
    }
    return;
  }
  for (const std::string& block : view.board_blocks) {
    if (plain_)
      AppendPlainBoard(block);
    else
      browser_->Append(block);
  }
}

void ChatFrame::ShowPlainBoard() {
  plain_ = true;
  KillTimer(window_.get(), kLoadTimer);
  browser_.reset();
  std::string page;
  try {
    page = Win32FileSystem().ReadFile(view_.board_path);
  } catch (...) {
    // No board file yet: the board is empty.
  }
  HWND text = Item(kChatBoardText);
  const std::wstring board = view_.labels.board_unavailable + L"\r\n\r\n" + BoardPlainText(page);
  SetWindowTextW(text, board.c_str());
  plain_line_open_ = !board.empty() && board.back() != L'\n';
  ShowWindow(text, SW_SHOW);
  SendMessageW(text, EM_SCROLLCARET, 0, 0);
}

void ChatFrame::AppendPlainBoard(const std::string& block) {
  std::wstring text = BoardPlainText(block);
  // A speaker's caption starts a line of its own, as on the page.
  if (plain_line_open_ && block.rfind("<TABLE", 0) == 0) text = L"\r\n" + text;
  if (text.empty()) return;
  plain_line_open_ = text.back() != L'\n';
  HWND edit = Item(kChatBoardText);
  const int end = GetWindowTextLengthW(edit);
  SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(end), static_cast<LPARAM>(end));
  SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
  SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

std::vector<std::wstring> ChatFrame::SelectedUsers() const {
  std::vector<std::wstring> keys;
  HWND list = Item(kChatUsers);
  for (int i = ListView_GetNextItem(list, -1, LVNI_SELECTED); i >= 0;
       i = ListView_GetNextItem(list, i, LVNI_SELECTED)) {
    if (static_cast<size_t>(i) < view_.users.rows.size())
      keys.push_back(view_.users.rows[static_cast<size_t>(i)].key);
  }
  return keys;
}

void ChatFrame::OnUsersChanged() {
  users_change_posted_ = false;
  const std::vector<std::wstring> selected = SelectedUsers();
  for (size_t i = 0; i < view_.users.rows.size(); ++i) {
    const std::wstring& key = view_.users.rows[i].key;
    view_.users.rows[i].selected = std::find(selected.begin(), selected.end(), key) != selected.end();
  }
  Fire(events_.select_users, selected);
}

void ChatFrame::AttachFile() {
  std::wstring buffer(32768, L'\0');
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = window_.get();
  dialog.lpstrFilter = L"*.*\0*.*\0";
  dialog.lpstrFile = buffer.data();
  dialog.nMaxFile = static_cast<DWORD>(buffer.size());
  dialog.lpstrTitle = view_.labels.attach_title.c_str();
  dialog.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
  if (!GetOpenFileNameW(&dialog)) return;
  Fire(events_.add_attachment, std::wstring(buffer.c_str()));
}

void ChatFrame::ShowColourMenu() {
  HMENU menu = CreatePopupMenu();
  for (size_t i = 0; i < view_.colors.size(); ++i) {
    const UINT flags = MF_STRING | (view_.colors[i].color == view_.color ? MF_CHECKED : 0);
    AppendMenuW(menu, flags, kCmdColorFirst + i, view_.colors[i].name.c_str());
  }
  RECT button{};
  GetWindowRect(Item(kChatColor), &button);
  const int chosen =
      Choose(menu, POINT{view_.right_to_left ? button.right : button.left, button.bottom},
             view_.right_to_left ? TPM_LAYOUTRTL : 0);
  DestroyMenu(menu);
  if (chosen >= kCmdColorFirst && static_cast<size_t>(chosen - kCmdColorFirst) < view_.colors.size())
    Fire(events_.color_changed, view_.colors[static_cast<size_t>(chosen - kCmdColorFirst)].color);
}

void ChatFrame::ShowUsersMenu(POINT screen) {
  const std::vector<std::wstring> selected = SelectedUsers();
  const ChatWindowLabels& l = view_.labels;
  HMENU menu = CreatePopupMenu();
  AppendMenuW(menu, MF_STRING, kCmdAddUser, l.add_user.c_str());
  AppendMenuW(menu, MF_STRING | (selected.empty() ? MF_GRAYED : 0), kCmdRemoveUser,
              l.remove_user.c_str());
  AppendMenuW(menu, MF_STRING | (selected.size() == 1 ? 0 : MF_GRAYED), kCmdUserProperties,
              l.user_properties.c_str());
  const int chosen = Choose(menu, screen, 0);
  DestroyMenu(menu);
  if (chosen) OnCommand(chosen, 0);
}

void ChatFrame::ShowBoardMenu(const std::wstring& html, POINT screen) {
  // Only a sender's picture names a user, and only an attachment picture a mail.
  const std::wstring lower = LCase(html);
  const bool sender = ContainsText(lower, L"corvinatag1");
  const bool attachment = ContainsText(lower, L"corvinatag2");
  const ChatWindowLabels& l = view_.labels;
  HMENU menu = CreatePopupMenu();
  AppendMenuW(menu, MF_STRING | (sender ? 0 : MF_GRAYED), kCmdAddSender, l.add_sender.c_str());
  AppendMenuW(menu, MF_STRING | (sender ? 0 : MF_GRAYED), kCmdSenderProperties,
              l.sender_properties.c_str());
  AppendMenuW(menu, MF_STRING | (attachment ? 0 : MF_GRAYED), kCmdShowAttachments,
              l.show_attachments.c_str());
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING, kCmdCopy, l.copy.c_str());
  AppendMenuW(menu, MF_STRING, kCmdClearBoard, l.clear_board.c_str());
  AppendMenuW(menu, MF_STRING, kCmdSaveBoard, l.save_board.c_str());
  const int chosen = Choose(menu, screen, 0);
  DestroyMenu(menu);
  switch (chosen) {
    case kCmdAddSender: Fire(events_.board_add_user, html); break;
    case kCmdSenderProperties: Fire(events_.board_user_properties, html); break;
    case kCmdShowAttachments: Fire(events_.board_show_attachments, html); break;
    case kCmdCopy: if (browser_) browser_->MakeCtrlC(); break;
    default: if (chosen) OnCommand(chosen, 0); break;
  }
}

int ChatFrame::Choose(HMENU menu, POINT screen, UINT flags) {
  if (choose_) return choose_(menu, screen);
  return static_cast<int>(TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | flags, screen.x,
                                         screen.y, 0, window_.get(), nullptr));
}

void ChatFrame::ReportPlacement() {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (!window_ || !GetWindowPlacement(window_.get(), &placement)) return;
  // The normal position: a minimised or maximised window opens again as it was before.
  const RECT& r = placement.rcNormalPosition;
  Fire(events_.placed, static_cast<int32_t>(r.left), static_cast<int32_t>(r.top),
       static_cast<int32_t>(r.right - r.left), static_cast<int32_t>(r.bottom - r.top));
}

void ChatFrame::OnCommand(int id, int code) {
  switch (id) {
    case kChatSend: Fire(events_.send); return;
    case kChatBold:
    case kChatItalic:
    case kChatUnderline: {
      auto checked = [this](int button) {
        return SendMessageW(Item(button), BM_GETCHECK, 0, 0) == BST_CHECKED;
      };
      Fire(events_.format_changed, checked(kChatBold), checked(kChatItalic), checked(kChatUnderline));
      return;
    }
    case kChatColor: ShowColourMenu(); return;
    case kChatAttach: AttachFile(); return;
    case kChatRemoveAttachment: {
      const LRESULT at = SendMessageW(Item(kChatAttachments), LB_GETCURSEL, 0, 0);
      if (at != LB_ERR) Fire(events_.remove_attachment, static_cast<size_t>(at));
      return;
    }
    case kChatMessage:
      if (code == EN_CHANGE && !applying_) {
        view_.message = WindowText(Item(kChatMessage));
        Fire(events_.message_changed, view_.message);
      }
      return;
    case kCmdAddUser: Fire(events_.add_user); return;
    case kCmdRemoveUser: Fire(events_.remove_users); return;
    case kCmdUserProperties: {
      const std::vector<std::wstring> selected = SelectedUsers();
      if (!selected.empty()) Fire(events_.user_properties, selected.front());
      return;
    }
    case kCmdClearBoard: Fire(events_.clear_board); return;
    case kCmdSaveBoard: Fire(events_.save_board); return;
    case kCmdClose: PostMessageW(window_.get(), WM_CLOSE, 0, 0); return;
    default: return;
  }
}

LRESULT CALLBACK ChatFrame::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  ChatFrame* self = WindowSelf<ChatFrame>(hwnd, message, lparam);
  if (message == WM_NCDESTROY) SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
  if (!self || !self->window_ || self->window_.get() != hwnd)
    return DefWindowProcW(hwnd, message, wparam, lparam);
  try {
    return self->Handle(message, wparam, lparam);
  } catch (...) {
    return DefWindowProcW(hwnd, message, wparam, lparam);
  }
}

// Ctrl+Enter sends; Enter alone starts a new line of the message.
LRESULT CALLBACK ChatFrame::MessageProcedure(HWND hwnd, UINT message, WPARAM wparam,
                                             LPARAM lparam, UINT_PTR /*id*/, DWORD_PTR self) {
  if (message == WM_KEYDOWN && wparam == VK_RETURN && (GetKeyState(VK_CONTROL) & 0x8000)) {
    reinterpret_cast<ChatFrame*>(self)->OnCommand(kChatSend, BN_CLICKED);
    return 0;
  }
  if (message == WM_CHAR && wparam == L'\n') return 0;  // the Ctrl+Enter character
  if (message == WM_NCDESTROY) RemoveWindowSubclass(hwnd, &ChatFrame::MessageProcedure, 1);
  return DefSubclassProc(hwnd, message, wparam, lparam);
}

LRESULT ChatFrame::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  HWND hwnd = window_.get();
  switch (message) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_GETMINMAXINFO: {
      auto* info = reinterpret_cast<MINMAXINFO*>(lparam);
      info->ptMinTrackSize = POINT{kMinWidth, kMinHeight};
      return 0;
    }
    case WM_EXITSIZEMOVE:
      ReportPlacement();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wparam) != WA_INACTIVE) Fire(events_.activated);
      return 0;
    case WM_TIMER:
      if (wparam == kFlashTimer) Fire(events_.flash_tick);
      if (wparam == kLoadTimer) {
        KillTimer(hwnd, kLoadTimer);
        if (browser_ && !browser_->document_complete()) ShowPlainBoard();
      }
      return 0;
    case WM_CLOSE:
      ReportPlacement();
      // The model unloads the form, which closes this window.
      if (events_.close)
        Fire(events_.close);
      else
        Destroy();
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case kUsersChanged:
      OnUsersChanged();
      return 0;
    case WM_NOTIFY: {
      const auto* header = reinterpret_cast<const NMHDR*>(lparam);
      if (header->idFrom != kChatUsers) break;
      if (header->code == LVN_ITEMCHANGED) {
        const auto* change = reinterpret_cast<const NMLISTVIEW*>(lparam);
        if (!applying_ && (change->uChanged & LVIF_STATE) &&
            ((change->uNewState ^ change->uOldState) & LVIS_SELECTED) && !users_change_posted_) {
          users_change_posted_ = true;
          PostMessageW(hwnd, kUsersChanged, 0, 0);
        }
        return 0;
      }
      if (header->code == NM_DBLCLK) {
        const auto* item = reinterpret_cast<const NMITEMACTIVATE*>(lparam);
        if (item->iItem >= 0 && static_cast<size_t>(item->iItem) < view_.users.rows.size())
          Fire(events_.user_properties, view_.users.rows[static_cast<size_t>(item->iItem)].key);
        return 0;
      }
      if (header->code == NM_RCLICK) {
        POINT at{};
        GetCursorPos(&at);
        ShowUsersMenu(at);
        return 0;
      }
      if (header->code == NM_CUSTOMDRAW) {
        auto* draw = reinterpret_cast<NMLVCUSTOMDRAW*>(lparam);
        if (draw->nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
        if (draw->nmcd.dwDrawStage == CDDS_ITEMPREPAINT) {
          const size_t row = static_cast<size_t>(draw->nmcd.lItemlParam);
          if (row < view_.users.rows.size()) draw->clrText = view_.users.rows[row].fore_color;
          return CDRF_NEWFONT;
        }
        return CDRF_DODEFAULT;
      }
      break;
    }
    case WM_DRAWITEM: {
      const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
      if (item->CtlID != kChatColor) break;
      // The colour button shows the message's colour beside its caption.
      RECT r = item->rcItem;
      const UINT state = DFCS_BUTTONPUSH | ((item->itemState & ODS_SELECTED) ? DFCS_PUSHED : 0);
      DrawFrameControl(item->hDC, &r, DFC_BUTTON, state);
      RECT swatch{r.left + 6, r.top + 6, r.left + 20, r.bottom - 6};
      HBRUSH brush = CreateSolidBrush(view_.color);
      FillRect(item->hDC, &swatch, brush);
      DeleteObject(brush);
      FrameRect(item->hDC, &swatch, GetSysColorBrush(COLOR_BTNTEXT));
      RECT text{swatch.right + 6, r.top, r.right - 4, r.bottom};
      SetBkMode(item->hDC, TRANSPARENT);
      SetTextColor(item->hDC, GetSysColor(COLOR_BTNTEXT));
      HGDIOBJ old = SelectObject(item->hDC, font_.get());
      DrawTextW(item->hDC, view_.labels.color.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER);
      SelectObject(item->hDC, old);
      if (item->itemState & ODS_FOCUS) {
        RECT focus = r;
        InflateRect(&focus, -3, -3);
        DrawFocusRect(item->hDC, &focus);
      }
      return TRUE;
    }
    case WM_CTLCOLOREDIT:
      if (reinterpret_cast<HWND>(lparam) == Item(kChatMessage)) {
        SetTextColor(reinterpret_cast<HDC>(wparam), view_.color);
        SetBkColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      }
      break;
    case WM_CTLCOLORSTATIC:
      if (reinterpret_cast<HWND>(lparam) == Item(kChatBoardText)) {
        // The plain board reads like the page: black on white.
        SetTextColor(reinterpret_cast<HDC>(wparam), RGB(0, 0, 0));
        SetBkColor(reinterpret_cast<HDC>(wparam), RGB(255, 255, 255));
        return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
      }
      break;
    default:
      break;
  }
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

}  // namespace corvina::win32
