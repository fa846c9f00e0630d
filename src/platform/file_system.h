#pragma once
// Files and folders with Windows path semantics: "C:\dir\file.ext", "\" separators, names
// compared without regard to case. Failures throw corvina::Error with the classic numbers
// (53 file not found, 58 file already exists, 70 permission denied, 75 path/file access
// error, 76 path not found).
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvina {

struct DiskFreeSpace {
  uint32_t sectors_per_cluster = 0;
  uint32_t bytes_per_sector = 0;
  uint32_t free_clusters = 0;
  uint32_t total_clusters = 0;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;
  virtual bool FileExists(const std::wstring& path) = 0;
  virtual bool DirectoryExists(const std::wstring& path) = 0;
  // One level only (MkDir): the parent must exist, the folder must not.
  virtual void CreateDirectory(const std::wstring& path) = 0;
  virtual void DeleteFile(const std::wstring& path) = 0;
  // Names (not paths) of the files directly in `folder`, in no particular order.
  virtual std::vector<std::wstring> ListFiles(const std::wstring& folder) = 0;
  virtual int64_t FileLength(const std::wstring& path) = 0;
  virtual std::string ReadFile(const std::wstring& path) = 0;
  // Creates or replaces the file. Implementations write to a temporary name and rename, so a
  // failure never leaves a half-written file under `path`.
  virtual void WriteFile(const std::wstring& path, std::string_view bytes) = 0;
  virtual void AppendFile(const std::wstring& path, std::string_view bytes) = 0;
  virtual void CopyFile(const std::wstring& from, const std::wstring& to, bool fail_if_exists) = 0;
  // Renames a file, replacing an existing `to` when asked; both on the same drive.
  virtual void MoveFile(const std::wstring& from, const std::wstring& to, bool replace_existing) = 0;
  // GetDiskFreeSpace of the drive holding `root` ("C:\"); nothing when the drive is unknown.
  virtual std::optional<DiskFreeSpace> GetDiskFreeSpace(const std::wstring& root) = 0;
};

}  // namespace corvina
