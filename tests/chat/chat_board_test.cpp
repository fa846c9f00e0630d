#include "chat/chat_board.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "corvina/version.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::kAddinFolder;

struct TextCase {
  const wchar_t* in;
  std::wstring out;
};

TEST(ChatBoardEscaping, TextTableRowsInOrder) {
  const TextCase cases[] = {
      {L"a<b & c", L"a&lt;b &amp; c"},   {L"&lt; typed", L"&amp;lt; typed"},
      {L"\u00A9\u00AE", L"&copy;&reg;"},  {L"x>y", L"x&gt;y"},
      {L"a b", L"a b"},                   {L"a  b", L"a&nbsp;&nbsp;b"},
      {L"   ", L"&nbsp;&nbsp; "},         {L"\"hi\"", L"&quot;hi&quot;"},
      {L"\tx", L"&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;x"},
      {L"1\r\n2", L"1<BR>\r\n2"},          {L"\r\r\n\n", L"\r<BR>\r\n\n"},
  };
  for (const TextCase& c : cases) EXPECT_EQ(EscapeBoardText(c.in), c.out) << c.in;
  EXPECT_EQ(EscapeAttribute(L"a\"b'c`d<e>f&g\u00A9"),
            L"a&quot;b&#39;c&#96;d&lt;e&gt;f&amp;g\u00A9");
}

// `link` with "[target|text]" written out as the link table writes a link.
std::wstring Links(std::wstring s) {
  for (size_t at; (at = s.find(L'[')) != std::wstring::npos;) {
    const size_t bar = s.find(L'|', at), end = s.find(L']', at);
    s.replace(at, end - at + 1, L"<a target=\"_blank\" href=\"" + s.substr(at + 1, bar - at - 1) +
                                    L"\">" + s.substr(bar + 1, end - bar - 1) + L"</a>");
  }
  return s;
}

TEST(ChatBoardEscaping, LinkTableOverEscapedText) {
  const TextCase cases[] = {
      {L"to a@b.org now", L"to [mailto:a@b.org|a@b.org] now"},
      {L"see www.x.org", L"see [http://www.x.org|www.x.org]"},
      {L"http://x?a&b ftp://f", L"[http://x?a&amp;b|http://x?a&amp;b] [ftp://f|ftp://f]"},
      {L"http:\\\\h ftp:\\\\f", L"[http:\\\\h|http:\\\\h] [ftp:\\\\f|ftp:\\\\f]"},
      {L"javascript:x HTTP://X x.www.org it's", L"javascript:x HTTP://X x.www.org it's"},
      {L"www.x.org\r\nnext", L"[http://www.x.org|www.x.org]<BR>\r\nnext"},
      {L"a\twww.x  b@c",
       L"a&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;[http://www.x|www.x]&nbsp;&nbsp;[mailto:b@c|b@c]"},
      {L"www.x\"on=1", L"[http://www.x&quot;on=1|www.x&quot;on=1]"},
      {L"it's`x@<b>", L"[mailto:it&#39;s&#96;x@&lt;b&gt;|it&#39;s&#96;x@&lt;b&gt;]"},
  };
  for (const TextCase& c : cases)
    EXPECT_EQ(RepalceSpecialChars(EscapeBoardText(c.in)), Links(c.out)) << c.in;
}

TEST(ChatBoardEscaping, HtmlColorReversesTheBytes) {
  EXPECT_EQ(HtmlColor(0x0000FF), L"FF0000");
  EXPECT_EQ(HtmlColor(0xABCDEF), L"EFCDAB");
  EXPECT_EQ(HtmlColor(0x01000000), L"000000");  // the flag byte is no colour
}

// Ann's message, changed by `edit`.
template <class F>
ChatBlock Ann(F edit) {
  ChatBlock b;
  b.text = L"hi";
  b.email = L"ann@x.org";
  b.nick_name = L"Ann & Co";
  b.icon = L"5";
  edit(b);
  return b;
}
ChatBlock Line(std::wstring text) {
  return Ann([&](ChatBlock& b) { b.text = text;
    b.header = false; });
}

class ChatBoardTest : public ::testing::Test {
 protected:
  void SetUp() override { log.StartLog(std::wstring(kAddinFolder) + L"\\Vireo.log"); }
  std::string Board() { return world.files.Get(board.BoardPath()).value_or("<none>"); }
  bool Logged(const wchar_t* text) { return !world.LogLinesWith(text).empty(); }

  testing::SimWorld world;
  Log log{world.files, world.clock};
  ChatControl board{world.files, log, kAddinFolder};
};

TEST_F(ChatBoardTest, HeadStartsThePageInTheChatFolder) {
  const std::string rest =
      "<HEAD>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"
      "<meta http-equiv=\"Description\" content=\"Created By Corvina Chat\">\r\n"
      "<TITLE>Corvina Chat Version " + std::to_string(kVersionMajor) + "." +
      std::to_string(kVersionMinor) + " At 11/22/2026 9:30:00 AM</TITLE>\r\n</HEAD>\r\n"
      "<BODY topmargin=2 bottommargin=2 leftmargin=2 rightmargin=2 BGCOLOR=\"#FFFFFF\">\r\n";
  board.InitChat(true, world.clock.Now());
  EXPECT_EQ(Board(), "<HTML Dir=RTL>\r\n" + rest);
  board.AddText(Line(L"x"));
  board.ClearChatBoard(false, world.clock.Now());
  EXPECT_EQ(Board(), "<HTML>\r\n" + rest);
}

