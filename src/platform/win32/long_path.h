#pragma once
// Paths as the Win32 file functions are handed them. Without the "\\?\" prefix Windows refuses
// paths longer than MAX_PATH (260), and attachment targets in deep folders are longer. With it,
// Windows takes the path literally: no "/" as a separator, no "." or "..", and trailing dots
// and blanks kept in names, which would create files that Explorer and most programs cannot
// open or delete. So a path is first normalised the way Windows normalises it, then prefixed.
#include <string>

namespace corvina::win32 {

// "C:/a/b. /c.txt" -> "\\?\C:\a\b\c.txt"; "\\server\share\x" -> "\\?\UNC\server\share\x".
// The full path (GetFullPathNameW: relative to the current folder, "/" read as "\"), "." and
// ".." resolved, trailing dots and blanks stripped from every name (a name that is nothing
// else disappears, as Windows drops it), then the prefix. A path already in "\\?\" or
// device ("\\.\") form, or one Windows cannot make full, is returned as it is.
std::wstring LongPath(const std::wstring& path);

// The root of the volume a LongPath lies on, with its trailing "\": "\\?\C:\",
// "\\?\UNC\server\share\"; empty when the path names no drive or share.
std::wstring LongPathRoot(const std::wstring& long_path);

}  // namespace corvina::win32
