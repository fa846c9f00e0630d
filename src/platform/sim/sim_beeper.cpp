#include "platform/sim/sim_beeper.h"

namespace corvina::sim {

void SimBeeper::Beep() {
  faults_.Enter(Service::kBeep, "Beep");
  ++beeps_;
}

}  // namespace corvina::sim
