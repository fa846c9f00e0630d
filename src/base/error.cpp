#include "base/error.h"

#include "base/text.h"

namespace corvina {

Error::Error(int32_t number, std::wstring source, std::wstring description)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      what_(ToUtf8(source_ + L": " + description_)) {}

void Raise(int32_t number, std::wstring description) {
  throw Error(number, kOwnErrorSource, std::move(description));
}

}  // namespace corvina
