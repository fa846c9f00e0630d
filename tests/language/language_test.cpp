// The language table: one row per key in key order, English complete, and the fallback and
// placeholder rules every feature's texts rely on.
#include "language/language.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace corvina {
namespace {

TEST(LanguageTest, EveryKeyHasItsRowInOrderWithAnEnglishText) {
  const auto table = LanguageTable();
  ASSERT_EQ(table.size(), static_cast<size_t>(TextId::kCount));
  for (size_t i = 0; i < table.size(); ++i) {
    EXPECT_EQ(static_cast<size_t>(table[i].id), i);
    ASSERT_NE(table[i].text[0], nullptr) << i;
    EXPECT_NE(std::wstring_view(table[i].text[0]), L"") << i;
  }
}

TEST(LanguageTest, NamesAreTheComboBoxChoicesAndAMissingTextReadsAsEnglish) {
  for (const wchar_t* name : {L"English", L"French", L"Hebrew", L"Russian"}) {
    auto language = LanguageFromName(name);
    ASSERT_TRUE(language) << ToUtf8(name);
    EXPECT_STREQ(LanguageName(*language), name);
  }
  EXPECT_FALSE(LanguageFromName(L"english"));
  EXPECT_FALSE(LanguageFromName(L"Klingon"));
  for (const wchar_t* name : {L"French", L"Klingon", L""})
    EXPECT_EQ(LanguageText(name, TextId::kMsgBoxYes), L"Yes") << ToUtf8(name);
}

TEST(LanguageTest, PlaceholdersAreFilledWhereverTheTextPutsThem) {
  struct Case {
    const wchar_t* text;
    std::initializer_list<std::wstring_view> args;
    const wchar_t* expected;
  };
  const Case cases[] = {
      {L"%1 of %2", {L"a", L"b"}, L"a of b"},
      {L"%2 before %1", {L"a", L"b"}, L"b before a"},
      {L"%1%1", {L"x"}, L"xx"},
      {L"100% sure, %3 unfilled", {L"a", L"b"}, L"100% sure, %3 unfilled"},
      {L"ends in %", {}, L"ends in %"},
      {L"You have selected %1 Emails", {L""}, L"You have selected  Emails"},
  };
  for (const Case& c : cases) EXPECT_EQ(FillText(c.text, c.args), c.expected) << ToUtf8(c.text);
}

}  // namespace
}  // namespace corvina
