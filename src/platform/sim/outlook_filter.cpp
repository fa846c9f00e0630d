#include "platform/sim/outlook_filter.h"

#include <cwctype>

#include "base/text.h"
#include "platform/sim/outlook_errors.h"

namespace corvina::sim {

namespace {

using Node = SimFilter::Node;
using Op = SimFilter::Op;

constexpr int kMaxDepth = 100;  // deeper nesting is refused rather than risking the stack

bool IsWordChar(wchar_t c) { return std::iswalnum(static_cast<wint_t>(c)) || c == L'_'; }

// Reads digits into `out`; false when there are none.
bool ReadNumber(std::wstring_view s, size_t& i, int& out, size_t max_digits) {
  size_t start = i;
  out = 0;
  while (i < s.size() && i - start < max_digits && s[i] >= L'0' && s[i] <= L'9') {
    out = out * 10 + (s[i] - L'0');
    ++i;
  }
  return i > start;
}

bool ParseDate(std::wstring_view s, int64_t& seconds) {
  CivilTime t{};
  size_t i = 0;
  auto expect = [&](wchar_t c) { return i < s.size() && s[i++] == c; };
  if (!ReadNumber(s, i, t.year, 4) || !expect(L'-') || !ReadNumber(s, i, t.month, 2) ||
      !expect(L'-') || !ReadNumber(s, i, t.day, 2)) {
    return false;
  }
  if (i < s.size()) {
    if (!expect(L' ') || !ReadNumber(s, i, t.hour, 2) || !expect(L':') ||
        !ReadNumber(s, i, t.minute, 2)) {
      return false;
    }
    if (i < s.size() && (!expect(L':') || !ReadNumber(s, i, t.second, 2))) return false;
  }
  if (i != s.size() || t.month < 1 || t.month > 12 || t.day < 1 || t.hour > 23 || t.minute > 59 ||
      t.second > 59) {
    return false;
  }
  Date d = FromCivil(t);
  CivilTime back = ToCivil(d);
  if (back.year != t.year || back.month != t.month || back.day != t.day) return false;  // Feb 30
  seconds = DateSeconds(d);
  return true;
}

bool ParseWholeNumber(std::wstring_view s, int64_t& out) {
  size_t i = s.starts_with(L'-') ? 1 : 0;
  if (i == s.size() || s.size() > 18) return false;
  int64_t v = 0;
  for (; i < s.size(); ++i) {
    if (s[i] < L'0' || s[i] > L'9') return false;
    v = v * 10 + (s[i] - L'0');
  }
  out = s.starts_with(L'-') ? -v : v;
  return true;
}

bool ParseBool(std::wstring_view s, int64_t& out) {
  if (EqualsIgnoreCase(s, L"True") || s == L"1" || s == L"-1") {
    out = 1;
  } else if (EqualsIgnoreCase(s, L"False") || s == L"0") {
    out = 0;
  } else {
    return false;
  }
  return true;
}

class Parser {
 public:
  Parser(std::wstring_view text, bool dasl, std::vector<Node>& nodes)
      : text_(text), dasl_(dasl), nodes_(nodes) {}

  int ParseAll() {
    int root = ParseOr(0);
    SkipSpace();
    if (pos_ != text_.size()) Fail();
    return root;
  }

 private:
  int ParseOr(int depth) {
    int left = ParseAnd(depth);
    while (Keyword(L"OR")) left = Add(Node::Kind::kOr, left, ParseAnd(depth));
    return left;
  }

  int ParseAnd(int depth) {
    int left = ParseNot(depth);
    while (Keyword(L"AND")) left = Add(Node::Kind::kAnd, left, ParseNot(depth));
    return left;
  }

  int ParseNot(int depth) {
    if (depth > kMaxDepth) Fail();
    if (Keyword(L"NOT")) return Add(Node::Kind::kNot, ParseNot(depth + 1), -1);
    SkipSpace();
    if (pos_ < text_.size() && text_[pos_] == L'(') {
      ++pos_;
      int inner = ParseOr(depth + 1);
      SkipSpace();
      if (pos_ >= text_.size() || text_[pos_] != L')') Fail();
      ++pos_;
      return inner;
    }
    return ParseComparison();
  }

  int ParseComparison() {
    Node n;
    n.property = ParseProperty();
    SkipSpace();
    const size_t op_start = pos_;
    n.op = ParseOp();
    SkipSpace();
    const size_t value_start = pos_;
    bool quoted = false;
    std::wstring value = ParseValue(quoted);
    if (n.op == Op::kLike && n.property->type != PropertyType::kText) {
      pos_ = op_start;
      Fail();
    }
    bool ok = false;
    switch (n.property->type) {
      case PropertyType::kText:
        ok = quoted;
        n.text = std::move(value);
        break;
      case PropertyType::kDate: ok = quoted && ParseDate(value, n.number); break;
      case PropertyType::kBool: ok = ParseBool(value, n.number); break;
      case PropertyType::kNumber: ok = ParseWholeNumber(value, n.number); break;
    }
    if (!ok) {
      pos_ = value_start;
      Fail();
    }
    nodes_.push_back(std::move(n));
    return static_cast<int>(nodes_.size()) - 1;
  }

