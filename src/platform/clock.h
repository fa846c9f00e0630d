#pragma once
// "Now" for the core. Nothing in the core reads the system time directly, so tests fix it.
#include <string>

#include "base/date.h"

namespace corvina {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual Date Now() = 0;
  // Outlook's "@SQL=" filters compare times in UTC while items report local times.
  virtual Date LocalToUtc(Date local) = 0;
  // A local date and time as the user reads dates (the log's time stamps and the dates in
  // messages): the date alone at midnight, date and time otherwise.
  virtual std::wstring GeneralDate(Date local) = 0;
};

}  // namespace corvina
