#include "simulator/eml_reader.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

#include "base/text.h"
#include "simulator/html_text.h"
#include "simulator/mail/address.h"
#include "simulator/mail/charset.h"
#include "simulator/mail/header_fields.h"
#include "simulator/mail/mail_date.h"
#include "simulator/mail/mime_text.h"
#include "simulator/mail/transfer_encoding.h"

namespace corvina::simulator {
namespace {

using mail::HeaderBlock;
using mail::StructuredValue;

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

struct ContentType {
  std::string type = "text", subtype = "plain";  // lower case; the default when unreadable
  StructuredValue header;                         // the parameters as written
};

// A type without "/" (or none at all) is read as the default, as the standard says, but its
// parameters still count: a "Content-Type: application; name=x.pdf" keeps its file name.
ContentType ReadContentType(const HeaderBlock& headers, std::string_view fallback) {
  ContentType ct;
  std::optional<std::string_view> raw = headers.Find("Content-Type");
  ct.header = mail::ParseStructuredValue(raw ? *raw : std::string_view());
  std::string_view value = ct.header.value;
  size_t slash = value.find('/');
  if (slash == std::string_view::npos || slash == 0 || slash + 1 == value.size()) {
    value = fallback;
    slash = value.find('/');
  }
  ct.type = std::string(mail::Trim(value.substr(0, slash)));
  ct.subtype = std::string(mail::Trim(value.substr(slash + 1)));
  return ct;
}

// A delimiter line: "--boundary", optionally "--" after it, then only blanks.
enum class Delimiter { kNone, kPart, kClose };
Delimiter DelimiterKind(std::string_view line, std::string_view boundary) {
  if (line.size() < boundary.size() + 2 || line.substr(0, 2) != "--" ||
      line.substr(2, boundary.size()) != boundary)
    return Delimiter::kNone;
  std::string_view rest = line.substr(boundary.size() + 2);
  const bool close = rest.substr(0, 2) == "--";
  if (close) rest.remove_prefix(2);
  for (char c : rest)
    if (c != ' ' && c != '\t') return Delimiter::kNone;
  return close ? Delimiter::kClose : Delimiter::kPart;
}

// The bodies of a multipart's parts. The line end before a delimiter belongs to the
// delimiter. A missing closing delimiter ends the last part at the end of the text; no
// delimiter at all yields nothing (the caller then treats the entity as a single part).
std::vector<std::string_view> SplitParts(std::string_view body, std::string_view boundary) {
  std::vector<std::string_view> parts;
  size_t part_start = std::string_view::npos;
  size_t previous_line_end = 0;  // offset where the line before the current one ended (its text end)
  for (const mail::Line& line : mail::SplitLines(body)) {
    const Delimiter kind = DelimiterKind(line.text, boundary);
    if (kind != Delimiter::kNone) {
      if (part_start != std::string_view::npos)
        parts.push_back(body.substr(part_start, std::max(previous_line_end, part_start) - part_start));
      if (kind == Delimiter::kClose) return parts;
      part_start = line.end;
    }
    previous_line_end = line.begin + line.text.size();
  }
  if (part_start != std::string_view::npos) parts.push_back(body.substr(part_start));
  return parts;
}

// Windows forbids these in a file name, besides the control characters.
bool Forbidden(wchar_t c) {
  return c < 0x20 || c == L'\\' || c == L'/' || c == L':' || c == L'*' || c == L'?' ||
         c == L'"' || c == L'<' || c == L'>' || c == L'|';
}

struct Walk {
  MailFile* mail;
  std::optional<std::string> plain, html;
};

std::string SubjectOf(std::string_view message) {
  const HeaderBlock headers = mail::ReadHeaderBlock(message);
  return std::string(mail::Trim(mail::DecodeHeaderText(headers.Find("Subject").value_or(""))));
}

void Visit(std::string_view entity, std::string_view default_type, bool in_related, Walk& out) {
  const HeaderBlock headers = mail::ReadHeaderBlock(entity);
  const std::string_view body = entity.substr(std::min(headers.body, entity.size()));
  const ContentType ct = ReadContentType(headers, default_type);
  const std::string encoding(headers.Find("Content-Transfer-Encoding").value_or(""));

  if (ct.type == "multipart") {
    const std::optional<std::string> boundary = ct.header.Parameter("boundary");
    const std::vector<std::string_view> parts =
        boundary && !boundary->empty() ? SplitParts(body, *boundary)
                                       : std::vector<std::string_view>{};
    if (!parts.empty()) {
      const bool related = in_related || ct.subtype == "related";
      const std::string_view inner = ct.subtype == "digest" ? "message/rfc822" : "text/plain";
      for (std::string_view part : parts) Visit(part, inner, related, out);
      return;
    }
    // No delimiter where one was announced: the whole body is one opaque part.
  }
  if (ct.type == "message" && ct.subtype == "rfc822") {
    std::string bytes = mail::DecodeTransfer(encoding, body);
    std::string subject = SubjectOf(bytes);
    out.mail->attachments.push_back(
        {WindowsFileName((subject.empty() ? std::string("Untitled") : subject) + ".eml"),
         std::move(bytes), false, true});
    return;
  }
  const StructuredValue disposition =
      mail::ParseStructuredValue(headers.Find("Content-Disposition").value_or(""));
  std::string name = disposition.Parameter("filename").value_or("");
  if (mail::Trim(name).empty()) name = ct.header.Parameter("name").value_or("");
  if (!mail::Trim(name).empty()) {
    const bool embedded = in_related && ct.type == "image" && headers.Find("Content-ID");
    out.mail->attachments.push_back(
        {WindowsFileName(mail::Trim(name)), mail::DecodeTransfer(encoding, body), embedded});
    return;
  }
  if (ct.type != "text" || disposition.value == "attachment") return;
  std::optional<std::string>* slot =
      ct.subtype == "plain" ? &out.plain : ct.subtype == "html" ? &out.html : nullptr;
  if (slot && !*slot)
    *slot = mail::CharsetToUtf8(mail::DecodeTransfer(encoding, body),
                                ct.header.Parameter("charset").value_or(""));
}

std::optional<MailFile> Fail(std::string* error, const char* why) {
  if (error) *error = why;
  return std::nullopt;
}

Date FileTime(const std::string& path) {
  std::error_code ec;
  const auto stamp = std::filesystem::last_write_time(path, ec);
  if (ec) return Date{};
  const auto utc = std::chrono::floor<std::chrono::seconds>(
      std::chrono::file_clock::to_sys(stamp));
  const auto day = std::chrono::floor<std::chrono::days>(utc);
  const std::chrono::year_month_day ymd{day};
  const std::chrono::hh_mm_ss<std::chrono::seconds> time{utc - day};
  return FromCivil({static_cast<int>(ymd.year()), static_cast<int>(unsigned(ymd.month())),
                    static_cast<int>(unsigned(ymd.day())), static_cast<int>(time.hours().count()),
                    static_cast<int>(time.minutes().count()),
                    static_cast<int>(time.seconds().count())});
}

}  // namespace

std::wstring WindowsFileName(std::string_view utf8) {
  std::wstring name = FromUtf8(utf8);
  for (wchar_t& c : name)
    if (Forbidden(c)) c = L'_';
  while (!name.empty() && (name.back() == L'.' || name.back() == L' ')) name.pop_back();
  // Windows paths stop at 260 characters; a name of 255 could be saved in no folder at all.
  constexpr size_t kMaxName = 200;
  constexpr size_t kMaxExtension = 16;  // with its dot; a longer tail is no extension
  if (name.size() > kMaxName) {
    const size_t dot = name.rfind(L'.');
    const std::wstring extension =
        dot != std::wstring::npos && dot > 0 && name.size() - dot <= kMaxExtension
            ? name.substr(dot)
            : L"";
    name = name.substr(0, kMaxName - extension.size()) + extension;
  }
  return name.empty() ? L"_" : name;
}

std::optional<MailFile> ReadMail(std::string_view raw, Date file_time, std::string* error) {
  const size_t size = raw.size();
  // Programs that wrap mail in other files leave blank lines before the headers.
  for (const mail::Line& line : mail::SplitLines(raw)) {
    if (!mail::Trim(line.text).empty()) {
      raw.remove_prefix(line.begin);
      break;
    }
  }
  if (mail::Trim(raw).empty()) return Fail(error, "an empty file, not a mail");
  const HeaderBlock headers = mail::ReadHeaderBlock(raw);
  if (headers.fields.empty()) return Fail(error, "not a mail (it has no header lines)");

  MailFile mail;
  mail.size = static_cast<int32_t>(std::min<size_t>(size, std::numeric_limits<int32_t>::max()));
  mail.subject = FromUtf8(mail::Trim(mail::DecodeHeaderText(headers.Find("Subject").value_or(""))));
  const std::vector<mail::Mailbox> from = mail::ParseAddressList(headers.Find("From").value_or(""));
  if (!from.empty()) {
    mail.sender_name = FromUtf8(from[0].Shown());
    mail.sender_address = FromUtf8(from[0].address);
  }
  for (const mail::Mailbox& to : mail::ParseAddressList(headers.Find("To").value_or(""))) {
    if (!mail.to.empty()) mail.to += L"; ";
    mail.to += FromUtf8(to.Shown());
  }
  if (std::optional<CivilTime> date = mail::ParseMailDate(headers.Find("Date").value_or(""))) {
    mail.sent = FromCivil(*date);
  } else {
    mail.sent = file_time;
    mail.dated_by_file = true;
  }
  const ContentType top = ReadContentType(headers, "text/plain");
  mail.is_delivery_report = top.type == "multipart" && top.subtype == "report" &&
                            mail::Lower(top.header.Parameter("report-type").value_or("")) ==
                                "delivery-status";
  Walk walk{&mail, std::nullopt, std::nullopt};
  Visit(raw, "text/plain", false, walk);
  if (walk.plain) {
    mail.body = WithCrLf(*walk.plain);
  } else if (walk.html) {
    mail.body = WithCrLf(HtmlToText(*walk.html));
  }
  return mail;
}

std::optional<MailFile> ReadEml(const std::string& path, std::string* error) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return Fail(error, "no such file");
  std::ifstream in(path, std::ios::binary);
  if (!in.is_open()) return Fail(error, "it cannot be read");
  std::string raw{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  return ReadMail(raw, FileTime(path), error);
}

}  // namespace corvina::simulator
