#pragma once
// Dates as Outlook and the classic runtime hold them: an OLE Automation date, days since
// 1899-12-30 with the time of day as the fraction. A VARIANT of type VT_DATE carries exactly
// this value, so dates cross the COM boundary unchanged.
#include <compare>

namespace corvina {

struct CivilTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

struct Date {
  double serial = 0.0;
  auto operator<=>(const Date&) const = default;
};

Date FromCivil(const CivilTime& t);
// Rounded to the nearest second, as the classic runtime shows dates.
CivilTime ToCivil(Date d);
Date AddSeconds(Date d, double seconds);

}  // namespace corvina
