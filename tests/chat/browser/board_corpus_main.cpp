// chat_board_corpus OUT_DIR: writes one chat board per hostile message of the corpus below
// through the real ChatControl onto a drive mapped to OUT_DIR/drive, one mixed board of
// several speakers, and OUT_DIR/manifest.json telling what each board holds, for
// board_browser_test.py to compare with what a browser makes of the pages.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "chat/chat_board.h"
#include "corvina/version.h"
#include "platform/sim/faults.h"
#include "platform/sim/mapped_file_system.h"
#include "platform/sim/sim_clock.h"
#include "settings/log.h"

namespace corvina {
namespace {

namespace fs = std::filesystem;

// What a script that ran would do: change the title, add an element no board holds.
constexpr wchar_t kRun[] =
    L"document.title='PWNED';document.body.appendChild(document.createElement('marquee'))";

struct Board {
  std::string name;
  bool rtl = false;
  std::vector<ChatBlock> blocks;
};

ChatBlock From(std::wstring email, std::wstring nick, std::wstring text) {
  ChatBlock b;
  b.email = std::move(email);
  b.nick_name = std::move(nick);
  b.icon = L"3";
  b.text = std::move(text);
  return b;
}

ChatBlock Ann(std::wstring text) { return From(L"ann@example.org", L"Ann", std::move(text)); }

ChatBlock Edited(ChatBlock b, const std::function<void(ChatBlock&)>& edit) {
  edit(b);
  return b;
}

std::wstring Long() {
  const std::wstring piece = std::wstring(L"<script>") + kRun +
                             L"</script> www.a.example/x?y=1&z=2 c@d.example \"q\" 'q' `b`  \t"
                             L"\u041F\u0440\u0438\u0432\u0435\u0442 \u05E9\u05DC\u05D5\u05DD\r\n";
  std::wstring text;
  while (text.size() < 100 * 1024) text += piece;
  return text;
}

std::vector<Board> Corpus() {
  const std::wstring run = kRun;
  std::vector<Board> boards = {
      {"script after quote", false, {Ann(L"\"><script>" + run + L"</script>")}},
      {"img onerror", false, {Ann(L"<img src=x onerror=\"" + run + L"\">")}},
      {"svg onload", false, {Ann(L"<svg onload=" + run + L">")}},
      {"javascript word", false, {Ann(L"javascript:" + run)}},
      {"quote inside http link", false, {Ann(L"http://x.example/\"onmouseover=\"" + run + L"\"")}},
      {"www word closing the tag", false,
       {Ann(L"www.evil.example\"><script>" + run + L"</script>")}},
      {"at word with quotes", false, {Ann(L"x@y\"onmouseover=\"" + run + L"\"")}},
      {"schemes behind an at sign", false,
       {Ann(L"mailto:x@y javascript:alert(1)@x vbscript:msgbox(1)@x data:text/html,x@y")}},
      {"data link", false, {Ann(L"data:text/html,<script>" + run + L"</script>")}},
      {"file links", false, {Ann(L"file:///etc/passwd file:\\\\server\\share vbscript:msgbox(1)")}},
      {"entities typed", false,
       {Ann(L"&lt;script&gt;" + run + L"&lt;/script&gt; &amp; &#60;b&#62; &#x3C;i&#x3E; &copy;")}},
      {"bidi overrides", false,
       {Ann(L"invoice\u202Egpj.exe \u202Dforced\u202C \u2066isolate\u2069 \u200F\u200E \u202Bx")}},
      {"nul and controls", false,
       {Ann(std::wstring(L"a\0b", 3) + L"\x01\x07\x1B[31m\x7F\u0085\u009B\x0B\x0C end")}},
      {"lone surrogate", false, {Ann(std::wstring(L"x") + wchar_t(0xD800) + L"y")}},
      {"100 KB", false, {Ann(Long())}},
      {"cyrillic", false, {Ann(L"\u041F\u0440\u0438\u0432\u0435\u0442, \u043C\u0438\u0440! "
                               L"\u042D\u0442\u043E \u0442\u0435\u0441\u0442.")}},
      {"hebrew rtl board", true,
       {From(L"dan@example.co.il", L"\u05D3\u05E0\u05D9", L"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5"
                                                           L"\u05DC\u05DD www.example.co.il")}},
      {"japanese", false, {Ann(L"\u3053\u3093\u306B\u3061\u306F\u4E16\u754C \u30C6\u30B9\u30C8")}},
      {"astral", false, {Ann(L"\U0001F600 \U0001D11E")}},
      {"www words", false, {Ann(L"see www.example.com, and www.x.org/a?b=1&c=2 (www.y.org)")}},
      {"www then a line", false, {Ann(L"www.example.com\r\n<script>" + run + L"</script>")}},
      {"tabs and blanks", false, {Ann(L"col1\tcol2\twww.tab.example   a    b  c@d")}},
      {"backslash links", false, {Ann(L"http:\\\\evil.example\\path ftp:\\\\x.example")}},
      {"style", false, {Ann(L"<style>body{display:none}</style>hidden?")}},
      {"open comment", false, {Ann(L"<!-- all that follows")}},
      {"cdata", false, {Ann(L"<![CDATA[ <script>" + run + L"</script> ]]>")}},
      {"closes the table", false, {Ann(L"</TD></TR></TABLE><script>" + run + L"</script>")}},
      {"closes the page", false, {Ann(L"</BODY></HTML><script>" + run + L"</script>")}},
      {"iframe", false, {Ann(L"<iframe src=\"javascript:parent." + run + L"\"></iframe>")}},
      {"anchor", false, {Ann(L"<a href=\"javascript:" + run + L"\">click</a>")}},
      {"meta refresh", false,
       {Ann(L"<meta http-equiv=\"refresh\" content=\"0;url=javascript:" + run + L"\">")}},
      {"base", false, {Ann(L"<base href=\"javascript:/\"><a href=x>x</a>")}},
      {"classic probe", false, {Ann(L"'';!--\"<XSS>=&{()}")}},
      {"split script", false, {Ann(L"<scr<script>ipt>" + run + L"</scr</script>ipt>")}},
      {"noscript mutation", false,
       {Ann(L"<noscript><p title=\"</noscript><img src=x onerror=" + run + L">\">")}},
      {"plaintext", false, {Ann(L"<plaintext><xmp><textarea><title>PWNED</title>")}},
      {"lines", false, {Ann(L"line1\nline2\rline3\r\n\r\nline5\u2028line6")}},
      {"copyright", false, {Ann(L"\u00A9 \u00AE \u00A0nbsp")}},
      {"email with quote", false, {From(L"evil\"onerror=\"" + run + L"\"@x.org", L"Eve", L"hi")}},
      {"email with backtick", false,
       {From(L"x`onerror=`" + run + L"`@x.org", L"O'Brien` onerror='" + run + L"'", L"hi")}},
      {"email closing the tag", false,
       {From(L"\"><script>" + run + L"</script>@x", L"<b>Bold</b>", L"hi")}},
      {"nick closing the tag", false,
       {From(L"n@x.org", L"\"><img src=x onerror=" + run + L">", L"hi")}},
      {"nick with lines", false, {From(L"n@x.org", L"two\r\nlines\tand tab", L"hi")}},
      {"entry id with quotes", false, {Edited(Ann(L"files"), [&](ChatBlock& b) {
         b.attachment_count = 3;
         b.entry_id = L"\"onerror=\"" + run + L"\" x='1' y=`2`";
         b.nick_name = L"Ann \"The\" <Sender>";
       })}},
      {"icon with quotes", false,
       {Edited(Ann(L"pic"), [&](ChatBlock& b) { b.icon = L"1\" onerror=\"" + run + L"\""; })}},
      {"unknown sender", false, {Edited(From(L"", L"\"><script>" + run + L"</script>", L"anon"),
                                        [](ChatBlock& b) { b.attachment_count = 1; })}},
      {"own message", false, {Edited(Ann(L"<i>mine</i> me@example.org"),
                                     [](ChatBlock& b) { b.own = true; })}},
      {"styled", false, {Edited(Ann(L"<b>" + run + L"</b> www.s.example"), [](ChatBlock& b) {
         b.color = 0x0000FF;
         b.bold = b.italic = b.underline = true;
       })}},
      {"no header, no line", false, {Edited(Ann(L"tail<"), [](ChatBlock& b) {
         b.header = false;
         b.new_line = false;
         b.color = 0x808000;
       })}},
      {"empty", false, {Edited(Ann(L""), [](ChatBlock& b) { b.italic = true; })}},
  };
  return boards;
}

// The board a person looks at: several speakers, scripts and colours.
Board Mixed() {
  Board board{"mixed", false, {}};
  board.blocks.push_back(Edited(
      Ann(L"Hello Bob, the report is at www.example.com/report \u2014 see you at 10."),
      [](ChatBlock& b) { b.color = 0x800000; }));
  board.blocks.push_back(Edited(Ann(L"\u041F\u0440\u0438\u0432\u0435\u0442! \u041A\u0430\u043A "
                                    L"\u0434\u0435\u043B\u0430?"),
                                [](ChatBlock& b) {
                                  b.header = false;
                                  b.color = 0x0000FF;
                                  b.bold = true;
                                }));
  board.blocks.push_back(Edited(From(L"dan@example.co.il", L"\u05D3\u05E0\u05D9",
                                     L"\u05E9\u05DC\u05D5\u05DD, \u05D4\u05E7\u05D5\u05D1\u05E5 "
                                     L"\u05DE\u05E6\u05D5\u05E8\u05E3."),
                                [](ChatBlock& b) {
                                  b.icon = L"7";
                                  b.attachment_count = 2;
                                  b.entry_id = L"00000000ABCDEF";
                                  b.color = 0x800080;
                                  b.italic = true;
                                }));
  board.blocks.push_back(Edited(From(L"me@example.org", L"Me",
                                     L"Thanks \u2014 mail me at me@example.org"),
                                [](ChatBlock& b) {
                                  b.own = true;
                                  b.underline = true;
                                }));
  board.blocks.push_back(Edited(From(L"", L"", std::wstring(L"<script>") + kRun +
                                                   L"</script> \u202Eabc\u202C \u4F1A\u8B70\u306F"
                                                   L"\u660E\u65E5\u3067\u3059\u3002"),
                                [](ChatBlock& b) { b.color = 0x808000; }));
  return board;
}

// JSON string of `s`: every character outside printable ASCII as \u escapes (pairs past
// U+FFFF), so NUL, controls and a lone surrogate reach Python unchanged.
std::string Json(std::wstring_view s) {
  std::string out = "\"";
  auto unit = [&](unsigned u) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "\\u%04x", u);
    out += buf;
  };
  for (wchar_t wc : s) {
    const unsigned c = static_cast<unsigned>(wc);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c >= 0x20 && c < 0x7F) {
      out += static_cast<char>(c);
    } else if (c > 0xFFFF) {
      unit(0xD800 + ((c - 0x10000) >> 10));
      unit(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      unit(c);
    }
  }
  return out + "\"";
}

