#include "simulator/eml_writer.h"

#include <gtest/gtest.h>


#include "base/text.h"
#include "simulator/eml_reader.h"

namespace corvina::simulator {
namespace {


struct Case {
  const char* label;
  OutgoingMail mail;
  std::vector<std::string> types;  // expected content type of each attachment
  std::wstring to_shown;           // the To: line as the simulator's own reader lists it
  std::string date_line;
};

// 256 bytes, every value once: NULs, 0xFF and bare CR and LF must all survive.
std::string AllBytes() {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
  return bytes;
}

std::vector<Case> Cases() {
  auto mail = [](std::wstring from_name, std::vector<std::wstring> to, std::vector<std::wstring> cc,
                 std::wstring subject, std::wstring body, CivilTime date,
                 std::vector<std::pair<std::wstring, std::string>> attachments) {
    OutgoingMail m{std::move(from_name),
                   L"anna@example.org",
                   std::move(to),
                   std::move(cc),
                   {},
                   std::move(subject),
                   std::move(body),
                   FromCivil(date),
                   std::move(attachments),
                   L"0000000012AB"};
    return m;
  };
  std::vector<Case> cases = {
      {"ascii",
       mail(L"Anna Berger", {L"Tom Keller <tom@example.com>"}, {}, L"Lunch on Friday?",
            L"See you at noon.\rAnna\r\n--\nA. B.", {2026, 11, 2, 9, 15, 7}, {}),
       {},
       L"Tom Keller",
       "Date: Mon, 02 Nov 2026 09:15:07 +0000"},
      {"cyrillic",
       mail(L"\u0410\u043d\u043d\u0430 \u0411\u0435\u0440\u0433\u0435\u0440",
            {L"\u0418\u0432\u0430\u043d \u041f\u0435\u0442\u0440\u043e\u0432 <ivan@example.ru>",
             L"olga@example.ru", L"\u0412\u0435\u0440\u0430"},
            {L"\u041f\u0451\u0442\u0440 <petr@example.ru>"},
            L"\u041e\u0442\u0447\u0451\u0442 \u0437\u0430 \u043d\u043e\u044f\u0431\u0440\u044c",
            L"\u041f\u0440\u0438\u0432\u0435\u0442!\r\nSee the report.\r\n",
            {2026, 11, 5, 18, 42, 10},
            {{L"\u043e\u0442\u0447\u0451\u0442.pdf", "%PDF-1.4\n%\xe2\xe3\n"}}),
       {"application/pdf"},
       L"\u0418\u0432\u0430\u043d \u041f\u0435\u0442\u0440\u043e\u0432; olga@example.ru",
       "Date: Thu, 05 Nov 2026 18:42:10 +0000"},
      // Mostly Japanese, so the body goes out in base64; the subject is long enough to fold.
      {"japanese",
       mail(L"\u5c71\u7530 \u592a\u90ce", {L"\u9234\u6728 <suzuki@example.jp>"}, {},
            L"\u4f1a\u8b70\u306e\u8b70\u4e8b\u9332\u3068\u6765\u9031\u306e\u4e88\u5b9a"
            L"\u306b\u3064\u3044\u3066\u306e\u304a\u77e5\u3089\u305b\u3067\u3059",
            L"\u65e5\u672c\u8a9e\u306e\u672c\u6587\u3067\u3059\u3002\n\u4e8c\u884c\u76ee\u3002\n",
            {2027, 1, 1, 0, 0, 0},
            {{L"\u8b70\u4e8b\u9332.txt", "\xe4\xb8\x80\n\xe4\xba\x8c\n"},
             {L"\u5199\u771f.JPG", "\xff\xd8\xff\xe0"}}),
       {"text/plain", "image/jpeg"},
       L"\u9234\u6728",
       "Date: Fri, 01 Jan 2027 00:00:00 +0000"},
      {"hebrew",
       mail(L"\u05d3\u05e0\u05d4 \u05db\u05d4\u05df",
            {L"\u05d9\u05d5\u05e1\u05d9 <yossi@example.co.il>"}, {},
            L"\u05d3\u05d5\u05d7 \u05e9\u05e0\u05ea\u05d9", L"\u05e9\u05dc\u05d5\u05dd",
            {2028, 2, 29, 12, 0, 0},
            {{L"\u05d3\u05d5\u05d7 \u05e9\u05e0\u05ea\u05d9.docx", "PK\x03\x04"}}),
       {"application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
       L"\u05d9\u05d5\u05e1\u05d9",
       "Date: Tue, 29 Feb 2028 12:00:00 +0000"},
      {"binary attachments and Bcc",
       mail(L"Anna Berger", {L"tom@example.com"}, {L"Tom Keller <tk@example.com>"}, L"Data files",
            L"Three files.", {2026, 2, 28, 23, 59, 59},
            {{L"all.bin", AllBytes()},
             {L"empty.dat", ""},
             {L"scan.PDF", std::string("\0\xff\0", 3)},
             {L"BACKUP.ZIP", "PK\x05\x06"},
             {L"sheet.xlsx", "PK\x03\x04"},
             {L"note.wav", "RIFF"}}),
       {"application/octet-stream", "application/octet-stream", "application/pdf",
        "application/zip",
        "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet", "audio/wav"},
       L"tom@example.com",
       "Date: Sat, 28 Feb 2026 23:59:59 +0000"},
      // A name without an address as Outlook's To box holds it, a quoted name with a comma.
      {"empty subject",
       mail(L"", {L"Anna Berger", L"\"Keller, Tom\" <tk@example.com>"}, {}, L"", L"",
            {2026, 12, 31, 7, 5, 3}, {}),
       {},
       L"Keller, Tom",
       "Date: Thu, 31 Dec 2026 07:05:03 +0000"},
  };
  cases[4].mail.bcc = {L"Secret Boss <boss@example.net>", L"audit@example.net"};
  for (Case& c : cases) c.mail.message_id_seed += FromUtf8(c.label);
  return cases;
}

// The body as a reader gets it back: LF, CRLF and a lone CR each end a line, in CRLF, and the
// last line has one too.
std::wstring SentBody(std::wstring_view text) {
  std::wstring out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
    out += text[i] == L'\r' || text[i] == L'\n' ? L"\r\n" : std::wstring(1, text[i]);
  }
  if (!out.empty() && out.back() != L'\n') out += L"\r\n";
  return out;
}

bool IsAscii(std::wstring_view text) {
  for (wchar_t c : text) {
    if (c > 0x7F) return false;
  }
  return true;
}

TEST(WriteEml, MailsReadBackAndFollowTheFileFormat) {
  for (const Case& c : Cases()) {
    SCOPED_TRACE(c.label);
    const std::string raw = WriteEml(c.mail);
    for (size_t i = 0; i < raw.size(); ++i) {
      unsigned char b = static_cast<unsigned char>(raw[i]);
      ASSERT_TRUE(b > 0 && b < 0x80) << "byte " << i << " is not 7-bit text";
      ASSERT_FALSE(b == '\n' && (i == 0 || raw[i - 1] != '\r')) << "bare LF at " << i;
      ASSERT_FALSE(b == '\r' && (i + 1 == raw.size() || raw[i + 1] != '\n')) << "bare CR at " << i;
    }
    // RFC 2047 limits an encoded word to 75 characters; strict readers leave longer ones alone.
    // Every word is in UTF-8, a bare typed name too, so no reader needs a legacy character set.
    for (size_t at = raw.find("=?"), end; at != std::string::npos; at = raw.find("=?", end)) {
      end = raw.find_first_of(" \t\r\n", at);
      EXPECT_LE(end - at, 75u) << raw.substr(at, 80);
      EXPECT_TRUE(raw.compare(at, 8, "=?UTF-8?") == 0 || raw.compare(at, 8, "=?utf-8?") == 0)
          << raw.substr(at, 20);
    }
    EXPECT_EQ(raw.find("\nBcc:"), std::string::npos);
    for (const std::wstring& hidden : c.mail.bcc) {
      std::string typed = ToUtf8(hidden);
      size_t open = typed.find('<');
      std::string address =
          open == std::string::npos ? typed : typed.substr(open + 1, typed.find('>') - open - 1);
      EXPECT_EQ(raw.find(address), std::string::npos) << address;
    }
    EXPECT_NE(raw.find("\r\n" + c.date_line + "\r\n"), std::string::npos);
    EXPECT_NE(raw.find(c.mail.attachments.empty() ? "Content-Type: text/plain; charset=utf-8"
                                                  : "Content-Type: multipart/mixed"),
              std::string::npos);
    if (!IsAscii(c.mail.subject)) {
      EXPECT_NE(raw.find("Subject: =?UTF-8?"), std::string::npos);
    }
    for (size_t i = 0; i < c.mail.attachments.size(); ++i) {
      EXPECT_NE(raw.find("Content-Type: " + c.types[i]), std::string::npos) << c.types[i];
      if (!IsAscii(c.mail.attachments[i].first)) {
        EXPECT_NE(raw.find("filename*=UTF-8''%"), std::string::npos);
      }
    }
    // The same mail gives the same bytes: nothing random (boundary, Message-ID) in it.
    EXPECT_EQ(WriteEml(c.mail), raw);

    std::string error;
    std::optional<MailFile> back = ReadMail(raw, Date{}, &error);
    ASSERT_TRUE(back) << error;
    EXPECT_EQ(back->subject, c.mail.subject);
    EXPECT_EQ(back->sender_name, c.mail.from_name.empty() ? c.mail.from_address : c.mail.from_name);
    EXPECT_EQ(back->sender_address, c.mail.from_address);
    EXPECT_EQ(back->to, c.to_shown);
    EXPECT_EQ(back->body, SentBody(c.mail.body));
    EXPECT_EQ(back->sent, c.mail.date);
    ASSERT_EQ(back->attachments.size(), c.mail.attachments.size());
    for (size_t i = 0; i < c.mail.attachments.size(); ++i) {
      EXPECT_EQ(back->attachments[i].file_name, c.mail.attachments[i].first);
      EXPECT_EQ(back->attachments[i].bytes, c.mail.attachments[i].second);
    }
  }
}

TEST(WriteEml, MessageIdFollowsTheSeed) {
  OutgoingMail mail = Cases()[0].mail;
  auto message_id = [](const std::string& raw) {
    size_t at = raw.find("\r\nMessage-Id: <");
    return at == std::string::npos ? std::string() : raw.substr(at, raw.find('>', at) - at);
  };
  std::string first = message_id(WriteEml(mail));
  ASSERT_FALSE(first.empty());
  mail.message_id_seed = L"0000000012AC";
  EXPECT_NE(message_id(WriteEml(mail)), first);
  // Without a seed the identifier still does not change between runs.
  mail.message_id_seed.clear();
  EXPECT_EQ(message_id(WriteEml(mail)), message_id(WriteEml(mail)));
}

TEST(SentFileName, CleansTheSubjectForFileSystems) {
  const std::wstring sixty_ya(60, L'\u044f');
  const struct {
    int serial;
    std::wstring subject;
    std::string want;
  } cases[] = {
      {1, L"Invoice November", "001-Invoice November.eml"},
      {12, L"Re: a/b?", "012-Re_ a_b_.eml"},
      {7, L"", "007-no subject.eml"},
      {1234, L"x", "1234-x.eml"},
      {5, L"\\/:*?\"<>|", "005-_________.eml"},
      {6, L"tab\there\nnew\x7f\x85", "006-tab_here_new__.eml"},
      // Sixty characters, not bytes: Cyrillic takes two bytes each in UTF-8.
      {3, sixty_ya + L"\u044f\u044f", "003-" + ToUtf8(sixty_ya) + ".eml"},
      // A character beyond the BMP is one character.
      {4, std::wstring(59, L'a') + L"\U0001F600b",
       "004-" + std::string(59, 'a') + "\xf0\x9f\x98\x80.eml"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SentFileName(c.serial, c.subject), c.want) << ToUtf8(c.subject);
  }
}

}  // namespace
}  // namespace corvina::simulator
