#pragma once
// The chat board (ChatControl): the conversation as an HTML page in "<add-in>\Chat\Chat.Html".
// The page is written once with its head and then only appended to, one block per message, so
// a long conversation costs nothing more per message. The page is shown by a browser inside
// Outlook and its text comes from strangers' mails: everything that reaches it is escaped for
// the place it lands.
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date.h"
#include "chat/chat_colors.h"
#include "platform/file_system.h"
#include "settings/log.h"

namespace corvina {

// What the board names a sender not in the user list (caption, alt text, tag): no address can
// be taken from it.
inline constexpr wchar_t kUnknownUser[] = L"Unknown User";

// One message block as AddText writes it.
struct ChatBlock {
  std::wstring text;
  bool new_line = true;      // append "<BR>" and a line break after the text
  ChatColor color = 0;       // of the text; black writes no font tag
  bool bold = false;
  bool italic = false;
  bool underline = false;
  std::wstring email;        // the sender's address; empty for an unknown sender
  std::wstring nick_name;
  std::wstring icon;         // the icon number of the sender's picture
  int32_t attachment_count = 0;
  std::wstring entry_id;     // of the mail, for the attachment picture
  bool header = true;        // start a new speaker: the picture row
  bool own = false;          // the user's own message: the header says "You have said"
};

// The escaping table, in its order ("&" first, so the entities of the later rows stay).
std::wstring EscapeBoardText(std::wstring_view text);
// An attribute value for a double-quoted attribute: &, ", ', `, <, > escaped.
std::wstring EscapeAttribute(std::wstring_view value);
// The link table over escaped text: mail addresses and web addresses become links.
std::wstring RepalceSpecialChars(std::wstring_view text);
// "RRGGBB" of a 0x00BBGGRR colour.
std::wstring HtmlColor(ChatColor color);

class ChatControl {
 public:
  ChatControl(FileSystem& files, Log& log, std::wstring addin_folder);

  // "<add-in>\Chat\Chat.Html".
  std::wstring BoardPath() const;
  // Writes the page head from the start: right to left when `rtl`, the title with the version
  // and `now`.
  void InitChat(bool rtl, Date now);
  // Appends one block.
  void AddText(const ChatBlock& block);
  // Starts the page again.
  void ClearChatBoard(bool rtl, Date now);
  // Saves the page with its tail to `path`; false (and a log line) when it cannot.
  bool SaveChat(const std::wstring& path);
  bool SaveBrowserHtmlToFile(const std::wstring& path);
  // The HTML of the last block written, as it went into the file.
  const std::string& last_block() const { return last_block_; }

 private:
  FileSystem& files_;
  Log& log_;
  std::wstring addin_folder_;
  std::string last_block_;
  // The last InitChat's, for a board that has to be started again under AddText.
  bool rtl_ = false;
  Date started_{};
};

}  // namespace corvina
