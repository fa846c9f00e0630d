#pragma once
// The wall-clock time a Date: header shows. The zone is ignored: the simulated machine has
// no time zone of its own, and a reader expects the time the header shows.
#include <optional>
#include <string_view>

#include "base/date.h"

namespace corvina::simulator::mail {

// Reads "Tue, 3 Nov 2026 09:15:00 +0100" and the looser forms programs write: no weekday,
// a two-digit year, no seconds, a zone name or none, extra commas or blanks. nullopt when no
// day, month name, year and hh:mm can be found, or they make no real date.
std::optional<CivilTime> ParseMailDate(std::string_view text);

}  // namespace corvina::simulator::mail
