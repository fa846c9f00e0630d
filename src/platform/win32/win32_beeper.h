#pragma once
#include "platform/beeper.h"

namespace corvina::win32 {

// The default system sound (MessageBeep(MB_OK)).
class Win32Beeper : public Beeper {
 public:
  void Beep() override;
};

}  // namespace corvina::win32
