#pragma once

namespace corvina {

// The system beep (MessageBeep on Windows).
class Beeper {
 public:
  virtual ~Beeper() = default;
  virtual void Beep() = 0;
};

}  // namespace corvina
