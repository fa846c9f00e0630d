#pragma once
// File-type filters for the shell's file dialogs.
#include <string>
#include <string_view>

namespace corvina {

// "HTML pages (*.html)|*.html|All files|*.*" as the dialogs take it: each "|" a NUL, and a
// second NUL after the last pair (the string's own terminator is not counted on).
std::wstring DialogFilter(std::wstring_view typed);

}  // namespace corvina
