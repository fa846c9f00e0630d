// The chat dialogs as real windows. A test hook fills their fields and presses their buttons,
// or posts keys that their message loop handles, with the messages a user's input sends.
#include "platform/win32/chat/chat_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "chat/chat_colors.h"
#include "chat/chat_user.h"
#include "platform/win32/unique_handle.h"
#include "png_writer.h"

namespace corvina::win32 {
namespace {

using Action = std::function<void(HWND dialog)>;
using Change = std::function<void(ChatUserPropertiesView&)>;

void Type(HWND dialog, int id, const wchar_t* text) { SetWindowTextW(GetDlgItem(dialog, id), text); }
void Pick(HWND dialog, int id, int index) {
  HWND list = GetDlgItem(dialog, id);
  SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}
void Press(HWND dialog, int id) { SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0); }
// Posted to the focused field, so the dialog's own loop has to route it.
void Key(WPARAM key) { PostMessageW(GetFocus(), WM_KEYDOWN, key, 0); }
void CloseBox(HWND dialog) { SendMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }

ChatUserPropertiesView StoredUser() {
  ChatUserPropertiesView view;
  view.caption = L"Ann's properties";
  view.email = L"ann@example.com";
  view.nick_name = L"Ann";
  view.status = kChatUserActive;
  view.color_user = L"Red";
  view.color_message = L"Navy";
  view.icon = L"2";
  for (const wchar_t* name : kChatColorChoices) {
    view.colors.push_back(name);
    view.color_values.push_back(GetColorFromString(name));
  }
  view.statuses = {{kChatUserActive, L"Active"},   {kChatUserBlocked, L"Blocked"},
                   {kChatUserUnknown, L"Unknown"}, {kChatUserWaiting, L"Waiting"},
                   {kChatUserRejected, L"Rejected"}};
  return view;
}

auto Fields(const ChatUserPropertiesView& v) {
  return std::tuple(v.email, v.nick_name, v.status, v.color_user, v.color_message, v.icon, v.colors);
}

// Every dialog: modal to a real owner, focused on its first field, its caption shown.
class ChatDialogsTest : public testing::Test {
 protected:
  void SetUp() override {
    owner_.reset(CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100,
                                 nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(owner_);
  }
  void TearDown() override { SetChatDialogShownHookForTesting({}); }

  void OnShown(Action act) {
    shown_ = false;
    SetChatDialogShownHookForTesting([this, act](HWND dialog) {
      shown_ = true;
      owner_enabled_ = IsWindowEnabled(owner_.get());
      focus_id_ = GetDlgCtrlID(GetFocus());
      caption_.resize(100);
      caption_.resize(static_cast<size_t>(GetWindowTextW(dialog, caption_.data(), 100)));
      act(dialog);
    });
  }
  void ExpectModal(int first_field, const std::wstring& caption) {
    EXPECT_TRUE(shown_);
    EXPECT_FALSE(owner_enabled_) << "the owner takes input while the dialog is up";
    EXPECT_TRUE(IsWindowEnabled(owner_.get())) << "the owner stays disabled";
    EXPECT_EQ(focus_id_, first_field);
    EXPECT_EQ(caption_, caption);
  }

  UniqueHWnd owner_;
  bool shown_ = false, owner_enabled_ = true;
  int focus_id_ = 0;
  std::wstring caption_;
};

struct UserCase {
  const char* name;
  Change stored;  // applied to StoredUser()
  Action act;
  bool accepted;
  Change expected;  // applied to the stored view
  bool right_to_left = false;
};

TEST_F(ChatDialogsTest, UserDialogReturnsTheEditsOnlyOnOk) {
  const Change none = [](ChatUserPropertiesView&) {};
  const UserCase cases[] = {
      {"OK returns every edit, a colour by its exact name", none,
       [](HWND d) {
         Type(d, kChatUserEmailId, L" bob@example.org ");
         Type(d, kChatUserNickNameId, L"Bob");
         Pick(d, kChatUserStatusId, 1);
         Pick(d, kChatUserColorUserId, 13);
         Pick(d, kChatUserColorMessageId, 8);
         Pick(d, kChatUserIconId, 6);
         Press(d, IDOK);
       },
       true,
       [](ChatUserPropertiesView& v) {
         v.email = L" bob@example.org ";
         v.nick_name = L"Bob";
         v.status = kChatUserBlocked;
         v.color_user = L"Fuschia";
         v.color_message = L"Silver";
         v.icon = L"7";
       }},
      {"Enter is OK", none, [](HWND d) { Type(d, kChatUserNickNameId, L""); Key(VK_RETURN); }, true,
       [](ChatUserPropertiesView& v) { v.nick_name = L""; }},
      {"Cancel leaves the view", none,
       [](HWND d) { Type(d, kChatUserEmailId, L"x"); Pick(d, kChatUserIconId, 0); Press(d, IDCANCEL); },
       false, none},
      {"Escape cancels", none, [](HWND d) { Type(d, kChatUserEmailId, L"x"); Key(VK_ESCAPE); }, false,
       none},
      {"Closing cancels", none, [](HWND d) { Pick(d, kChatUserStatusId, 4); CloseBox(d); }, false,
       none},
      {"A stored colour in another case is selected",
       [](ChatUserPropertiesView& v) { v.color_user = L"fuschia"; v.color_message = L"NAVY"; },
       [](HWND d) { Press(d, IDOK); }, true,
       [](ChatUserPropertiesView& v) { v.color_user = L"Fuschia"; v.color_message = L"Navy"; }},
      {"An unknown colour selects the first",
       [](ChatUserPropertiesView& v) { v.color_user = L"Chartreuse"; },
       [](HWND d) { Press(d, IDOK); }, true,
       [](ChatUserPropertiesView& v) { v.color_user = L"Black"; }},
      {"A status and a picture outside the lists survive",
       [](ChatUserPropertiesView& v) { v.status = 7; v.icon = L"12"; },
       [](HWND d) { Press(d, IDOK); }, true, none},
      {"Right to left reads the same fields", none,
       [](HWND d) { Pick(d, kChatUserStatusId, 3); Pick(d, kChatUserIconId, 0); Press(d, IDOK); },
       true, [](ChatUserPropertiesView& v) { v.status = kChatUserWaiting; v.icon = L"1"; }, true},
  };
  for (const UserCase& c : cases) {
    SCOPED_TRACE(c.name);
    ChatUserPropertiesView view = StoredUser();
    c.stored(view);
    ChatUserPropertiesView expected = view;
    c.expected(expected);
    OnShown(c.act);
    EXPECT_EQ(RunChatUserDialog(view, owner_.get(), c.right_to_left), c.accepted);
    EXPECT_EQ(Fields(view), Fields(expected));
    ExpectModal(kChatUserEmailId, expected.caption);
  }
}

TEST_F(ChatDialogsTest, AddressDialogReturnsTheTypedTextOrNothing) {
  const struct {
    const char* name;
    Action act;
    const wchar_t* expected;
  } cases[] = {
      {"OK", [](HWND d) { Type(d, kChatAddressEditId, L" ann@example.com "); Press(d, IDOK); },
       L" ann@example.com "},
      {"Enter", [](HWND d) { Type(d, kChatAddressEditId, L"a@b.c"); Key(VK_RETURN); }, L"a@b.c"},
      {"Cancel", [](HWND d) { Type(d, kChatAddressEditId, L"a@b.c"); Press(d, IDCANCEL); }, L""},
      {"Escape", [](HWND d) { Type(d, kChatAddressEditId, L"a@b.c"); Key(VK_ESCAPE); }, L""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    OnShown(c.act);
    EXPECT_EQ(RunChatAddressDialog(L"Your address", owner_.get(), false), c.expected);
    ExpectModal(kChatAddressEditId, L"Your address");
  }
}

// Pictures to look at, in the working folder; each dialog is cancelled once captured.
TEST_F(ChatDialogsTest, Screenshots) {
  const auto capture = [this](const wchar_t* file) {
    OnShown([file](HWND d) {
      EXPECT_TRUE(WritePng(file, d)) << "capturing " << testing::PrintToString(std::wstring(file));
      Press(d, IDCANCEL);
    });
  };
  ChatUserPropertiesView view = StoredUser();
  view.color_message = L"Fuschia";
  capture(L"chat_user_dialog.png");
  RunChatUserDialog(view, owner_.get(), false);
  capture(L"chat_user_dialog_rtl.png");
  RunChatUserDialog(view, owner_.get(), true);
  capture(L"chat_address_dialog.png");
  RunChatAddressDialog(L"Add a user", owner_.get(), false);
}

// A colour picker's entry is drawn with its swatch in the colour it names.
TEST_F(ChatDialogsTest, ColourEntriesShowTheirSwatch) {
  for (const size_t index : {size_t{0}, size_t{13}}) {  // Black, and "Fuschia"
    SCOPED_TRACE(index);
    COLORREF drawn = CLR_INVALID;
    LRESULT handled = FALSE;
    OnShown([&](HWND d) {
      HWND combo = GetDlgItem(d, kChatUserColorMessageId);
      HDC screen = GetDC(nullptr);
      HDC memory = CreateCompatibleDC(screen);
      HBITMAP bitmap = CreateCompatibleBitmap(screen, 160, 20);
      HGDIOBJ old = SelectObject(memory, bitmap);
      DRAWITEMSTRUCT item{};
      item.CtlType = ODT_COMBOBOX;
      item.CtlID = kChatUserColorMessageId;
      item.itemID = static_cast<UINT>(index);
      item.itemAction = ODA_DRAWENTIRE;
      item.hwndItem = combo;
      item.hDC = memory;
      item.rcItem = RECT{0, 0, 160, 20};
      item.itemData = static_cast<ULONG_PTR>(SendMessageW(combo, CB_GETITEMDATA, index, 0));
      handled = SendMessageW(d, WM_DRAWITEM, kChatUserColorMessageId, reinterpret_cast<LPARAM>(&item));
      drawn = GetPixel(memory, 10, 10);
      SelectObject(memory, old);
      DeleteObject(bitmap);
      DeleteDC(memory);
      ReleaseDC(nullptr, screen);
      Press(d, IDCANCEL);
    });
    ChatUserPropertiesView view = StoredUser();
    RunChatUserDialog(view, owner_.get(), false);
    EXPECT_EQ(handled, TRUE);
    EXPECT_EQ(drawn, static_cast<COLORREF>(view.color_values[index]));
  }
}

}  // namespace
}  // namespace corvina::win32
