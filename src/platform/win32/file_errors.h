#pragma once
// Win32 error codes turned into the classic file error numbers of platform/file_system.h, so
// the core logs the same numbers on Windows as in the sim. The description is Windows' own
// text for the code, followed by the path.
#include <cstdint>
#include <string>

#include "base/error.h"

namespace corvina::win32 {

inline constexpr int32_t kErrBadFileName = 52;
inline constexpr int32_t kErrDiskFull = 61;
inline constexpr int32_t kErrDiskNotReady = 71;
inline constexpr int32_t kErrPathFileAccess = 75;

// Source of every file-system error, as in the sim.
inline constexpr wchar_t kFilesSource[] = L"Files";

// The classic number for a Win32 error code (75, "path/file access error", for the rest).
int32_t ClassicFileErrorNumber(uint32_t win32_code);

// Error(ClassicFileErrorNumber(code), "Files", "<system message> (<path>)").
[[noreturn]] void ThrowFileError(uint32_t win32_code, const std::wstring& path);
// For a condition found by the file system itself rather than reported by Windows.
[[noreturn]] void ThrowClassicFileError(int32_t number, uint32_t win32_code, const std::wstring& path);

}  // namespace corvina::win32
