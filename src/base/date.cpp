#include "base/date.h"

#include <cmath>
#include <cstdint>

namespace corvina {
namespace {

// Days from 1970-01-01 for a proleptic Gregorian date (H. Hinnant's algorithm).
int64_t DaysFromCivil(int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

void CivilFromDays(int64_t z, int& y, int& m, int& d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(static_cast<int64_t>(yoe) + era * 400 + (m <= 2));
}

constexpr int64_t kOleEpochDays = -25569;  // 1899-12-30 relative to 1970-01-01

}  // namespace

Date FromCivil(const CivilTime& t) {
  const int64_t days = DaysFromCivil(t.year, static_cast<unsigned>(t.month),
                                     static_cast<unsigned>(t.day)) - kOleEpochDays;
  const double frac = (t.hour * 3600.0 + t.minute * 60.0 + t.second) / 86400.0;
  // OLE dates before the epoch count the day backwards but the time forwards.
  return Date{days >= 0 ? static_cast<double>(days) + frac : static_cast<double>(days) - frac};
}

CivilTime ToCivil(Date d) {
  double whole = std::trunc(d.serial);
  double frac = std::fabs(d.serial - whole);
  int64_t secs = std::llround(frac * 86400.0);
  if (secs >= 86400) {
    secs -= 86400;
    whole += d.serial >= 0 ? 1 : -1;
  }
  CivilTime t;
  CivilFromDays(static_cast<int64_t>(whole) + kOleEpochDays, t.year, t.month, t.day);
  t.hour = static_cast<int>(secs / 3600);
  t.minute = static_cast<int>(secs / 60 % 60);
  t.second = static_cast<int>(secs % 60);
  return t;
}

Date AddSeconds(Date d, double seconds) {
  CivilTime t = ToCivil(d);
  Date base = FromCivil(CivilTime{t.year, t.month, t.day, 0, 0, 0});
  double day_secs = t.hour * 3600.0 + t.minute * 60.0 + t.second + seconds;
  double days = std::floor(day_secs / 86400.0);
  day_secs -= days * 86400.0;
  CivilTime b = ToCivil(Date{base.serial + days});
  b.hour = static_cast<int>(day_secs / 3600);
  b.minute = static_cast<int>(std::fmod(day_secs, 3600.0) / 60);
  b.second = static_cast<int>(std::fmod(day_secs, 60.0));
  return FromCivil(b);
}

}  // namespace corvina
