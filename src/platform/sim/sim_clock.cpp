#include "platform/sim/sim_clock.h"

#include "base/text.h"

namespace corvina::sim {

SimClock::SimClock(Faults& faults, Date now) : faults_(faults), now_(now) {}

Date SimClock::Now() {
  faults_.Enter(Service::kClock, "Now");
  return now_;
}

Date SimClock::LocalToUtc(Date local) {
  faults_.Enter(Service::kClock, "LocalToUtc");
  return local;
}

std::wstring SimClock::GeneralDate(Date local) {
  faults_.Enter(Service::kClock, "GeneralDate");
  return FormatGeneralDate(local);
}

void SimClock::Advance(double seconds) { now_ = AddSeconds(now_, seconds); }

}  // namespace corvina::sim
