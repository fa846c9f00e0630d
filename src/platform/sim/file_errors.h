#pragma once
// The errors both sim file systems raise. They carry the classic runtime numbers so the core
// logs exactly what it would log on Windows, and name the path so a failing test says which.
#include <cstdint>
#include <string>

#include "base/error.h"

namespace corvina::sim {

// Numbers the file systems need beyond those of base/error.h.
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
