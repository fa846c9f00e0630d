#pragma once
// The chat mail on the wire: a plain-text mail whose subject names the sender and whose body
// ends in a tagged footer. Other copies of the add-in recognise it by the subject and read the
// sender from the footer.
#include <cstdint>
#include <string>

namespace corvina {

inline constexpr wchar_t kChatSubjectPhrase[] = L"Chat message from: ";
// 33 characters: "-=" sixteen times and a final "-".
inline constexpr wchar_t kChatSeparator[] = L"-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-";
inline constexpr wchar_t kChatFooterTemplate[] =
    L"-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-\r\n<FOOTER>\r\n"
    L"This mail was created by a user, using the Corvina Chat Mail system. \r\n"
    L"To read more about Corvina, Visit: \r\n@HomePageLink\r\n<FOOTER>\r\n"
    L"<Email>@Email</Email>\r\n<Version>@Version</Version>";
// The sender a reply is shown under: a reply's footer is the quoted original's, not the
// replier's.
inline constexpr wchar_t kReplySender[] = L"Replyed";

// "Chat message from: " + the sender's chat address.
std::wstring ChatSubject(const std::wstring& chat_email);
// The version put into the footer: major "." minor. No receiver reads it.
std::wstring ChatVersionText();
// The message, three line breaks and the footer. The home page goes into the template first;
// "@Email" and "@Version" are then replaced over the whole body, so a message that itself
// holds those words has them replaced too.
std::wstring ComposeChatBody(const std::wstring& message, const std::wstring& home_page_link,
                             const std::wstring& chat_email, const std::wstring& version);

// The new-mail route's test: at least 3 characters and "Chat message from:" anywhere, with
// letter case.
bool IsThisChatEmail(const std::wstring& subject);
// The start-up sweep's test: "chat message from: " with its blank, in any letter case. The
// body is not looked at.
bool CheckNewChat(const std::wstring& subject, const std::wstring& body);
// At least 3 characters and the trimmed subject starts with "re:" in any case.
bool IsReplySubject(const std::wstring& subject);
// The text between the first "<Email>" and the next "</Email>"; empty when either is missing.
// Positions are 16-bit: a tag beyond position 32,767 raises an overflow.
std::wstring GetUserEmailFromBody(const std::wstring& body);
// The start-up sweep's sender: the trimmed subject's text after its last blank.
std::wstring SweepSender(const std::wstring& subject);
// The message part of a chat body: everything before the separator (less the three line
// breaks), cut to `chat_long` characters when that is at least 1. A separator in positions 1
// to 6 leaves no room for the line breaks: that raises error 5, and the message is lost
// with a log line, as it always has been.
std::wstring ChatMessageText(const std::wstring& body, int32_t chat_long);

}  // namespace corvina
