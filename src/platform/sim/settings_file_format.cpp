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

// U+0001 cannot occur in a registry name, so the joined names are unambiguous.
std::wstring SectionFold(const std::wstring& application, const std::wstring& section) {
  return UCase(application) + L'\x1' + UCase(section);
}

std::wstring KeyFold(const std::wstring& section_fold, const std::wstring& key) {
  return section_fold + L'\x1' + UCase(key);
}

// The damaged line as the log shows it, cut short: one runaway line must not flood the log.
std::wstring Quoted(const std::wstring& line) {
  constexpr size_t kLongest = 40;
  return L"\"" + (line.size() > kLongest ? line.substr(0, kLongest) + L"..." : line) + L"\"";
}

constexpr wchar_t kFormatComment[] =
    L"; Corvina settings (UTF-8): [Application\\Section] headers, then key=value lines.\n"
    L"; A key runs to the first '=' and keeps its blanks; in values %25 %0A %0D %09 stand for\n"
    L"; a percent sign, a line feed, a carriage return and a tab.\n";

}  // namespace

ParsedSettings ParseSettingsFile(std::string_view text, const std::wstring& file_label) {
  ParsedSettings out;
  SettingsLayout& layout = out.layout;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") {
    text.remove_prefix(3);
    layout.bom = true;
  }
  std::optional<std::pair<std::wstring, std::wstring>> current;  // application, section
  std::wstring current_fold;
  bool skipping = false;  // after a reported damaged header or orphan key
  auto damaged = [&](const std::wstring& why, bool with_keys_below) {
    out.problems.emplace_back(0, kSource,
                              L"Settings file " + file_label + L", line " +
                                  std::to_wstring(layout.lines.size()) + L": skipped" +
                                  (with_keys_below ? L" up to the next header (" : L" (") + why +
                                  L")");
  };
  for (size_t start = 0; start < text.size();) {
    SettingsLine& entry = layout.lines.emplace_back();
    size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view body = text.substr(start, end - start);
    const bool cr = !body.empty() && body.back() == '\r';
    if (cr) body.remove_suffix(1);
    entry.text = body;
    entry.eol = end < text.size() ? (cr ? "\r\n" : "\n") : (cr ? "\r" : "");
    start = end + 1;
    const std::string_view raw = entry.text;
    if (IsBlank(raw) || raw[0] == ';' || raw[0] == '#') continue;
    // A damaged line inside a section still belongs to it: new keys go below it.
    auto extend_section = [&] {
      if (current) layout.section_ends[current_fold] = layout.lines.size() - 1;
    };
    const bool header = raw.front() == '[' && raw.back() == ']';
    if (!IsUtf8(raw)) {
      damaged(L"not UTF-8 text", header);
      if (header) {  // the keys below it belong to no known section
        current.reset();
        skipping = true;
      } else {
        extend_section();
      }
      continue;
    }
    std::wstring line = FromUtf8(raw);
    if (header) {
      std::wstring inner = line.substr(1, line.size() - 2);
      size_t cut = inner.find(L'\\');
      current.reset();
      skipping = cut == std::wstring::npos || cut == 0 || cut + 1 == inner.size();
      if (skipping) {
        damaged(Quoted(line) + L" does not read [Application\\Section]", true);
        continue;
      }
      current.emplace(inner.substr(0, cut), inner.substr(cut + 1));
      current_fold = SectionFold(current->first, current->second);
      layout.section_ends[current_fold] = layout.lines.size() - 1;
      entry.kind = SettingsLine::Kind::kHeader;
      entry.application = current->first;
      entry.section = current->second;
      continue;
    }
    if (!current) {
      if (!skipping)
        damaged(Quoted(line) + L" comes before any [Application\\Section] header", true);
      skipping = true;
      continue;
    }
    extend_section();
    size_t eq = line.find(L'=');
    if (eq == std::wstring::npos) {
      damaged(Quoted(line) + L" has no \"=\"", false);
      continue;
    }
    entry.kind = SettingsLine::Kind::kKey;
    entry.application = current->first;
    entry.section = current->second;
    entry.key = line.substr(0, eq);
    entry.value = Unescape(std::wstring_view(line).substr(eq + 1));
    out.table.Set(entry.application, entry.section, entry.key, entry.value);
  }
  return out;
}

std::string FormatSettingsFile(const SettingsLayout& layout, const SettingsTable& table) {
  const std::vector<SettingsLine>& lines = layout.lines;
  // The line each key is read from: of a key written twice, the later.
  std::unordered_map<std::wstring, size_t> key_lines;
  for (size_t i = 0; i < lines.size(); ++i)
    if (lines[i].kind == SettingsLine::Kind::kKey)
      key_lines[KeyFold(SectionFold(lines[i].application, lines[i].section), lines[i].key)] = i;

  // New keys, by the line they follow; keys of sections the file lacks go to the end.
  std::unordered_map<size_t, std::vector<std::wstring>> inserted;
  std::vector<std::wstring> appended;
  for (const SettingsTable::Section& s : table.sections()) {
    const std::wstring fold = SectionFold(s.application, s.section);
    std::vector<std::wstring> added;
    for (const std::wstring& key : s.keys)
      if (!key_lines.contains(KeyFold(fold, key)))
        added.push_back(key + L"=" + Escape(*table.Find(s.application, s.section, key)));
    if (added.empty()) continue;
    if (auto end = layout.section_ends.find(fold); end != layout.section_ends.end()) {
      auto& after = inserted[end->second];
      after.insert(after.end(), added.begin(), added.end());
    } else {
      appended.push_back(L"");
      appended.push_back(L"[" + s.application + L"\\" + s.section + L"]");
      appended.insert(appended.end(), added.begin(), added.end());
    }
  }

  // New lines follow the file's own line breaks.
  std::string newline = "\n";
  for (const SettingsLine& line : lines)
    if (line.eol.ends_with('\n')) {
      newline = line.eol;
      break;
    }
  std::string out = layout.bom ? "\xEF\xBB\xBF" : "";
  if (lines.empty()) {
    for (std::wstring_view rest = kFormatComment; !rest.empty();) {
      size_t cut = rest.find(L'\n');
      out += ToUtf8(rest.substr(0, cut)) + newline;
      rest.remove_prefix(cut + 1);
    }
  } else if (!appended.empty() && IsBlank(lines.back().text)) {
    appended.erase(appended.begin());  // the file already ends in a blank line
  }
  for (size_t i = 0; i < lines.size(); ++i) {
    const SettingsLine& line = lines[i];
    std::string text = line.text;
    if (line.kind == SettingsLine::Kind::kKey &&
        key_lines[KeyFold(SectionFold(line.application, line.section), line.key)] == i) {
      const std::wstring* now = table.Find(line.application, line.section, line.key);
      if (now && *now != line.value) text = ToUtf8(line.key + L"=" + Escape(*now));
    }
    auto after = inserted.find(i);
    const bool more = i + 1 < lines.size() || after != inserted.end() || !appended.empty();
    out += text + (more && !line.eol.ends_with('\n') ? newline : line.eol);
    if (after != inserted.end())
      for (const std::wstring& added : after->second) out += ToUtf8(added) + newline;
  }
  for (const std::wstring& added : appended) out += ToUtf8(added) + newline;
  return out;
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