  const SimProperty* ParseProperty() {
    SkipSpace();
    const wchar_t open = dasl_ ? L'"' : L'[';
    const wchar_t close = dasl_ ? L'"' : L']';
    if (pos_ >= text_.size() || text_[pos_] != open) Fail();
    size_t end = text_.find(close, pos_ + 1);
    if (end == std::wstring_view::npos) Fail();
    std::wstring_view name = text_.substr(pos_ + 1, end - pos_ - 1);
    const SimProperty* p = dasl_ ? FindDaslProperty(name) : FindJetProperty(name);
    if (!p) throw UnknownPropertyError(name);
    pos_ = end + 1;
    return p;
  }

  Op ParseOp() {
    // Two-character operators first, so "<=" is not read as "<".
    static constexpr std::pair<std::wstring_view, Op> kOps[] = {
        {L"<>", Op::kNe}, {L"<=", Op::kLe}, {L">=", Op::kGe},
        {L"=", Op::kEq},  {L"<", Op::kLt},  {L">", Op::kGt},
    };
    for (const auto& [symbol, op] : kOps) {
      if (text_.substr(pos_).starts_with(symbol)) {
        pos_ += symbol.size();
        return op;
      }
    }
    if (dasl_ && Keyword(L"LIKE")) return Op::kLike;
    Fail();
  }

  // A quoted literal ('' or "" inside stands for the quote) or a bare word.
  std::wstring ParseValue(bool& quoted) {
    std::wstring out;
    if (pos_ < text_.size() && (text_[pos_] == L'\'' || (!dasl_ && text_[pos_] == L'"'))) {
      const wchar_t q = text_[pos_];
      const size_t start = pos_;
      for (++pos_;; ++pos_) {
        if (pos_ >= text_.size()) {
          pos_ = start;
          Fail();
        }
        if (text_[pos_] == q) {
          if (pos_ + 1 < text_.size() && text_[pos_ + 1] == q) {
            ++pos_;
          } else {
            break;
          }
        }
        out.push_back(text_[pos_]);
      }
      ++pos_;
      quoted = true;
      return out;
    }
    while (pos_ < text_.size() && !std::iswspace(static_cast<wint_t>(text_[pos_])) &&
           text_[pos_] != L')') {
      out.push_back(text_[pos_++]);
    }
    if (out.empty()) Fail();
    return out;
  }

  bool Keyword(std::wstring_view word) {
    SkipSpace();
    if (text_.size() - pos_ < word.size() ||
        !EqualsIgnoreCase(text_.substr(pos_, word.size()), word))
      return false;
    const size_t after = pos_ + word.size();
    if (after < text_.size() && IsWordChar(text_[after])) return false;
    pos_ = after;
    return true;
  }

  void SkipSpace() {
    while (pos_ < text_.size() && std::iswspace(static_cast<wint_t>(text_[pos_]))) ++pos_;
  }

  int Add(Node::Kind kind, int left, int right) {
    Node n;
    n.kind = kind;
    n.left = left;
    n.right = right;
    nodes_.push_back(std::move(n));
    return static_cast<int>(nodes_.size()) - 1;
  }

  [[noreturn]] void Fail() { throw ConditionError(text_.substr(pos_)); }

  std::wstring_view text_;
  bool dasl_;
  std::vector<Node>& nodes_;
  size_t pos_ = 0;
};

bool Compare(int64_t a, int64_t b, Op op) {
  switch (op) {
    case Op::kEq: return a == b;
    case Op::kNe: return a != b;
    case Op::kLt: return a < b;
    case Op::kGt: return a > b;
    case Op::kLe: return a <= b;
    case Op::kGe: return a >= b;
    case Op::kLike: break;
  }
  return false;
}

}  // namespace

bool LikeMatch(std::wstring_view text, std::wstring_view pattern) {
  auto same = [](wchar_t a, wchar_t b) { return FoldCase(a) == FoldCase(b); };
  size_t t = 0, p = 0, star = std::wstring_view::npos, mark = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == L'%') {
      star = p++;
      mark = t;
    } else if (p < pattern.size() && same(pattern[p], text[t])) {
      ++p;
      ++t;
    } else if (star != std::wstring_view::npos) {
      p = star + 1;
      t = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == L'%') ++p;
  return p == pattern.size();
}

SimFilter::SimFilter(std::wstring_view text) {
  constexpr std::wstring_view kDasl = L"@SQL=";
  const bool dasl =
      text.size() >= kDasl.size() && EqualsIgnoreCase(text.substr(0, kDasl.size()), kDasl);
  if (dasl) text.remove_prefix(kDasl.size());
  root_ = Parser(text, dasl, nodes_).ParseAll();
}

bool SimFilter::Eval(int index, const SimItemData& item) const {
  const Node& n = nodes_[static_cast<size_t>(index)];
  switch (n.kind) {
    case Node::Kind::kAnd: return Eval(n.left, item) && Eval(n.right, item);
    case Node::Kind::kOr: return Eval(n.left, item) || Eval(n.right, item);
    case Node::Kind::kNot: return !Eval(n.left, item);
    case Node::Kind::kCompare: break;
  }
  if (n.property->type != PropertyType::kText) {
    return Compare(NumberValue(*n.property, item), n.number, n.op);
  }
  const std::wstring& value = TextValue(*n.property, item);
  if (n.op == Op::kLike) return LikeMatch(value, n.text);
  return Compare(CompareText(value, n.text), 0, n.op);
}

}  // namespace corvina::sim
