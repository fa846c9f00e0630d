// frmChat's real window, with the browser test double in the board's place: it draws what the
// model says and hands every control's action to the model's events.
#include "platform/win32/chat/chat_frame.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include "base/text.h"
#include "fake_web_browser.h"
#include "platform/win32/win32_file_system.h"
#include "png_writer.h"
#include "window_pump.h"

namespace corvina::win32 {
namespace {

constexpr char kPage[] =
    "<HTML><HEAD><TITLE>t</TITLE></HEAD><BODY>\r\n"
    "<TABLE><TR><TD><IMG id=\"ann@x.org\" alt=\"Ann\" CorvinaTag1=\"ann@x.org\"></TD>"
    "<TD valign=bottom>Ann Said :</TD></TR></TABLE>Hello &amp; welcome<BR>\r\n";


class ChatFrameTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    view.board_path = std::wstring(temp) + L"corvina_frame_board.html";
    Win32FileSystem().WriteFile(view.board_path, kPage);
    view.caption = L"Corvina Chat";
    view.users.rows = {{L"ann@x.org", L"Ann", L"KeyChatUserActive", 0x0000FF, L"ann@x.org", true},
                       {L"ben@x.org", L"Ben", L"KeyChatUserBlocked", 0, L"ben@x.org", false}};
    view.message = L"hi";
    view.bold = true;
    view.color = 0x800000;
    view.colors = {{L"Black", 0}, {L"Navy", 0x800000}};
    view.attachments = {L"C:\\a.txt", L"C:\\b.txt"};
    view.status = L"Last message sent successfully to: Ann";
    view.board_serial = 1;
    auto log = [this](std::wstring what) { fired.push_back(std::move(what)); };
    events.select_users = [log](const std::vector<std::wstring>& keys) {
      std::wstring all;
      for (const auto& k : keys) all += (all.empty() ? L"" : L",") + k;
      log(L"select:" + all);
    };
    events.message_changed = [log](const std::wstring& t) { log(L"message:" + t); };
    events.format_changed = [log](bool b, bool i, bool u) {
      log(L"format:" + std::to_wstring(b) + std::to_wstring(i) + std::to_wstring(u));
    };
    events.color_changed = [log](uint32_t c) { log(L"color:" + std::to_wstring(c)); };
    events.remove_attachment = [log](size_t i) { log(L"remove:" + std::to_wstring(i)); };
    events.send = [log] { log(L"send"); };
    events.flash_tick = [log] { log(L"flash"); };
    events.placed = [log](int32_t, int32_t, int32_t w, int32_t h) {
      log(L"placed:" + std::to_wstring(w) + L"x" + std::to_wstring(h));
    };
    events.close = [log] { log(L"close"); };
    events.board_click = [log](const std::wstring& html) { log(L"click:" + html); };
    events.board_add_user = [log](const std::wstring& html) { log(L"add sender:" + html); };
    events.board_show_attachments = [log](const std::wstring& html) { log(L"open mail:" + html); };
    events.remove_users = [log] { log(L"remove users"); };
    events.activated = [log] { log(L"activated"); };
    events.add_user = [log] { log(L"add user"); };
    events.user_properties = [log](const std::wstring& e) { log(L"properties:" + e); };
    events.clear_board = [log] { log(L"clear"); };
    events.save_board = [log] { log(L"save"); };
  }
  void TearDown() override {
    DeleteFileW(view.board_path.c_str());
    OleUninitialize();
  }
  HWND Item(ChatFrame& frame, int id) { return GetDlgItem(frame.hwnd(), id); }

  ChatWindowView view;
  ChatWindowEvents events;
  std::vector<std::wstring> fired;
};

