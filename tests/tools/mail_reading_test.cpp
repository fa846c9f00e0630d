// The pieces of mail reading, each against the damaged forms real mail arrives in.
#include <gtest/gtest.h>

#include <cctype>

#include "simulator/eml_reader.h"
#include "simulator/mail/address.h"
#include "simulator/mail/charset.h"
#include "simulator/mail/header_fields.h"
#include "simulator/mail/mail_date.h"
#include "simulator/mail/transfer_encoding.h"

namespace corvina::simulator::mail {
namespace {

TEST(TransferEncoding, DecodesDamagedInputAsFarAsItGoes) {
  struct Case {
    const char* encoding;
    std::string text, bytes;
  } cases[] = {
      {"base64", "YWJjZA==", "abcd"},
      {"BASE64", "YWJjZA", "abcd"},          // padding dropped by the sender
      {"base64", "YWJjZGU", "abcde"},        // three characters in the last group
      {"base64", "YW\r\nJj ZA\t==", "abcd"},  // breaks and blanks anywhere
      {"base64", "YWJj!ZGU=garbage", "abcde"},  // junk skipped, padding ends the data
      {"base64", "YQ===", "a"},
      {"quoted-printable", "a=3Db=3db", "a=b=b"},
      {"quoted-printable", "soft=\r\nbreak=\nand lf", "softbreakand lf"},
      {"quoted-printable", "relay  \r\nadded=20 \t\nblanks", "relay\r\nadded \nblanks"},
      {"quoted-printable", "soft= \r\nbreak  = \t\nwith blanks", "softbreak  with blanks"},
      {"quoted-printable", "bad =ZZ and ==", "bad =ZZ and ="},
      {"quoted-printable", "end=", "end"},
      {"quoted-printable", "soft break at the end=\r\n", "soft break at the end"},
      {"quoted-printable", "a==b=4", "a=b=4"},
      {"x-uuencode", "begin 644 a.txt\n#86)C\n`\nend\n", "abc"},
      {"uue", "begin 644 a.txt\n#86)C\nend\n", "abc"},
      // A line that lost its trailing blanks: "%86)C" says five bytes, the rest were zeros.
      {"uuencode", "begin 644 a.txt\r\n%86)C\r\nend\r\n", std::string("abc\0\0", 5)},
      {"x-uue", "no begin line here", "no begin line here"},
      {"x-uuencode", "junk\nbegin 600 b\n#86)C\n", "abc"},  // cut before "end": what came is kept
      {"7bit", "as is=3D", "as is=3D"},
      {"", "as is", "as is"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(DecodeTransfer(c.encoding, c.text), c.bytes);
  }
}

TEST(HeaderText, DecodesEncodedWordsAndRawBytes) {
  struct Case {
    std::string raw, utf8;
  } cases[] = {
      {"plain text", "plain text"},
      {"=?utf-8?B?w6k=?= and =?ISO-8859-1?Q?caf=E9_au_lait?=", "\xC3\xA9 and caf\xC3\xA9 au lait"},
      // Blanks between two words vanish; a UTF-8 character split over two words survives.
      {"=?utf-8?Q?=C3?= =?utf-8?Q?=A9t=C3=A9?=", "\xC3\xA9t\xC3\xA9"},
      {"=?utf-8?Q?Prix_?= =?utf-8?Q?r=c3=a9duits?=", "Prix r\xC3\xA9" "duits"},  // a blank at a word's end
      {"=?koi8-r?B?8NLJ18XU?=", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"},
      {"=?windows-1251?Q?=CF=F0=E8?=", "\xD0\x9F\xD1\x80\xD0\xB8"},
      {"=?iso-8859-8?B?+ezl7Q==?=", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
      {"=?ISO-2022-JP?B?GyRCJEYkOSRIGyhC?=", "\xE3\x81\xA6\xE3\x81\x99\xE3\x81\xA8"},
      {"=?x-unknown?Q?abc?=", "abc"},
      // This decoder holds a base letter back for a tone mark that may follow; the end of
      // the word must release it.
      {"=?tcvn5712-1?Q?Viet_a?=", "Viet a"},
      // Bytes the set cannot hold: the word is read as windows-1252 rather than cut short.
      {"=?iso-2022-jp?Q?ab=FF?=", "ab\xC3\xBF"},
      {"a =?utf-8?Q?" "?= b", "a  b"},  // an empty word is still a word
      // Names mail programs give sets that the converter knows by other names.
      {"=?iso-8859-8-i?B?+ezl7Q==?=", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
      {"=?iso-8859-8-e?B?+ezl7Q==?=", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
      {"=?ks_c_5601-1987?B?x9GxuQ==?=", "\xED\x95\x9C\xEA\xB5\xAD"},
      {"=?gb2312?B?6UY=?=", "\xE9\x95\x95"},  // a GBK character labelled gb2312
      {"=?x-gbk?B?6UY=?=", "\xE9\x95\x95"},
      {"=?x-sjis?B?k/qWew==?=", "\xE6\x97\xA5\xE6\x9C\xAC"},
      {"=?unicode-1-1-utf-8?B?w6k=?=", "\xC3\xA9"},
      {"=?utf-8?X?abc?=", "=?utf-8?X?abc?="},  // no such encoding: left as text
      {"caf\xE9", "caf\xC3\xA9"},                // raw Latin-1
      {"caf\xC3\xA9", "caf\xC3\xA9"},            // raw UTF-8
      {"smile \xF0\x9F\x98\x80", "smile \xF0\x9F\x98\x80"},  // four bytes
      // Not UTF-8 (an overlong form, a surrogate, past Unicode): read as windows-1252.
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},
      {"\x93quoted\x94", "\xE2\x80\x9Cquoted\xE2\x80\x9D"},  // windows-1252
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.raw);
    EXPECT_EQ(DecodeHeaderText(c.raw), c.utf8);
  }
}

TEST(StructuredValue, FindsFileNamesHoweverTheyAreWritten) {
  struct Case {
    std::string raw, name;
  } cases[] = {
      {"attachment; filename=a.pdf", "a.pdf"},
      {"attachment; FILENAME=\"a b;c.pdf\"; size=3", "a b;c.pdf"},
      {"attachment; filename=\"=?utf-8?B?0KTQsNC50LsucGRm?=\"", "\xD0\xA4\xD0\xB0\xD0\xB9\xD0\xBB.pdf"},
      {"attachment; filename*=utf-8''%E2%82%AC%20rate.txt", "\xE2\x82\xAC rate.txt"},
      {"attachment; filename*=iso-8859-1'fr'caf%E9.txt", "caf\xC3\xA9.txt"},
      {"attachment; filename*=koi8-r''%F0%D2%C9", "\xD0\x9F\xD1\x80\xD0\xB8"},
      {"attachment; filename*x=\"bad.txt\"; filename=good.txt", "good.txt"},  // no number
      {"attachment; filename*=utf-8''100%25%2", "100%%2"},  // a cut escape stays text
      {"attachment; filename*1=\"two.txt\"; filename*0*=utf-8''part%20", "part two.txt"},
      // Pieces are ordered by number, not by text: 10 comes after 9.
      {"attachment; filename*10=k; filename*0=a; filename*1=b; filename*2=c; filename*3=d; "
       "filename*4=e; filename*5=f; filename*6=g; filename*7=h; filename*8=i; filename*9=j",
       "abcdefghijk"},
      {"attachment; filename=\"plain.txt\"; filename*=utf-8''better.txt", "better.txt"},
      {"attachment; filename=\"ends in\\\"", "ends in\\"},  // an escape with nothing to escape
      {"attachment; filename=\"esc\\\"aped.txt\"", "esc\"aped.txt"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.raw);
    StructuredValue v = ParseStructuredValue(c.raw);
    EXPECT_EQ(v.value, "attachment");
    EXPECT_EQ(v.Parameter("filename").value_or("<none>"), c.name);
  }
}

TEST(Addresses, ShowWhatAMailProgramShows) {
  struct Case {
    std::string raw, shown, address;
  } cases[] = {
      {"Tom Keller <tom@example.com>", "Tom Keller", "tom@example.com"},
      {"\"Keller, Tom\" <tom@example.com>", "Keller, Tom", "tom@example.com"},
      {"=?utf-8?Q?=22Dupont=2C?= =?utf-8?Q?_Jean=22?= <jean@example.fr>", "Dupont, Jean",
       "jean@example.fr"},
      {"MAILER DAEMON <>", "MAILER DAEMON", ""},
      {"'Tom Keller' <tom@example.com>", "Tom Keller", "tom@example.com"},
      {"\"Tom\\", "Tom\\", ""},  // a backslash at the very end escapes nothing
      {"tom@example.com", "tom@example.com", "tom@example.com"},
      {"<tom@example.com>", "tom@example.com", "tom@example.com"},
      {"tom@example.com (Tom Keller)", "Tom Keller", "tom@example.com"},
      {"=?iso-8859-1?Q?J=FCrgen?= <j@example.de>, other@example.de", "J\xC3\xBCrgen", "j@example.de"},
      {"team: a@example.com, b@example.com;", "a@example.com", "a@example.com"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.raw);
    std::vector<Mailbox> boxes = ParseAddressList(c.raw);
    ASSERT_FALSE(boxes.empty());
    EXPECT_EQ(boxes[0].Shown(), c.shown);
    EXPECT_EQ(boxes[0].address, c.address);
  }
  EXPECT_EQ(ParseAddressList("undisclosed-recipients:;").size(), 0u);
  EXPECT_EQ(ParseAddressList("a@x.org, \"b, c\" <b@x.org>, d@x.org").size(), 3u);
  EXPECT_EQ(ParseAddressList("a@x.org (Smith, (J.) John), b@x.org").size(), 2u);
}

TEST(MailDate, ReadsTheWallClockTimeOfLooseForms) {
  struct Case {
    std::string text;
    std::optional<CivilTime> time;
  } cases[] = {
      {"Tue, 3 Nov 2026 09:15:00 +0100", CivilTime{2026, 11, 3, 9, 15, 0}},
      {"3 Nov 2026 09:15 GMT", CivilTime{2026, 11, 3, 9, 15, 0}},
      {"Tue Nov  3 09:15:07 2026", CivilTime{2026, 11, 3, 9, 15, 7}},
      {"Sun, 29 Feb 26 23:59:60 -0500", std::nullopt},  // 2026 has no 29 February
      {"Thu, 29 Feb 24 23:59:60 -0500", CivilTime{2024, 2, 29, 23, 59, 59}},
      {"Wed,, 01 JAN 1997 00:00:00", CivilTime{1997, 1, 1, 0, 0, 0}},
      {"yesterday afternoon", std::nullopt},
      {"", std::nullopt},
      {"31 Apr 2026 10:00", std::nullopt},
      {"Nov 3 26 09:15", CivilTime{2026, 11, 3, 9, 15, 0}},
      {"3 Nov 99 10:00", CivilTime{1999, 11, 3, 10, 0, 0}},
      {"3 Nov 126 10:00", CivilTime{2026, 11, 3, 10, 0, 0}},
      {"3 Nov 049 10:00", CivilTime{1949, 11, 3, 10, 0, 0}},  // three digits: always 1900 +
      {"3 November 2026 10:00", CivilTime{2026, 11, 3, 10, 0, 0}},
      {"0 Nov 2026 10:00", std::nullopt},
      {"2026 Nov 3 10:00", CivilTime{2026, 11, 3, 10, 0, 0}},
      {"31 Oct 2026 23:59:59", CivilTime{2026, 10, 31, 23, 59, 59}},
      {"1 Jan 1900 00:00", CivilTime{1900, 1, 1, 0, 0, 0}},
      {"31 Dec 1899 10:00", std::nullopt},
      {"3 Nov 2026", std::nullopt},  // any one part missing
      {"Nov 2026 10:00", std::nullopt},
      {"3 2026 10:00", std::nullopt},
      {"3 Nov 10:00", std::nullopt},
      {"3 Nov 2026 10", std::nullopt},
      {"29 Feb 1900 10:00", std::nullopt},  // a century is no leap year ...
      {"29 Feb 2000 10:00", CivilTime{2000, 2, 29, 10, 0, 0}},  // ... unless it divides by 400
      {"1 Nov 2026 25:00", std::nullopt},
      {"1 Nov 2026 10:60", std::nullopt},
      {"1 Nov 2026 24:00", std::nullopt},
      {"1 Nov 49 10:00", CivilTime{2049, 11, 1, 10, 0, 0}},  // two digits: 2000 + up to 49 ...
      {"1 Nov 50 10:00", CivilTime{1950, 11, 1, 10, 0, 0}},  // ... 1900 + from 50
      {"1 Nov 2026 10:1a", std::nullopt},
      {"1 Nov 2026 10:59:61", std::nullopt},
  };
  // Every month by its name in either case, on its last day and the day after.
  const char* kNames[] = {"Jan", "feb", "MAR", "apr", "May", "jun", "Jul", "aug", "Sep", "oct", "Nov", "dec"};
  for (int m = 1; m <= 12; ++m) {
    const int last = m == 2 ? 28 : m == 4 || m == 6 || m == 9 || m == 11 ? 30 : 31;
    for (bool upper : {false, true}) {
      std::string name = kNames[m - 1];
      for (char& c : name) c = upper ? static_cast<char>(std::toupper(c)) : c;
      const std::string month = " " + name + " 2026 10:00";
      std::optional<CivilTime> got = ParseMailDate(std::to_string(last) + month);
      ASSERT_TRUE(got) << month;
      EXPECT_EQ(FromCivil(*got), FromCivil({2026, m, last, 10, 0, 0})) << month;
      EXPECT_FALSE(ParseMailDate(std::to_string(last + 1) + month)) << month;
    }
  }
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    std::optional<CivilTime> got = ParseMailDate(c.text);
    ASSERT_EQ(got.has_value(), c.time.has_value());
    if (got) {
      EXPECT_EQ(FromCivil(*got), FromCivil(*c.time));
    }
  }
}

TEST(WindowsFileName, GivesANameWindowsCanStore) {
  struct Case {
    std::string utf8;
    std::wstring name;
  } cases[] = {
      {"report.pdf", L"report.pdf"},
      {"what?.txt", L"what_.txt"},
      {"a*b:c<d>e|f\"g\\h/i.txt", L"a_b_c_d_e_f_g_h_i.txt"},
      {"tab\there.txt", L"tab_here.txt"},
      {"trailing. . ", L"trailing"},
      {"...", L"_"},
      {"\xD0\xA4\xD0\xB0\xD0\xB9\xD0\xBB.txt", L"\u0424\u0430\u0439\u043B.txt"},
  };
  for (const Case& c : cases) EXPECT_EQ(simulator::WindowsFileName(c.utf8), c.name) << c.utf8;
  std::wstring long_name = simulator::WindowsFileName(std::string(300, 'x') + ".pdf");
  EXPECT_EQ(long_name.size(), 200u);
  EXPECT_EQ(long_name.substr(196), L".pdf");
  // A tail after the last dot too long to be an extension is cut like the rest.
  EXPECT_EQ(simulator::WindowsFileName("a." + std::string(300, 'y')), L"a." + std::wstring(198, L'y'));
}

}  // namespace
}  // namespace corvina::simulator::mail
