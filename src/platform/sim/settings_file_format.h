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
//
// The file belongs to the user, who may have annotated it, so saving edits it rather than
// rewriting it: every line is given back as it was written (comments, blank lines, damaged
// lines the user may still want to mend, order, line breaks) except the lines whose value
// changed, which keep their key's spelling.
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/error.h"
#include "platform/sim/settings_table.h"

namespace corvina::sim {

// One line of the file as the user wrote it.
struct SettingsLine {
  enum class Kind { kOther, kHeader, kKey };  // kOther: blank, comment, damaged or skipped
  std::string text;  // the line's bytes without its line break
  std::string eol;   // "\r\n", "\n", or "" for a last line without a break
  Kind kind = Kind::kOther;
  std::wstring application, section;  // kHeader and kKey
  std::wstring key;                   // kKey: as written
  std::wstring value;                 // kKey: as read
};

struct SettingsLayout {
  bool bom = false;
  std::vector<SettingsLine> lines;
  // Per section (application and section upper-cased, joined by U+0001): the line after which
  // a new key of that section goes, i.e. the last line of its last block that is neither blank
  // nor a comment (the header itself when the block is empty). Comments that follow stay next
  // to whatever they introduce.
  std::unordered_map<std::wstring, size_t> section_ends;
};

struct ParsedSettings {
  SettingsTable table;
  std::vector<Error> problems;  // number 0, source "Settings", naming the file and the line
  SettingsLayout layout;
};

// `file_label` names the file in the problems' descriptions.
ParsedSettings ParseSettingsFile(std::string_view text, const std::wstring& file_label);

// The file to save: `layout` line by line, with a key whose value in `table` differs from the
// one read rewritten in place (of a key written twice, the later line, the one that is read).
// Keys the layout lacks go at the end of their section in `table` order, sections it lacks at
// the end of the file. An empty layout (a new file) starts with a comment on the format.
std::string FormatSettingsFile(const SettingsLayout& layout, const SettingsTable& table);

// Why the file format cannot hold this name ("" when it can): a key with '=' or a line break
// or one that would read as a header or comment, an empty application or section, an
// application with '\'.
std::wstring UnstorableReason(const std::wstring& application, const std::wstring& section,
                              const std::wstring& key);

}  // namespace corvina::sim
