#include "platform/win32/win32_beeper.h"

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

void Win32Beeper::Beep() { MessageBeep(MB_OK); }

}  // namespace corvina::win32
