#include "simulator/eml_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace corvina::simulator {
namespace {

namespace fs = std::filesystem;
const std::string kMailbox = CORVINA_SAMPLES_DIR "/profile/mailbox/";

// Only a multipart/report of delivery status is a report; its parameter alone is not.
TEST(ReadMail, DeliveryReportNeedsTheWholeContentType) {
  const std::pair<std::string, bool> cases[] = {
      {"multipart/report; report-type=delivery-status; boundary=b", true},
      {"multipart/report; report-type=disposition-notification; boundary=b", false},
      {"text/plain; report-type=delivery-status", false},
      {"multipart/mixed; report-type=delivery-status; boundary=b", false},
  };
  for (const auto& [type, report] : cases) {
    std::string error;
    auto mail = ReadMail("From: a@b.example\nContent-Type: " + type + "\n\n--b\n\nx\n--b--\n", Date{},
                         &error);
    ASSERT_TRUE(mail) << error;
    EXPECT_EQ(mail->is_delivery_report, report) << type;
  }
}

TEST(ReadEml, BodyIsDecodedTextWithCrLf) {
  auto body = [](const std::string& file) {
    std::optional<MailFile> mail = ReadEml(kMailbox + file, nullptr);
    return mail ? mail->body : L"<unreadable>";
  };
  EXPECT_EQ(body("01-invoice.eml"),
            L"Hi Anna,\r\n\r\nplease find the November invoice attached.\r\n\r\nTom");
  EXPECT_NE(body("02-holiday.eml").find(L"Gr\u00fc\u00dfe!"), std::wstring::npos);  // latin-1 QP
  // HTML only: text without tags, style or entities.
  EXPECT_EQ(body("04-newsletter.eml"),
            L"Caf\u00e9 News\r\nOur new logo:\r\nOpening hours & prices are in the attached "
            L"price list.");
  EXPECT_EQ(body("05-undeliverable.eml").substr(0, 26), L"Your message to nobody@inv");
}

TEST(ReadEml, RefusesOnlyWhatHasNoHeaderAtAll) {
  fs::path dir = fs::temp_directory_path() / "corvina_eml_test";
  fs::create_directories(dir);
  const std::pair<std::string, std::string> files[] = {
      {"empty.eml", ""},
      {"blank.eml", "  \r\n\t\r\n"},
      {"text.eml", "just some words\nand another line\n"},
      {"binary.eml", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18)},
  };
  for (const auto& [name, content] : files) std::ofstream(dir / name, std::ios::binary) << content;
  for (std::string name : {"empty.eml", "blank.eml", "text.eml", "binary.eml", "missing.eml", ""}) {
    SCOPED_TRACE(name);
    std::string error;
    EXPECT_FALSE(ReadEml((dir / name).string(), &error));
    EXPECT_FALSE(error.empty());
    // A missing file (or a folder) is told apart from a damaged one.
    EXPECT_EQ(error.find("no such file") != std::string::npos, name == "missing.eml" || name.empty())
        << error;
  }
  fs::remove_all(dir);
}

TEST(ReadMail, ListsWhatMailProgramsListWhenHeadersAreMissing) {
  const Date file_time = FromCivil({2026, 11, 1, 8, 30, 0});
  struct Case {
    std::string raw;
    std::wstring subject, sender;
    bool dated_by_file;
  } cases[] = {
      {"Subject: hello\n\nno sender, no date\n", L"hello", L"", true},
      // A header name with a byte outside ASCII is no header: the body starts there.
      {"From: a@x\nX-\xC3\x84: y\nSubject: s\n\nbody", L"", L"a@x", true},
      {"  \r\n\r\nFrom: a@example.com\r\nDate: 2 Nov 2026 10:00\r\n\r\nbody", L"", L"a@example.com",
       false},
      {"From MAILER-DAEMON Mon Nov  2 10:00:00 2026\nFrom: MAILER DAEMON <>\nDate: soon\n\nx",
       L"", L"MAILER DAEMON", true},
  };
  // The body is read in its declared character set (koi8-r here, which the raw fallback
  // would misread as windows-1252).
  std::optional<MailFile> russian = ReadMail(
      "From: a@x\nContent-Type: text/plain; charset=\"KOI8-R\"\n\n\xF0\xD2\xC9\xD7\xC5\xD4\n", file_time,
      nullptr);
  ASSERT_TRUE(russian);
  EXPECT_EQ(russian->body, L"\u041F\u0440\u0438\u0432\u0435\u0442\r\n");
  // An HTML body's character references, past the first plane too.
  std::optional<MailFile> html =
      ReadMail("From: a@x\nContent-Type: text/html\n\n<p>&#128512; &amp; co</p>", file_time, nullptr);
  ASSERT_TRUE(html);
  EXPECT_EQ(html->body, L"\U0001F600 & co");
  // A part without any header is plain text: the body.
  std::optional<MailFile> bare = ReadMail(
      "From: a@x\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\nno headers\n--b--\n", file_time,
      nullptr);
  ASSERT_TRUE(bare);
  EXPECT_EQ(bare->body, L"no headers");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.raw);
    std::optional<MailFile> mail = ReadMail(c.raw, file_time, nullptr);
    ASSERT_TRUE(mail);
    EXPECT_EQ(mail->subject, c.subject);
    EXPECT_EQ(mail->sender_name, c.sender);
    EXPECT_EQ(mail->dated_by_file, c.dated_by_file);
    EXPECT_EQ(mail->sent == file_time, c.dated_by_file);
    EXPECT_EQ(mail->size, static_cast<int32_t>(c.raw.size()));
  }
}