TEST_F(ChatBoardTest, BlocksAreAppendedAsTheyAreBuilt) {
  const std::string img =
      "<IMG width=32 height=32 src=\"res://C:\\Program Files\\Corvina\\Vireo.dll/";
  const std::string ann = "<TABLE><TR><TD>" + img +
                          "a5.ico\" id=\"ann@x.org\" alt=\"Ann &amp; Co\" "
                          "CorvinaTag1=\"ann@x.org\"></TD>";
  const std::string said = "<TD valign=bottom>Ann &amp; Co Said :</TD></TR></TABLE>hi<BR>\r\n";
  const std::vector<std::pair<ChatBlock, std::string>> cases = {
      {Ann([](ChatBlock&) {}), ann + said},
      {Ann([](ChatBlock& b) { b.attachment_count = 2;
         b.entry_id = L"E\"1"; }),
       ann + "<TD>" + img + "ATTACH.ICO\" id=\"E&quot;1\" alt=\"2 Attachments From Ann &amp; Co\" "
                            "CorvinaTag2=\"1\"></TD>" + said},
      {Ann([](ChatBlock& b) { b.email.clear(); }),
       "<TABLE><TR><TD>" + img + "a0.ico\" id=\"Unknown User\" alt=\"Unknown User\" CorvinaTag1="
       "\"Unknown User\"></TD><TD valign=bottom>Unknown User Said :</TD></TR></TABLE>hi<BR>\r\n"},
      {Ann([](ChatBlock& b) { b.own = true; }),
       ann + "<TD valign=bottom>You have said</TD></TR></TABLE>hi<BR>\r\n"},
      {Ann([](ChatBlock& b) { b.header = b.new_line = false; }), "hi"},
      {Ann([](ChatBlock& b) {
         b.header = false;
         b.color = 0x0000FF;
         b.bold = b.italic = b.underline = true;
       }),
       "<B><I><U><FONT color=FF0000>hi</FONT></U></I></B><BR>\r\n"},
  };
  board.InitChat(false, world.clock.Now());
  for (const auto& [block, html] : cases) {
    const std::string before = Board();
    board.AddText(block);
    EXPECT_EQ(board.last_block(), html);
    EXPECT_EQ(Board(), before + html);  // earlier bytes untouched
  }
  EXPECT_TRUE(world.LogLines().empty());
}

TEST_F(ChatBoardTest, SaveAddsTheTailAndFailureIsLogged) {
  board.InitChat(false, world.clock.Now());
  board.AddText(Line(L"\u05E9"));
  EXPECT_TRUE(board.SaveChat(L"C:\\Saved.htm"));
  EXPECT_EQ(world.files.Get(L"C:\\Saved.htm"), Board() + "</BOdy></HTML>");
  EXPECT_TRUE(Board().ends_with("\xD7\xA9<BR>\r\n"));
  EXPECT_FALSE(board.SaveBrowserHtmlToFile(L"C:\\No Such Folder\\Saved.htm"));
  EXPECT_TRUE(Logged(L"Error Source=ChatControlSaveBrowserHtmlToFile"));
}

TEST_F(ChatBoardTest, BadInputIsLoggedAndKept) {
  // A message before any head (the board was taken away): the head comes back first.
  board.AddText(Line(std::wstring(L"a\0b", 3) + wchar_t(0xD800)));
  EXPECT_EQ(board.last_block(), "a\xEF\xBF\xBD" "b\xEF\xBF\xBD<BR>\r\n");
  EXPECT_EQ(Board().substr(0, 8), "<HTML>\r\n");
  EXPECT_TRUE(Board().ends_with(board.last_block()));
  EXPECT_TRUE(Logged(L"| Warning | AddText: a message held 2 character(s) no page can hold"));
  board.AddText(Line(std::wstring(L"c\0", 2)));
  EXPECT_TRUE(Logged(L"| Warning | AddText: a message held 1 character(s) no page can hold"));
  EXPECT_TRUE(Logged(L"was missing; a new one was started"));

  world.faults.FailCall("AppendFile", Error(61, L"Files", L"Disk full"));
  board.AddText(Line(L"lost"));
  EXPECT_TRUE(Logged(L"Error Source=ChatControlAddText\\Files; Error Description=Disk full"));
  world.files.AddDriveWithoutDisk(L'A');
  ChatControl floppy{world.files, log, L"A:\\Corvina"};
  floppy.InitChat(false, world.clock.Now());
  EXPECT_TRUE(Logged(L"Error Source=ChatControlInitChat"));
}

}  // namespace
}  // namespace corvina
