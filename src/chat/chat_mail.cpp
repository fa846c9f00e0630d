#include "chat/chat_mail.h"

#include "base/error.h"
#include "base/text.h"
#include "corvina/version.h"

namespace corvina {
namespace {

// A position as a 16-bit count holds it: past 32,767 the old counter overflowed, and mails
// that large keep failing the same way rather than being read differently.
int64_t ShortPosition(int64_t position) {
  if (position > 32767) Raise(kErrOverflow, L"Overflow");
  return position;
}

}  // namespace

std::wstring ChatSubject(const std::wstring& chat_email) { return kChatSubjectPhrase + chat_email; }

std::wstring ChatVersionText() {
  return std::to_wstring(kVersionMajor) + L"." + std::to_wstring(kVersionMinor);
}

std::wstring ComposeChatBody(const std::wstring& message, const std::wstring& home_page_link,
                             const std::wstring& chat_email, const std::wstring& version) {
  std::wstring body = message + L"\r\n\r\n\r\n" +
                      Replace(kChatFooterTemplate, L"@HomePageLink", home_page_link);
  body = Replace(body, L"@Email", chat_email);
  return Replace(body, L"@Version", version);
}

bool IsThisChatEmail(const std::wstring& subject) {
  return subject.size() >= 3 && ContainsText(subject, L"Chat message from:");
}

bool CheckNewChat(const std::wstring& subject, const std::wstring& /*body*/) {
  return ContainsText(LCase(subject), LCase(kChatSubjectPhrase));
}

bool IsReplySubject(const std::wstring& subject) {
  return subject.size() >= 3 && LCase(Left(Trim(subject), 3)) == L"re:";
}

std::wstring GetUserEmailFromBody(const std::wstring& body) {
  const int64_t p = ShortPosition(InStr(body, L"<Email>"));
  if (p == 0) return L"";
  const int64_t s = ShortPosition(p + 7);
  const int64_t q = ShortPosition(InStr(s + 1, body, L"</Email>"));
  if (q == 0) return L"";
  return Mid(body, s, q - s);
}

std::wstring SweepSender(const std::wstring& subject) {
  const std::wstring trimmed = Trim(subject);
  return Mid(trimmed, InStrRev(trimmed, L" ") + 1);
}

std::wstring ChatMessageText(const std::wstring& body, int32_t chat_long) {
  const int64_t p = InStr(body, kChatSeparator);
  std::wstring text = p > 0 ? Left(body, p - 1 - 6) : body;
  if (chat_long >= 1 && text.size() > static_cast<size_t>(chat_long)) text = Left(text, chat_long);
  return text;
}

}  // namespace corvina
