#pragma once
// Where chat meets the rest of the add-in: recognising chat mail, the new-mail stage, the
// start-up sweep and the user list's loading.
#include <string>

#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// True when the subject is at least 3 characters long and holds "Chat message from:"
// (case-sensitive) anywhere.
bool IsThisChatEmail(const std::wstring& subject);

// Not part of this build yet: these stages do nothing until chat lands.
void ReceiveNewChatMail(AddIn& addin, outlook::Item& mail);
void LoopForNewChatsAtEntry(AddIn& addin);
void LoadChatUsers(AddIn& addin);

}  // namespace corvina
