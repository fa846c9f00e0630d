#include "base/text.h"

#include <cmath>
#include <cwchar>
#include <cwctype>
#include <limits>

#include "base/error.h"

namespace corvina {

std::wstring LTrim(std::wstring_view s) {
  size_t b = 0;
  while (b < s.size() && s[b] == L' ') ++b;
  return std::wstring(s.substr(b));
}

std::wstring RTrim(std::wstring_view s) {
  size_t e = s.size();
  while (e > 0 && s[e - 1] == L' ') --e;
  return std::wstring(s.substr(0, e));
}

std::wstring Trim(std::wstring_view s) {
  size_t b = 0;
  size_t e = s.size();
  while (b < e && s[b] == L' ') ++b;
  while (e > b && s[e - 1] == L' ') --e;
  return std::wstring(s.substr(b, e - b));
}

int64_t InStr(int64_t start, std::wstring_view s, std::wstring_view find) {
  if (start < 1) Raise(5, L"Invalid procedure call or argument");
  if (static_cast<size_t>(start) > s.size() + 1) return 0;
  size_t pos = s.find(find, static_cast<size_t>(start - 1));
  return pos == std::wstring_view::npos ? 0 : static_cast<int64_t>(pos) + 1;
}

int64_t InStrRev(std::wstring_view s, std::wstring_view find) {
  size_t pos = s.rfind(find);
  return pos == std::wstring_view::npos ? 0 : static_cast<int64_t>(pos) + 1;
}

std::wstring Mid(std::wstring_view s, int64_t start) {
  if (start < 1) Raise(5, L"Invalid procedure call or argument");
  if (static_cast<size_t>(start) > s.size()) return {};
  return std::wstring(s.substr(static_cast<size_t>(start - 1)));
}

std::wstring Mid(std::wstring_view s, int64_t start, int64_t length) {
  if (start < 1 || length < 0) Raise(5, L"Invalid procedure call or argument");
  if (static_cast<size_t>(start) > s.size()) return {};
  return std::wstring(s.substr(static_cast<size_t>(start - 1), static_cast<size_t>(length)));
}

std::wstring Left(std::wstring_view s, int64_t length) {
  if (length < 0) Raise(5, L"Invalid procedure call or argument");
  return std::wstring(s.substr(0, static_cast<size_t>(length)));
}

std::wstring Right(std::wstring_view s, int64_t length) {
  if (length < 0) Raise(5, L"Invalid procedure call or argument");
  size_t n = std::min(s.size(), static_cast<size_t>(length));
  return std::wstring(s.substr(s.size() - n));
}

std::wstring LCase(std::wstring_view s) {
  std::wstring r(s);
  for (auto& c : r) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return r;
}

std::wstring UCase(std::wstring_view s) {
  std::wstring r(s);
  for (auto& c : r) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return r;
}

std::wstring Replace(std::wstring_view s, std::wstring_view find, std::wstring_view with) {
  if (find.empty()) return std::wstring(s);
  std::wstring r;
  size_t at = 0;
  for (size_t pos; (pos = s.find(find, at)) != std::wstring_view::npos; at = pos + find.size()) {
    r.append(s.substr(at, pos - at));
    r.append(with);
  }
  r.append(s.substr(at));
  return r;
}

bool ContainsText(std::wstring_view s, std::wstring_view find) {
  return s.find(find) != std::wstring_view::npos;
}

bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i])))
      return false;
  }
  return true;
}

namespace {

// Parses an optionally signed decimal number with blanks around it; false when the text is
// not a number at all.
bool ParseNumber(std::wstring_view text, double& out) {
  std::wstring s = Trim(text);
  if (s.empty()) return false;
  size_t i = 0;
  bool neg = false;
  if (s[i] == L'+' || s[i] == L'-') {
    neg = s[i] == L'-';
    ++i;
  }
  bool digits = false;
  double v = 0;
  while (i < s.size() && s[i] >= L'0' && s[i] <= L'9') {
    v = v * 10 + (s[i] - L'0');
    digits = true;
    ++i;
  }
  if (i < s.size() && s[i] == L'.') {
    ++i;
    double scale = 0.1;
    while (i < s.size() && s[i] >= L'0' && s[i] <= L'9') {
      v += (s[i] - L'0') * scale;
      scale /= 10;
      digits = true;
      ++i;
    }
  }
  if (!digits || i != s.size()) return false;
  out = neg ? -v : v;
  return true;
}

double RoundHalfEven(double v) {
  double r = std::nearbyint(v);  // default rounding mode is to nearest, ties to even
  return r;
}

}  // namespace

int32_t ToLong(std::wstring_view s) {
  double v;
  if (!ParseNumber(s, v)) Raise(kErrTypeMismatch, L"Type mismatch");
  v = RoundHalfEven(v);
  if (v < std::numeric_limits<int32_t>::min() || v > std::numeric_limits<int32_t>::max())
    Raise(kErrOverflow, L"Overflow");
  return static_cast<int32_t>(v);
}

int16_t ToInteger(std::wstring_view s) {
  double v;
  if (!ParseNumber(s, v)) Raise(kErrTypeMismatch, L"Type mismatch");
  v = RoundHalfEven(v);
  if (v < std::numeric_limits<int16_t>::min() || v > std::numeric_limits<int16_t>::max())
    Raise(kErrOverflow, L"Overflow");
  return static_cast<int16_t>(v);
}

