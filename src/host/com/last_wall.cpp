#include "host/com/last_wall.h"

namespace corvina::com {

void TraceEscapedError(const wchar_t* entry, const char* what) noexcept {
  // Narrow text only: converting could fail, and nothing may fail here.
  char line[512];
  wsprintfA(line, "Vireo: %ls let an error out: %.400s\n", entry, what);
  OutputDebugStringA(line);
}

}  // namespace corvina::com
