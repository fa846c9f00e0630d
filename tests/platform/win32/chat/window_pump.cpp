#include "window_pump.h"

namespace corvina::win32 {

void PumpMessages(DWORD milliseconds) {
  const DWORD start = GetTickCount();
  do {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
    Sleep(10);
  } while (GetTickCount() - start < milliseconds);
}

}  // namespace corvina::win32
