#pragma once
// The people of a From: or To: header as a mail program lists them: a display name and an
// address for each, however loosely the header was written.
#include <string>
#include <string_view>
#include <vector>

namespace corvina::simulator::mail {

struct Mailbox {
  std::string name;     // UTF-8, decoded; quotes around the whole name removed
  std::string address;  // as written between "<" and ">", or the bare address
  // What a mail program shows: the name, or the address when there is no name.
  std::string Shown() const { return name.empty() ? address : name; }
};

// Splits on commas outside quotes, comments and angle brackets; a group ("team: a, b;")
// contributes its members. Each entry is read as "name <address>", "address (comment)" or a
// bare address; encoded words anywhere in a name are decoded, even when they hold the
// quote marks and commas of the name itself.
std::vector<Mailbox> ParseAddressList(std::string_view raw);

}  // namespace corvina::simulator::mail
