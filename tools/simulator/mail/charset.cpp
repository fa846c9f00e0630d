#include "simulator/mail/charset.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <string>

#include "simulator/mail/mime_text.h"

namespace corvina::simulator::mail {
namespace {

// windows-1252 for 0x80..0x9F; the five holes keep their Latin-1 control characters.
constexpr char16_t kWindows1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// Names mail programs write that this machine's converter spells differently.
struct Alias {
  std::string_view written, known;
};
constexpr Alias kAliases[] = {
    {"iso-8859-8-i", "ISO-8859-8"},   {"iso-8859-8-e", "ISO-8859-8"},
    {"ks_c_5601-1987", "CP949"},      {"gb2312", "GBK"},  // senders write GBK as gb2312
    {"x-gbk", "GBK"},                 {"x-sjis", "SHIFT_JIS"},
    {"unicode-1-1-utf-8", "UTF-8"},
};

std::string ConverterName(std::string_view charset) {
  std::string name = Lower(Trim(charset));
  if (size_t star = name.find('*'); star != std::string::npos) name.resize(star);  // a language
  for (const Alias& alias : kAliases)
    if (name == alias.written) return std::string(alias.known);
  return name;
}

}  // namespace

void AppendUtf8(std::string& out, uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

bool IsValidUtf8(std::string_view s) {
  for (size_t i = 0; i != s.size();) {
    const uint32_t c = static_cast<unsigned char>(s[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    size_t n;
    uint32_t code, least;
    if ((c & 0xE0) == 0xC0) {
      n = 1, code = c & 0x1F, least = 0x80;
    } else if ((c & 0xF0) == 0xE0) {
      n = 2, code = c & 0x0F, least = 0x800;
    } else if ((c & 0xF8) == 0xF0) {
      n = 3, code = c & 0x07, least = 0x10000;
    } else {
      return false;
    }
    if (s.size() - i <= n) return false;
    for (size_t k = 1; k <= n; ++k) {
      const uint32_t b = static_cast<unsigned char>(s[i + k]);
      if ((b & 0xC0) != 0x80) return false;
      code = (code << 6) | (b & 0x3F);
    }
    // Overlong forms, surrogates and values past Unicode are not UTF-8.
    if (code < least || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    i += n + 1;
  }
  return true;
}

std::string RawTextToUtf8(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 2);
  for (char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    AppendUtf8(out, c >= 0x80 && c < 0xA0 ? kWindows1252High[c - 0x80] : c);
  }
  return out;
}

std::string CharsetToUtf8(std::string_view bytes, std::string_view charset) {
  const std::string name = ConverterName(charset);
  if (name.empty() || name == "utf-8" || name == "us-ascii" || name == "ascii")
    return RawTextToUtf8(bytes);
  iconv_t cd = iconv_open("UTF-8", name.c_str());
  if (cd == reinterpret_cast<iconv_t>(-1)) return RawTextToUtf8(bytes);
  std::string out(bytes.size() * 4 + 16, '\0');
  char* in = const_cast<char*>(bytes.data());
  size_t in_left = bytes.size();
  char* to = out.data();
  size_t to_left = out.size();
  size_t done = iconv(cd, &in, &in_left, &to, &to_left);
  // Flush the shift state of stateful sets (iso-2022-jp ends in ASCII mode).
  if (done != static_cast<size_t>(-1)) done = iconv(cd, nullptr, nullptr, &to, &to_left);
  iconv_close(cd);
  if (done == static_cast<size_t>(-1)) return RawTextToUtf8(bytes);
  out.resize(out.size() - to_left);
  return out;
}

}  // namespace corvina::simulator::mail
