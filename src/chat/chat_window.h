#pragma once
// frmChat's model: the send-to list, the message being written, the files to send, the board
// and every command of the window. The Windows window and the sim only draw `view()` and
// forward the user's actions here.
#include <cstdint>
#include <string>
#include <vector>

#include "addin/addin.h"
#include "chat/chat_board.h"
#include "chat/chat_user.h"
#include "platform/user_interface.h"

namespace corvina {

inline constexpr wchar_t kChatFormName[] = L"frmChat";
inline constexpr wchar_t kChatBoxTitle[] = L"Corvina Chat.";
inline constexpr wchar_t kChatImageList[] = L"imlChatUsers";

// What a click on the board hit, told by the clicked element's HTML.
enum class BoardClick { kNothing, kSender, kAttachment };
BoardClick GetSubjectTypeClicked(const std::wstring& html);
// The sender's address of a clicked sender picture: the CorvinaTag1 attribute's value.
std::wstring GetUserEmailFromInnerHtml(const std::wstring& html);
// The mail's entry id of a clicked attachment picture: the id attribute's value.
std::wstring GetEmailEntryIdFromInnerHtml(const std::wstring& html);

class ChatWindow {
 public:
  explicit ChatWindow(AddIn& addin);

  // Form_Load: the board (started again unless it is kept between sessions), the list.
  void Form_Load();
  // Form_Unload: the user list saved, the board cleared when so set, the form unloaded.
  void Form_Unload();
  // The window got the focus: the caption stops flashing.
  void Form_Activate();

  // The send-to list.
  void SelectUsers(const std::vector<std::wstring>& emails);
  void MarkUserInList(const std::wstring& email);
  // Adds a row for a user just added to the list.
  void AddUserRow(const ChatUser& user);
  void RefreshUserList();

  // The message being written.
  void SetMessage(const std::wstring& text);
  void SetFormat(bool bold, bool italic, bool underline);
  void SetColor(ChatColor color);
  void AddAttachment(const std::wstring& path);
  void RemoveAttachment(size_t index);
  // The window was moved or sized; the placement is kept when the window closes.
  void Form_Placed(int32_t left, int32_t top, int32_t width, int32_t height);

  // cmdSend_Click: one chat mail to every selected user. True when it was sent.
  bool cmdSend_Click();
  // A chat message that arrived: appended to the board, the caption set flashing.
  void ShowIncomingMessage(const std::wstring& sender, const std::wstring& body,
                           int32_t attachment_count, const std::wstring& entry_id);
  // tmrFlash_Timer: one tick of the caption flash.
  void tmrFlash_Timer();
  bool flashing() const { return flashing_; }

  // The board: a click on a picture, and the board's context-menu commands.
  void Board_Click(const std::wstring& html);
  void mnuBrowserAddUser_Click(const std::wstring& html);
  void CallmnuBrowserShowAttachments_Click(const std::wstring& html);
  void CallmnuBrowserUserProperties_Click(const std::wstring& html);
  // Opens frmChatUserProperties for the user with this address; true when it was changed.
  bool ShowUserProperties(const std::wstring& email);
  // frmChatMail: a new user by address.
  void mnuAddUser_Click();
  // Removes the selected users from the list.
  void mnuRemoveUser_Click();
  void mnuClearBoard_Click();
  void mnuSaveBoard_Click();

  const ChatWindowView& view() const { return view_; }
  const ChatWindowEvents& events() const { return events_; }
  ChatControl& board() { return board_; }

 private:
  void Draw();
  ChatWindowEvents MakeEvents();
  // The board started again, or a block written to it: the window is told with its next draw.
  void BoardStarted();
  void BoardAdded(const ChatBlock& block);
  void Tell(const std::wstring& text, int32_t style);
  bool OpenMailItemBySotreID(const std::wstring& entry_id);
  // The address dialog until it gives a valid address or is cancelled ("").
  std::wstring AskValidAddress(TextId caption);
  bool AskOwnAddress();
  // A user typed or taken from the board: refused when listed, else added and saved.
  void AddUserByAddress(const std::wstring& email);
  void SaveUsers();

  AddIn& addin_;
  ChatControl board_;
  ChatWindowView view_;
  ChatWindowEvents events_;
  std::wstring last_speaker_;  // whose block the board ends with; a new speaker gets a header
  bool flashing_ = false;
  bool flash_on_ = false;
};

// The window, loaded and shown first when it is not.
ChatWindow& OpenChatWindow(AddIn& addin);
// Unloads the window when it is loaded.
void CloseChatWindow(AddIn& addin);

}  // namespace corvina
