#include "base/text.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace corvina {
namespace {

TEST(TextTest, NumberConversionsFollowTheClassicRules) {
  struct Case {
    const wchar_t* text;
    int32_t value;     // expected when no error
    int32_t error;     // expected error number, 0 for none
  };
  const Case cases[] = {
      {L"92", 92, 0},          {L"  -7 ", -7, 0},        {L"+15", 15, 0},
      {L"2.5", 2, 0},          {L"3.5", 4, 0},           {L"16777215", 16777215, 0},
      {L"", 0, kErrTypeMismatch}, {L"abc", 0, kErrTypeMismatch}, {L"12abc", 0, kErrTypeMismatch},
      {L"1 2", 0, kErrTypeMismatch}, {L"2147483648", 0, kErrOverflow},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(ToUtf8(c.text));
    if (c.error == 0) {
      EXPECT_EQ(ToLong(c.text), c.value);
    } else {
      try {
        ToLong(c.text);
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_EQ(e.number(), c.error);
      }
    }
  }
  EXPECT_THROW(ToInteger(L"32768"), Error);
  EXPECT_EQ(ToInteger(L"-32768"), -32768);
  EXPECT_TRUE(ToBoolean(L"true"));
  EXPECT_FALSE(ToBoolean(L" False "));
  EXPECT_TRUE(ToBoolean(L"-1"));
  EXPECT_THROW(ToBoolean(L"yes"), Error);
}

TEST(TextTest, MegabyteFigureHasNoLeadingZeroAndGroupsThousands) {
  const std::pair<double, const wchar_t*> cases[] = {
      {0.5, L".50"},        {0.0, L".00"},           {50.0, L"50.00"},
      {50.004, L"50.00"},   {50.005, L"50.01"},      {1234.5, L"1,234.50"},
      {1234567.891, L"1,234,567.89"}, {999.999, L"1,000.00"},
  };
  for (const auto& [mb, text] : cases) EXPECT_EQ(FormatMegabytes(mb), text) << mb;
}

TEST(TextTest, DatesFormatAsStampAndGeneralDate) {
  const Date d = FromCivil({2026, 3, 5, 14, 7, 9});
  EXPECT_EQ(FormatStamp(d), L"202603051407");
  EXPECT_EQ(FormatGeneralDate(d), L"3/5/2026 2:07:09 PM");
  EXPECT_EQ(FormatGeneralDate(FromCivil({2026, 3, 5, 0, 0, 0})), L"3/5/2026");
  EXPECT_EQ(FormatGeneralDate(FromCivil({2026, 3, 5, 0, 30, 0})), L"3/5/2026 12:30:00 AM");
  const CivilTime back = ToCivil(AddSeconds(d, -60 * 15));
  EXPECT_EQ(back.hour, 13);
  EXPECT_EQ(back.minute, 52);
  EXPECT_EQ(back.second, 9);
  EXPECT_EQ(ToCivil(AddSeconds(FromCivil({2026, 1, 1, 0, 0, 30}), -60)).year, 2025);
}

TEST(TextTest, PositionsAreOneBasedAndTrimRemovesBlanksOnly) {
  EXPECT_EQ(InStr(L"invoice.pdf", L"."), 8);
  EXPECT_EQ(InStr(9, L"a.b.c.d.e", L"."), 0);
  EXPECT_EQ(InStr(3, L"a.b.c", L"."), 4);
  EXPECT_EQ(InStrRev(L"report.final.pdf", L"."), 13);
  EXPECT_EQ(InStr(L"abc", L"x"), 0);
  EXPECT_EQ(Mid(L"abcdef", 3, 2), L"cd");
  EXPECT_EQ(Mid(L"abc", 5), L"");
  EXPECT_EQ(Trim(L"  a b \t "), L"a b \t");
  EXPECT_EQ(Replace(L"a;;b", L";", L"|"), L"a||b");
  EXPECT_TRUE(EqualsIgnoreCase(L"Vireo_Save...", L"VIREO_SAVE..."));
}

TEST(TextTest, BidirectionalControlsAreWrittenOut) {
  const std::pair<std::wstring, std::wstring> cases[] = {
      {L"plain \u05E9\u05DC\u05D5\u05DD.pdf", L"plain \u05E9\u05DC\u05D5\u05DD.pdf"},
      {L"invoice\u202Efdp.exe", L"invoice<U+202E>fdp.exe"},
      {L"\u202A\u202B\u202C\u202D", L"<U+202A><U+202B><U+202C><U+202D>"},
      {L"\u200E\u200F\u061C", L"<U+200E><U+200F><U+061C>"},
      {L"a\u2066b\u2067c\u2068d\u2069", L"a<U+2066>b<U+2067>c<U+2068>d<U+2069>"},
      {L"\u2065\u202F\u200D", L"\u2065\u202F\u200D"},  // neighbours that are not controls
  };
  for (const auto& [text, shown] : cases) EXPECT_EQ(RevealBidiControls(text), shown) << ToUtf8(text);
}

TEST(TextTest, Utf8RoundTripsEveryPlane) {
  const std::wstring s = L"Caf\u00e9 \u05e9\u05dc\u05d5\u05dd \u2026 \U0001F600";
  EXPECT_EQ(FromUtf8(ToUtf8(s)), s);
  EXPECT_EQ(FromUtf8("\xff"), L"\ufffd");
}

}  // namespace
}  // namespace corvina
