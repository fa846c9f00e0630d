#include "simulator/mail/mail_date.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "simulator/mail/mime_text.h"

namespace corvina::simulator::mail {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {"jan", "feb", "mar", "apr", "may", "jun",
                                                      "jul", "aug", "sep", "oct", "nov", "dec"};

std::optional<int> Number(std::string_view s) {
  if (s.empty() || s.size() > 4) return std::nullopt;
  int n = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    n = n * 10 + (c - '0');
  }
  return n;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

int DaysIn(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

}  // namespace

std::optional<CivilTime> ParseMailDate(std::string_view text) {
  std::vector<std::string_view> words;
  for (size_t i = 0; i < text.size();) {
    while (i < text.size() && (IsBlank(text[i]) || text[i] == ',')) ++i;
    size_t end = i;
    while (end < text.size() && !IsBlank(text[end]) && text[end] != ',') ++end;
    if (end > i) words.push_back(text.substr(i, end - i));
    i = end;
  }
  std::optional<int> day, month, year, hour, minute, second;
  for (std::string_view w : words) {
    if (w.find(':') != std::string_view::npos && !hour) {
      std::vector<std::optional<int>> parts;
      for (size_t from = 0;;) {
        const size_t colon = w.find(':', from);
        parts.push_back(Number(w.substr(from, colon - from)));
        if (colon == std::string_view::npos) break;
        from = colon + 1;
      }
      if (parts.size() < 2 || parts.size() > 3 || !parts[0] || !parts[1]) continue;
      hour = parts[0], minute = parts[1];
      second = parts.size() == 3 && parts[2] ? *parts[2] : 0;
    } else if (!month && IsLetter(w[0])) {
      const auto found = std::find(kMonths.begin(), kMonths.end(), Lower(w.substr(0, 3)));
      if (found != kMonths.end()) month = static_cast<int>(found - kMonths.begin()) + 1;
    } else if (std::optional<int> n = Number(w)) {
      if (!year && day && month) {
        // After day and month: the year, in any of the widths old programs wrote.
        year = w.size() <= 2 ? (*n < 50 ? 2000 + *n : 1900 + *n) : w.size() == 3 ? 1900 + *n : *n;
      } else if (!year && w.size() == 4) {
        year = n;
      } else if (!day) {
        day = n;
      }
    }
  }
  if (!day || !month || !year || !hour) return std::nullopt;  // the minute comes with the hour
  if (*year < 1900 || *day < 1 || *day > DaysIn(*year, *month) || *hour > 23 ||
      *minute > 59 || *second > 60)
    return std::nullopt;
  return CivilTime{*year, *month, *day, *hour, *minute, std::min(*second, 59)};
}

}  // namespace corvina::simulator::mail
