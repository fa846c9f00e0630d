#include "simulator/eml_writer.h"

#include <gmime/gmime.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string_view>

#include "base/text.h"
#include "simulator/mail/mime_text.h"

namespace corvina::simulator {
namespace {

// Every GObject this file creates is released by its owner going out of scope, also when a
// later step throws.
struct GObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <typename T>
using GPtr = std::unique_ptr<T, GObjectUnref>;

struct GFree {
  void operator()(void* p) const { g_free(p); }
};
struct GDateTimeUnref {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};
struct FormatOptionsFree {
  void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};

void InitGMimeOnce() {
  // GMime's tables (character sets, the parser's defaults) are set up once per process and
  // left in place until it ends: a mail may be written at any point of a run.
  static std::once_flag once;
  std::call_once(once, [] { g_mime_init(); });
}

// Mail text is lines; LF, CRLF and a lone CR all end one. The part holds LF only and the DOS
// newline format of the writer turns each into CRLF, so no CR is ever encoded as "=0D".
std::string UnixLines(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      out.push_back('\n');
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      out.push_back(text[i]);
    }
  }
  return out;
}

GPtr<GMimeDataWrapper> WrapBytes(const std::string& bytes) {
  GPtr<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(bytes.data(), bytes.size()));
  return GPtr<GMimeDataWrapper>(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
}

// Recipients are given as a user types them. GMime's address parser reads both forms
// ("a@b.example", "Name <a@b.example>", also several separated by commas); the names it finds
// are encoded in UTF-8 on writing. A bare name gives no mailbox: it becomes an empty group,
// so the name still shows and nothing pretends to be an address.
void AddRecipients(GMimeMessage* message, GMimeAddressType type,
                   const std::vector<std::wstring>& typed) {
  InternetAddressList* target = g_mime_message_get_addresses(message, type);
  for (const std::wstring& one : typed) {
    std::string text = ToUtf8(one);
    GPtr<InternetAddressList> parsed(internet_address_list_parse(nullptr, text.c_str()));
    bool has_mailbox = false;
    if (parsed) {
      for (int i = 0, count = internet_address_list_length(parsed.get()); i != count; ++i) {
        InternetAddress* address = internet_address_list_get_address(parsed.get(), i);
        if (!INTERNET_ADDRESS_IS_MAILBOX(address)) continue;
        const char* addr = internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address));
        if (addr == nullptr || std::string_view(addr).find('@') == std::string_view::npos) {
          continue;
        }
        internet_address_set_charset(address, "utf-8");
        internet_address_list_add(target, address);
        has_mailbox = true;
      }
    }
    if (!has_mailbox) {
      const std::string_view name = mail::Trim(text);
      if (name.empty()) continue;
      GPtr<InternetAddress> group(internet_address_group_new(std::string(name).c_str()));
      internet_address_set_charset(group.get(), "utf-8");
      internet_address_list_add(target, group.get());
    }
  }
}

// The zone is +0000: the simulated clock is a wall clock without a zone, and UTC is the one
// zone that claims nothing about where the user sits.
void SetDate(GMimeMessage* message, corvina::Date date) {
  CivilTime t = ToCivil(date);
  std::unique_ptr<GDateTime, GDateTimeUnref> when(
      g_date_time_new_utc(t.year, t.month, t.day, t.hour, t.minute, t.second));
  if (!when) throw std::invalid_argument("WriteEml: the send time is outside years 1 to 9999");
  g_mime_message_set_date(message, when.get());
}

