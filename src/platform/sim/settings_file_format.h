#pragma once
// The text file in which the simulator's profile keeps its settings tree (UTF-8):
//
//   ; a comment (';' or '#' at the start of a line); blank lines are ignored
//   [Vireo\Configuration]
//   glbFolder0=C:\Mail\Saved
//   ExtName =pdf;doc
//   Footer=first line%0Asecond line
//
// A header names the application and the section, split at the first '\' (a section may hold
// further '\'). A key is everything before the first '=' of its line, taken literally: real
// keys end in a blank ("ExtName "), so nothing is trimmed. The value runs to the end of the
// line; backslashes are ordinary characters (values are mostly Windows paths), and only
// %25 %0A %0D %09 stand for a percent sign, a line feed, a carriage return and a tab (a "%"
// without two hex digits is kept as it is). A CR before the line break is dropped, so a file
// edited on Windows reads the same.
//
// Reading is lenient, because a damaged profile must not stop the add-in: a line that cannot
// be read (no '=', a key before any valid header, bytes that are not UTF-8, a
// header without application or section) is skipped and reported as one problem. After a
// damaged header, the keys that follow are skipped with it, without a report of their own.
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "platform/sim/settings_table.h"

namespace corvina::sim {

struct ParsedSettings {
  SettingsTable table;
  std::vector<Error> problems;  // number 0, source "Settings", naming file and line
};

// `file_label` names the file in the problems' descriptions.
ParsedSettings ParseSettingsFile(std::string_view text, const std::wstring& file_label);
std::string FormatSettingsFile(const SettingsTable& table);

// Why the file format cannot hold this name ("" when it can): a key with '=' or a line break
// or one that would read as a header or comment, an empty application or section, an
// application with '\'.
std::wstring UnstorableReason(const std::wstring& application, const std::wstring& section,
                              const std::wstring& key);

}  // namespace corvina::sim
