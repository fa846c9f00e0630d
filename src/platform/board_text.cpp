#include "platform/board_text.h"

#include <cwchar>
#include <utility>

#include "base/text.h"

namespace corvina {
namespace {

std::wstring CodePointText(unsigned long code) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (code >= 0x10000) {
      code -= 0x10000;
      return {static_cast<wchar_t>(0xD800 + (code >> 10)),
              static_cast<wchar_t>(0xDC00 + (code & 0x3FF))};
    }
  }
  return std::wstring(1, static_cast<wchar_t>(code));
}

// The entities the board writes, and the numeric forms any page may hold; anything else is
// shown as it was written.
std::wstring Entity(std::wstring_view name) {
  static constexpr std::pair<const wchar_t*, const wchar_t*> kNamed[] = {
      {L"amp", L"&"},  {L"lt", L"<"},         {L"gt", L">"},         {L"quot", L"\""},
      {L"nbsp", L"\u00a0"}, {L"copy", L"\u00a9"}, {L"reg", L"\u00ae"}};
  for (const auto& [entity, text] : kNamed)
    if (name == entity) return text;
  if (name.size() > 1 && name[0] == L'#') {
    const bool hex = name[1] == L'x' || name[1] == L'X';
    const std::wstring digits(name.substr(hex ? 2 : 1));
    if (!digits.empty() && digits.size() <= 7 &&
        digits.find_first_not_of(hex ? L"0123456789abcdefABCDEF" : L"0123456789") ==
            std::wstring::npos) {
      const unsigned long code = std::wcstoul(digits.c_str(), nullptr, hex ? 16 : 10);
      if (code > 0 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF))
        return CodePointText(code);
    }
  }
  return L"&" + std::wstring(name) + L";";
}

// The value of the double-quoted attribute `name` in a tag, "" when it has none.
std::wstring AttributeOf(const std::wstring& tag, const std::wstring& name) {
  const std::wstring key = L" " + LCase(name) + L"=\"";
  const size_t at = LCase(tag).find(key);
  if (at == std::wstring::npos) return L"";
  const size_t begin = at + key.size();
  const size_t end = tag.find(L'"', begin);
  return tag.substr(begin, end == std::wstring::npos ? std::wstring::npos : end - begin);
}

std::wstring Decoded(const std::wstring& text) {
  std::wstring out;
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t semicolon = text[i] == L'&' ? text.find(L';', i) : std::wstring::npos;
    if (semicolon != std::wstring::npos && semicolon - i <= 10) {
      out += Entity(std::wstring_view(text).substr(i + 1, semicolon - i - 1));
      i = semicolon;
    } else {
      out += text[i];
    }
  }
  return out;
}

// Page whitespace, as a browser shows it: a run of blanks and line breaks is one blank, and
// none at the start of a line.
void AddBlank(std::wstring& out) {
  if (!out.empty() && out.back() != L' ' && out.back() != L'\n') out += L' ';
}

void EndLine(std::wstring& out) {
  while (!out.empty() && out.back() == L' ') out.pop_back();
  out += L"\r\n";
}

}  // namespace

std::wstring BoardPlainText(std::string_view html) {
  const std::wstring page = FromUtf8(html);
  const std::wstring lower = LCase(page);
  size_t i = 0;
  // The head (title, meta lines) is not part of the conversation.
  if (const size_t body = lower.find(L"<body"); body != std::wstring::npos) {
    const size_t end = page.find(L'>', body);
    i = end == std::wstring::npos ? page.size() : end + 1;
  }
  std::wstring out;
  std::wstring text;  // the run of text since the last tag, entities still in it
  auto flush = [&] {
    for (wchar_t c : Decoded(text)) {
      if (c == L' ' || c == L'\r' || c == L'\n' || c == L'\t')
        AddBlank(out);
      else
        out += c == L'\u00a0' ? L' ' : c;
    }
    text.clear();
  };
  for (; i < page.size(); ++i) {
    if (page[i] != L'<') {
      text += page[i];
      continue;
    }
    const size_t end = page.find(L'>', i);
    if (end == std::wstring::npos) break;  // a tag cut off at the end shows nothing
    flush();
    const std::wstring tag = page.substr(i, end - i);
    const std::wstring name = lower.substr(i + 1, lower.find_first_of(L" \t\r\n>", i + 1) - i - 1);
    if (name == L"table" && !out.empty() && out.back() != L'\n') {
      EndLine(out);  // a table starts on a line of its own
    } else if (name == L"br" || name == L"/table") {
      EndLine(out);
    } else if (name == L"/td") {
      AddBlank(out);
    } else if (name == L"img" && !AttributeOf(tag, L"CorvinaTag2").empty()) {
      out += L"[" + Decoded(AttributeOf(tag, L"alt")) + L"]";
      AddBlank(out);
    }
    i = end;
  }
  flush();
  while (!out.empty() && out.back() == L' ') out.pop_back();
  return out;
}

}  // namespace corvina