// GMime makes one encoded word of a run of non-blank characters however long it is, so a
// subject in a language written without spaces (Japanese, Chinese, Thai) gets a word past the
// 75 characters RFC 2047 allows, which strict readers leave undecoded. Such a subject is written
// again as words of 42 UTF-8 bytes at most, each cut between two characters: 56 base64
// characters, so even the first line, after "Subject: ", stays within 78.
void FoldLongEncodedWords(GMimeMessage* message, const std::string& subject) {
  constexpr size_t kMaxWord = 75, kChunkBytes = 42;
  GMimeHeader* header = g_mime_header_list_get_header(
      g_mime_object_get_header_list(GMIME_OBJECT(message)), "Subject");
  if (header == nullptr) return;
  std::string_view raw = g_mime_header_get_raw_value(header);
  bool too_long = false;
  for (size_t at = raw.find("=?"); at != std::string_view::npos; at = raw.find("=?", at + 2)) {
    size_t end = raw.find_first_of(" \t\r\n", at);
    too_long = too_long || (end == std::string_view::npos ? raw.size() : end) - at > kMaxWord;
  }
  if (!too_long) return;
  std::string folded;
  for (size_t begin = 0; begin < subject.size();) {
    size_t end = begin;
    for (;;) {
      size_t next = end + 1;  // past one whole UTF-8 sequence
      while (next < subject.size() && (static_cast<unsigned char>(subject[next]) & 0xC0) == 0x80)
        ++next;
      if (next - begin > kChunkBytes && end > begin) break;
      end = next;
      if (end >= subject.size()) break;
    }
    std::unique_ptr<gchar, GFree> base64(
        g_base64_encode(reinterpret_cast<const guchar*>(subject.data() + begin), end - begin));
    folded += (folded.empty() ? " =?UTF-8?B?" : "\n =?UTF-8?B?") + std::string(base64.get()) + "?=";
    begin = end;
  }
  g_mime_header_set_raw_value(header, (folded + "\n").c_str());
}

// 64-bit FNV-1a: a fixed function, so the same item gives the same Message-ID on every run and
// every machine (std::hash promises neither).
uint64_t Fnv1a(std::string_view bytes) {
  uint64_t h = 14695981039346656037ull;
  for (char c : bytes) {
    h ^= static_cast<unsigned char>(c);
    h *= 1099511628211ull;
  }
  return h;
}

// Without a seed the mail's own visible fields stand in, which keeps the identifier stable.
uint64_t MessageIdHash(const OutgoingMail& mail) {
  std::string seed = ToUtf8(mail.message_id_seed);
  if (seed.empty()) {
    seed = ToUtf8(mail.from_address + L'\n' + mail.subject + L'\n' + FormatStamp(mail.date));
  }
  return Fnv1a(seed);
}

void SetMessageId(GMimeMessage* message, uint64_t id) {
  char text[64];
  std::snprintf(text, sizeof text, "%016llx@corvina.invalid", static_cast<unsigned long long>(id));
  g_mime_message_set_message_id(message, text);
}

GPtr<GMimeObject> TextPart(const std::wstring& body) {
  GPtr<GMimeTextPart> part(g_mime_text_part_new_with_subtype("plain"));
  GMimePart* as_part = GMIME_PART(part.get());
  std::string lines = UnixLines(ToUtf8(body));
  // Text ends in a line end, as every mail that has passed through SMTP does. GMime adds one
  // to a lone part by itself but not to the first part of a multipart, so doing it here keeps
  // the body the same in both shapes.
  if (!lines.empty() && lines.back() != '\n') lines.push_back('\n');
  g_mime_part_set_content(as_part, WrapBytes(lines).get());
  g_mime_text_part_set_charset(part.get(), "utf-8");
  // 7bit for plain ASCII, else quoted-printable or base64, whichever is shorter: a mail file
  // then passes every relay and editor unchanged.
  GMimeContentEncoding encoding =
      g_mime_part_get_best_content_encoding(as_part, GMIME_ENCODING_CONSTRAINT_7BIT);
  g_mime_part_set_content_encoding(as_part, encoding);
  if (encoding == GMIME_CONTENT_ENCODING_BASE64) {
    // Base64 hides the line ends from the writer's newline conversion, so text encoded this
    // way is given its canonical CRLF lines before encoding (RFC 2046 4.1.1).
    std::string crlf;
    for (char c : lines) {
      if (c == '\n') crlf.push_back('\r');
      crlf.push_back(c);
    }
    g_mime_part_set_content(as_part, WrapBytes(crlf).get());
  }
  return GPtr<GMimeObject>(GMIME_OBJECT(part.release()));
}

