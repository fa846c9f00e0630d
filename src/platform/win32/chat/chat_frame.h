#pragma once
// frmChat on Windows: a resizable top-level window, thin over the chat model. It draws the
// view the model hands it (the send-to list, the message with its format, the files to send,
// the last report, the board) and passes every user action to the model's events; it keeps no
// state of its own beyond what is on the screen.
//
// The board is the system's browser control (see board_browser.h). When the control cannot be
// made, or its page has not loaded within five seconds, the board is shown as plain text in a
// read-only box instead, so a message is never hidden from the user.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/user_interface.h"
#include "platform/win32/chat/board_browser.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"
#include "platform/win32/windows_api.h"

#include <commctrl.h>

namespace corvina::win32 {

// The controls of the window, by id (tests find them with GetDlgItem).
enum ChatFrameControl : int {
  kChatBoardText = 101,  // the plain-text board
  kChatUsers,            // the send-to list
  kChatSendToLabel,
  kChatMessage,
  kChatBold,
  kChatItalic,
  kChatUnderline,
  kChatColor,
  kChatStatus,
  kChatAttachments,
  kChatAttachmentsLabel,
  kChatAttach,
  kChatRemoveAttachment,
  kChatSend,
};

// The commands of the menus.
enum ChatFrameCommand : int {
  kCmdAddUser = 201,
  kCmdRemoveUser,
  kCmdUserProperties,
  kCmdClearBoard,
  kCmdSaveBoard,
  kCmdClose,
  kCmdCopy,
  kCmdAddSender,
  kCmdSenderProperties,
  kCmdShowAttachments,
  kCmdColorFirst = 300,  // + the index of the colour
};

// How long the board's page may take to load before the plain view takes over.
inline constexpr UINT kBoardLoadTimeoutMs = 5000;

class ChatFrame {
 public:
  explicit ChatFrame(BoardBrowser::Factory browser = BoardBrowser::SystemBrowser());
  ~ChatFrame();
  ChatFrame(const ChatFrame&) = delete;
  ChatFrame& operator=(const ChatFrame&) = delete;

  // Draws `view`; the first call makes the window. `events` are kept for the controls.
  void Show(const ChatWindowView& view, const ChatWindowEvents& events);
  // One tick of the caption flash.
  void Flash(bool on);
  // Closes the window; the object may still be called (it then does nothing).
  void Destroy();

  HWND hwnd() const { return window_.get(); }
  // How the window's pop-up menus are shown: TrackPopupMenu unless a test chooses instead
  // (the menu, where it opens; the chosen command, 0 for none).
  using MenuChooser = std::function<int(HMENU menu, POINT screen)>;
  void set_menu_chooser_for_testing(MenuChooser chooser) { choose_ = std::move(chooser); }
  // True while the board is shown as plain text.
  bool showing_plain_board() const { return plain_; }
  bool right_to_left() const { return view_.right_to_left; }
  BoardBrowser* browser() const { return browser_.get(); }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  static LRESULT CALLBACK MessageProcedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                           UINT_PTR id, DWORD_PTR self);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void Create(const ChatWindowView& view);
  void MakeControls();
  void Layout();
  void ApplyUsers(const ChatListView& users);
  void ApplyFormat(const ChatWindowView& view);
  void ApplyBoard(const ChatWindowView& view);
  void ShowPlainBoard();
  void AppendPlainBoard(const std::string& block);
  void OnCommand(int id, int code);
  void OnUsersChanged();
  void ShowColourMenu();
  void ShowUsersMenu(POINT screen);
  void ShowBoardMenu(const std::wstring& html, POINT screen);
  void AttachFile();
  void ReportPlacement();
  std::vector<std::wstring> SelectedUsers() const;
  HWND Item(int id) const { return GetDlgItem(window_.get(), id); }
  // Runs an event with a copy of its handler: the handler may close the window and with it
  // the model that made it.
  template <class F, class... Args>
  void Fire(const F& handler, Args&&... args);

  int Choose(HMENU menu, POINT screen, UINT flags);

  BoardBrowser::Factory browser_factory_;
  MenuChooser choose_;
  ScopedWindowClass class_;
  UniqueHFont font_;
  UniqueHFont bold_font_;
  UniqueHFont italic_font_;
  UniqueHFont underline_font_;
  UniqueHFont message_font_;
  HIMAGELIST status_icons_ = nullptr;
  UniqueHWnd window_;
  HMENU menu_ = nullptr;  // owned by the window once set
  std::unique_ptr<BoardBrowser> browser_;
  bool plain_ = false;

  ChatWindowView view_;
  ChatWindowEvents events_;
  bool applying_ = false;  // drawing the view: control notifications are not the user's
  uint32_t shown_serial_ = 0;
  bool board_shown_ = false;
  bool plain_line_open_ = false;  // the plain board's last line has no line break yet
  bool users_change_posted_ = false;
};

}  // namespace corvina::win32
