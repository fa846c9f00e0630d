#include "platform/win32/long_path.h"

#include <vector>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kPrefix[] = L"\\\\?\\";
constexpr wchar_t kUncPrefix[] = L"\\\\?\\UNC\\";

bool StartsWith(const std::wstring& text, const wchar_t* start) {
  return text.compare(0, std::char_traits<wchar_t>::length(start), start) == 0;
}

std::wstring FullPath(const std::wstring& path) {
  const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  if (needed == 0) return {};
  std::wstring full(needed, L'\0');
  const DWORD written = GetFullPathNameW(path.c_str(), needed, full.data(), nullptr);
  if (written == 0 || written >= needed) return {};
  full.resize(written);
  return full;
}

// The names after the root, resolved and stripped, joined again with "\".
std::wstring NormalisedNames(const std::wstring& rest) {
  std::vector<std::wstring> names;
  size_t at = 0;
  while (at <= rest.size()) {
    size_t end = rest.find_first_of(L"\\/", at);
    if (end == std::wstring::npos) end = rest.size();
    std::wstring name = rest.substr(at, end - at);
    at = end + 1;
    if (name == L".") continue;
    if (name == L"..") {
      if (!names.empty()) names.pop_back();
      continue;
    }
    while (!name.empty() && (name.back() == L'.' || name.back() == L' ')) name.pop_back();
    if (!name.empty()) names.push_back(std::move(name));
  }
  std::wstring joined;
  for (const std::wstring& name : names) {
    if (!joined.empty()) joined += L'\\';
    joined += name;
  }
  return joined;
}

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

}  // namespace

std::wstring LongPath(const std::wstring& path) {
  if (path.empty() || StartsWith(path, kPrefix) || StartsWith(path, L"\\\\.\\")) return path;
  const std::wstring full = FullPath(path);
  if (full.size() >= 2 && full[1] == L':') {
    // "C:\..." (GetFullPathNameW always gives the drive its separator).
    return kPrefix + full.substr(0, 2) + L"\\" + NormalisedNames(full.substr(2));
  }
  if (full.size() > 2 && IsSeparator(full[0]) && IsSeparator(full[1])) {
    // "\\server\share\...": server and share are kept as they are.
    size_t server_end = full.find_first_of(L"\\/", 2);
    if (server_end == std::wstring::npos) return path;
    size_t share_end = full.find_first_of(L"\\/", server_end + 1);
    if (share_end == std::wstring::npos) share_end = full.size();
    if (share_end == server_end + 1) return path;
    const std::wstring share = full.substr(2, server_end - 2) + L"\\" +
                               full.substr(server_end + 1, share_end - server_end - 1);
    const std::wstring names = NormalisedNames(full.substr(share_end));
    return kUncPrefix + share + (names.empty() ? L"" : L"\\" + names);
  }
  return path;
}

std::wstring LongPathRoot(const std::wstring& long_path) {
  if (StartsWith(long_path, kUncPrefix)) {
    const size_t start = std::char_traits<wchar_t>::length(kUncPrefix);
    const size_t server_end = long_path.find(L'\\', start);
    if (server_end == std::wstring::npos) return {};
    const size_t share_end = long_path.find(L'\\', server_end + 1);
    return (share_end == std::wstring::npos ? long_path : long_path.substr(0, share_end)) + L"\\";
  }
  const size_t drive = std::char_traits<wchar_t>::length(kPrefix);
  if (StartsWith(long_path, kPrefix) && long_path.size() >= drive + 2 && long_path[drive + 1] == L':')
    return long_path.substr(0, drive + 2) + L"\\";
  return {};
}

}  // namespace corvina::win32
