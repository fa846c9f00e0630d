#pragma once
// The last wall at the COM boundary: whatever a call into the add-in throws stops here. The
// core logs its own errors; what arrives here escaped the core's guards (an allocation failure
// in the glue, say) and is only traced to the debugger, since the log belongs to the core.
#include <exception>
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::com {

void TraceEscapedError(const wchar_t* entry, const char* what) noexcept;

template <class F>
HRESULT LastWall(const wchar_t* entry, F&& body) noexcept {
  try {
    body();
  } catch (const std::exception& e) {
    TraceEscapedError(entry, e.what());
  } catch (...) {
    TraceEscapedError(entry, "unknown exception");
  }
  return S_OK;
}

}  // namespace corvina::com
