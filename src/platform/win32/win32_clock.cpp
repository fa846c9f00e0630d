#include "platform/win32/win32_clock.h"

#include "base/text.h"

#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

Date FromSystemTime(const SYSTEMTIME& t) {
  return FromCivil({t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond});
}

SYSTEMTIME ToSystemTime(Date d) {
  const CivilTime c = ToCivil(d);
  SYSTEMTIME t{};
  t.wYear = static_cast<WORD>(c.year);
  t.wMonth = static_cast<WORD>(c.month);
  t.wDay = static_cast<WORD>(c.day);
  t.wHour = static_cast<WORD>(c.hour);
  t.wMinute = static_cast<WORD>(c.minute);
  t.wSecond = static_cast<WORD>(c.second);
  return t;
}

// One of the user's formats for `t`; `format` is GetDateFormatEx or GetTimeFormatEx.
template <class Format>
std::wstring UserFormat(Format format, DWORD flags, const SYSTEMTIME& t) {
  const int size = format(LOCALE_NAME_USER_DEFAULT, flags, &t, nullptr, nullptr, 0);
  if (size <= 0) return {};
  std::wstring text(static_cast<size_t>(size), L'\0');
  const int written = format(LOCALE_NAME_USER_DEFAULT, flags, &t, nullptr, text.data(), size);
  text.resize(written > 0 ? static_cast<size_t>(written - 1) : 0);
  return text;
}

std::wstring DateFormatEx(const SYSTEMTIME& t) {
  return UserFormat(
      [](LPCWSTR locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR picture, LPWSTR out,
         int size) { return GetDateFormatEx(locale, flags, time, picture, out, size, nullptr); },
      DATE_SHORTDATE, t);
}

std::wstring TimeFormatEx(const SYSTEMTIME& t) {
  return UserFormat(GetTimeFormatEx, 0, t);
}

}  // namespace

std::wstring Win32Clock::GeneralDate(Date local) {
  const SYSTEMTIME t = ToSystemTime(local);
  std::wstring date = DateFormatEx(t);
  // A date outside what the user's calendar can show still gets a readable stamp.
  if (date.empty()) return FormatGeneralDate(local);
  if (t.wHour == 0 && t.wMinute == 0 && t.wSecond == 0) return date;
  return date + L" " + TimeFormatEx(t);
}

Date Win32Clock::Now() {
  SYSTEMTIME t;
  GetLocalTime(&t);
  return FromSystemTime(t);
}

Date Win32Clock::LocalToUtc(Date local) {
  const SYSTEMTIME in = ToSystemTime(local);
  SYSTEMTIME out;
  // A date Windows cannot convert (before 1601) keeps its local value: close enough for a
  // filter bound, and nothing to fail a filter over.
  if (!TzSpecificLocalTimeToSystemTime(nullptr, &in, &out)) return local;
  return FromSystemTime(out);
}

}  // namespace corvina::win32
