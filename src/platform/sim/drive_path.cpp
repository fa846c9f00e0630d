#include "platform/sim/drive_path.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "platform/path.h"
#include "platform/sim/file_errors.h"

namespace corvina::sim {

namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }
bool IsDriveLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }
wchar_t AsciiUpper(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c; }

// Windows counts names and paths in UTF-16 units; wchar_t is 32 bits on Linux. (A template,
// so the check is not even compiled where wchar_t is 16 bits and cannot exceed 0xFFFF.)
template <class Char>
size_t Utf16Units(std::basic_string_view<Char> s) {
  size_t n = s.size();
  if constexpr (sizeof(Char) > 2) {
    for (Char c : s)
      if (c > 0xFFFF) ++n;
  }
  return n;
}

bool OnlyDotsAndBlanks(std::wstring_view name) {
  return name.find_first_not_of(L". ") == std::wstring_view::npos;
}

// The checks every file system makes of a name, whichever way the path was spelt. After
// "\\?\" a "/" is part of the name, and no Windows file system takes it.
int32_t NameError(std::wstring_view name, bool literal) {
  for (wchar_t c : name) {
    if (c < 32 || std::wstring_view(L"<>:\"|?*").find(c) != std::wstring_view::npos ||
        (literal && c == L'/'))
      return kErrBadFileName;
  }
  return Utf16Units(name) > kMaxNameLength ? kErrPathFileAccess : 0;
}

void DropTrailingDotsAndBlanks(std::wstring& name) {
  while (!name.empty() && (name.back() == L'.' || name.back() == L' ')) name.pop_back();
}

int32_t ParseOrdinary(std::wstring_view p, DrivePath& out) {
  std::wstring drive = path::Drive(p);
  if (drive.empty()) return kErrPathNotFound;
  // "C:name" (relative to the drive's current folder) means nothing in the sim.
  if (p.size() > 2 && !path::IsAbsolute(p)) return kErrBadFileName;
  std::wstring_view rest = p.substr(2);
  std::vector<std::wstring> parts = path::Components(rest);
  // Windows decides this from the last name alone, before it looks at anything else: the
  // folders need not exist, nor even the drive.
  if (!parts.empty() && IsDeviceName(parts.back())) {
    out = DrivePath{};
    out.device = true;
    return 0;
  }
  const bool ends_in_separator = !rest.empty() && IsSeparator(rest.back());
  out = DrivePath{};
  out.drive = drive[0];
  for (size_t i = 0; i < parts.size(); ++i) {
    std::wstring& name = parts[i];
    if (name == L".") continue;
    if (name == L"..") {
      if (!out.names.empty()) out.names.pop_back();
      continue;
    }
    if (i + 1 == parts.size() && !ends_in_separator) {
      DropTrailingDotsAndBlanks(name);
    } else if (name.back() == L'.' && !OnlyDotsAndBlanks(name)) {
      name.pop_back();
    }
    out.names.push_back(std::move(name));
  }
  size_t length = 3;  // "C:\"
  for (const std::wstring& name : out.names) length += Utf16Units(std::wstring_view(name)) + 1;
  if (!out.names.empty() && !ends_in_separator) --length;
  if (length >= kMaxPath) return kErrPathNotFound;
  for (const std::wstring& name : out.names) {
    if (OnlyDotsAndBlanks(name)) return kErrBadFileName;
    if (int32_t err = NameError(name, false)) return err;
  }
  return 0;
}

int32_t ParseLiteral(std::wstring_view p, DrivePath& out) {
  if (Utf16Units(p) > kMaxLongPath) return kErrPathFileAccess;
  std::wstring_view rest = p.substr(kLongPrefix.size());
  // Only a drive is modelled behind the prefix ("\\?\UNC\..." and volume names are not).
  if (rest.size() < 2 || !IsDriveLetter(rest[0]) || rest[1] != L':' ||
      (rest.size() > 2 && rest[2] != L'\\'))
    return kErrPathNotFound;
  out = DrivePath{};
  out.drive = AsciiUpper(rest[0]);
  std::wstring_view names = rest.substr(std::min<size_t>(rest.size(), 3));
  // One final "\" names the same entry (a folder) as the path without it.
  if (!names.empty() && names.back() == L'\\') names.remove_suffix(1);
  for (size_t start = 0; !names.empty();) {
    const size_t end = names.find(L'\\', start);
    std::wstring_view name =
        names.substr(start, end == std::wstring_view::npos ? end : end - start);
    // Nothing is normalised away: an empty name, "." and ".." reach the file system as
    // names, and it refuses them.
    if (name.empty() || name == L"." || name == L"..") return kErrBadFileName;
    if (int32_t err = NameError(name, true)) return err;
    out.names.emplace_back(name);
    if (end == std::wstring_view::npos) break;
    start = end + 1;
  }
  return 0;
}

}  // namespace

bool IsDeviceName(std::wstring_view name) {
  // The part before the first dot, without the blanks that may follow it ("NUL .txt").
  std::wstring_view base = name.substr(0, name.find(L'.'));
  while (!base.empty() && base.back() == L' ') base.remove_suffix(1);
  std::wstring upper;
  for (wchar_t c : base) upper.push_back(AsciiUpper(c));
  if (upper == L"CON" || upper == L"PRN" || upper == L"AUX" || upper == L"NUL") return true;
  if (upper.size() != 4 || (upper.compare(0, 3, L"COM") != 0 && upper.compare(0, 3, L"LPT") != 0))
    return false;
  // Windows takes the superscript digits one to three for digits here as well.
  const wchar_t digit = upper[3];
  return (digit >= L'1' && digit <= L'9') || digit == L'\u00B9' || digit == L'\u00B2' ||
         digit == L'\u00B3';
}

int32_t ParseDrivePath(std::wstring_view p, DrivePath& out) {
  return p.starts_with(kLongPrefix) ? ParseLiteral(p, out) : ParseOrdinary(p, out);
}

wchar_t RootDrive(std::wstring_view root) {
  if (root.starts_with(kLongPrefix)) root.remove_prefix(kLongPrefix.size());
  std::wstring drive = path::Drive(root);
  return drive.empty() ? 0 : drive[0];
}

std::wstring FoldName(std::wstring_view name) { return UCase(name); }

std::wstring JoinDrivePath(wchar_t drive, const std::vector<std::wstring>& names, size_t count) {
  std::wstring r{drive, L':', path::kSeparator};
  for (size_t i = 0; i < count && i < names.size(); ++i) {
    if (i > 0) r.push_back(path::kSeparator);
    r += names[i];
  }
  return r;
}

}  // namespace corvina::sim
