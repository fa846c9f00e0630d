#pragma once
// How the mail sweeps walk a folder from its newest item to its oldest without sorting it,
// and where they stop.
#include <cstdint>
#include <functional>

#include "platform/outlook.h"
#include "settings/config.h"

namespace corvina {

struct LoopParameters {
  int32_t start = 0;
  int32_t end = 0;
  int32_t step = 0;
};

// All zero for an empty folder. Otherwise compares the time of item 1 with that of the last
// item (a mail's received time, any other item's creation time): item 1 strictly newer walks
// 1..Count upwards, anything else (older or equal) walks Count..1 downwards.
LoopParameters GetLoopParametersByFolder(outlook::Folder& folder);

// Walks the folder's mails newest first (GetLoopParametersByFolder), skipping other items, and
// stops at the first mail older than LastMailMonitorTime: the mails after it were handled by an
// earlier run. `handle` gets each new mail and its received time (read once) and returns true
// when it deleted the mail, so the walk does not skip the one that moves into its place.
void WalkNewMails(outlook::Folder& folder, const Config& config,
                  const std::function<bool(outlook::Item& mail, Date received)>& handle);

// The received-time test: the mail's received time, as "yyyymmddhhnn", sorts before
// LastMailMonitorTime. Mails of the same minute are not older.
bool IsOlderThanLastMonitor(outlook::Item& mail, const Config& config);
// The same test on a received time already read.
bool IsOlderThanLastMonitor(Date received, const Config& config);

}  // namespace corvina
