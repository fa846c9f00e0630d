#include "language/language.h"

namespace corvina {
namespace {

constexpr const wchar_t* kNames[kLanguageCount] = {L"English", L"French", L"Hebrew", L"Russian"};

}  // namespace

std::optional<Language> LanguageFromName(std::wstring_view name) {
  for (size_t i = 0; i < kLanguageCount; ++i)
    if (name == kNames[i]) return static_cast<Language>(i);
  return std::nullopt;
}

const wchar_t* LanguageName(Language language) { return kNames[static_cast<size_t>(language)]; }

std::wstring_view LanguageText(Language language, TextId id) {
  const LanguageRow& row = LanguageTable()[static_cast<size_t>(id)];
  const wchar_t* text = row.text[static_cast<size_t>(language)];
  return text ? text : row.text[0];
}

std::wstring_view LanguageText(std::wstring_view language_name, TextId id) {
  return LanguageText(LanguageFromName(language_name).value_or(Language::kEnglish), id);
}

std::wstring FillText(std::wstring_view text, std::initializer_list<std::wstring_view> args) {
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t next = i + 1 < text.size() ? text[i + 1] : L'\0';
    const size_t n = static_cast<size_t>(next - L'1');
    if (text[i] == L'%' && next >= L'1' && next <= L'9' && n < args.size()) {
      out += args.begin()[n];
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}

}  // namespace corvina