std::string Json(const std::string& s) { return Json(FromUtf8(s)); }
std::string Json(bool b) { return b ? "true" : "false"; }

std::string Json(const ChatBlock& b) {
  return "{\"text\": " + Json(b.text) + ", \"email\": " + Json(b.email) +
         ", \"nick\": " + Json(b.nick_name) + ", \"icon\": " + Json(b.icon) +
         ", \"attachments\": " + std::to_string(b.attachment_count) +
         ", \"entry_id\": " + Json(b.entry_id) + ", \"header\": " + Json(b.header) +
         ", \"own\": " + Json(b.own) + ", \"bold\": " + Json(b.bold) +
         ", \"italic\": " + Json(b.italic) + ", \"underline\": " + Json(b.underline) +
         ", \"color\": " + std::to_string(b.color) + ", \"new_line\": " + Json(b.new_line) + "}";
}

int Run(const fs::path& out) {
  fs::create_directories(out / "drive");
  sim::Faults faults;
  sim::MappedFileSystem files(faults);
  files.Map(L'C', out / "drive");
  const Date now = FromCivil({2026, 11, 22, 9, 30, 0});
  sim::SimClock clock(faults, now);
  Log log(files, clock);
  log.StartLog(L"C:\\Corvina.log");
  // A folder name Windows allows, with the characters an attribute must escape.
  const std::wstring root = L"C:\\Users\\O'Brien & `Co`";
  for (const std::wstring& folder : {std::wstring(L"C:\\Users"), root})
    if (!files.DirectoryExists(folder)) files.CreateDirectory(folder);

  std::vector<Board> boards = Corpus();
  boards.push_back(Mixed());
  std::string manifest = "{\"title\": " +
                         Json(L"Corvina Chat Version " + std::to_wstring(kVersionMajor) + L"." +
                              std::to_wstring(kVersionMinor) + L" At " + FormatGeneralDate(now)) +
                         ",\n \"log\": " + Json(files.HostPath(L"C:\\Corvina.log")->string()) +
                         ",\n \"boards\": [";
  for (size_t i = 0; i < boards.size(); ++i) {
    const std::wstring addin = root + L"\\" + std::to_wstring(i + 1);
    if (!files.DirectoryExists(addin)) files.CreateDirectory(addin);
    ChatControl control(files, log, addin);
    control.InitChat(boards[i].rtl, now);
    std::string blocks;
    for (const ChatBlock& block : boards[i].blocks) {
      control.AddText(block);
      blocks += (blocks.empty() ? "" : ",\n   ") + Json(block);
    }
    const auto host = files.HostPath(control.BoardPath());
    if (!host) {
      std::fprintf(stderr, "no board written for %s\n", boards[i].name.c_str());
      return 1;
    }
    manifest += std::string(i ? "," : "") + "\n  {\"name\": " + Json(boards[i].name) +
                ", \"file\": " + Json(host->string()) + ", \"addin\": " + Json(addin) +
                ", \"rtl\": " + Json(boards[i].rtl) + ",\n   \"blocks\": [" + blocks + "]}";
  }
  manifest += "]}\n";
  std::ofstream(out / "manifest.json", std::ios::binary) << manifest;
  return 0;
}

}  // namespace
}  // namespace corvina

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: chat_board_corpus OUT_DIR\n");
    return 2;
  }
  try {
    return corvina::Run(argv[1]);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "chat_board_corpus: %s\n", e.what());
    return 1;
  }
}
