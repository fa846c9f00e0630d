#pragma once
// The scan that deletes new mails an active rule matches.
#include <cstdint>
#include <string>

#include "addin/addin.h"

namespace corvina {

// Whether an active rule holds exactly `value` in the field of `type` (3 subject, 4 body,
// 5 from, 6 attachment); any other type never matches.
bool IsVirusList(AddIn& addin, const std::wstring& value, int type);
// Walks the Inbox newest first down to the first mail older than the last monitored time and
// deletes (into Deleted Items) every mail whose sender's display name, body, subject or an
// attachment's name an active rule holds, logging each. Returns how many it deleted.
int32_t DeleteInfectedItems(AddIn& addin);

}  // namespace corvina
