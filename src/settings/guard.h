#pragma once
// The common error handler. Every procedure of any size runs its body through Guard: an error
// ends the body, is written to the log under the procedure's fixed name, and the procedure
// returns its neutral result. Nothing is rethrown, nothing is shown to the user.
#include <exception>
#include <new>
#include <string>

#include "base/error.h"
#include "settings/log.h"

namespace corvina {

// Turns whatever was thrown into the add-in's error type.
Error CurrentError() noexcept;

template <class R, class F>
R Guard(Log& log, const std::wstring& context, const wchar_t* procedure, R neutral, F&& body) {
  try {
    return body();
  } catch (...) {
    log.LogError(context, procedure, CurrentError());
    return neutral;
  }
}

template <class F>
void Guard(Log& log, const std::wstring& context, const wchar_t* procedure, F&& body) {
  try {
    body();
  } catch (...) {
    log.LogError(context, procedure, CurrentError());
  }
}

}  // namespace corvina
