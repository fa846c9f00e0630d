#pragma once
#include "addin/addin.h"

namespace corvina {

// Outlook's new-mail event: takes the newest Inbox item and, when it is a mail, runs the
// automatic copy, the tray and the chat stages on it, in that order.
void oApplication_NewMail(AddIn& addin, const std::wstring& context);

// The default destination DefaultFolder names ("0", "1", "2": that entry of the folder
// list), or empty.
std::wstring DefaultDestinationFor(const Config& config);

}  // namespace corvina
