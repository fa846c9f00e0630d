#include "simulator/mail/address.h"

#include "simulator/mail/header_fields.h"
#include "simulator/mail/mime_text.h"

namespace corvina::simulator::mail {
namespace {

// Calls `visit(i)` for each position of `s` outside "quoted strings" and (comments), where
// the punctuation of an address list means nothing.
template <typename Visit>
void ForEachOutsideQuotes(std::string_view s, Visit visit) {
  bool quoted = false;
  int comment = 0;
  for (size_t i = 0; i < s.size(); ++i) {
    const char c = s[i];
    if (quoted) {
      if (c == '\\') ++i;
      else if (c == '"') quoted = false;
    } else if (c == '"') {
      quoted = true;
    } else if (c == '(') {
      ++comment;
    } else if (c == ')' && comment > 0) {
      --comment;
    } else if (comment == 0) {
      visit(i);
    }
  }
}

// Splits at `separator` outside quotes, comments and <angle brackets>.
std::vector<std::string_view> SplitOutside(std::string_view s, char separator) {
  std::vector<std::string_view> out;
  int angle = 0;
  size_t from = 0;
  ForEachOutsideQuotes(s, [&](size_t i) {
    if (s[i] == '<') {
      ++angle;
    } else if (s[i] == '>' && angle > 0) {
      --angle;
    } else if (s[i] == separator && angle == 0) {
      out.push_back(s.substr(from, i - from));
      from = i + 1;
    }
  });
  out.push_back(s.substr(from));
  return out;
}

// The last "<" outside quotes and comments: where the address of "name <address>" starts.
size_t AngleOpen(std::string_view s) {
  size_t found = std::string_view::npos;
  ForEachOutsideQuotes(s, [&](size_t i) {
    if (s[i] == '<') found = i;
  });
  return found;
}

// A display name as written: quoted strings unquoted, everything else as it stands, then
// decoded. Quotes that an encoded word produced around the whole name go too.
std::string DisplayName(std::string_view raw) {
  std::string unquoted;
  bool quoted = false;
  for (size_t i = 0; i < raw.size(); ++i) {
    if (quoted && raw[i] == '\\' && i + 1 < raw.size()) {
      unquoted += raw[++i];
    } else if (raw[i] == '"') {
      quoted = !quoted;
    } else {
      unquoted += raw[i];
    }
  }
  std::string name = std::string(Trim(DecodeHeaderText(Trim(unquoted))));
  while (name.size() >= 2 && ((name.front() == '"' && name.back() == '"') ||
                              (name.front() == '\'' && name.back() == '\'')))
    name = std::string(Trim(std::string_view(name).substr(1, name.size() - 2)));
  return name;
}

Mailbox ReadMailbox(std::string_view entry) {
  entry = Trim(entry);
  Mailbox box;
  if (const size_t open = AngleOpen(entry); open != std::string_view::npos) {
    const size_t close = entry.find('>', open);
    box.address = std::string(Trim(entry.substr(
        open + 1, close == std::string_view::npos ? std::string_view::npos : close - open - 1)));
    box.name = DisplayName(entry.substr(0, open));
    return box;
  }
  // "address (Name)": the comment is the name.
  if (const size_t open = entry.find('('); open != std::string_view::npos) {
    const size_t close = entry.rfind(')');
    box.address = std::string(Trim(entry.substr(0, open)));
    box.name = DisplayName(entry.substr(open + 1, close == std::string_view::npos || close < open
                                                      ? std::string_view::npos
                                                      : close - open - 1));
    return box;
  }
  box.address = std::string(Trim(DecodeHeaderText(entry)));
  if (box.address.find('@') == std::string::npos) box = Mailbox{DisplayName(entry), ""};
  return box;
}

}  // namespace

std::vector<Mailbox> ParseAddressList(std::string_view raw) {
  std::vector<Mailbox> boxes;
  for (std::string_view entry : SplitOutside(raw, ',')) {
    // A group: its name is not a person; its members follow the ":" up to the ";".
    std::vector<std::string_view> group = SplitOutside(entry, ':');
    if (group.size() > 1 && entry.find('@') == std::string_view::npos) continue;  // "x:;"
    if (group.size() > 1) entry = entry.substr(group[0].size() + 1);
    while (!entry.empty() && (entry.back() == ';' || IsBlank(entry.back())))
      entry.remove_suffix(1);
    if (Trim(entry).empty()) continue;
    boxes.push_back(ReadMailbox(entry));
  }
  return boxes;
}

}  // namespace corvina::simulator::mail
