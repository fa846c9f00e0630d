#include "platform/sim/drive_path.h"

#include "base/text.h"
#include "platform/path.h"

namespace corvina::sim {

namespace {
bool IsValidName(std::wstring_view name) {
  for (wchar_t c : name) {
    if (c < 32 || std::wstring_view(L"<>:\"|?*").find(c) != std::wstring_view::npos) return false;
  }
  return true;
}
}  // namespace

std::optional<DrivePath> ParseDrivePath(std::wstring_view p) {
  std::wstring drive = path::Drive(p);
  // "C:name" (relative to the drive's current folder) means nothing in the sim.
  if (drive.empty() || (p.size() > 2 && !path::IsAbsolute(p))) return std::nullopt;
  DrivePath out;
  out.drive = drive[0];
  for (std::wstring& name : path::Components(p.substr(2))) {
    if (name == L".") continue;
    if (name == L"..") {
      if (!out.names.empty()) out.names.pop_back();
      continue;
    }
    if (!IsValidName(name)) return std::nullopt;
    out.names.push_back(std::move(name));
  }
  return out;
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
