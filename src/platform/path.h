#pragma once
// Windows path text helpers shared by every FileSystem implementation and the core.
#include <string>
#include <string_view>
#include <vector>

namespace corvina::path {

inline constexpr wchar_t kSeparator = L'\\';

// a + "\" + b, without doubling a separator that is already there.
std::wstring Join(std::wstring_view a, std::wstring_view b);
// "C:\a\b\c.txt" -> "C:\a\b"; "C:\a" -> "C:\"; a bare name -> "".
std::wstring Parent(std::wstring_view p);
// The last component: "C:\a\b.txt" -> "b.txt".
std::wstring FileName(std::wstring_view p);
// Adds a trailing "\" when missing.
std::wstring WithTrailingSeparator(std::wstring_view p);
// Drops trailing separators except the one of a drive root ("C:\").
std::wstring WithoutTrailingSeparator(std::wstring_view p);
// "/" is accepted as a separator, as Windows does; runs of separators collapse.
std::vector<std::wstring> Components(std::wstring_view p);
// "C:" of "C:\x" (upper-cased drive letter), or "" when the path has no drive.
std::wstring Drive(std::wstring_view p);
bool IsAbsolute(std::wstring_view p);
// Case-insensitive comparison of two paths after normalising separators.
bool SamePath(std::wstring_view a, std::wstring_view b);

}  // namespace corvina::path
