#include "platform/path.h"

#include <cwctype>

#include "base/text.h"

namespace corvina::path {

namespace {
bool IsSep(wchar_t c) { return c == L'\\' || c == L'/'; }
// Drive letters are A-Z only; iswalpha would take any letter of the locale.
bool IsDriveLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }
bool HasDrive(std::wstring_view p) { return p.size() >= 2 && p[1] == L':' && IsDriveLetter(p[0]); }
}  // namespace

std::wstring Join(std::wstring_view a, std::wstring_view b) {
  if (a.empty()) return std::wstring(b);
  std::wstring r(a);
  if (!IsSep(r.back())) r.push_back(kSeparator);
  size_t i = 0;
  while (i < b.size() && IsSep(b[i])) ++i;
  r.append(b.substr(i));
  return r;
}

std::wstring Parent(std::wstring_view p) {
  std::wstring s = WithoutTrailingSeparator(p);
  size_t pos = s.find_last_of(L"\\/");
  // A root ("C:\") has nothing above it, so a walk up the tree ends.
  if (pos == std::wstring::npos || (HasDrive(s) && s.size() == 3)) return {};
  if (pos == 2 && HasDrive(s)) return s.substr(0, 3);
  // "C:\a\\b": the run of separators before the name is not part of the parent.
  return WithoutTrailingSeparator(s.substr(0, pos));
}

std::wstring FileName(std::wstring_view p) {
  std::wstring s = WithoutTrailingSeparator(p);
  size_t pos = s.find_last_of(L"\\/");
  if (pos != std::wstring::npos) return s.substr(pos + 1);
  return HasDrive(s) ? s.substr(2) : s;  // "C:name" names "name"
}

std::wstring WithTrailingSeparator(std::wstring_view p) {
  std::wstring r(p);
  if (r.empty() || !IsSep(r.back())) r.push_back(kSeparator);
  return r;
}

std::wstring WithoutTrailingSeparator(std::wstring_view p) {
  std::wstring r(p);
  while (!r.empty() && IsSep(r.back())) {
    if (r.size() == 3 && HasDrive(r)) break;
    r.pop_back();
  }
  return r;
}

std::vector<std::wstring> Components(std::wstring_view p) {
  std::vector<std::wstring> out;
  std::wstring cur;
  for (wchar_t c : p) {
    if (IsSep(c)) {
      if (!cur.empty()) out.push_back(std::move(cur));
      cur.clear();
    } else {
      cur.push_back(c);
    }
  }
  if (!cur.empty()) out.push_back(std::move(cur));
  return out;
}

std::wstring Drive(std::wstring_view p) {
  return HasDrive(p) ? UCase(p.substr(0, 1)) + L":" : std::wstring();
}

// "C:\x" and network paths ("\\server\share") are absolute; "C:x" and "\x" depend on the
// current drive and folder.
bool IsAbsolute(std::wstring_view p) {
  return (p.size() >= 3 && HasDrive(p) && IsSep(p[2])) ||
         (p.size() >= 2 && IsSep(p[0]) && IsSep(p[1]));
}

bool SamePath(std::wstring_view a, std::wstring_view b) {
  auto ca = Components(a);
  auto cb = Components(b);
  if (ca.size() != cb.size()) return false;
  for (size_t i = 0; i < ca.size(); ++i)
    if (!EqualsIgnoreCase(ca[i], cb[i])) return false;
  return true;
}

}  // namespace corvina::path
