#pragma once
// The user-interface language table: every TextId in English, French, Hebrew and Russian.
// A language that has no text for a key yet shows the English one.
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "language/text_id.h"

namespace corvina {

enum class Language { kEnglish, kFrench, kHebrew, kRussian };
inline constexpr size_t kLanguageCount = 4;

// "English", "French", "Hebrew", "Russian" (the combo box's choices); nothing for any other.
std::optional<Language> LanguageFromName(std::wstring_view name);
const wchar_t* LanguageName(Language language);

// The text of `id` in `language`, or its English text when that language lacks it.
std::wstring_view LanguageText(Language language, TextId id);
// The same for a language name; an unknown name reads as English.
std::wstring_view LanguageText(std::wstring_view language_name, TextId id);

// Puts args[0] where the text says %1, args[1] for %2 ... (a translation may move them).
std::wstring FillText(std::wstring_view text, std::initializer_list<std::wstring_view> args);

// One key's texts, English first; nullptr where a language has none yet.
struct LanguageRow {
  TextId id;
  const wchar_t* text[kLanguageCount];
};
std::span<const LanguageRow> LanguageTable();

}  // namespace corvina
