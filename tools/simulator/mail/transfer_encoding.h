#pragma once
// Removing a part's Content-Transfer-Encoding the way tolerant mail programs do: damaged
// input is decoded as far as it goes instead of being refused, because a reader would rather
// have most of a file than none of it.
#include <string>
#include <string_view>

namespace corvina::simulator::mail {

// Characters outside the alphabet (line breaks, blanks, junk) are skipped; decoding stops at
// the padding that ends a group; a final group without its "=" padding still yields its
// bytes (many programs drop the padding).
std::string DecodeBase64(std::string_view text);

// "=XX" in either case, soft line breaks ("=" at a line end, even with blanks after it), a
// lone "=" that starts no valid escape kept as it is; blanks at line ends, which relays add,
// are dropped.
std::string DecodeQuotedPrintable(std::string_view text);

// The "Q" form of encoded words in headers: "_" is a blank, "=XX" a byte, the rest as it is.
std::string DecodeQEncoding(std::string_view text);

// From the "begin <mode> <name>" line to "end". Each line says how many bytes it carries; a
// line shorter than that lost its trailing blanks in transit (blanks encode zero bits), so it
// is padded with zeros instead of being refused. Without a begin line the text is returned
// unchanged, as it is evidently not uuencoded.
std::string DecodeUuencode(std::string_view text);

// Dispatches on the header's value (case-insensitive); 7bit, 8bit, binary and unknown
// encodings leave the bytes as they are.
std::string DecodeTransfer(std::string_view encoding, std::string_view body);

}  // namespace corvina::simulator::mail
