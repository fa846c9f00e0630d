#pragma once
// The header block of a mail or of one MIME part, read the way tolerant mail programs read
// it: folded lines joined, names in any case, a line that is no header field ending the block
// (it is the first line of the body), and encoded words (=?charset?B|Q?...?=) and raw 8-bit
// text both turned into UTF-8.
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvina::simulator::mail {

struct HeaderField {
  std::string name;   // as written
  std::string value;  // unfolded raw bytes, blanks around it removed
};

struct HeaderBlock {
  std::vector<HeaderField> fields;
  size_t body = 0;  // offset of the body in the text that was read
  // The first field of this name (case-insensitive), or nullopt.
  std::optional<std::string_view> Find(std::string_view name) const;
};

// Reads the header block at the start of `text`. A leading mbox "From " line is passed over.
HeaderBlock ReadHeaderBlock(std::string_view text);

// Unstructured text (a subject, a display name): encoded words decoded, adjacent ones joined
// without the blanks between them, raw 8-bit bytes read as UTF-8 or windows-1252.
std::string DecodeHeaderText(std::string_view raw);

// A Content-Type or Content-Disposition value: the lower-cased value before the first ";" and
// its parameters by lower-case name, with quotes removed, RFC 2231 continuations and
// charsets assembled, and encoded words inside values decoded (a common client writes file
// names that way, quoted or not). All texts are UTF-8.
struct StructuredValue {
  std::string value;
  std::map<std::string, std::string> parameters;
  std::optional<std::string> Parameter(const std::string& name) const;
};
StructuredValue ParseStructuredValue(std::string_view raw);

}  // namespace corvina::simulator::mail
