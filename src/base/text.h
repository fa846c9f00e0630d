#pragma once
// The classic string rules the add-in's behaviour is written in: 1-based positions, Trim that
// removes blanks only, the "yyyymmddhhnn" stamp, the "###,###.00" megabyte figure and the
// numeric conversions whose failures are errors 13 and 6. Tested once, here, and used
// everywhere else instead of ad-hoc std::wstring code.
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date.h"

namespace corvina {

// Removes leading and trailing blanks (U+0020 only, as the classic Trim does).
std::wstring Trim(std::wstring_view s);
std::wstring LTrim(std::wstring_view s);
std::wstring RTrim(std::wstring_view s);

// 1-based position of `find` in `s` at or after `start`; 0 when absent. An empty `find`
// is found at `start` (when start <= len + 1), as the classic InStr does.
int64_t InStr(int64_t start, std::wstring_view s, std::wstring_view find);
inline int64_t InStr(std::wstring_view s, std::wstring_view find) { return InStr(1, s, find); }
// 1-based position of the last `find`; 0 when absent.
int64_t InStrRev(std::wstring_view s, std::wstring_view find);

std::wstring Mid(std::wstring_view s, int64_t start);                 // 1-based, to the end
std::wstring Mid(std::wstring_view s, int64_t start, int64_t length); // 1-based
std::wstring Left(std::wstring_view s, int64_t length);
std::wstring Right(std::wstring_view s, int64_t length);

std::wstring LCase(std::wstring_view s);
std::wstring UCase(std::wstring_view s);
std::wstring Replace(std::wstring_view s, std::wstring_view find, std::wstring_view with);
bool ContainsText(std::wstring_view s, std::wstring_view find);
bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b);

// Conversions with the classic rules: surrounding blanks are allowed, a fraction is rounded
// half to even, anything else is error 13 (type mismatch) and a value out of range error 6.
int32_t ToLong(std::wstring_view s);
int16_t ToInteger(std::wstring_view s);
// "True"/"False" in any case, or a number (non-zero is true); anything else is error 13.
bool ToBoolean(std::wstring_view s);
std::wstring BoolText(bool b);  // "True" / "False"

// Format(d, "yyyymmddhhnn"): the text stamp under which mail times are compared.
std::wstring FormatStamp(Date d);
// The general date form used in log lines: "m/d/yyyy h:nn:ss AM" (or without the time part
// when it is midnight, as the classic general format does).
std::wstring FormatGeneralDate(Date d);

// `text` with every bidirectional control character (U+061C, U+200E, U+200F, U+202A-U+202E,
// U+2066-U+2069) written out as "<U+202E>": a file name shown in a box can then not pose as
// another ("invoice<U+202E>fdp.exe" instead of what reads as "invoiceexe.pdf").
std::wstring RevealBidiControls(std::wstring_view text);
// Format(x, "###,###.00"): thousands grouped, two decimals, no leading zero below 1.
std::wstring FormatMegabytes(double megabytes);

std::string ToUtf8(std::wstring_view s);
std::wstring FromUtf8(std::string_view s);

}  // namespace corvina
