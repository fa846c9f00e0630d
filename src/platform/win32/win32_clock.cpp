#include "platform/win32/win32_clock.h"

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

}  // namespace

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