// The content type a mail program would give a file of this name. A short fixed table, not
// the desktop's MIME database, so the same mail gives the same bytes on every machine.
const char* ContentTypeFor(std::string_view file_name) {
  static constexpr std::pair<std::string_view, const char*> kTypes[] = {
      {"txt", "text/plain"},
      {"csv", "text/csv"},
      {"htm", "text/html"},
      {"html", "text/html"},
      {"xml", "application/xml"},
      {"pdf", "application/pdf"},
      {"zip", "application/zip"},
      {"json", "application/json"},
      {"jpg", "image/jpeg"},
      {"jpeg", "image/jpeg"},
      {"png", "image/png"},
      {"gif", "image/gif"},
      {"bmp", "image/bmp"},
      {"svg", "image/svg+xml"},
      {"wav", "audio/wav"},
      {"mp3", "audio/mpeg"},
      {"mp4", "video/mp4"},
      {"ics", "text/calendar"},
      {"doc", "application/msword"},
      {"xls", "application/vnd.ms-excel"},
      {"ppt", "application/vnd.ms-powerpoint"},
      {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
      {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
      {"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
  };
  size_t dot = file_name.rfind('.');
  if (dot != std::string_view::npos) {
    std::string extension;
    for (char c : file_name.substr(dot + 1)) {
      extension.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
    }
    for (const auto& [known, type] : kTypes) {
      if (extension == known) return type;
    }
  }
  return "application/octet-stream";
}

// Both the disposition's filename and the content type's name carry the name: older programs
// read only the second. Each is written as RFC 2231 in UTF-8 whenever it is not plain ASCII.
void NameParameter(GMimeParamList* params, const char* name) {
  GMimeParam* param = g_mime_param_list_get_parameter(params, name);
  if (param == nullptr) return;
  g_mime_param_set_charset(param, "UTF-8");
  g_mime_param_set_encoding_method(param, GMIME_PARAM_ENCODING_METHOD_RFC2231);
}

GPtr<GMimeObject> AttachmentPart(const std::wstring& file_name, const std::string& bytes) {
  std::string name = ToUtf8(file_name);
  GPtr<GMimeContentType> type(g_mime_content_type_parse(nullptr, ContentTypeFor(name)));
  GPtr<GMimePart> part(
      g_mime_part_new_with_type(g_mime_content_type_get_media_type(type.get()),
                                g_mime_content_type_get_media_subtype(type.get())));
  // The bytes go in exactly as they are (a text file keeps its LF lines, a binary its NULs):
  // base64 is the one transfer encoding that changes nothing in them.
  GPtr<GMimeDataWrapper> content = WrapBytes(bytes);
  g_mime_part_set_content(part.get(), content.get());
  g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);

  GPtr<GMimeContentDisposition> disposition(g_mime_content_disposition_new());
  g_mime_content_disposition_set_disposition(disposition.get(), GMIME_DISPOSITION_ATTACHMENT);
  g_mime_object_set_content_disposition(GMIME_OBJECT(part.get()), disposition.get());
  g_mime_part_set_filename(part.get(), name.c_str());
  NameParameter(g_mime_content_disposition_get_parameters(disposition.get()), "filename");
  NameParameter(
      g_mime_content_type_get_parameters(g_mime_object_get_content_type(GMIME_OBJECT(part.get()))),
      "name");
  return GPtr<GMimeObject>(GMIME_OBJECT(part.release()));
}

GPtr<GMimeObject> Body(const OutgoingMail& mail, uint64_t id) {
  GPtr<GMimeObject> text = TextPart(mail.body);
  if (mail.attachments.empty()) return text;
  GPtr<GMimeMultipart> mixed(g_mime_multipart_new_with_subtype("mixed"));
  // GMime would draw a random boundary; one made from the Message-ID keeps the file the same
  // from run to run, so two runs can be compared byte for byte. "=-" cannot occur in base64
  // or quoted-printable text, so only a 7bit body quoting this very line could clash.
  char boundary[48];
  std::snprintf(boundary, sizeof boundary, "=-corvina-%016llx",
                static_cast<unsigned long long>(id));
  g_mime_multipart_set_boundary(mixed.get(), boundary);
  g_mime_multipart_add(mixed.get(), text.get());
  for (const auto& [file_name, bytes] : mail.attachments) {
    GPtr<GMimeObject> part = AttachmentPart(file_name, bytes);
    g_mime_multipart_add(mixed.get(), part.get());
  }
  return GPtr<GMimeObject>(GMIME_OBJECT(mixed.release()));
}

std::string Serialise(GMimeMessage* message) {
  std::unique_ptr<GMimeFormatOptions, FormatOptionsFree> options(g_mime_format_options_new());
  g_mime_format_options_set_newline_format(options.get(), GMIME_NEWLINE_FORMAT_DOS);
  GPtr<GMimeStream> out(g_mime_stream_mem_new());
  if (g_mime_object_write_to_stream(GMIME_OBJECT(message), options.get(), out.get()) < 0) {
    throw std::runtime_error("WriteEml: GMime could not serialise the message");
  }
  GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(out.get()));
  return std::string(reinterpret_cast<const char*>(bytes->data), bytes->len);
}

}  // namespace

