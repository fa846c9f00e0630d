#include "chat/chat_window.h"

#include <algorithm>

#include "base/text.h"
#include "chat/chat_colors.h"
#include "chat/chat_mail.h"
#include "chat/chat_users.h"
#include "settings/guard.h"

namespace corvina {
namespace {

// The class name frmChat's procedures log under.
constexpr wchar_t kContext[] = L"frmChat";
// The board's key for the user's own blocks, which no address can equal.
constexpr wchar_t kOwnSpeaker[] = L"<own>";

// The entities the board writes into attribute values, back to their characters: a browser
// hands the clicked element's HTML over with the escaping still in it.
std::wstring DecodeAttribute(std::wstring value) {
  static constexpr std::pair<const wchar_t*, const wchar_t*> kEntities[] = {
      {L"&quot;", L"\""}, {L"&#39;", L"'"}, {L"&#x27;", L"'"}, {L"&#96;", L"`"},
      {L"&#x60;", L"`"},  {L"&lt;", L"<"},  {L"&gt;", L">"},   {L"&amp;", L"&"}};
  for (const auto& [entity, text] : kEntities) value = Replace(value, entity, text);
  return value;
}

// The text after `name` up to the first of `stops`, found ignoring the letter case of the
// attribute name (browsers lower-case it when they hand the HTML back).
std::wstring AttributeAfter(const std::wstring& html, const std::wstring& name,
                            const wchar_t* stops) {
  const size_t at = LCase(html).find(LCase(name));
  if (at == std::wstring::npos) return L"";
  const size_t begin = at + name.size();
  const size_t end = html.find_first_of(stops, begin);
  return html.substr(begin, end == std::wstring::npos ? std::wstring::npos : end - begin);
}

// An address a mail can be sent to: something before one "@", a dotted domain after it, no
// blanks. A ";" is left to its own, clearer message.
bool IsValidChatAddress(const std::wstring& address) {
  const size_t at = address.find(L'@');
  if (at == std::wstring::npos || at == 0 || address.find(L'@', at + 1) != std::wstring::npos)
    return false;
  if (address.find_first_of(L" \t\r\n") != std::wstring::npos) return false;
  const size_t dot = address.find(L'.', at + 2);
  return dot != std::wstring::npos && dot + 1 < address.size();
}

// The picker's spelling of a stored colour ("Fuschia"); white, which it does not offer, and
// any other value show as black.
std::wstring ChoiceName(ChatColor color) {
  const std::wstring name = GetStringFromColor(color);
  for (const wchar_t* choice : kChatColorChoices)
    if (EqualsIgnoreCase(choice, name)) return choice;
  return kChatColorChoices[0];
}

// A stored placement: a whole number of pixels, else none (0).
int32_t ToPixels(const std::wstring& text) {
  const std::wstring t = Trim(text);
  const bool negative = !t.empty() && t[0] == L'-';
  const std::wstring digits = t.substr(negative ? 1 : 0);
  if (digits.empty() || digits.size() > 6 || digits.find_first_not_of(L"0123456789") != std::wstring::npos)
    return 0;
  const int32_t value = static_cast<int32_t>(std::stol(digits));
  return negative ? -value : value;
}

// The pickers' colours, each with the swatch the image list draws for it.
std::vector<ColorChoice> PickerColors() {
  std::vector<ColorSwatch> swatches;
  for (const wchar_t* name : kChatColorChoices) CreateColorImage(swatches, name);
  std::vector<ColorChoice> choices;
  for (size_t i = 0; i < swatches.size(); ++i)
    choices.push_back({kChatColorChoices[i], swatches[i].color});
  return choices;
}

std::wstring TimeOfDay(Date now) {
  const CivilTime t = ToCivil(now);
  wchar_t text[16];
  std::swprintf(text, std::size(text), L"%02d:%02d:%02d", t.hour, t.minute, t.second);
  return text;
}

}  // namespace

BoardClick GetSubjectTypeClicked(const std::wstring& html) {
  const std::wstring lower = LCase(Trim(html));
  if (lower.rfind(L"<img", 0) != 0) return BoardClick::kNothing;
  if (lower.find(L"corvinatag1") != std::wstring::npos) return BoardClick::kSender;
  if (lower.find(L"corvinatag2") != std::wstring::npos) return BoardClick::kAttachment;
  return BoardClick::kNothing;
}

std::wstring GetUserEmailFromInnerHtml(const std::wstring& html) {
  return DecodeAttribute(AttributeAfter(html, L"CorvinaTag1=\"", L"\""));
}

std::wstring GetEmailEntryIdFromInnerHtml(const std::wstring& html) {
  std::wstring id = AttributeAfter(html, L" id=", L" >");
  if (id.size() >= 2 && id.front() == L'"' && id.back() == L'"') id = id.substr(1, id.size() - 2);
  return DecodeAttribute(id);
}

ChatWindow::ChatWindow(AddIn& addin)
    : addin_(addin),
      board_(addin.services.files, addin.log, addin.services.addin_folder),
      events_(MakeEvents()) {}

// The window's controls call these while the window, and so this model, exists; closing
// reaches the add-in's own entry, which lets go of this model, so it captures nothing of it.
ChatWindowEvents ChatWindow::MakeEvents() {
  ChatWindowEvents e;
  e.select_users = [this](const std::vector<std::wstring>& emails) { SelectUsers(emails); };
  e.message_changed = [this](const std::wstring& text) {
    view_.message = text;  // the window shows what was typed already
  };
  e.format_changed = [this](bool b, bool i, bool u) { SetFormat(b, i, u); };
  e.color_changed = [this](uint32_t color) { SetColor(color); };
  e.add_attachment = [this](const std::wstring& path) { AddAttachment(path); };
  e.remove_attachment = [this](size_t index) { RemoveAttachment(index); };
  e.send = [this] { cmdSend_Click(); };
  e.activated = [this] { Form_Activate(); };
  e.flash_tick = [this] { tmrFlash_Timer(); };
  e.placed = [this](int32_t l, int32_t t, int32_t w, int32_t h) { Form_Placed(l, t, w, h); };
  e.close = [addin = &addin_] { CloseChatWindow(*addin); };
  e.board_click = [this](const std::wstring& html) { Board_Click(html); };
  e.board_add_user = [this](const std::wstring& html) { mnuBrowserAddUser_Click(html); };
  e.board_user_properties = [this](const std::wstring& html) {
    CallmnuBrowserUserProperties_Click(html);
  };
  e.board_show_attachments = [this](const std::wstring& html) {
    CallmnuBrowserShowAttachments_Click(html);
  };
  e.add_user = [this] { mnuAddUser_Click(); };
  e.remove_users = [this] { mnuRemoveUser_Click(); };
  e.user_properties = [this](const std::wstring& email) { ShowUserProperties(email); };
  e.clear_board = [this] { mnuClearBoard_Click(); };
  e.save_board = [this] { mnuSaveBoard_Click(); };
  return e;
}

void ChatWindow::BoardStarted() {
  ++view_.board_serial;
  view_.board_blocks.clear();
}

void ChatWindow::BoardAdded(const ChatBlock& block) {
  board_.AddText(block);
  view_.board_blocks.push_back(board_.last_block());
}

void ChatWindow::Form_Load() {
  Guard(addin_.log, kContext, L"Form_Load", [&] {
    view_.caption = addin_.Text(TextId::kChatCaption);
    view_.right_to_left = addin_.config.ChatRTL == L"1";
    view_.board_path = board_.BoardPath();
    view_.colors = PickerColors();
    // A board kept from the last session (ChatClearBoardOnClose "0") is shown as it was.
    if (addin_.config.ChatClearBoardOnClose == L"1" ||
        !addin_.services.files.FileExists(view_.board_path)) {
      board_.InitChat(view_.right_to_left, addin_.services.clock.Now());
    }
    BoardStarted();
    const Config& c = addin_.config;
    view_.left = ToPixels(c.ChatFormLeft);
    view_.top = ToPixels(c.ChatFormTop);
    view_.width = ToPixels(c.ChatFormWidth);
    view_.height = ToPixels(c.ChatFormHeight);
    RefreshUserList();
  });
}

void ChatWindow::Form_Unload() {
  Guard(addin_.log, kContext, L"Form_Unload", [&] {
    if (view_.width > 0 && view_.height > 0) {
      Config& c = addin_.config;
      c.ChatFormLeft = std::to_wstring(view_.left);
      c.ChatFormTop = std::to_wstring(view_.top);
      c.ChatFormWidth = std::to_wstring(view_.width);
      c.ChatFormHeight = std::to_wstring(view_.height);
    }
    SaveUsers();
    if (addin_.config.ChatClearBoardOnClose == L"1")
      board_.ClearChatBoard(view_.right_to_left, addin_.services.clock.Now());
    addin_.services.ui.UnloadForm(kChatFormName);
  });
}

void ChatWindow::Form_Activate() {
  flashing_ = false;
  if (flash_on_) {
    flash_on_ = false;
    Guard(addin_.log, kContext, L"Form_Activate", [&] { addin_.services.ui.FlashChatWindow(false); });
  }
}

// Every change of the model repaints the window; a repaint that fails is logged and the
// model stays as it is, so the next repaint shows it.
void ChatWindow::Draw() {
  const bool drawn = Guard(addin_.log, kContext, L"Form_Paint", false, [&] {
    addin_.services.ui.ShowChatWindow(view_, events_);
    return true;
  });
  if (drawn) view_.board_blocks.clear();
}

void ChatWindow::Tell(const std::wstring& text, int32_t style) {
  addin_.services.ui.MsgBox(text, style, kChatBoxTitle);
}

void ChatWindow::SaveUsers() { addin_.chat.users.SaveConfig(addin_.services.settings); }

void ChatWindow::RefreshUserList() {
  std::vector<std::wstring> selected;
  for (const ChatListRow& row : view_.users.rows)
    if (row.selected) selected.push_back(row.key);
  view_.users.rows.clear();
  addin_.chat.users.FillListView(view_.users, kChatImageList);
  for (ChatListRow& row : view_.users.rows)
    row.selected = std::find(selected.begin(), selected.end(), row.key) != selected.end();
  Draw();
}

void ChatWindow::AddUserRow(const ChatUser& user) {
  // The window may have just been loaded with the list that already holds the user; else
  // the list, which holds it now, is shown again with the selection kept.
  for (const ChatListRow& row : view_.users.rows)
    if (row.key == user.Email()) return;
  RefreshUserList();
}

void ChatWindow::SelectUsers(const std::vector<std::wstring>& emails) {
  for (ChatListRow& row : view_.users.rows) {
    row.selected = std::any_of(emails.begin(), emails.end(), [&](const std::wstring& e) {
      return EqualsIgnoreCase(e, row.key);
    });
  }
  Draw();
}

void ChatWindow::MarkUserInList(const std::wstring& email) {
  Guard(addin_.log, kContext, L"MarkUserInList", [&] { SelectUsers({email}); });
}

void ChatWindow::SetMessage(const std::wstring& text) {
  view_.message = text;
  Draw();
}

void ChatWindow::SetFormat(bool bold, bool italic, bool underline) {
  view_.bold = bold;
  view_.italic = italic;
  view_.underline = underline;
  Draw();
}

void ChatWindow::SetColor(ChatColor color) {
  view_.color = color;
  Draw();
}

void ChatWindow::AddAttachment(const std::wstring& path) {
  view_.attachments.push_back(path);
  Draw();
}

void ChatWindow::RemoveAttachment(size_t index) {
  if (index >= view_.attachments.size()) return;
  view_.attachments.erase(view_.attachments.begin() + static_cast<ptrdiff_t>(index));
  Draw();
}

void ChatWindow::Form_Placed(int32_t left, int32_t top, int32_t width, int32_t height) {
  view_.left = left;
  view_.top = top;
  view_.width = width;
  view_.height = height;
}

std::wstring ChatWindow::AskValidAddress(TextId caption) {
  for (;;) {
    const std::wstring typed = Trim(addin_.services.ui.AskChatAddress(addin_.Text(caption)));
    // A ";" would split the address in the stored lists and in a mail's To line.
    if (typed.empty() || (IsValidChatAddress(typed) && typed.find(L';') == std::wstring::npos))
      return typed;
    Tell(addin_.Text(TextId::kChatAddressInvalid), vbExclamation);
  }
}

bool ChatWindow::AskOwnAddress() {
  const std::wstring typed = AskValidAddress(TextId::kChatOwnAddress);
  if (typed.empty()) return false;
  addin_.config.ChatEmail = typed;
  return true;
}

void ChatWindow::AddUserByAddress(const std::wstring& email) {
  if (addin_.chat.users.IsEmailAlreadyExists(email)) {
    Tell(addin_.Text(TextId::kChatUserExists, {email}), vbExclamation);
    return;
  }
  AddUserRow(addin_.chat.users.Add(email, email, kChatUserActive, 0, 0, L"2", L""));
  SaveUsers();
}

bool ChatWindow::cmdSend_Click() {
  return Guard(addin_.log, kContext, L"cmdSend_Click", false, [&] {
    std::wstring names, addresses;
    for (const ChatListRow& row : view_.users.rows) {
      if (!row.selected) continue;
      names += (names.empty() ? L"" : L", ") + (row.text.empty() ? row.key : row.text);
      addresses += (addresses.empty() ? L"" : L";") + row.key;
    }
    if (addresses.empty()) {
      Tell(addin_.Text(TextId::kChatSelectRecipient), vbExclamation);
      return false;
    }
    // Others see a chat mail as from the address in its subject and footer: without one
    // their copies could not tell who wrote.
    if (Trim(addin_.config.ChatEmail).empty() && !AskOwnAddress()) return false;
    const Config& c = addin_.config;
    const bool sent = Guard(addin_.log, kContext, L"SendChatMail", false, [&] {
      auto mail = addin_.oApplication->CreateItem(outlook::olMailItem);
      mail->SetSubject(ChatSubject(c.ChatEmail));
      mail->SetBody(ComposeChatBody(view_.message, c.HomePageLink, c.ChatEmail, ChatVersionText()));
      mail->SetTo(addresses);
      if (!view_.attachments.empty()) {
        auto attachments = mail->Attachments();
        for (const std::wstring& path : view_.attachments) attachments->Add(path);
      }
      mail->Send();
      return true;
    });
    if (!sent) {
      view_.status = addin_.Text(TextId::kChatSendFailed,
                                 {names, addresses, TimeOfDay(addin_.services.clock.Now())});
      Draw();
      return false;
    }
    view_.status = addin_.Text(TextId::kChatSent, {names});
    ChatBlock block;
    block.text = view_.message;
    block.color = view_.color;
    block.bold = view_.bold;
    block.italic = view_.italic;
    block.underline = view_.underline;
    block.email = c.ChatEmail;
    block.nick_name = c.ChatEmail;
    block.icon = L"1";
    block.header = last_speaker_ != kOwnSpeaker;
    block.own = true;
    BoardAdded(block);
    last_speaker_ = kOwnSpeaker;
    view_.message.clear();
    view_.attachments.clear();
    Draw();
    return true;
  });
}

void ChatWindow::ShowIncomingMessage(const std::wstring& sender, const std::wstring& body,
                                     int32_t attachment_count, const std::wstring& entry_id) {
  Guard(addin_.log, kContext, L"ShowIncomingMessage", [&] {
    ChatBlock block;
    block.text = ChatMessageText(body, addin_.config.ChatLong);
    block.attachment_count = attachment_count;
    block.entry_id = entry_id;
    if (ChatUser* user = addin_.chat.users.GetChatUserByEmail(sender)) {
      block.email = user->Email();
      block.nick_name = user->NickName().empty() ? user->Email() : user->NickName();
      block.icon = user->Icon();
      block.color = user->ColorChatMessage();
      user->SetLastMessageDate(addin_.services.clock.Now());
    }
    const std::wstring speaker = LCase(sender);
    block.header = last_speaker_ != speaker;
    BoardAdded(block);
    last_speaker_ = speaker;
    flashing_ = true;
    Draw();
  });
}

void ChatWindow::tmrFlash_Timer() {
  if (!flashing_) return;
  Guard(addin_.log, kContext, L"tmrFlash_Timer", [&] {
    flash_on_ = !flash_on_;
    addin_.services.ui.FlashChatWindow(flash_on_);
  });
}

bool ChatWindow::OpenMailItemBySotreID(const std::wstring& entry_id) {
  return Guard(addin_.log, kContext, L"OpenMailItemBySotreID", false, [&] {
    if (entry_id.empty() || !addin_.oApplication) return false;
    auto item = addin_.oApplication->GetNamespace(L"MAPI")->GetItemFromID(entry_id);
    if (!item) return false;
    item->Display();
    return true;
  });
}

void ChatWindow::Board_Click(const std::wstring& html) {
  Guard(addin_.log, kContext, L"Board_Click", [&] {
    switch (GetSubjectTypeClicked(html)) {
      case BoardClick::kSender:
        MarkUserInList(GetUserEmailFromInnerHtml(html));
        return;
      case BoardClick::kAttachment:
        if (!OpenMailItemBySotreID(GetEmailEntryIdFromInnerHtml(html)))
          Tell(addin_.Text(TextId::kChatMailNotFound), vbExclamation);
        return;
      case BoardClick::kNothing:
        return;
    }
  });
}

void ChatWindow::mnuBrowserAddUser_Click(const std::wstring& html) {
  Guard(addin_.log, kContext, L"mnuBrowserAddUser_Click", [&] {
    const std::wstring email = Trim(GetUserEmailFromInnerHtml(html));
    if (email.empty() || email == kUnknownUser) {
      Tell(addin_.Text(TextId::kChatCannotExtractUser), vbExclamation);
      return;
    }
    AddUserByAddress(email);
  });
}

void ChatWindow::CallmnuBrowserShowAttachments_Click(const std::wstring& html) {
  if (GetSubjectTypeClicked(html) == BoardClick::kAttachment) Board_Click(html);
}

void ChatWindow::CallmnuBrowserUserProperties_Click(const std::wstring& html) {
  Guard(addin_.log, kContext, L"CallmnuBrowserUserProperties_Click", [&] {
    const std::wstring email = GetUserEmailFromInnerHtml(html);
    if (!addin_.chat.users.GetChatUserByEmail(email)) {
      Tell(addin_.Text(TextId::kChatCannotExtractUser), vbExclamation);
      return;
    }
    ShowUserProperties(email);
  });
}

bool ChatWindow::ShowUserProperties(const std::wstring& email) {
  return Guard(addin_.log, L"frmChatUserProperties", L"cmdOK_Click", false, [&] {
    ChatUsers& users = addin_.chat.users;
    ChatUser* user = users.GetChatUserByEmail(email);
    if (!user) return false;
    ChatUserPropertiesView v;
    v.caption = addin_.Text(TextId::kChatPropertiesCaption, {user->NickName()});
    v.email = user->Email();
    v.nick_name = user->NickName();
    v.status = user->Status();
    v.color_user = ChoiceName(user->ColorChatUser());
    v.color_message = ChoiceName(user->ColorChatMessage());
    v.icon = user->Icon();
    for (const ColorChoice& choice : PickerColors()) {
      v.colors.push_back(choice.name);
      v.color_values.push_back(choice.color);
    }
    v.statuses = {{kChatUserActive, L"Active"},   {kChatUserBlocked, L"Blocked"},
                  {kChatUserUnknown, L"Unknown"}, {kChatUserWaiting, L"Waiting"},
                  {kChatUserRejected, L"Rejected"}};
    for (;;) {
      if (!addin_.services.ui.ShowChatUserProperties(v)) return false;
      const std::wstring new_email = Trim(v.email);
      // The ";" rules keep the stored lists, which ";" separates, in step.
      TextId refusal = TextId::kCount;
      if (!IsValidChatAddress(new_email))
        refusal = TextId::kChatInvalidEmail;
      else if (new_email.find(L';') != std::wstring::npos)
        refusal = TextId::kChatEmailSemicolon;
      else if (Trim(v.nick_name).empty())
        refusal = TextId::kChatEnterNickName;
      else if (v.nick_name.find(L';') != std::wstring::npos)
        refusal = TextId::kChatNickNameSemicolon;
      else if (users.IsEmailChangeWillCauseDuplication(user->Email(), new_email))
        refusal = TextId::kChatEmailExists;
      if (refusal == TextId::kCount) break;
      Tell(addin_.Text(refusal), vbExclamation);
    }
    user->SetEmail(Trim(v.email));
    user->SetNickName(Trim(v.nick_name));
    user->SetStatus(v.status);
    user->SetColorChatUser(GetColorFromString(v.color_user));
    user->SetColorChatMessage(GetColorFromString(v.color_message));
    user->SetIcon(v.icon);
    RefreshUserList();
    SaveUsers();
    return true;
  });
}

void ChatWindow::mnuAddUser_Click() {
  Guard(addin_.log, kContext, L"mnuAddUser_Click", [&] {
    const std::wstring typed = AskValidAddress(TextId::kChatNewUserAddress);
    if (!typed.empty()) AddUserByAddress(typed);
  });
}

void ChatWindow::mnuRemoveUser_Click() {
  Guard(addin_.log, kContext, L"mnuRemoveUser_Click", [&] {
    bool removed = false;
    for (const ChatListRow& row : view_.users.rows)
      if (row.selected) removed |= addin_.chat.users.RemoveByEmail(row.key);
    if (!removed) return;
    RefreshUserList();
    SaveUsers();
  });
}

void ChatWindow::mnuClearBoard_Click() {
  Guard(addin_.log, kContext, L"mnuClearBoard_Click", [&] {
    if (addin_.services.ui.MsgBox(addin_.Text(TextId::kChatClearQuestion), vbYesNo | vbQuestion,
                                  kChatBoxTitle) != vbYes)
      return;
    board_.ClearChatBoard(view_.right_to_left, addin_.services.clock.Now());
    BoardStarted();
    last_speaker_.clear();
    Draw();
  });
}

void ChatWindow::mnuSaveBoard_Click() {
  Guard(addin_.log, kContext, L"mnuSaveBoard_Click", [&] {
    const std::wstring path = addin_.services.ui.SaveFileDialog(
        addin_.Text(TextId::kChatSaveTitle), L"C:\\", L"Chat.Html",
        L"HTML pages (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*");
    if (path.empty()) return;
    if (!board_.SaveChat(path)) Tell(addin_.Text(TextId::kChatSaveError), vbCritical);
  });
}

ChatWindow& OpenChatWindow(AddIn& addin) {
  if (addin.chat.window && addin.IsFormLoaded(kChatFormName)) return *addin.chat.window;
  addin.chat.window = std::make_unique<ChatWindow>(addin);
  addin.services.ui.LoadForm(kChatFormName);
  addin.chat.window->Form_Load();
  return *addin.chat.window;
}

void CloseChatWindow(AddIn& addin) {
  if (!addin.chat.window) return;
  addin.chat.window->Form_Unload();
  addin.chat.window.reset();
}

}  // namespace corvina
