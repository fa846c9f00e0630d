#pragma once
// Reads one mail file (.eml, RFC 5322 with MIME parts) of the simulator's profile mailbox into
// the few properties the sim Outlook gives a mail item. Parsing is GMime's; this only picks the
// fields out.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"

namespace corvina::simulator {

struct MailAttachment {
  std::wstring file_name;
  std::string bytes;   // decoded content (the transfer encoding removed)
  bool inline_image;   // an image with a Content-ID inside multipart/related (embedded in HTML)
};

struct MailFile {
  std::wstring subject, sender_name, sender_address, to, body;
  // The Date: header's wall-clock time as written; the zone offset is ignored, because the
  // simulated machine has no time zone of its own and a reader expects the time the header
  // shows. A mail without a readable Date: header gets Date{} (1899-12-30 00:00).
  corvina::Date sent;
  bool is_delivery_report = false;  // multipart/report; report-type=delivery-status
  std::vector<MailAttachment> attachments;
  int32_t size = 0;  // of the whole file, in bytes
};

// Field rules, chosen to match what Outlook shows for such a mail:
// - sender_name is the From: display name, or the address when the header has no name;
// - to is the To: display names (address when unnamed) joined by "; ";
// - body is the first text/plain part that is not an attachment, else the text of the first
//   text/html one; line ends are CRLF;
// - attachments are the leaf parts with a file name, in document order; a forwarded message
//   (message/rfc822) is not entered, so a returned mail's parts do not count as attachments.
// A file that cannot be read or carries neither a From: nor a Date: header (so is no mail)
// yields nullopt and, when `error` is given, a message naming the file.
std::optional<MailFile> ReadEml(const std::string& path, std::string* error);

}  // namespace corvina::simulator
