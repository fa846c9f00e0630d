#pragma once
// Turning the bytes of a mail into UTF-8: text in a declared character set, and header text
// written raw in 8 bits by programs that never heard of encoded words.
#include <cstdint>
#include <string>
#include <string_view>

namespace corvina::simulator::mail {

// Bytes that are valid UTF-8 stay as they are; anything else is read as windows-1252, the
// set such raw bytes nearly always come from (Latin-1 is its subset in practice).
std::string RawTextToUtf8(std::string_view bytes);

// Bytes in the named character set as UTF-8. A set this machine does not know, or bytes that
// are invalid in it, fall back to RawTextToUtf8, so nothing is dropped.
std::string CharsetToUtf8(std::string_view bytes, std::string_view charset);

bool IsValidUtf8(std::string_view bytes);

// Appends one code point in UTF-8.
void AppendUtf8(std::string& out, uint32_t code_point);

}  // namespace corvina::simulator::mail