bool ToBoolean(std::wstring_view s) {
  std::wstring t = Trim(s);
  if (EqualsIgnoreCase(t, L"True")) return true;
  if (EqualsIgnoreCase(t, L"False")) return false;
  double v;
  if (!ParseNumber(t, v)) Raise(kErrTypeMismatch, L"Type mismatch");
  return v != 0;
}

std::wstring BoolText(bool b) { return b ? L"True" : L"False"; }

namespace {
std::wstring Pad2(int v) {
  std::wstring r = std::to_wstring(v);
  return r.size() < 2 ? L"0" + r : r;
}
}  // namespace

std::wstring FormatStamp(Date d) {
  CivilTime t = ToCivil(d);
  std::wstring y = std::to_wstring(t.year);
  while (y.size() < 4) y.insert(0, 1, L'0');
  return y + Pad2(t.month) + Pad2(t.day) + Pad2(t.hour) + Pad2(t.minute);
}

std::wstring FormatGeneralDate(Date d) {
  CivilTime t = ToCivil(d);
  std::wstring r = std::to_wstring(t.month) + L"/" + std::to_wstring(t.day) + L"/" +
                   std::to_wstring(t.year);
  if (t.hour == 0 && t.minute == 0 && t.second == 0) return r;
  int h12 = t.hour % 12 == 0 ? 12 : t.hour % 12;
  return r + L" " + std::to_wstring(h12) + L":" + Pad2(t.minute) + L":" + Pad2(t.second) +
         (t.hour < 12 ? L" AM" : L" PM");
}

std::wstring RevealBidiControls(std::wstring_view text) {
  auto is_control = [](wchar_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
  };
  std::wstring out;
  out.reserve(text.size());
  for (wchar_t c : text) {
    if (!is_control(c)) {
      out += c;
      continue;
    }
    wchar_t code[8];
    std::swprintf(code, 8, L"%04X", static_cast<unsigned>(c));
    out += L"<U+" + std::wstring(code) + L">";
  }
  return out;
}

std::wstring FormatMegabytes(double megabytes) {
  bool neg = megabytes < 0;
  double v = std::fabs(megabytes);
  long long cents = std::llround(v * 100.0);
  long long whole = cents / 100;
  int frac = static_cast<int>(cents % 100);
  std::wstring digits = whole == 0 ? L"" : std::to_wstring(whole);
  std::wstring grouped;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) grouped.push_back(L',');
    grouped.push_back(digits[i]);
  }
  return (neg ? L"-" : L"") + grouped + L"." + Pad2(frac);
}

std::string ToUtf8(std::wstring_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    uint32_t c = static_cast<uint32_t>(s[i]);
    if constexpr (sizeof(wchar_t) == 2) {
      if (c >= 0xD800 && c <= 0xDBFF && i + 1 < s.size()) {
        uint32_t lo = static_cast<uint32_t>(s[i + 1]);
        if (lo >= 0xDC00 && lo <= 0xDFFF) {
          c = 0x10000 + ((c - 0xD800) << 10) + (lo - 0xDC00);
          ++i;
        }
      }
    }
    if (c < 0x80) {
      out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (c >> 6)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (c >> 12)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (c >> 18)));
      out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }
  return out;
}

std::wstring FromUtf8(std::string_view s) {
  std::wstring out;
  out.reserve(s.size());
  size_t i = 0;
  auto cont = [&](size_t k) {
    return k < s.size() && (static_cast<unsigned char>(s[k]) & 0xC0) == 0x80;
  };
  while (i < s.size()) {
    unsigned char b = static_cast<unsigned char>(s[i]);
    uint32_t c;
    size_t n;
    if (b < 0x80) {
      c = b;
      n = 1;
    } else if ((b & 0xE0) == 0xC0 && cont(i + 1)) {
      c = ((b & 0x1Fu) << 6) | (static_cast<unsigned char>(s[i + 1]) & 0x3Fu);
      n = 2;
    } else if ((b & 0xF0) == 0xE0 && cont(i + 1) && cont(i + 2)) {
      c = ((b & 0x0Fu) << 12) | ((static_cast<unsigned char>(s[i + 1]) & 0x3Fu) << 6) |
          (static_cast<unsigned char>(s[i + 2]) & 0x3Fu);
      n = 3;
    } else if ((b & 0xF8) == 0xF0 && cont(i + 1) && cont(i + 2) && cont(i + 3)) {
      c = ((b & 0x07u) << 18) | ((static_cast<unsigned char>(s[i + 1]) & 0x3Fu) << 12) |
          ((static_cast<unsigned char>(s[i + 2]) & 0x3Fu) << 6) |
          (static_cast<unsigned char>(s[i + 3]) & 0x3Fu);
      n = 4;
    } else {
      c = 0xFFFD;  // an invalid byte becomes the replacement character
      n = 1;
    }
    if (c >= 0x10000 && sizeof(wchar_t) == 2) {
      c -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (c >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (c & 0x3FF)));
    } else {
      out.push_back(static_cast<wchar_t>(c));
    }
    i += n;
  }
  return out;
}

}  // namespace corvina
