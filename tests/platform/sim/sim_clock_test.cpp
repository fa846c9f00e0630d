#include "platform/sim/sim_clock.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "platform/sim/sim_beeper.h"

namespace corvina::sim {
namespace {

TEST(SimClockTest, StandsStillUntilMovedAndCountsItsCalls) {
  Faults faults;
  SimClock clock(faults, FromCivil({2024, 2, 28, 23, 59, 30}));
  EXPECT_EQ(clock.Now(), clock.Now());
  clock.Advance(24 * 3600 + 45);  // across a leap day and midnight
  EXPECT_EQ(FormatStamp(clock.Now()), L"202403010000");
  EXPECT_EQ(clock.LocalToUtc(clock.Now()), clock.Now());
  EXPECT_EQ(faults.Calls(Service::kClock), 6u);
  SimBeeper beeper(faults);
  beeper.Beep();
  beeper.Beep();
  EXPECT_EQ(beeper.beeps(), 2u);
  EXPECT_EQ(faults.Calls(Service::kBeep), 2u);
}

}  // namespace
}  // namespace corvina::sim
