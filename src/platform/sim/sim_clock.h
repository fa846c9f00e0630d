#pragma once
// A clock that stands still until the test moves it. Local time is UTC, so "@SQL=" filters in
// tests compare the times the mailbox holds. Both members count through Faults.
#include "platform/clock.h"
#include "platform/sim/faults.h"

namespace corvina::sim {

class SimClock : public Clock {
 public:
  SimClock(Faults& faults, Date now);

  Date Now() override;
  Date LocalToUtc(Date local) override;
  // Always the fixed "m/d/yyyy h:nn:ss AM" form, whatever the machine's locale, so
  // transcripts and tests read the same everywhere.
  std::wstring GeneralDate(Date local) override;

  void Set(Date now) { now_ = now; }
  void Advance(double seconds);

 private:
  Faults& faults_;
  Date now_;
};

}  // namespace corvina::sim