std::string WriteEml(const OutgoingMail& mail) {
  InitGMimeOnce();
  GPtr<GMimeMessage> message(g_mime_message_new(FALSE));
  std::string from_name = ToUtf8(mail.from_name), from_address = ToUtf8(mail.from_address);
  g_mime_message_add_mailbox(message.get(), GMIME_ADDRESS_TYPE_FROM, from_name.c_str(),
                             from_address.c_str());
  InternetAddressList* from = g_mime_message_get_addresses(message.get(), GMIME_ADDRESS_TYPE_FROM);
  internet_address_set_charset(internet_address_list_get_address(from, 0), "utf-8");
  AddRecipients(message.get(), GMIME_ADDRESS_TYPE_TO, mail.to);
  AddRecipients(message.get(), GMIME_ADDRESS_TYPE_CC, mail.cc);
  // mail.bcc stays out on purpose: a sent mail's file is what its recipients receive.
  std::string subject = ToUtf8(mail.subject);
  g_mime_message_set_subject(message.get(), subject.c_str(), "utf-8");
  FoldLongEncodedWords(message.get(), subject);
  SetDate(message.get(), mail.date);
  uint64_t id = MessageIdHash(mail);
  SetMessageId(message.get(), id);
  GPtr<GMimeObject> body = Body(mail, id);
  g_mime_message_set_mime_part(message.get(), body.get());
  return Serialise(message.get());
}

std::string SentFileName(int serial, const std::wstring& subject) {
  constexpr size_t kMaxCharacters = 60;
  std::wstring cleaned;
  for (size_t i = 0; i < subject.size() && i < kMaxCharacters; ++i) {
    // The simulator is built where wchar_t holds a whole code point, so nothing is cut in two.
    const wchar_t c = subject[i];
    bool control = c < 0x20 || (c >= 0x7F && c <= 0x9F);
    bool forbidden = std::wstring_view(L"\\/:*?\"<>|").find(c) != std::wstring_view::npos;
    cleaned.push_back(control || forbidden ? L'_' : c);
  }
  if (cleaned.empty()) cleaned = L"no subject";
  char number[16];
  std::snprintf(number, sizeof number, "%03d-", serial);
  return number + ToUtf8(cleaned) + ".eml";
}

}  // namespace corvina::simulator
