#pragma once
// Counts beeps instead of making them. Beep counts through Faults.
#include <cstdint>

#include "platform/beeper.h"
#include "platform/sim/faults.h"

namespace corvina::sim {

class SimBeeper : public Beeper {
 public:
  explicit SimBeeper(Faults& faults) : faults_(faults) {}

  void Beep() override;
  uint64_t beeps() const { return beeps_; }

 private:
  Faults& faults_;
  uint64_t beeps_ = 0;
};

}  // namespace corvina::sim
