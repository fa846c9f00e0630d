#pragma once
// The system clock in local time, as the classic Now() gives it.
#include "platform/clock.h"

namespace corvina::win32 {

class Win32Clock : public Clock {
 public:
  Date Now() override;
  // Through the current time zone's rules for that date (daylight saving included).
  Date LocalToUtc(Date local) override;
  // The user's short date and time formats (GetDateFormatEx / GetTimeFormatEx).
  std::wstring GeneralDate(Date local) override;
};

}  // namespace corvina::win32
