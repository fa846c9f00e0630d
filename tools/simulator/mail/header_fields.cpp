#include "simulator/mail/header_fields.h"

#include <algorithm>

#include "simulator/mail/charset.h"
#include "simulator/mail/mime_text.h"
#include "simulator/mail/transfer_encoding.h"

namespace corvina::simulator::mail {
namespace {

// A header line: a name of printable characters other than ":" followed by ":", or a
// continuation that starts with a blank.
bool IsFieldLine(std::string_view line) {
  if (!line.empty() && (line[0] == ' ' || line[0] == '\t')) return true;
  for (char c : line) {
    if (c == ':') return true;
    if (c < '!' || c > '~') return false;
  }
  return false;
}

struct EncodedWord {
  std::string charset;
  std::string bytes;  // decoded, still in `charset`
  size_t end;         // offset just past "?="
};

// An encoded word starting at `at` ("=?"), or nullopt when the text there is not one.
std::optional<EncodedWord> ReadEncodedWord(std::string_view s, size_t at) {
  if (s.substr(at, 2) != "=?") return std::nullopt;
  const size_t q1 = s.find('?', at + 2);
  if (q1 == std::string_view::npos || q1 + 2 >= s.size() || s[q1 + 2] != '?')
    return std::nullopt;
  const char kind = s[q1 + 1];
  const size_t close = s.find("?=", q1 + 3);
  if (close == std::string_view::npos) return std::nullopt;
  const std::string_view charset = s.substr(at + 2, q1 - at - 2);
  const std::string_view text = s.substr(q1 + 3, close - q1 - 3);
  if (charset.empty() || text.find_first_of(" \t\r\n") != std::string_view::npos)
    return std::nullopt;
  EncodedWord word{std::string(charset), {}, close + 2};
  if (kind == 'B' || kind == 'b') {
    word.bytes = DecodeBase64(text);
  } else if (kind == 'Q' || kind == 'q') {
    word.bytes = DecodeQEncoding(text);
  } else {
    return std::nullopt;
  }
  return word;
}

// Splits a parameter list on ";" outside quoted strings.
std::vector<std::string_view> SplitParameters(std::string_view raw) {
  std::vector<std::string_view> pieces;
  bool quoted = false;
  size_t from = 0;
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\\' && quoted) {
      ++i;
    } else if (raw[i] == '"') {
      quoted = !quoted;
    } else if (raw[i] == ';' && !quoted) {
      pieces.push_back(raw.substr(from, i - from));
      from = i + 1;
    }
  }
  pieces.push_back(raw.substr(from));
  return pieces;
}

// A value with its quotes and backslash escapes removed; `quoted` tells whether it had any.
std::string Unquote(std::string_view v, bool* quoted) {
  v = Trim(v);
  *quoted = v.size() >= 1 && v.front() == '"';
  if (!*quoted) return std::string(v);
  v.remove_prefix(1);
  if (!v.empty() && v.back() == '"') v.remove_suffix(1);
  std::string out;
  for (size_t i = 0; i < v.size(); ++i) {
    if (v[i] == '\\' && i + 1 < v.size()) ++i;
    out += v[i];
  }
  return out;
}

std::string PercentDecode(std::string_view v) {
  std::string out;
  for (size_t i = 0; i < v.size(); ++i) {
    const int byte = v[i] == '%' ? HexByte(v.substr(i + 1, 2)) : -1;
    if (byte >= 0) {
      out += static_cast<char>(byte);
      i += 2;
    } else {
      out += v[i];
    }
  }
  return out;
}

// The pieces of one RFC 2231 parameter: name*0*=..., name*1=..., or name*=...
struct Continuation {
  int index = 0;
  bool encoded = false;
  std::string value;
};

}  // namespace

std::optional<std::string_view> HeaderBlock::Find(std::string_view name) const {
  const std::string wanted = Lower(name);
  for (const HeaderField& f : fields)
    if (Lower(f.name) == wanted) return std::string_view(f.value);
  return std::nullopt;
}

