#pragma once
// Lets a test's windows run their messages for a while, as the host's message loop would.
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

void PumpMessages(DWORD milliseconds);

}  // namespace corvina::win32
