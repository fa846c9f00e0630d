#pragma once
// The errors both sim file systems raise. They carry the classic runtime numbers so the core
// logs exactly what it would log on Windows, and name the path so a failing test says which.
#include <cstdint>
#include <string>

#include "base/error.h"

namespace corvina::sim {

// Numbers the file systems need beyond those of base/error.h.
//   52 a name Windows refuses (ERROR_INVALID_NAME): a forbidden character, only dots/blanks.
//   75 also stands for a name longer than 255 characters (or a "\\?\" path beyond 32767):
//      Windows reports ERROR_FILENAME_EXCED_RANGE, which platform/win32/file_errors.cpp
//      leaves to its default, 75.
//   76 (base/error.h) also stands for an ordinary path of MAX_PATH (260) characters or more,
//      which Windows refuses with ERROR_PATH_NOT_FOUND.
inline constexpr int32_t kErrBadFileName = 52;
inline constexpr int32_t kErrDiskFull = 61;
inline constexpr int32_t kErrDiskNotReady = 71;
inline constexpr int32_t kErrPathFileAccess = 75;

// Source of every file-system error of the sim.
inline constexpr wchar_t kFilesSource[] = L"Files";

// Error(number, "Files", "<classic text>: <path>").
Error FileError(int32_t number, const std::wstring& path);
[[noreturn]] void ThrowFileError(int32_t number, const std::wstring& path);

}  // namespace corvina::sim
