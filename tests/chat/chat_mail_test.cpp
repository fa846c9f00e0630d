#include "chat/chat_mail.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/error.h"
#include "base/text.h"
#include "chat/chat_colors.h"

namespace corvina {
namespace {

// The two routes test subjects differently on purpose: the new-mail route wants the phrase
// with letter case and without its blank, the start-up sweep any case with the blank.
TEST(ChatMail, SubjectTestsOfTheTwoRoutes) {
  const struct {
    const wchar_t* subject;
    bool is_chat, sweep_chat, reply;
  } cases[] = {
      {L"Chat message from: anna@example.com", true, true, false},
      {L"Chat message from:anna@example.com", true, false, false},
      {L"chat message from: anna@example.com", false, true, false},
      {L"CHAT MESSAGE FROM: x", false, true, false},
      {L"RE: Chat message from: anna@example.com", true, true, true},
      {L"  re:Chat message from: a", true, true, true},
      {L"Re", false, false, false},
      {L"re:", false, false, true},
      {L"ab", false, false, false},
      {L"Lunch", false, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.subject));
    EXPECT_EQ(IsThisChatEmail(c.subject), c.is_chat);
    EXPECT_EQ(CheckNewChat(c.subject, L"ignored"), c.sweep_chat);
    EXPECT_EQ(IsReplySubject(c.subject), c.reply);
  }
}

TEST(ChatMail, BodyCarriesTheMessageAndTheFooterInItsOrder) {
  const std::wstring body =
      ComposeChatBody(L"Hi @Email, v@Version", L"http://home.example", L"anna@example.com", L"1.0");
  EXPECT_EQ(body,
            L"Hi anna@example.com, v1.0\r\n\r\n\r\n"
            L"-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-\r\n<FOOTER>\r\n"
            L"This mail was created by a user, using the Corvina Chat Mail system. \r\n"
            L"To read more about Corvina, Visit: \r\nhttp://home.example\r\n<FOOTER>\r\n"
            L"<Email>anna@example.com</Email>\r\n<Version>1.0</Version>");
  // A home page that itself holds "@Email" is replaced afterwards like the rest of the body.
  EXPECT_NE(ComposeChatBody(L"", L"@Email", L"b@x.example", L"1").find(L"Visit: \r\nb@x.example\r\n"),
            std::wstring::npos);
  EXPECT_EQ(ChatSubject(L"anna@example.com"), L"Chat message from: anna@example.com");
  // Read back by the receiver: message, sender.
  EXPECT_EQ(ChatMessageText(body, 0), L"Hi anna@example.com, v1.0");
  EXPECT_EQ(GetUserEmailFromBody(body), L"anna@example.com");
}

// The sender is read from the footer with 16-bit positions: a tag past position 32,767 fails
// (the caller logs it) rather than being read at a wrong place.
TEST(ChatMail, SenderFromTheFooter) {
  const std::wstring pad(32760, L'x');
  const struct {
    std::wstring body;
    std::optional<std::wstring> sender;  // nothing: the overflow error
  } cases[] = {
      {L"<Email>a@b.example</Email>", L"a@b.example"},
      {L"text <Email> a@b </Email> <Email>c@d</Email>", L" a@b "},
      {L"<Email></Email>", L""},
      {L"<Email>a@b.example", L""},
      {L"no footer", L""},
      {L"</Email><Email>x", L""},
      {L"<email>a@b</email>", L""},
      {std::wstring(32753, L'x') + L"<Email>a</Email>", L"a"},  // "</Email>" at 32,762
      {pad + L"xx<Email>a</Email>", std::nullopt},              // s = 32,770
      {std::wstring(32768, L'x') + L"<Email>a</Email>", std::nullopt},
      {L"<Email>" + pad + L"</Email>", std::nullopt},
      {L"<Email>" + std::wstring(32759, L'x') + L"</Email>", std::wstring(32759, L'x')},  // at 32,767
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.body.substr(0, 40)));
    if (c.sender) {
      EXPECT_EQ(GetUserEmailFromBody(c.body), *c.sender);
    } else {
      try {
        GetUserEmailFromBody(c.body);
        ADD_FAILURE() << "no overflow";
      } catch (const Error& e) {
        EXPECT_EQ(e.number(), kErrOverflow);
      }
    }
  }
}

TEST(ChatMail, MessageTextIsCutAtTheSeparatorAndChatLong) {
  const std::wstring sep = kChatSeparator;
  const struct {
    std::wstring body;
    int32_t chat_long;
    std::optional<std::wstring> text;  // nothing: error 5, the display is lost
  } cases[] = {
      {L"hello\r\n\r\n\r\n" + sep + L"\r\nfooter", 0, L"hello"},
      {L"hello world", 0, L"hello world"},
      {L"hello world", 5, L"hello"},
      {L"hello", 5, L"hello"},
      {L"hello world", -1, L"hello world"},
      {L"abcdef" + sep, 0, L""},  // separator at 7
      {L"abcde" + sep, 0, std::nullopt},
      {sep + L"tail", 0, std::nullopt},
      {L"a" + sep + L" " + sep, 3, std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.body.substr(0, 20)));
    if (c.text) {
      EXPECT_EQ(ChatMessageText(c.body, c.chat_long), *c.text);
    } else {
      EXPECT_THROW(ChatMessageText(c.body, c.chat_long), Error);
    }
  }
  EXPECT_EQ(SweepSender(L"  Chat message from: anna@example.com  "), L"anna@example.com");
  EXPECT_EQ(SweepSender(L"nospace"), L"nospace");
}

TEST(ChatColors, NamesAndValues) {
  const std::pair<const wchar_t*, ChatColor> table[] = {
      {L"BLACK", 0x000000},  {L"MAROON", 0x000080}, {L"GREEN", 0x008000}, {L"OLIVE", 0x008080},
      {L"NAVY", 0x800000},   {L"PURPLE", 0x800080}, {L"TEAL", 0x808000},  {L"GRAY", 0x808080},
      {L"SILVER", 0xC0C0C0}, {L"RED", 0x0000FF},    {L"LIME", 0x00FF00},  {L"YELLOW", 0x00FFFF},
      {L"BLUE", 0xFF0000},   {L"FUSCHIA", 0xFF00FF}, {L"AQUA", 0xFFFF00}, {L"WHITE", 0xFFFFFF}};
  for (const auto& [name, value] : table) {
    EXPECT_EQ(GetColorFromString(name), value) << ToUtf8(name);
    EXPECT_EQ(GetColorFromString(LCase(name)), value) << ToUtf8(name);
    EXPECT_EQ(GetStringFromColor(value), name);
  }
  EXPECT_EQ(GetColorFromString(L"Fuschia"), 0xFF00FFu);
  EXPECT_EQ(GetColorFromString(L"fuchsia"), 0u);  // the usual spelling is not a name here
  EXPECT_EQ(GetColorFromString(L" red"), 0u);
  EXPECT_EQ(GetStringFromColor(0x123456), L"BLACK");
  std::vector<ColorSwatch> images;
  CreateColorImage(images, L"Teal");
  ASSERT_EQ(images.size(), 1u);
  EXPECT_EQ(images[0].key, L"TEAL");
  EXPECT_EQ(images[0].color, 0x808000u);
  // The pickers offer fifteen names: white left out, "Fuschia" as spelled.
  EXPECT_EQ(kChatColorChoices.size(), 15u);
  for (const wchar_t* choice : kChatColorChoices) EXPECT_NE(UCase(choice), L"WHITE");
  EXPECT_EQ(std::wstring(kChatColorChoices[13]), L"Fuschia");
}

}  // namespace
}  // namespace corvina
