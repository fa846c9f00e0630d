#include "chat/chat_receiver.h"

#include "base/text.h"
#include "chat/chat_mail.h"
#include "chat/chat_users.h"
#include "chat/chat_window.h"
#include "mail/folder_loop.h"

namespace corvina {
namespace {

// GetUserEmailFromBody under its own name: a tag past the 16-bit positions logs and gives no
// sender, so the mail is shown as from an unknown user and no user is inserted. A footer
// without its address tags is worth a line too: nobody can answer such a message from the
// board.
std::wstring SenderFromFooter(AddIn& addin, const std::wstring& body) {
  bool read = false;
  std::wstring sender = addin.Run(L"GetUserEmailFromBody", std::wstring(), [&] {
    std::wstring found = GetUserEmailFromBody(body);
    read = true;
    return found;
  });
  if (read && sender.empty() && InStr(body, L"</Email>") == 0) {
    addin.log.LogEvent(L"A chat mail has no sender address in its footer (<Email> ... "
                       L"</Email>); it is shown as from an unknown user",
                       kLogWarning);
  }
  return sender;
}

}  // namespace

void ReceiveNewChatMail(AddIn& addin, outlook::Item& mail) {
  addin.Run(L"ReceiveNewChatMail", [&] {
    // The subject is read once, and not at all while chat is blocked.
    if (addin.config.ChatBlockAll != L"0") return;
    const std::wstring subject = mail.Subject();
    if (!IsThisChatEmail(subject)) return;
    const std::wstring body = mail.Body();
    ChatUsers& users = addin.chat.users;
    std::wstring sender;
    if (IsReplySubject(subject)) {
      // A reply carries the quoted footer of the mail it answers: the footer's address is the
      // replier's correspondent, not the replier, so it decides nothing here.
      sender = kReplySender;
    } else {
      sender = SenderFromFooter(addin, body);
      if (users.IsEmailAlreadyExists(sender)) {
        const ChatUser* user = users.GetChatUserByEmail(sender);
        if (user && user->Status() == kChatUserBlocked) return;  // left unread in the Inbox
      }
      if (addin.config.ChatAutoInsertUser == L"1" && !sender.empty() &&
          !users.IsEmailAlreadyExists(sender)) {
        AutoInsertUser(addin, sender);
      }
    }
    auto attachments = mail.Attachments();
    const int32_t attachment_count = attachments->Count();
    ChatWindow& window = OpenChatWindow(addin);
    window.ShowIncomingMessage(sender, body, attachment_count, mail.EntryID());
    if (addin.config.ChatBeepOnMsg == L"1") addin.services.beeper.Beep();
    mail.SetUnRead(false);
    // A mail with attachments stays, so its files can still be opened from the board.
    if (attachment_count == 0 && addin.config.ChatDeleteMsg == L"1") mail.Delete();
  });
}

void LoopForNewChatsAtEntry(AddIn& addin) {
  addin.Run(L"LoopForNewChatsAtEntry", [&] {
    if (!addin.oApplication) return;
    auto inbox = addin.oApplication->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox);
    WalkNewMails(*inbox, addin.config, [&](outlook::Item& item, Date) {
      const std::wstring subject = item.Subject();
      if (!CheckNewChat(subject, L"")) return false;
      // Only a chat mail's body is read: on a large Inbox every read is a call into Outlook.
      const std::wstring body = item.Body();
      ChatWindow& window = OpenChatWindow(addin);
      window.ShowIncomingMessage(SweepSender(subject), body, 0, L"");
      addin.services.beeper.Beep();
      item.SetUnRead(false);
      item.Delete();
      return true;
    });
  });
}

bool AutoInsertUser(AddIn& addin, const std::wstring& email) {
  return addin.Run(L"AutoInsertUser", false, [&] {
    const std::wstring address = Trim(email);
    ChatUser& user =
        addin.chat.users.Add(address, address, kChatUserActive, 0, 0, L"2", L"");
    OpenChatWindow(addin).AddUserRow(user);
    return true;
  });
}

void LoadChatUsers(AddIn& addin) {
  const Config& c = addin.config;
  ChatUsers& users = addin.chat.users;
  // Addresses first: they create the users the other lists fill in.
  users.InitializeData(c.ChatUserEmail, kChatFieldEmail);
  users.InitializeData(c.ChatUserNickName, kChatFieldNickName);
  users.InitializeData(c.ChatUserIcon, kChatFieldIcon);
  users.InitializeData(c.ChatUserStatus, kChatFieldStatus);
  users.InitializeData(c.ChatUserColorChatUser, kChatFieldColorChatUser);
  users.InitializeData(c.ChatUserColorChatMessage, kChatFieldColorChatMessage);
}

}  // namespace corvina
