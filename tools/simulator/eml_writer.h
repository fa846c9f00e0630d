#pragma once
// Writes a mail a simulated user sends as a real mail file (.eml), so that a person can open
// what the add-in sent in any mail program. The message is built and serialised by GMime: the
// MIME rules (encoded words, RFC 2231 parameters, transfer encodings, folding) are its job, not
// ours.
#include <string>
#include <utility>
#include <vector>

#include "base/date.h"

namespace corvina::simulator {

struct OutgoingMail {
  std::wstring from_name, from_address;   // the sender
  std::vector<std::wstring> to, cc, bcc;  // addresses or "Name <address>" as typed
  std::wstring subject, body;             // body: plain text, CRLF or LF
  corvina::Date date;                     // the simulated send time (wall clock, no zone)
  std::vector<std::pair<std::wstring, std::string>> attachments;  // file name, bytes
  std::wstring message_id_seed;  // e.g. the item's entry id, for a stable Message-ID
};

// The mail as an RFC 5322 message with MIME parts: multipart/mixed when there are attachments
// (text/plain UTF-8 first, then each attachment in base64 with an RFC 2231 UTF-8 file name and
// a content type guessed from its extension, application/octet-stream otherwise), a single
// text/plain part otherwise. Non-ASCII subjects and names become encoded words. Date: is in
// RFC 5322 form with zone +0000 (the simulated machine has no zone). Bcc is not written: mail
// programs drop it from what they send. A recipient typed as a bare name, without an address,
// is written as an empty group ("Name:;"), the one RFC 5322 form that carries a name alone.
// Lines end in CRLF, the body's last line included. The same mail gives the same bytes: the
// Message-ID and the multipart boundary come from message_id_seed (or, without one, from the
// sender, subject and date). Throws std::invalid_argument for a date outside years 1 to 9999.
std::string WriteEml(const OutgoingMail& mail);

// A file name for the mail in a sent/ folder: "NNN-" + the subject cleaned for file systems
// (characters Windows forbids and control characters become "_", at most 60 characters,
// "no subject" when empty) + ".eml", in UTF-8. `serial` gives NNN, zero-padded to 3 (1000
// and above keep all their digits).
std::string SentFileName(int serial, const std::wstring& subject);

}  // namespace corvina::simulator
