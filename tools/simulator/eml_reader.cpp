#include "simulator/eml_reader.h"

#include <gmime/gmime.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <mutex>

#include "base/text.h"
#include "simulator/html_text.h"

namespace corvina::simulator {
namespace {

// Owners for what GMime hands over with "transfer full".
struct ObjectUnref {
  void operator()(gpointer p) const { g_object_unref(p); }
};
template <typename T>
using GObjectPtr = std::unique_ptr<T, ObjectUnref>;
struct MemoryFree {
  void operator()(gpointer p) const { g_free(p); }
};
using GText = std::unique_ptr<char, MemoryFree>;

// g_mime_init is not re-entrant; the library is never shut down, as a process-wide codec
// table it is needed until exit.
void InitGMime() {
  static std::once_flag once;
  std::call_once(once, [] { g_mime_init(); });
}

std::wstring Text(const char* utf8) { return utf8 ? FromUtf8(utf8) : std::wstring(); }

std::wstring Address(InternetAddress* a) {
  return INTERNET_ADDRESS_IS_MAILBOX(a)
             ? Text(internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(a)))
             : std::wstring();
}

// The display name, or the address for an unnamed mailbox, as Outlook shows a sender.
std::wstring DisplayName(InternetAddress* a) {
  const char* name = internet_address_get_name(a);
  return name && *name ? FromUtf8(name) : Address(a);
}

std::wstring JoinNames(InternetAddressList* list) {
  std::wstring out;
  for (int i = 0, n = list ? internet_address_list_length(list) : 0; i < n; ++i) {
    if (!out.empty()) out += L"; ";
    out += DisplayName(internet_address_list_get_address(list, i));
  }
  return out;
}

// Outlook's plain body always separates lines with CRLF, whatever the file used.
std::wstring WithCrLf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 32);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') {
      out += "\r\n";
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      out += text[i];
    }
  }
  return FromUtf8(out);
}

// The part's content with its transfer encoding (base64, quoted-printable) removed.
std::string DecodedBytes(GMimePart* part) {
  GMimeDataWrapper* content = g_mime_part_get_content(part);
  if (!content) return {};
  GObjectPtr<GMimeStream> memory(g_mime_stream_mem_new());
  g_mime_data_wrapper_write_to_stream(content, memory.get());
  GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(memory.get()));
  return std::string(reinterpret_cast<const char*>(bytes->data), bytes->len);
}

struct Collected {
  MailFile* mail;
  std::optional<std::string> plain, html;
};

void Visit(GMimeObject* object, bool in_related, Collected& out) {
  GMimeContentType* type = g_mime_object_get_content_type(object);
  if (GMIME_IS_MULTIPART(object)) {
    bool related = in_related || g_mime_content_type_is_type(type, "multipart", "related");
    GMimeMultipart* multipart = GMIME_MULTIPART(object);
    for (int i = 0, n = g_mime_multipart_get_count(multipart); i < n; ++i) {
      Visit(g_mime_multipart_get_part(multipart, i), related, out);
    }
    return;
  }
  if (!GMIME_IS_PART(object)) return;  // an attached message is not entered
  GMimePart* part = GMIME_PART(object);
  if (const char* name = g_mime_part_get_filename(part); name && *name) {
    bool embedded = in_related && g_mime_content_type_is_type(type, "image", "*") &&
                    g_mime_object_get_content_id(object) != nullptr;
    out.mail->attachments.push_back({FromUtf8(name), DecodedBytes(part), embedded});
    return;
  }
  if (!GMIME_IS_TEXT_PART(object) || g_mime_part_is_attachment(part)) return;
  std::optional<std::string>* slot =
      g_mime_content_type_is_type(type, "text", "plain")  ? &out.plain
      : g_mime_content_type_is_type(type, "text", "html") ? &out.html
                                                           : nullptr;
  if (slot && !*slot) {
    GText text(g_mime_text_part_get_text(GMIME_TEXT_PART(object)));
    *slot = text ? std::string(text.get()) : std::string();
  }
}

bool IsDeliveryReport(GMimeObject* body) {
  if (!body) return false;
  GMimeContentType* type = g_mime_object_get_content_type(body);
  const char* report = g_mime_content_type_get_parameter(type, "report-type");
  return g_mime_content_type_is_type(type, "multipart", "report") && report &&
         g_ascii_strcasecmp(report, "delivery-status") == 0;
}

std::optional<MailFile> Fail(std::string* error, const std::string& path, const char* why) {
  if (error) *error = path + ": " + why;
  return std::nullopt;
}

}  // namespace

std::optional<MailFile> ReadEml(const std::string& path, std::string* error) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return Fail(error, path, "no such file");
  std::ifstream in(path, std::ios::binary);
  std::string raw{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in.is_open() || in.bad()) return Fail(error, path, "cannot be read");

  InitGMime();
  GObjectPtr<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(raw.data(), raw.size()));
  GObjectPtr<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  GObjectPtr<GMimeMessage> message(g_mime_parser_construct_message(parser.get(), nullptr));
  // GMime accepts almost any bytes as a message; a mail must at least say who sent it or when.
  GMimeHeaderList* headers = message ? g_mime_object_get_header_list(GMIME_OBJECT(message.get()))
                                     : nullptr;
  if (!headers || (!g_mime_header_list_contains(headers, "From") &&
                   !g_mime_header_list_contains(headers, "Date"))) {
    return Fail(error, path, "not a mail (no From: or Date: header)");
  }

  MailFile mail;
  GMimeMessage* m = message.get();
  mail.subject = Text(g_mime_message_get_subject(m));
  if (InternetAddressList* from = g_mime_message_get_from(m);
      from && internet_address_list_length(from) > 0) {
    InternetAddress* sender = internet_address_list_get_address(from, 0);
    mail.sender_name = DisplayName(sender);
    mail.sender_address = Address(sender);
  }
  mail.to = JoinNames(g_mime_message_get_to(m));
  if (GDateTime* date = g_mime_message_get_date(m)) {  // owned by the message
    mail.sent = FromCivil({g_date_time_get_year(date), g_date_time_get_month(date),
                           g_date_time_get_day_of_month(date), g_date_time_get_hour(date),
                           g_date_time_get_minute(date), g_date_time_get_second(date)});
  }
  GMimeObject* body = g_mime_message_get_mime_part(m);
  mail.is_delivery_report = IsDeliveryReport(body);
  Collected collected{&mail, std::nullopt, std::nullopt};
  if (body) Visit(body, false, collected);
  if (collected.plain) {
    mail.body = WithCrLf(*collected.plain);
  } else if (collected.html) {
    mail.body = WithCrLf(HtmlToText(*collected.html));
  }
  mail.size = static_cast<int32_t>(
      std::min<size_t>(raw.size(), std::numeric_limits<int32_t>::max()));
  return mail;
}

}  // namespace corvina::simulator