HeaderBlock ReadHeaderBlock(std::string_view text) {
  HeaderBlock block;
  const std::vector<Line> lines = SplitLines(text);
  size_t i = 0;
  if (!lines.empty() && lines[0].text.substr(0, 5) == "From ") ++i;  // an mbox separator
  block.body = text.size();
  std::string* last = nullptr;
  for (; i < lines.size(); ++i) {
    const Line& line = lines[i];
    if (line.text.empty() || !IsFieldLine(line.text)) {
      // An empty line ends the block and is not part of the body; any other line that is no
      // header field is the body's first line.
      block.body = line.text.empty() ? line.end : line.begin;
      break;
    }
    if (line.text[0] == ' ' || line.text[0] == '\t') {
      if (last) *last += line.text;  // a fold; a continuation before any field is dropped
      continue;
    }
    const size_t colon = line.text.find(':');
    if (colon == 0) continue;  // a field without a name
    block.fields.push_back({std::string(Trim(line.text.substr(0, colon))),
                            std::string(line.text.substr(colon + 1))});
    last = &block.fields.back().value;
  }
  for (HeaderField& f : block.fields) f.value = std::string(Trim(f.value));
  return block;
}

std::string DecodeHeaderText(std::string_view raw) {
  std::string out;
  std::string pending_charset, pending_bytes;  // adjacent words of one set, joined as bytes
  auto flush = [&] {
    if (!pending_bytes.empty()) out += CharsetToUtf8(pending_bytes, pending_charset);
    pending_bytes.clear();
    pending_charset.clear();
  };
  size_t plain_from = 0;  // start of text not yet copied
  bool after_word = false;
  for (size_t i = 0; i < raw.size();) {
    std::optional<EncodedWord> word = raw[i] == '=' ? ReadEncodedWord(raw, i) : std::nullopt;
    if (!word) {
      ++i;
      continue;
    }
    std::string_view between = raw.substr(plain_from, i - plain_from);
    // Blanks between two encoded words are not text; anything else is.
    if (!(after_word && Trim(between).empty())) {
      flush();
      out += RawTextToUtf8(between);
    }
    if (Lower(word->charset) != Lower(pending_charset)) flush();
    pending_charset = word->charset;
    pending_bytes += word->bytes;
    plain_from = i = word->end;
    after_word = true;
  }
  flush();
  out += RawTextToUtf8(raw.substr(plain_from));
  return out;
}

std::optional<std::string> StructuredValue::Parameter(const std::string& name) const {
  auto it = parameters.find(name);
  return it == parameters.end() ? std::nullopt : std::optional<std::string>(it->second);
}

StructuredValue ParseStructuredValue(std::string_view raw) {
  StructuredValue result;
  std::vector<std::string_view> pieces = SplitParameters(raw);
  result.value = Lower(Trim(pieces[0]));
  std::map<std::string, std::vector<Continuation>> continued;
  for (size_t p = 1; p < pieces.size(); ++p) {
    const size_t eq = pieces[p].find('=');
    if (eq == std::string_view::npos) continue;
    std::string name = Lower(Trim(pieces[p].substr(0, eq)));
    bool quoted = false;
    std::string value = Unquote(pieces[p].substr(eq + 1), &quoted);
    const size_t star = name.find('*');
    if (star == std::string::npos) {
      // The first of a name wins; encoded words are decoded even inside quotes.
      result.parameters.emplace(name, DecodeHeaderText(value));
      continue;
    }
    Continuation piece;
    piece.encoded = name.back() == '*';
    std::string_view index = std::string_view(name).substr(star + 1);
    if (!index.empty() && index.back() == '*') index.remove_suffix(1);  // "name*0*"; "name*" has none
    if (!index.empty()) {
      piece.index = 0;
      for (char c : index) {
        if (c < '0' || c > '9') piece.index = -1;
        if (piece.index >= 0) piece.index = piece.index * 10 + (c - '0');
      }
      if (piece.index < 0) continue;
    }
    piece.value = std::move(value);
    continued[name.substr(0, star)].push_back(std::move(piece));
  }
  for (auto& [name, parts] : continued) {
    std::stable_sort(parts.begin(), parts.end(),
                     [](const Continuation& a, const Continuation& b) { return a.index < b.index; });
    std::string charset, bytes;
    for (size_t k = 0; k < parts.size(); ++k) {
      std::string_view v = parts[k].value;
      if (parts[k].encoded && k == 0) {
        // charset'language'text
        const size_t q1 = v.find('\'');
        const size_t q2 = q1 == std::string_view::npos ? q1 : v.find('\'', q1 + 1);
        if (q2 != std::string_view::npos) {
          charset = std::string(v.substr(0, q1));
          v = v.substr(q2 + 1);
        }
      }
      bytes += parts[k].encoded ? PercentDecode(v) : std::string(v);
    }
    // An RFC 2231 value replaces a plain one of the same name: it is the better spelling.
    result.parameters[name] = CharsetToUtf8(bytes, charset);
  }
  return result;
}

}  // namespace corvina::simulator::mail
