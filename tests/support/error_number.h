#pragma once
// The classic error number a call throws, or 0 when it returns: lets a table of calls state
// each expected failure in one column.
#include <cstdint>
#include <functional>

#include "base/error.h"

namespace corvina::testing {

inline int32_t ErrorNumberOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& e) {
    return e.number();
  }
  return 0;
}

}  // namespace corvina::testing
