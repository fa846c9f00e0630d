#pragma once
// The text Windows gives for an error code, for the descriptions of the errors we raise.
#include <cstdint>
#include <string>

namespace corvina::win32 {

// FormatMessageW of `code`, without the trailing line break; "Error <code>" when Windows has
// no text for it.
std::wstring SystemMessage(uint32_t code);

}  // namespace corvina::win32
