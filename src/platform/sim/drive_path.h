#pragma once
// A Windows path taken apart the way both sim file systems resolve it, with the naming rules
// of Windows that decide which entry (if any) a path reaches.
//
// An ordinary path ("C:\Out\x.pdf") is normalised as Windows normalises it before any file
// system sees it: "\" and "/" both separate, runs of separators collapse, "." is dropped and
// ".." applied; the last name loses all its trailing dots and blanks ("x.pdf. " is "x.pdf"),
// while a name followed by a separator loses one trailing dot only ("Out.\x" is "Out\x",
// but "Out \x" is in the folder "Out ", a name Windows can hold). A last name that is a
// reserved device name (CON, PRN, AUX, NUL, COM1-COM9, LPT1-LPT9, in any case, alone or
// before a first dot, with blanks or dots after it) is not a file at all: Windows opens the
// device, wherever the path says it is (COM and LPT with the superscript digits one to three
// too). The whole normalised path must stay below MAX_PATH (260).
//
// A path with the "\\?\" prefix ("\\?\C:\Out\x.pdf.") skips all of that: only "\" separates,
// every name is taken literally (trailing dots and blanks, device names and all), and the
// path may be up to 32767 characters long. Both spellings of an ordinary path reach the
// same entry.
//
// In both forms a name is refused when it holds a character Windows never allows in a name
// or is longer than 255 characters. Lengths count UTF-16 units, as Windows does.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvina::sim {

inline constexpr size_t kMaxPath = 260;        // an ordinary path is shorter than this
inline constexpr size_t kMaxLongPath = 32767;  // the longest "\\?\" path
inline constexpr size_t kMaxNameLength = 255;  // the longest name (path component)

struct DrivePath {
  wchar_t drive = L'C';             // upper case
  std::vector<std::wstring> names;  // empty for the root "C:\"
  // The path opens a device (NUL, CON, ...) rather than a file: a write goes nowhere and
  // there is never anything to read. `drive` and `names` are then meaningless.
  bool device = false;
};

// 0 with `out` filled, or the classic error number Windows gives for the path as a whole:
//   76 (path not found) when it is not an absolute drive path ("C:\..." or "C:" alone, with or
//      without "\\?\") or is an ordinary path of MAX_PATH characters or more;
//   52 (bad file name) for "C:name" relative to a drive's current folder, a name holding
//      < > : " | ? * or a control character ("/" too after "\\?\", where it is no separator),
//      an ordinary name made only of dots and blanks beyond "." and "..", and "." or ".." or
//      an empty name after "\\?\";
//   75 (path/file access error, kErrPathFileAccess) for a name longer than 255 characters or a
//      "\\?\" path longer than 32767: Windows reports ERROR_FILENAME_EXCED_RANGE, which the
//      win32 mapping (platform/win32/file_errors.cpp) turns into 75.
// A too-long ordinary path is found while normalising, before any name is looked at, so 76
// wins over 52 and 75 there. A device name wins over everything but a path that is not an
// absolute drive path: Windows recognises it from the last name alone.
int32_t ParseDrivePath(std::wstring_view p, DrivePath& out);

// Whether `name` (one component of an ordinary path) is a reserved device name.
bool IsDeviceName(std::wstring_view name);

// The drive letter (upper case) a root such as "C:\" or "\\?\C:\" names, or 0.
wchar_t RootDrive(std::wstring_view root);

// The key under which a name is compared: Windows compares names without regard to case.
std::wstring FoldName(std::wstring_view name);

// "C:\a\b" back from its parts (the root is "C:\").
std::wstring JoinDrivePath(wchar_t drive, const std::vector<std::wstring>& names, size_t count);

}  // namespace corvina::sim
