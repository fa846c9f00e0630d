#pragma once
// A FileSystem whose drives are folders of the host, for the simulator: "C:\Mail\a.txt" with
// C: mapped onto /tmp/profile/drive is /tmp/profile/drive/Mail/a.txt, so a person can open
// what the add-in wrote. Windows rules hold on a case-sensitive host too: a name that does
// not exist as spelt is looked up by a case-insensitive scan of its folder, and paths resolve
// by the naming rules of drive_path.h, so "C:\Out\x.pdf." writes x.pdf and "C:\Out\nul.txt"
// writes nothing at all. The errors, devices included, are those of MemoryFileSystem; every
// FileSystem member counts itself through Faults first.
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/file_system.h"
#include "platform/sim/faults.h"

namespace corvina::sim {

class MappedFileSystem : public FileSystem {
 public:
  explicit MappedFileSystem(Faults& faults);

  // Drive `letter` (any case) shows the host folder `folder`, which the caller creates. A
  // path on a drive that is not mapped fails with 76.
  void Map(wchar_t letter, std::filesystem::path folder);
  // Where `path` lands on the host, existing names in their host spelling; nothing for an
  // unmapped drive, a malformed path or a device. For the simulator's messages and for tests.
  std::optional<std::filesystem::path> HostPath(const std::wstring& path) const;

  bool FileExists(const std::wstring& path) override;
  bool DirectoryExists(const std::wstring& path) override;
  void CreateDirectory(const std::wstring& path) override;
  void DeleteFile(const std::wstring& path) override;
  std::vector<std::wstring> ListFiles(const std::wstring& folder) override;
  int64_t FileLength(const std::wstring& path) override;
  std::string ReadFile(const std::wstring& path) override;
  // Writes a temporary sibling (a short name of its own, so a target name of the longest
  // length still leaves room for it) and renames it over `path`.
  void WriteFile(const std::wstring& path, std::string_view bytes) override;
  void AppendFile(const std::wstring& path, std::string_view bytes) override;
  void CopyFile(const std::wstring& from, const std::wstring& to, bool fail_if_exists) override;
  void MoveFile(const std::wstring& from, const std::wstring& to, bool replace_existing) override;
  // From the host's free space (statvfs on Linux) in the clusters MemoryFileSystem reports.
  std::optional<DiskFreeSpace> GetDiskFreeSpace(const std::wstring& root) override;

 private:
  struct Resolved {
    std::filesystem::path host;  // empty for a device
    bool root = false;
    bool device = false;
  };
  // Throws the error ParseDrivePath finds in the path (52, 75, 76) and 76 for an unmapped
  // drive. A device resolves on any drive, mapped or not.
  Resolved Resolve(const std::wstring& path) const;
  // Resolve, then 76 unless the folder that holds the entry (or the root itself) exists.
  Resolved ResolveInExistingFolder(const std::wstring& path) const;
  // Checks a file about to be created or replaced; throws 75 for a root or a folder, 70 for a
  // read-only file. A device passes: it takes any bytes.
  Resolved ResolveWritable(const std::wstring& path) const;
  void Replace(const Resolved& target, const std::wstring& path, std::string_view bytes);

  std::filesystem::path FindEntry(const std::filesystem::path& folder, const std::wstring& name) const;
  // Keeps the index of `entry`'s folder in step after this file system changed the entry.
  void NoteChange(const std::filesystem::path& entry) const;

  struct FolderIndex {
    std::filesystem::file_time_type stamp;
    bool valid = false;
    std::unordered_map<std::wstring, std::filesystem::path> entries;  // by folded name
  };

  Faults& faults_;
  std::map<wchar_t, std::filesystem::path> drives_;
  unsigned temp_serial_ = 0;
  mutable std::map<std::filesystem::path, FolderIndex> indexes_;
};

}  // namespace corvina::sim
