#include "simulator/chat_script.h"

#include <algorithm>

#include "base/text.h"
#include "chat/chat_colors.h"
#include "chat/chat_window.h"
#include "simulator/html_text.h"
#include "simulator/script.h"

namespace corvina::simulator {
namespace {

// "\n" typed in a script line is a line break of the message.
std::wstring Unescape(const std::wstring& text) { return Replace(text, L"\\n", L"\r\n"); }

std::wstring AttributeValue(const std::wstring& tag, const std::wstring& name) {
  const size_t at = LCase(tag).find(L" " + name + L"=\"");
  if (at == std::wstring::npos) return L"";
  const size_t begin = at + name.size() + 3;
  const std::wstring raw = tag.substr(begin, tag.find(L'"', begin) - begin);
  return FromUtf8(HtmlToText(ToUtf8(raw)));
}

}  // namespace

std::wstring ChatWatch::Picture(int32_t number, const SayFn& say) const {
  if (number < 1 || static_cast<size_t>(number) > pictures_.size()) {
    say(L"  there is no picture " + std::to_wstring(number) + L" on the board");
    return L"";
  }
  return pictures_[static_cast<size_t>(number - 1)];
}

bool ChatWatch::Perform(AddIn& addin, sim::ScriptedUserInterface& ui, const std::wstring& command,
                        const SayFn& say) {
  const std::vector<std::wstring> words = ScriptWords(command);
  if (words.empty()) return false;
  const std::wstring verb = LCase(words[0]);
  const size_t blank = command.find(L' ');
  const std::wstring rest = blank == std::wstring::npos ? L"" : Trim(command.substr(blank + 1));
  auto number = [&]() -> int32_t {
    try {
      return words.size() > 1 ? ToLong(words[1]) : 0;
    } catch (const Error&) {
      return 0;
    }
  };
  // Every command but these works on the open window; they open it as the user would first.
  if (verb == L"own-address") {
    ui.QueueChatAddress(rest);
    return true;
  }
  if (!addin.chat.window) {
    say(L"  the chat window is not open (click Vireo_Chat)");
    return false;
  }
  ChatWindow& window = *addin.chat.window;
  if (verb == L"select") {
    std::vector<std::wstring> emails;
    for (const std::wstring& part : ScriptWords(Replace(rest, L",", L" "))) emails.push_back(part);
    window.SelectUsers(emails);
    return true;
  }
  if (verb == L"type") {
    window.SetMessage(Unescape(rest));
    return true;
  }
  if (verb == L"format") {
    const std::wstring f = LCase(rest);
    window.SetFormat(f.find(L"bold") != std::wstring::npos, f.find(L"italic") != std::wstring::npos,
                     f.find(L"underline") != std::wstring::npos);
    return true;
  }
  if (verb == L"color") {
    window.SetColor(GetColorFromString(rest));
    return true;
  }
  if (verb == L"attach") {
    window.AddAttachment(rest);
    return true;
  }
  if (verb == L"send") return window.cmdSend_Click();
  if (verb == L"click" || verb == L"add-user") {
    const std::wstring picture = Picture(number(), say);
    if (picture.empty()) return false;
    if (verb == L"click") {
      window.Board_Click(picture);
      // A sender picture selects its user, even the one already selected: said every time.
      tell_selection_ = GetSubjectTypeClicked(picture) == BoardClick::kSender;
    } else {
      window.mnuBrowserAddUser_Click(picture);
    }
    return true;
  }
  if (verb == L"properties") {
    if (words.size() < 2) return false;
    std::vector<std::wstring> edits(words.begin() + 2, words.end());
    ui.QueueChatUserProperties([edits](ChatUserPropertiesView& v) {
      for (const std::wstring& edit : edits) {
        const size_t eq = edit.find(L'=');
        if (eq == std::wstring::npos) return !EqualsIgnoreCase(edit, L"cancel");
        const std::wstring key = LCase(edit.substr(0, eq)), value = edit.substr(eq + 1);
        if (key == L"email") v.email = value;
        else if (key == L"nick") v.nick_name = value;
        else if (key == L"status") v.status = static_cast<int16_t>(ToLong(value));
        else if (key == L"color") v.color_user = value;
        else if (key == L"message-color") v.color_message = value;
        else if (key == L"icon") v.icon = value;
      }
      return true;
    });
    if (!window.ShowUserProperties(words[1])) say(L"  (the user was not changed)");
    return true;
  }
  if (verb == L"new-user") {
    ui.QueueChatAddress(rest);
    window.mnuAddUser_Click();
    return true;
  }
  if (verb == L"remove-user") {
    window.mnuRemoveUser_Click();
    return true;
  }
  if (verb == L"clear") {
    window.mnuClearBoard_Click();
    return true;
  }
  if (verb == L"save") {
    ui.QueueSaveFileResult(rest);
    window.mnuSaveBoard_Click();
    return true;
  }
  if (verb == L"close") {
    CloseChatWindow(addin);
    return true;
  }
  if (verb == L"activate") {
    window.Form_Activate();
    return true;
  }
  if (verb == L"flash") {
    for (int32_t i = 0; i < std::max(number(), 1); ++i) window.tmrFlash_Timer();
    say(std::wstring(L"  the caption is ") + (ui.chat_flash_on() ? L"highlighted" : L"plain"));
    return true;
  }
  return false;
}

void ChatWatch::PrintChanges(AddIn& addin, const SayFn& say) {
  ChatWindow* window = addin.chat.window.get();
  if (window) {
    const std::string board = [&] {
      try {
        return addin.services.files.ReadFile(window->board().BoardPath());
      } catch (const Error&) {
        return std::string();
      }
    }();
    if (board.size() < board_bytes_ || board_bytes_ == 0) {
      // Started again: the head holds no message.
      const size_t body = board.find("<BODY");
      board_bytes_ = body == std::string::npos ? board.size() : board.find('>', body) + 1;
      pictures_.clear();
      if (board.size() > 0) say(L"  [board] " + window->board().BoardPath() + L" (new page)");
    }
    std::wstring added = FromUtf8(board.substr(std::min(board_bytes_, board.size())));
    board_bytes_ = board.size();
    // Each picture becomes "[picture N: alt]", so a script can click it by its number.
    for (size_t at; (at = LCase(added).find(L"<img")) != std::wstring::npos;) {
      const size_t end = added.find(L'>', at);
      const std::wstring tag = added.substr(at, end == std::wstring::npos ? end : end - at + 1);
      pictures_.push_back(tag);
      added.replace(at, tag.size(),
                    L" [picture " + std::to_wstring(pictures_.size()) + L": " +
                        AttributeValue(tag, L"alt") + L"] ");
    }
    const std::wstring text = FromUtf8(HtmlToText(ToUtf8(added)));
    size_t from = 0;
    while (from < text.size()) {
      const size_t end = std::min(text.find(L'\n', from), text.size());
      say(L"  [board] " + text.substr(from, end - from));
      from = end + 1;
    }
    std::wstring selected;
    for (const ChatListRow& row : window->view().users.rows)
      if (row.selected) selected += (selected.empty() ? L"" : L", ") + row.key;
    if (selected != selected_ || tell_selection_) {
      selected_ = selected;
      tell_selection_ = false;
      say(L"  [chat] selected: " + (selected.empty() ? L"nobody" : selected));
    }
    if (window->view().status != status_) {
      status_ = window->view().status;
      if (!status_.empty()) say(L"  [chat] " + status_);
    }
  } else {
    // A window opened later starts its page and its list afresh.
    board_bytes_ = 0;
    status_.clear();
    selected_.clear();
  }
  const bool flashing = window && window->flashing();
  if (flashing != flashing_) say(flashing ? L"  [chat] the caption flashes" : L"  [chat] the caption stops flashing");
  flashing_ = flashing;
}

}  // namespace corvina::simulator
