#pragma once
// A Windows path taken apart the way both sim file systems resolve it: the drive letter and
// the names below the root, with "." dropped and ".." applied, "\" and "/" both separators.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvina::sim {

struct DrivePath {
  wchar_t drive = L'C';             // upper case
  std::vector<std::wstring> names;  // empty for the root "C:\"
};

// Nothing when `p` is not an absolute drive path ("C:\..." or "C:" alone) or when a name holds
// a character Windows refuses in file names (< > : " | ? * and control characters).
std::optional<DrivePath> ParseDrivePath(std::wstring_view p);

// The key under which a name is compared: Windows compares names without regard to case.
std::wstring FoldName(std::wstring_view name);

// "C:\a\b" back from its parts (the root is "C:\").
std::wstring JoinDrivePath(wchar_t drive, const std::vector<std::wstring>& names, size_t count);

}  // namespace corvina::sim