TEST(ReadMail, FindsEveryAttachmentInDamagedStructures) {
  struct Case {
    const char* what;
    std::string raw;
    std::vector<std::pair<std::wstring, std::string>> attachments;  // name, bytes
  } cases[] = {
      {"cut off inside an attachment, no closing delimiter",
       "From: a@x\nContent-Type: multipart/mixed; boundary=x\n\n--x\n"
       "Content-Type: application/pdf; name=a.pdf\nContent-Transfer-Encoding: base64\n\nJVBERi0",
       {{L"a.pdf", "%PDF-"}}},
      {"delimiters with trailing blanks, preamble and epilogue, line end before a delimiter",
       "From: a@x\r\nContent-Type: multipart/mixed; boundary=\"b b\"\r\n\r\npreamble\r\n--b b \r\n"
       "Content-Disposition: attachment; filename=t.txt\r\n\r\nline\r\n\r\n--b b--\t\r\nepilogue",
       {{L"t.txt", "line\r\n"}}},
      {"announced boundary never appears: one opaque part",
       "From: a@x\nContent-Type: multipart/mixed; boundary=zz\n\n--other\nContent-Type: text/plain; "
       "name=n.txt\n\nx\n",
       {}},
      {"type without subtype keeps its name; name only in Content-Type",
       "From: a@x\nContent-Type: multipart/mixed; boundary=q\n\n--q\ncontent-type: application; "
       "name=\"r.pdf\"\n\nR\n--q\nCONTENT-DISPOSITION: attachment; filename=\"w?*.txt\"\n\nW\n--q--\n",
       {{L"r.pdf", "R"}, {L"w__.txt", "W"}}},
      {"attached message named by its subject, not entered; inline picture",
       "From: a@x\nContent-Type: multipart/mixed; boundary=o\n\n--o\nContent-Type: multipart/related; "
       "boundary=r\n\n--r\nContent-Type: text/html\n\n<p>hi</p>\n--r\nContent-Type: image/png; "
       "name=p.png\nContent-ID: <p1>\n\nPNG\n--r--\n--o\nContent-Type: message/rfc822\n\n"
       "Subject: Re: a/b\nContent-Type: text/plain; name=inner.txt\n\ninner\n--o--\n",
       {{L"p.png", "PNG"}, {L"Re_ a_b.eml", "Subject: Re: a/b\nContent-Type: text/plain; "
                                             "name=inner.txt\n\ninner"}}},
      {"a picture with a Content-ID outside multipart/related is an ordinary attachment",
       "From: a@x\nContent-Type: multipart/mixed; boundary=m\n\n--m\nContent-Type: image/png; "
       "name=q.png\nContent-ID: <q1>\n\nQ\n--m--\n",
       {{L"q.png", "Q"}}},
      {"a digest's parts are messages unless they say otherwise",
       "From: a@x\nContent-Type: multipart/digest; boundary=d\n\n--d\n\nSubject: D\n\nd\n--d--\n",
       {{L"D.eml", "Subject: D\n\nd"}}},
      {"the whole message is the attachment",
       "From: a@x\nContent-Disposition: attachment; filename=\"top.bin\"\n"
       "Content-Transfer-Encoding: base64\n\nAAEC\n",
       {{L"top.bin", std::string("\0\1\2", 3)}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::optional<MailFile> mail = ReadMail(c.raw, Date{}, nullptr);
    ASSERT_TRUE(mail);
    ASSERT_EQ(mail->attachments.size(), c.attachments.size());
    for (size_t i = 0; i < c.attachments.size(); ++i) {
      EXPECT_EQ(mail->attachments[i].file_name, c.attachments[i].first);
      EXPECT_EQ(mail->attachments[i].bytes, c.attachments[i].second);
      EXPECT_EQ(mail->attachments[i].inline_image, c.attachments[i].first == L"p.png");
      EXPECT_EQ(mail->attachments[i].attached_message, c.attachments[i].first.ends_with(L".eml"));
    }
  }
}

}  // namespace
}  // namespace corvina::simulator
