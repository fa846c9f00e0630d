#include "platform/win32/win32_clock.h"

#include <gtest/gtest.h>

#include <string>

#include "base/date.h"
#include "base/text.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

// The user's own short date and time formats, set as a user sets them in the regional
// settings, and put back as they were when the test ends.
class UserFormats {
 public:
  UserFormats() : date_(Read(LOCALE_SSHORTDATE)), time_(Read(LOCALE_STIMEFORMAT)) {}
  ~UserFormats() {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, date_.c_str());
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, time_.c_str());
  }
  UserFormats(const UserFormats&) = delete;
  UserFormats& operator=(const UserFormats&) = delete;

  bool Set(const wchar_t* date, const wchar_t* time) {
    return SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, date) &&
           SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, time);
  }

 private:
  static std::wstring Read(LCTYPE type) {
    wchar_t text[128] = L"";
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, 128);
    return text;
  }
  std::wstring date_, time_;
};

// Not the fixed US form: a user elsewhere reads dates in the log and messages their own way.
TEST(Win32ClockTest, GeneralDateFollowsTheUsersShortDateAndTimeFormats) {
  UserFormats formats;
  const struct {
    const wchar_t* date_format;
    const wchar_t* time_format;
    CivilTime when;
    const wchar_t* shown;
  } rows[] = {
      {L"dd.MM.yyyy", L"HH:mm:ss", {2024, 3, 5, 14, 7, 9}, L"05.03.2024 14:07:09"},
      {L"dd.MM.yyyy", L"HH:mm:ss", {2024, 3, 5, 0, 0, 0}, L"05.03.2024"},  // midnight: the date
      {L"dd.MM.yyyy", L"HH:mm:ss", {2024, 3, 5, 0, 0, 1}, L"05.03.2024 00:00:01"},
      {L"yyyy-MM-dd", L"H.mm", {2024, 12, 31, 9, 5, 0}, L"2024-12-31 9.05"},
      {L"d/M/yy", L"hh:mm:ss tt", {2031, 1, 2, 23, 59, 58}, L"2/1/31 11:59:58 PM"},
  };
  Win32Clock clock;
  for (const auto& row : rows) {
    ASSERT_TRUE(formats.Set(row.date_format, row.time_format)) << ToUtf8(row.date_format);
    EXPECT_EQ(clock.GeneralDate(FromCivil(row.when)), row.shown) << ToUtf8(row.shown);
  }
}

}  // namespace
}  // namespace corvina::win32
