#pragma once
// The FileSystem interface on the Win32 file API, which already has the semantics the
// interface describes (drive letters, "\", names without case). Paths go to Windows in their
// long form (long_path.h), so targets longer than MAX_PATH work like any other.
#include "platform/file_system.h"

namespace corvina::win32 {

class Win32FileSystem : public FileSystem {
 public:
  bool FileExists(const std::wstring& path) override;
  bool DirectoryExists(const std::wstring& path) override;
  void CreateDirectory(const std::wstring& path) override;
  void DeleteFile(const std::wstring& path) override;
  std::vector<std::wstring> ListFiles(const std::wstring& folder) override;
  int64_t FileLength(const std::wstring& path) override;
  std::string ReadFile(const std::wstring& path) override;
  // Written to a temporary file in the same folder, then moved over `path` in one step.
  void WriteFile(const std::wstring& path, std::string_view bytes) override;
  void AppendFile(const std::wstring& path, std::string_view bytes) override;
  void CopyFile(const std::wstring& from, const std::wstring& to, bool fail_if_exists) override;
  void MoveFile(const std::wstring& from, const std::wstring& to, bool replace_existing) override;
  // Of the volume `root` lies on: a root ("C:\") or any path on it.
  std::optional<DiskFreeSpace> GetDiskFreeSpace(const std::wstring& root) override;
};

}  // namespace corvina::win32
