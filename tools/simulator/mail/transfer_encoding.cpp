#include "simulator/mail/transfer_encoding.h"

#include <cstdint>
#include <span>

#include "simulator/mail/mime_text.h"

namespace corvina::simulator::mail {
namespace {

int Base64Value(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

// One uuencoded line: its first character gives the byte count, then four characters carry
// three bytes each. Blank and "`" both stand for zero.
void DecodeUuLine(std::string_view line, std::string& out) {
  if (line.empty()) return;
  const size_t count = static_cast<size_t>((line[0] - ' ') & 0x3F);
  auto sextet = [&](size_t i) -> uint32_t {
    return i < line.size() ? static_cast<uint32_t>((line[i] - ' ') & 0x3F) : 0;
  };
  for (size_t produced = 0, at = 1; produced < count; at += 4) {
    const uint32_t group =
        (sextet(at) << 18) | (sextet(at + 1) << 12) | (sextet(at + 2) << 6) | sextet(at + 3);
    for (int shift = 16; shift >= 0 && produced < count; shift -= 8, ++produced)
      out += static_cast<char>((group >> shift) & 0xFF);
  }
}

}  // namespace

std::string DecodeBase64(std::string_view text) {
  std::string out;
  out.reserve(text.size() * 3 / 4);
  uint32_t bits = 0;
  int have = 0;  // characters of the current group seen
  int pads = 0;
  for (char c : text) {
    if (c == '=') {
      // Padding ends the data once it completes a group of four; extra "=" are noise.
      if (have >= 2 && have + ++pads >= 4) break;
      continue;
    }
    const int v = Base64Value(c);
    if (v < 0) continue;
    pads = 0;
    bits = (bits << 6) | static_cast<uint32_t>(v);
    if (++have == 1) continue;
    // Each character after the first of a group completes one more byte.
    const int spare = 2 * (4 - have);  // low bits that belong to the next byte
    out += static_cast<char>((bits >> spare) & 0xFF);
    bits &= (1u << spare) - 1;
    if (have == 4) have = 0;
  }
  return out;
}

std::string DecodeQuotedPrintable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ' ' || c == '\t') {
      // Blanks at a line end were added in transit (an encoder writes =20 there): dropped.
      size_t end = i;
      while (end < text.size() && (text[end] == ' ' || text[end] == '\t')) ++end;
      if (end < text.size() && text[end] != '\r' && text[end] != '\n') {
        out.append(text.substr(i, end - i));
      }
      i = end - 1;
      continue;
    }
    if (c != '=') {
      out += c;
      continue;
    }
    size_t next = i + 1;
    while (next < text.size() && (text[next] == ' ' || text[next] == '\t')) ++next;
    if (next >= text.size()) break;  // a dangling "=" at the very end
    if (text[next] == '\r' || text[next] == '\n') {  // soft line break, blanks before it too
      i = next + ((text[next] == '\r' && next + 1 < text.size() && text[next + 1] == '\n') ? 1 : 0);
    } else if (text[i + 1] == '=') {  // "==" from broken encoders
      out += '=';
      ++i;
    } else if (const int byte = HexByte(text.substr(i + 1, 2)); byte >= 0) {
      out += static_cast<char>(byte);
      i += 2;
    } else {
      out += '=';
    }
  }
  return out;
}

std::string DecodeQEncoding(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '_') {
      out += ' ';
    } else if (const int byte = text[i] == '=' ? HexByte(text.substr(i + 1, 2)) : -1; byte >= 0) {
      out += static_cast<char>(byte);
      i += 2;
    } else {
      out += text[i];
    }
  }
  return out;
}

std::string DecodeUuencode(std::string_view text) {
  const std::vector<Line> lines = SplitLines(text);
  size_t first = 0;
  while (first < lines.size() && lines[first].text.substr(0, 6) != "begin ") ++first;
  if (first == lines.size()) return std::string(text);
  std::string out;
  for (const Line& line : std::span(lines).subspan(first + 1)) {
    if (Trim(line.text) == "end") break;
    if (Trim(line.text).empty()) continue;
    DecodeUuLine(line.text, out);
  }
  return out;
}

std::string DecodeTransfer(std::string_view encoding, std::string_view body) {
  const std::string name = Lower(Trim(encoding));
  if (name == "base64") return DecodeBase64(body);
  if (name == "quoted-printable") return DecodeQuotedPrintable(body);
  if (name == "x-uuencode" || name == "uuencode" || name == "x-uue" || name == "uue")
    return DecodeUuencode(body);
  return std::string(body);
}

}  // namespace corvina::simulator::mail
