#pragma once
// Chat mail coming in: the new-mail route, the start-up sweep, the automatic insertion of an
// unknown sender and the loading of the user list at start-up.
#include <string>

#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// Each new mail from the new-mail handler; a chat mail is shown, marked read and deleted as
// the chat settings say; a blocked sender's mail is left alone, and a mail with attachments is never deleted.
void ReceiveNewChatMail(AddIn& addin, outlook::Item& mail);
// Chat mails that arrived while Outlook was closed: the Inbox newest first, down to the last
// mail-monitor time.
void LoopForNewChatsAtEntry(AddIn& addin);
// Adds the address as an active user and shows it in the send-to list. True.
bool AutoInsertUser(AddIn& addin, const std::wstring& email);
// The six stored lists into the user list, addresses first.
void LoadChatUsers(AddIn& addin);

}  // namespace corvina