TEST_F(ChatFrameTest, DrawsTheViewAndHandsEveryControlToTheModel) {
  testing::FakeWebBrowser fake;
  ChatFrame frame(fake.Factory());
  view.left = 40, view.top = 30, view.width = 700, view.height = 520;
  frame.Show(view, events);
  ASSERT_TRUE(frame.hwnd());
  RECT placed{};
  GetWindowRect(frame.hwnd(), &placed);
  EXPECT_EQ(placed.left, 40);
  EXPECT_EQ(placed.bottom - placed.top, 520);
  EXPECT_EQ(WindowText(frame.hwnd()), L"Corvina Chat");
  HWND list = Item(frame, kChatUsers);
  ASSERT_EQ(ListView_GetItemCount(list), 2);
  // Two columns, the address the wider, both within the list: no sideways scrolling.
  wchar_t header[32] = {};
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = header;
  column.cchTextMax = 32;
  ASSERT_TRUE(ListView_GetColumn(list, 1, &column));
  EXPECT_EQ(std::wstring(header), L"E-mail");
  const int address_width = column.cx;
  const int name_width = ListView_GetColumnWidth(list, 0);
  RECT inside{};
  GetClientRect(list, &inside);
  EXPECT_LT(name_width, address_width);
  EXPECT_LE(name_width + address_width, inside.right);
  EXPECT_EQ(ListView_GetItemState(list, 0, LVIS_SELECTED), static_cast<UINT>(LVIS_SELECTED));
  EXPECT_EQ(ListView_GetItemState(list, 1, LVIS_SELECTED), 0u);
  EXPECT_EQ(WindowText(Item(frame, kChatMessage)), L"hi");
  EXPECT_EQ(SendMessageW(Item(frame, kChatBold), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(SendMessageW(Item(frame, kChatItalic), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  EXPECT_EQ(SendMessageW(Item(frame, kChatAttachments), LB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(WindowText(Item(frame, kChatStatus)), view.status);
  EXPECT_FALSE(frame.showing_plain_board());
  // The message is written as it will look: in bold here.
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Item(frame, kChatMessage), WM_GETFONT, 0, 0)),
             sizeof font, &font);
  EXPECT_EQ(font.lfWeight, FW_BOLD);
  MINMAXINFO limits{};
  SendMessageW(frame.hwnd(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_GT(limits.ptMinTrackSize.x, 400);
  EXPECT_GT(limits.ptMinTrackSize.y, 300);
  // The menu bar: the board's commands, then the users'.
  HMENU bar = GetMenu(frame.hwnd());
  ASSERT_EQ(GetMenuItemCount(bar), 2);
  const std::vector<UINT> chat_menu{kCmdSaveBoard, kCmdClearBoard, 0, kCmdClose};
  const std::vector<UINT> users_menu{kCmdAddUser, kCmdRemoveUser, kCmdUserProperties};
  for (int i = 0; i < 2; ++i) {
    std::vector<UINT> ids;
    HMENU sub = GetSubMenu(bar, i);
    for (int k = 0; k < GetMenuItemCount(sub); ++k) ids.push_back(GetMenuItemID(sub, k));
    EXPECT_EQ(ids, i == 0 ? chat_menu : users_menu);
  }
  std::erase(fired, L"activated");  // the window opens in front
  EXPECT_TRUE(fired.empty()) << "drawing is not the user's doing: " << ToUtf8(fired.front());

  // The board: shown once from its file, then only appended to; a restarted board is shown anew.
  ASSERT_EQ(fake.record().navigations.size(), 1u);
  EXPECT_NE(fake.record().navigations[0].find(L"corvina_frame_board.html"), std::wstring::npos);
  fake.FireDocumentComplete();
  view.board_blocks = {"<B>one</B>", "two \xd7\xa9"};
  frame.Show(view, events);
  ASSERT_EQ(fake.record().appended.size(), 2u);
  EXPECT_EQ(fake.record().appended[1].second, L"two \u05e9");
  EXPECT_EQ(fake.record().navigations.size(), 1u);
  view.board_blocks.clear();
  ++view.board_serial;
  frame.Show(view, events);
  EXPECT_EQ(fake.record().navigations.size(), 2u);
  EXPECT_EQ(fake.record().appended.size(), 2u);
  fake.FireDocumentComplete();
  WritePng(L"chat_window.png", frame.hwnd());

  // Each control, used as a user would, and the event the model gets.
  const struct {
    const char* action;
    std::function<void()> act;
    std::wstring fired;
  } rows[] = {
      {"typing",
       [&] {
         SendMessageW(Item(frame, kChatMessage), EM_SETSEL, 0, -1);
         SendMessageW(Item(frame, kChatMessage), EM_REPLACESEL, TRUE,
                      reinterpret_cast<LPARAM>(L"typed"));
       },
       L"message:typed"},
      {"italic", [&] { SendMessageW(Item(frame, kChatItalic), BM_CLICK, 0, 0); }, L"format:110"},
      {"send", [&] { SendMessageW(Item(frame, kChatSend), BM_CLICK, 0, 0); }, L"send"},
      {"remove the second file",
       [&] {
         SendMessageW(Item(frame, kChatAttachments), LB_SETCURSEL, 1, 0);
         SendMessageW(Item(frame, kChatRemoveAttachment), BM_CLICK, 0, 0);
       },
       L"remove:1"},
      {"select Ben too",
       [&] {
         ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
         PumpMessages(50);
       },
       L"select:ann@x.org,ben@x.org"},
      {"menu: add user", [&] { SendMessageW(frame.hwnd(), WM_COMMAND, kCmdAddUser, 0); }, L"add user"},
      {"menu: clear", [&] { SendMessageW(frame.hwnd(), WM_COMMAND, kCmdClearBoard, 0); }, L"clear"},
      {"menu: save", [&] { SendMessageW(frame.hwnd(), WM_COMMAND, kCmdSaveBoard, 0); }, L"save"},
      {"menu: properties of the first selected",
       [&] { SendMessageW(frame.hwnd(), WM_COMMAND, kCmdUserProperties, 0); },
       L"properties:ann@x.org"},
      {"a picture on the board", [&] { fake.Click(L"<IMG CorvinaTag1=\"ann@x.org\">"); },
       L"click:<IMG CorvinaTag1=\"ann@x.org\">"},
      {"the flash timer", [&] { SendMessageW(frame.hwnd(), WM_TIMER, 1, 0); }, L"flash"},
      {"activated", [&] { SendMessageW(frame.hwnd(), WM_ACTIVATE, WA_CLICKACTIVE, 0); }, L"activated"},
      {"moved", [&] { SendMessageW(frame.hwnd(), WM_EXITSIZEMOVE, 0, 0); }, L"placed:700x520"},
      {"Ctrl+Enter in the message",
       [&] {
         BYTE keys[256];
         GetKeyboardState(keys);
         const BYTE before = keys[VK_CONTROL];
         keys[VK_CONTROL] = 0x80;
         SetKeyboardState(keys);
         SendMessageW(Item(frame, kChatMessage), WM_KEYDOWN, VK_RETURN, 0);
         keys[VK_CONTROL] = before;
         SetKeyboardState(keys);
       },
       L"send"},
      {"a double click on Ben",
       [&] {
         NMITEMACTIVATE item{};
         item.hdr = NMHDR{list, static_cast<UINT_PTR>(kChatUsers), static_cast<UINT>(NM_DBLCLK)};
         item.iItem = 1;
         SendMessageW(frame.hwnd(), WM_NOTIFY, kChatUsers, reinterpret_cast<LPARAM>(&item));
       },
       L"properties:ben@x.org"},
      {"menu: close",
       [&] {
         SendMessageW(frame.hwnd(), WM_COMMAND, kCmdClose, 0);
         PumpMessages(50);
       },
       L"close"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.action);
    fired.clear();
    row.act();
    // While messages run, the window's own timer, activation and move report may come too.
    std::erase_if(fired, [&](const std::wstring& f) {
      return f != row.fired && (f == L"flash" || f == L"activated" || f.starts_with(L"placed:"));
    });
    ASSERT_EQ(fired.size(), 1u);
    EXPECT_EQ(fired[0], row.fired);
  }
  // Closing reports where the window was, then asks the model to close it.
  fired.clear();
  SendMessageW(frame.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(fired, (std::vector<std::wstring>{L"placed:700x520", L"close"}));
  frame.Destroy();
  EXPECT_EQ(fake.record().closes, 1);
}

// The pop-up menus offer what the clicked thing allows, and each choice reaches the model.
TEST_F(ChatFrameTest, MenusOfferWhatTheClickedThingAllows) {
  testing::FakeWebBrowser fake;
  ChatFrame frame(fake.Factory());
  std::vector<std::wstring> offered;  // the last menu: "text" or "text (off)" or "text (on)"
  int answer = 0;
  frame.set_menu_chooser_for_testing([&](HMENU menu, POINT) {
    offered.clear();
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      wchar_t text[64] = {};
      GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
      const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
      if (state & MF_SEPARATOR) continue;
      offered.push_back(std::wstring(text) + ((state & MF_GRAYED) ? L" (off)" : L"") +
                        ((state & MF_CHECKED) ? L" (on)" : L""));
    }
    return answer;
  });
  frame.Show(view, events);
  fake.FireDocumentComplete();
  const std::wstring sender = L"<IMG CorvinaTag1=\"ann@x.org\">";
  const std::wstring clip = L"<IMG id=\"00AB\" CorvinaTag2=\"1\">";
  HWND list = Item(frame, kChatUsers);
  const ChatWindowLabels l;
  const struct {
    const char* label;
    int answer;
    std::function<void()> open;
    std::vector<std::wstring> offered;
    std::vector<std::wstring> fired;
  } rows[] = {
      {"colour", kCmdColorFirst + 0, [&] { SendMessageW(Item(frame, kChatColor), BM_CLICK, 0, 0); },
       {L"Black", L"Navy (on)"}, {L"color:0"}},
      {"a sender's picture", kCmdAddSender, [&] { fake.RightClick(sender, POINT{1, 1}); },
       {l.add_sender, l.sender_properties, l.show_attachments + L" (off)", l.copy, l.clear_board,
        l.save_board},
       {L"add sender:" + sender}},
      {"an attachment picture", kCmdShowAttachments, [&] { fake.RightClick(clip, POINT{1, 1}); },
       {l.add_sender + L" (off)", l.sender_properties + L" (off)", l.show_attachments, l.copy,
        l.clear_board, l.save_board},
       {L"open mail:" + clip}},
      {"the board beside any picture", kCmdSaveBoard, [&] { fake.RightClick(std::nullopt, POINT{1, 1}); },
       {l.add_sender + L" (off)", l.sender_properties + L" (off)", l.show_attachments + L" (off)",
        l.copy, l.clear_board, l.save_board},
       {L"save"}},
      {"the user list, Ann selected", kCmdRemoveUser,
       [&] {
         NMHDR click{list, static_cast<UINT_PTR>(kChatUsers), static_cast<UINT>(NM_RCLICK)};
         SendMessageW(frame.hwnd(), WM_NOTIFY, kChatUsers, reinterpret_cast<LPARAM>(&click));
       },
       {l.add_user, l.remove_user, l.user_properties}, {L"remove users"}},
      {"dismissed", 0, [&] { fake.RightClick(sender, POINT{1, 1}); },
       {l.add_sender, l.sender_properties, l.show_attachments + L" (off)", l.copy, l.clear_board,
        l.save_board},
       {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    fired.clear();
    answer = row.answer;
    row.open();
    EXPECT_EQ(offered, row.offered);
    EXPECT_EQ(fired, row.fired);
  }
  // Nobody selected: the list offers only adding.
  view.users.rows[0].selected = false;
  frame.Show(view, events);
  NMHDR click{list, static_cast<UINT_PTR>(kChatUsers), static_cast<UINT>(NM_RCLICK)};
  answer = 0;
  SendMessageW(frame.hwnd(), WM_NOTIFY, kChatUsers, reinterpret_cast<LPARAM>(&click));
  EXPECT_EQ(offered, (std::vector<std::wstring>{l.add_user, l.remove_user + L" (off)",
                                                 l.user_properties + L" (off)"}));
}

// No browser, or one whose page never loads: the board is read as plain text, and grows.
TEST_F(ChatFrameTest, ThePlainBoardTakesOverWhenNoBrowserShowsThePage) {
  const struct {
    const char* label;
    bool browser_made;
  } rows[] = {{"no browser", false}, {"a page that never loads", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    testing::FakeWebBrowser fake;
    BoardBrowser::Factory factory =
        row.browser_made ? fake.Factory() : [](IOleObject**) { return E_FAIL; };
    ChatFrame frame(factory);
    view.right_to_left = true;
    view.left = -30000;  // on no monitor: the window is placed where it can be seen
    view.width = 700, view.height = 520;
    frame.Show(view, events);
    EXPECT_TRUE(GetWindowLongPtrW(frame.hwnd(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL);
    RECT placed{};
    GetWindowRect(frame.hwnd(), &placed);
    EXPECT_GT(placed.left, -100);
    EXPECT_EQ(placed.right - placed.left, 760);  // the window's own size
    EXPECT_EQ(placed.bottom - placed.top, 560);
    if (row.browser_made) {
      EXPECT_FALSE(frame.showing_plain_board());
      PumpMessages(kBoardLoadTimeoutMs + 300);
    }
    ASSERT_TRUE(frame.showing_plain_board());
    view.board_blocks = {"<TABLE><TR><TD>Ben Said :</TD></TR></TABLE>second &lt;msg&gt;<BR>\r\n"};
    frame.Show(view, events);
    const std::wstring board = WindowText(Item(frame, kChatBoardText));
    EXPECT_NE(board.find(L"Ann Said :\r\nHello & welcome\r\n"), std::wstring::npos) << ToUtf8(board);
    EXPECT_TRUE(board.ends_with(L"Ben Said :\r\nsecond <msg>\r\n")) << ToUtf8(board);
    // A long board keeps its newest line in sight.
    view.board_blocks.assign(60, "line<BR>\r\n");
    frame.Show(view, events);
    EXPECT_GT(SendMessageW(Item(frame, kChatBoardText), EM_GETFIRSTVISIBLELINE, 0, 0), 30);
    if (!row.browser_made) WritePng(L"chat_window_plain.png", frame.hwnd());
    view.board_blocks.clear();
  }
}

}  // namespace
}  // namespace corvina::win32
