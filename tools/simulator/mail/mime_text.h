#pragma once
// Small text helpers shared by the mail reader: ASCII case, blanks and lines as mail files
// write them (CRLF, LF or a lone CR all end a line).
#include <string>
#include <string_view>
#include <vector>

namespace corvina::simulator::mail {

std::string Lower(std::string_view s);
bool IsBlank(char c);  // space, tab, CR, LF
std::string_view Trim(std::string_view s);

// The byte two hexadecimal digits (either case) stand for, or -1.
int HexByte(std::string_view two);

struct Line {
  std::string_view text;  // without its line end
  size_t begin = 0;       // offset of the line in the whole text
  size_t end = 0;         // offset just past its line end
};
std::vector<Line> SplitLines(std::string_view text);

}  // namespace corvina::simulator::mail
