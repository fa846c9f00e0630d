#include "simulator/mail/mime_text.h"

namespace corvina::simulator::mail {

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

int HexByte(std::string_view two) {
  auto digit = [](char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
  };
  if (two.size() != 2 || digit(two[0]) < 0 || digit(two[1]) < 0) return -1;
  return digit(two[0]) * 16 + digit(two[1]);
}

std::vector<Line> SplitLines(std::string_view text) {
  std::vector<Line> lines;
  size_t begin = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') continue;
    size_t end = i + 1;
    if (text[i] == '\r' && end < text.size() && text[end] == '\n') ++end;
    lines.push_back({text.substr(begin, i - begin), begin, end});
    begin = end;
    i = end - 1;
  }
  if (begin < text.size()) lines.push_back({text.substr(begin), begin, text.size()});
  return lines;
}

}  // namespace corvina::simulator::mail
