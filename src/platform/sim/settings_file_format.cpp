#include "platform/sim/settings_file_format.h"

#include <optional>

#include "base/text.h"

namespace corvina::sim {

namespace {

constexpr wchar_t kSource[] = L"Settings";

// Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF. (FromUtf8 turns bad
// bytes into U+FFFD silently; a settings line with them is reported instead.)
bool IsUtf8(std::string_view s) {
  for (size_t i = 0; i < s.size();) {
    auto b = static_cast<unsigned char>(s[i]);
    size_t n = b < 0x80             ? 1
               : (b & 0xE0) == 0xC0 ? 2
               : (b & 0xF0) == 0xE0 ? 3
               : (b & 0xF8) == 0xF0 ? 4
                                    : 0;
    if (n == 0 || i + n > s.size()) return false;
    uint32_t c = n == 1 ? b : b & (0x7Fu >> n);
    for (size_t k = 1; k < n; ++k) {
      auto t = static_cast<unsigned char>(s[i + k]);
      if ((t & 0xC0) != 0x80) return false;
      c = (c << 6) | (t & 0x3Fu);
    }
    static constexpr uint32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < kMin[n] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
    i += n;
  }
  return true;
}

// Values keep their backslashes (they are mostly Windows paths); only the characters a line
// cannot hold, and "%" itself, are written as %XX.
int HexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

std::wstring Unescape(std::wstring_view v) {
  std::wstring out;
  out.reserve(v.size());
  for (size_t i = 0; i < v.size(); ++i) {
    if (v[i] == L'%' && i + 2 < v.size() && HexDigit(v[i + 1]) >= 0 && HexDigit(v[i + 2]) >= 0) {
      out.push_back(static_cast<wchar_t>(HexDigit(v[i + 1]) * 16 + HexDigit(v[i + 2])));
      i += 2;
    } else {
      out.push_back(v[i]);  // a "%" without two hex digits is an ordinary character
    }
  }
  return out;
}

std::wstring Escape(std::wstring_view v) {
  std::wstring out;
  out.reserve(v.size());
  for (wchar_t c : v) {
    switch (c) {
      case L'%': out += L"%25"; break;
      case L'\n': out += L"%0A"; break;
      case L'\r': out += L"%0D"; break;
      case L'\t': out += L"%09"; break;
      default: out.push_back(c);
    }
  }
  return out;
}

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(" \t") == std::string_view::npos;
}

}  // namespace

ParsedSettings ParseSettingsFile(std::string_view text, const std::wstring& file_label) {
  ParsedSettings out;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  std::optional<std::pair<std::wstring, std::wstring>> current;  // application, section
  bool skipping = false;  // after a reported damaged header or orphan key
  auto damaged = [&](size_t number, const wchar_t* why) {
    out.problems.emplace_back(0, kSource,
                              L"Settings file " + file_label + L", line " +
                                  std::to_wstring(number) + L": " + why +
                                  L"; the line was skipped");
  };
  size_t number = 0;
  for (size_t start = 0; start <= text.size();) {
    size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view raw = text.substr(start, end - start);
    start = end + 1;
    ++number;
    if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
    if (IsBlank(raw) || raw[0] == ';' || raw[0] == '#') continue;
    bool header = raw.front() == '[' && raw.back() == ']';
    if (!IsUtf8(raw)) {
      damaged(number, L"not UTF-8 text");
      if (header) {  // the keys below it belong to no known section
        current.reset();
        skipping = true;
      }
      continue;
    }
    std::wstring line = FromUtf8(raw);
    if (header) {
      std::wstring inner = line.substr(1, line.size() - 2);
      size_t cut = inner.find(L'\\');
      current.reset();
      skipping = cut == std::wstring::npos || cut == 0 || cut + 1 == inner.size();
      if (skipping)
        damaged(number, L"a header must read [Application\\Section]");
      else
        current.emplace(inner.substr(0, cut), inner.substr(cut + 1));
      continue;
    }
    if (!current) {
      if (!skipping) damaged(number, L"a key before any [Application\\Section] header");
      skipping = true;
      continue;
    }
    size_t eq = line.find(L'=');
    if (eq == std::wstring::npos) {
      damaged(number, L"no '=' between key and value");
      continue;
    }
    out.table.Set(current->first, current->second, line.substr(0, eq),
                  Unescape(std::wstring_view(line).substr(eq + 1)));
  }
  return out;
}

std::string FormatSettingsFile(const SettingsTable& table) {
  std::wstring text =
      L"; Corvina settings (UTF-8): [Application\\Section] headers, then key=value lines.\n"
      L"; A key runs to the first '=' and keeps its blanks; in values %25 %0A %0D %09 stand for\n"
      L"; a percent sign, a line feed, a carriage return and a tab.\n";
  for (const auto& s : table.sections()) {
    text += L"\n[" + s.application + L"\\" + s.section + L"]\n";
    for (const auto& key : s.keys)
      text += key + L"=" + Escape(*table.Find(s.application, s.section, key)) + L"\n";
  }
  return ToUtf8(text);
}

std::wstring UnstorableReason(const std::wstring& application, const std::wstring& section,
                              const std::wstring& key) {
  auto breaks = [](const std::wstring& s) {
    return s.find_first_of(L"\r\n") != std::wstring::npos;
  };
  if (application.empty() || section.empty()) return L"an empty application or section name";
  if (application.find(L'\\') != std::wstring::npos) return L"a '\\' in the application name";
  if (breaks(application) || breaks(section) || breaks(key)) return L"a line break in a name";
  if (key.find(L'=') != std::wstring::npos) return L"a '=' in the key";
  if (!key.empty() && std::wstring_view(L"[;#").find(key[0]) != std::wstring_view::npos)
    return L"a key starting with '[', ';' or '#'";
  return {};
}

}  // namespace corvina::sim
