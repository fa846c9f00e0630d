#include "platform/board_text.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "chat/chat_board.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

// The fallback view reads the page the board really writes: each row is one block as the
// board writes it, and the text a person must still be able to read from it.
TEST(ChatBoardText, EveryBlockReadsAsItsCaptionAndMessage) {
  testing::SimWorld world;
  Log log{world.files, world.clock};
  ChatControl board{world.files, log, testing::kAddinFolder};
  struct Row {
    ChatBlock block;
    std::wstring text;
  };
  auto block = [](std::wstring text, std::wstring email, std::wstring nick) {
    ChatBlock b;
    b.text = std::move(text);
    b.email = std::move(email);
    b.nick_name = std::move(nick);
    return b;
  };
  ChatBlock hostile = block(L"a<b & c  \"d\"\r\nnext\tline", L"ben@example.com", L"Ben <b>");
  hostile.color = 0xFF;
  hostile.bold = true;
  ChatBlock attached = block(L"see www.x.org and a@b.org", L"ann@example.com", L"Ann");
  attached.attachment_count = 2;
  attached.entry_id = L"00AB";
  const ChatBlock unknown = block(L"\u05e9\u05dc\u05d5\u05dd \U0001F600 \u00a9", L"", L"");
  ChatBlock continued = block(L"no header", L"ann@example.com", L"Ann");
  continued.new_line = false;
  continued.header = false;
  const Row rows[] = {
      {hostile, L"Ben <b> Said :\r\na<b & c  \"d\"\r\nnext     line\r\n"},
      {attached, L"[2 Attachments From Ann] Ann Said :\r\nsee www.x.org and a@b.org\r\n"},
      {unknown, L"Unknown User Said :\r\n\u05e9\u05dc\u05d5\u05dd \U0001F600 \u00a9\r\n"},
      {continued, L"no header"},
  };
  board.InitChat(false, Date{});
  std::wstring all;
  for (const Row& row : rows) {
    board.AddText(row.block);
    EXPECT_EQ(BoardPlainText(board.last_block()), row.text) << row.text;
    all += row.text;
  }
  // The whole page: the head is left out, the blocks read one after another, and a speaker
  // after a message without a line break starts a line of his own.
  board.AddText(attached);
  EXPECT_EQ(BoardPlainText(world.files.Get(board.BoardPath()).value_or("")),
            all + L"\r\n" + rows[1].text);
}

TEST(ChatBoardText, EntitiesAndBrokenMarkup) {
  const std::pair<const char*, std::wstring> rows[] = {
      {"&#65;&#x42;&#x1F600;&amp;lt;&#39;&nbsp;&nbsp;x", L"AB\U0001F600&lt;'  x"},
      {"&bogus; &#xD800; &#0; & alone", L"&bogus; &#xD800; &#0; & alone"},
      {"  lead <B>bold</B>   runs\r\n  of  blanks  ", L"lead bold runs of blanks"},
      {"cut <IMG src=\"x", L"cut"},
      {"<body><p>after body</p>", L"after body"},
  };
  for (const auto& [html, text] : rows) EXPECT_EQ(BoardPlainText(html), text) << html;
}

}  // namespace
}  // namespace corvina
