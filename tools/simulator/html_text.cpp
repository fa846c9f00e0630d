#include "simulator/html_text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>

#include "simulator/mail/charset.h"

namespace corvina::simulator {
namespace {

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

// Position just after the first case-insensitive `needle` at or after `from`, or npos.
size_t SkipPast(std::string_view text, std::string_view needle, size_t from) {
  auto it = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                        needle.begin(), needle.end(), [](char a, char b) {
                          return std::tolower(static_cast<unsigned char>(a)) ==
                                 std::tolower(static_cast<unsigned char>(b));
                        });
  return it == text.end() ? std::string_view::npos
                          : static_cast<size_t>(it - text.begin()) + needle.size();
}

// Decodes the entity starting at html[i] == '&' into `out`; returns the length consumed
// (1 when it is no entity we know, so the '&' is kept as text).
size_t DecodeEntity(std::string_view html, size_t i, std::string& out) {
  size_t semi = html.find(';', i);
  if (semi == std::string_view::npos || semi - i > 10) {
    out += '&';
    return 1;
  }
  std::string name = Lower(html.substr(i + 1, semi - i - 1));
  static constexpr std::pair<std::string_view, char> kNamed[] = {
      {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}, {"nbsp", ' '}};
  for (const auto& [entity, c] : kNamed) {
    if (name == entity) {
      out += c;
      return semi - i + 1;
    }
  }
  if (name.size() > 1 && name[0] == '#') {
    bool hex = name[1] == 'x';
    std::string digits = name.substr(hex ? 2 : 1);
    if (!digits.empty() && digits.size() <= 6 &&
        std::all_of(digits.begin(), digits.end(),
                    [hex](unsigned char c) { return hex ? std::isxdigit(c) : std::isdigit(c); })) {
      uint32_t cp = static_cast<uint32_t>(std::stoul(digits, nullptr, hex ? 16 : 10));
      if (cp > 0 && cp <= 0x10FFFF) {
        mail::AppendUtf8(out, cp);
        return semi - i + 1;
      }
    }
  }
  out += '&';
  return 1;
}

}  // namespace

std::string HtmlToText(std::string_view html) {
  static constexpr std::string_view kBlocks[] = {"p",  "div", "tr", "li", "table", "h1", "h2",
                                                 "h3", "h4",  "h5", "h6", "ul",    "ol", "hr"};
  std::string out;
  bool space = false;  // white space seen since the last character written
  auto end_line = [&](bool always) {
    while (!out.empty() && out.back() == ' ') out.pop_back();
    if (always || (!out.empty() && out.back() != '\n')) out += '\n';
    space = false;
  };
  size_t i = 0;
  while (i < html.size()) {
    char c = html[i];
    if (c == '<') {
      if (html.substr(i, 4) == "<!--") {
        i = SkipPast(html, "-->", i);
        continue;
      }
      size_t close = html.find('>', i);
      if (close == std::string_view::npos) break;
      size_t start = i + 1 + (i + 1 < html.size() && html[i + 1] == '/' ? 1 : 0);
      size_t stop = start;
      while (stop < close && std::isalnum(static_cast<unsigned char>(html[stop]))) ++stop;
      std::string tag = Lower(html.substr(start, stop - start));
      bool opening = start == i + 1;
      i = close + 1;
      if (opening && (tag == "head" || tag == "script" || tag == "style")) {
        i = SkipPast(html, "</" + tag, i);  // their content is never shown
        if (i != std::string_view::npos) i = SkipPast(html, ">", i);
      } else if (tag == "br") {
        end_line(true);
      } else if (std::find(std::begin(kBlocks), std::end(kBlocks), tag) != std::end(kBlocks)) {
        end_line(false);
      }
      continue;
    }
    if (std::isspace(static_cast<unsigned char>(c))) {
      space = true;
      ++i;
      continue;
    }
    if (space && !out.empty() && out.back() != '\n') out += ' ';
    space = false;
    if (c == '&') {
      i += DecodeEntity(html, i, out);
    } else {
      out += c;
      ++i;
    }
  }
  while (!out.empty() && (out.back() == '\n' || out.back() == ' ')) out.pop_back();
  return out;
}

}  // namespace corvina::simulator
