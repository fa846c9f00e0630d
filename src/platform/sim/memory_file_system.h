#pragma once
// A FileSystem held entirely in memory, for tests and benchmarks: drives with settable free
// space, folders and files with Windows rules (names keep the case they were created with
// and are found in any case; paths resolve by the naming rules of drive_path.h: trailing
// dots and blanks, device names, MAX_PATH, "\\?\"), read-only files, and the classic error
// numbers. Every FileSystem member counts itself through Faults first, so a test can
// fail the n-th file call.
//
// A path whose last name is a device (NUL, CON, "com1.txt", ...) behaves as the device does
// on Windows: writing, appending and copying to it succeed and store nothing, it never
// exists, reading or deleting it fails with 53, MkDir of it with 75 and a rename onto it
// (which cannot leave the disk) with 75.
//
// Free space is kept in bytes per drive. A write needs room for the whole new content, as the
// temporary file it goes through exists next to the old one until the rename; a write that
// does not fit fails with error 61 and changes nothing.
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "platform/sim/faults.h"

namespace corvina::sim {

class MemoryFileSystem : public FileSystem {
 public:
  // GetDiskFreeSpace reports 8 sectors of 512 bytes per cluster.
  static constexpr uint32_t kSectorsPerCluster = 8;
  static constexpr uint32_t kBytesPerSector = 512;
  static constexpr uint64_t kClusterBytes = uint64_t{kSectorsPerCluster} * kBytesPerSector;

  // Starts with no drive at all; a test adds the ones it needs.
  explicit MemoryFileSystem(Faults& faults);
  ~MemoryFileSystem() override;

  // Drives, by letter (any case). A drive without a disk (an empty floppy drive) is known but
  // every access to it fails with 71 and GetDiskFreeSpace reports nothing.
  void AddDrive(wchar_t letter, uint64_t free_bytes);
  void AddDriveWithoutDisk(wchar_t letter);
  void SetFreeBytes(wchar_t letter, uint64_t free_bytes);
  uint64_t FreeBytes(wchar_t letter) const;

  // Test helpers. They neither count calls nor fail by plan. Put never fails for lack of room
  // (seeding a mailbox's files is not a disk-full test), but its bytes count as used and take
  // free space down to zero at most. A path Windows refuses by its naming rules throws the
  // Error it gives (52, 75, 76), so a test seeding arbitrary names can tell those from its own
  // mistakes. A device name (a file Windows could not hold; "\\?\C:\...\NUL" is one), an
  // unknown drive or a file where a folder is is a bug in the test: std::invalid_argument.
  void Put(const std::wstring& path, std::string_view bytes);  // creates missing folders
  void PutDirectory(const std::wstring& path);                 // with its missing parents
  std::optional<std::string> Get(const std::wstring& path) const;
  void SetReadOnly(const std::wstring& path, bool read_only = true);
  // Takes away a file or an empty folder, as another program (or the user) might.
  void Erase(const std::wstring& path);
  // Every folder (ending in "\") and file of every drive, in stored case, sorted by name.
  std::vector<std::wstring> ListAll() const;

  bool FileExists(const std::wstring& path) override;
  bool DirectoryExists(const std::wstring& path) override;
  void CreateDirectory(const std::wstring& path) override;
  void DeleteFile(const std::wstring& path) override;
  std::vector<std::wstring> ListFiles(const std::wstring& folder) override;
  int64_t FileLength(const std::wstring& path) override;
  std::string ReadFile(const std::wstring& path) override;
  void WriteFile(const std::wstring& path, std::string_view bytes) override;
  void AppendFile(const std::wstring& path, std::string_view bytes) override;
  void CopyFile(const std::wstring& from, const std::wstring& to, bool fail_if_exists) override;
  void MoveFile(const std::wstring& from, const std::wstring& to, bool replace_existing) override;
  std::optional<DiskFreeSpace> GetDiskFreeSpace(const std::wstring& root) override;

 private:
  struct Node {
    std::wstring name;  // as created
    bool directory = false;
    bool read_only = false;
    std::string bytes;
    std::map<std::wstring, std::unique_ptr<Node>> children;  // by FoldName
  };
  struct Drive {
    bool disk_present = true;
    uint64_t free_bytes = 0;
    uint64_t used_bytes = 0;
    Node root;
  };
  // Where a path leads: its drive, the folder holding it (null for a root) and the entry
  // itself (null when absent). A device has neither drive nor folder nor entry.
  struct Location {
    Drive* drive = nullptr;
    Node* parent = nullptr;
    Node* node = nullptr;
    std::wstring name;
    bool device = false;
  };

  // 0 and `out` filled, or the error number the path meets on the way.
  int32_t Locate(const std::wstring& path, Location& out) const;
  Location Need(const std::wstring& path) const;
  // The folder that will hold a new or replaced file at `path`, checked for writing (a device
  // takes any bytes).
  Location NeedWritable(const std::wstring& path) const;
  static void Store(Drive& drive, Node& file, std::string bytes);
  struct Seeded {
    Drive& drive;
    Node& node;
  };
  Seeded Seed(const std::wstring& path, bool directory);

  Faults& faults_;
  std::map<wchar_t, Drive> drives_;
};

}  // namespace corvina::sim
