#include "settings/guard.h"

#include "base/text.h"

namespace corvina {

Error CurrentError() noexcept {
  try {
    throw;
  } catch (const Error& e) {
    return e;
  } catch (const std::bad_alloc&) {
    return Error(7, kOwnErrorSource, L"Out of memory");
  } catch (const std::exception& e) {
    return Error(51, kOwnErrorSource, L"Internal error: " + FromUtf8(e.what()));
  } catch (...) {
    return Error(51, kOwnErrorSource, L"Internal error");
  }
}

}  // namespace corvina
