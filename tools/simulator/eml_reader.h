#pragma once
// Reads one mail file (.eml: RFC 5322 with MIME parts) of the simulator's mailbox into the
// few properties the sim Outlook gives a mail item. It reads real mail the way tolerant mail
// programs do: damaged encodings are decoded as far as they go, missing headers leave fields
// empty, and only a file with no header at all is refused.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace corvina::simulator {

struct MailAttachment {
  std::wstring file_name;  // a name Windows can store (see WindowsFileName)
  std::string bytes;       // decoded content (the transfer encoding removed)
  bool inline_image;       // an image with a Content-ID inside multipart/related (in the HTML)
  bool attached_message = false;  // a message/rfc822 part, saved as the message's own bytes
};

struct MailFile {
  std::wstring subject, sender_name, sender_address, to, body;
  // The Date: header's wall-clock time as written (its zone is ignored: the simulated machine
  // has no zone of its own). A mail without a readable Date: has the file's modification time
  // in UTC, as mail programs list such files.
  corvina::Date sent;
  bool dated_by_file = false;
  bool is_delivery_report = false;  // multipart/report; report-type=delivery-status
  std::vector<MailAttachment> attachments;
  int32_t size = 0;  // of the whole file, in bytes
};

// Field rules, chosen to match what Outlook shows for such a mail:
// - sender_name is the From: display name, or the address when the header has no name
//   (a "MAILER DAEMON <>" keeps its name); empty when there is no From:;
// - to is the To: display names (address when unnamed) joined by "; ";
// - body is the first text/plain part that is not an attachment, else the text of the first
//   text/html one, in UTF-8 from its declared character set; line ends are CRLF;
// - attachments, in document order: every part with a file name (Content-Disposition's
//   filename, else Content-Type's name), and every attached message (message/rfc822), named
//   after its subject with ".eml" ("Untitled.eml" without one) and not entered further.
// Leading blank lines and an mbox "From " line before the headers are passed over.
// A file that cannot be read, is empty or holds no header field yields nullopt and, when
// `error` is given, the reason (without the path: the caller names the file).
std::optional<MailFile> ReadEml(const std::string& path, std::string* error);
// The same over bytes already read; `file_time` dates a mail without a readable Date:.
std::optional<MailFile> ReadMail(std::string_view raw, corvina::Date file_time, std::string* error);

// The simulator's reading of a name Outlook could not store on disk as it is: characters
// Windows forbids in file names (\ / : * ? " < > | and controls) become "_", trailing dots and
// blanks go (Windows drops them), a name past 200 characters is cut in its stem and keeps its
// extension (room is left for the folder: Windows paths stop at 260 characters), and a name
// left empty is "_".
std::wstring WindowsFileName(std::string_view utf8);

}  // namespace corvina::simulator
