#include "platform/sim/memory_file_system.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "platform/sim/drive_path.h"
#include "platform/sim/file_errors.h"

namespace corvina::sim {

namespace {
wchar_t DriveKey(wchar_t letter) { return UCase(std::wstring(1, letter))[0]; }

uint32_t Saturate32(uint64_t v) {
  return static_cast<uint32_t>(std::min<uint64_t>(v, std::numeric_limits<uint32_t>::max()));
}
}  // namespace

MemoryFileSystem::MemoryFileSystem(Faults& faults) : faults_(faults) {}
MemoryFileSystem::~MemoryFileSystem() = default;

void MemoryFileSystem::AddDrive(wchar_t letter, uint64_t free_bytes) {
  Drive& d = drives_[DriveKey(letter)];
  d.disk_present = true;
  d.free_bytes = free_bytes;
  d.root.directory = true;
  d.root.name = std::wstring{DriveKey(letter), L':'};
}

void MemoryFileSystem::AddDriveWithoutDisk(wchar_t letter) {
  AddDrive(letter, 0);
  drives_[DriveKey(letter)].disk_present = false;
}

void MemoryFileSystem::SetFreeBytes(wchar_t letter, uint64_t free_bytes) {
  auto it = drives_.find(DriveKey(letter));
  if (it == drives_.end()) throw std::invalid_argument("SetFreeBytes: unknown drive");
  it->second.free_bytes = free_bytes;
}

uint64_t MemoryFileSystem::FreeBytes(wchar_t letter) const {
  auto it = drives_.find(DriveKey(letter));
  return it == drives_.end() ? 0 : it->second.free_bytes;
}

int32_t MemoryFileSystem::Locate(const std::wstring& path, Location& out) const {
  DrivePath parsed;
  if (int32_t err = ParseDrivePath(path, parsed)) return err;
  if (parsed.device) {
    out = Location{};
    out.device = true;
    return 0;
  }
  auto it = drives_.find(parsed.drive);
  if (it == drives_.end()) return kErrPathNotFound;
  // The nodes are owned by this object; the const only promises the lookup changes nothing.
  Drive& drive = const_cast<Drive&>(it->second);
  if (!drive.disk_present) return kErrDiskNotReady;
  out = Location{&drive, nullptr, &drive.root, {}};
  for (const std::wstring& name : parsed.names) {
    if (!out.node || !out.node->directory) return kErrPathNotFound;
    out.parent = out.node;
    auto child = out.parent->children.find(FoldName(name));
    out.node = child == out.parent->children.end() ? nullptr : child->second.get();
    out.name = name;
  }
  return 0;
}

MemoryFileSystem::Location MemoryFileSystem::Need(const std::wstring& path) const {
  Location loc;
  if (int32_t err = Locate(path, loc)) ThrowFileError(err, path);
  return loc;
}

MemoryFileSystem::Location MemoryFileSystem::NeedWritable(const std::wstring& path) const {
  Location loc = Need(path);
  if (loc.device) return loc;
  if (!loc.parent || (loc.node && loc.node->directory)) ThrowFileError(kErrPathFileAccess, path);
  if (loc.node && loc.node->read_only) ThrowFileError(kErrPermissionDenied, path);
  return loc;
}

void MemoryFileSystem::Store(Drive& drive, Node& file, std::string bytes) {
  drive.free_bytes = drive.free_bytes + file.bytes.size() - bytes.size();
  drive.used_bytes = drive.used_bytes - file.bytes.size() + bytes.size();
  file.bytes = std::move(bytes);
}

MemoryFileSystem::Seeded MemoryFileSystem::Seed(const std::wstring& path, bool directory) {
  DrivePath parsed;
  if (int32_t err = ParseDrivePath(path, parsed)) ThrowFileError(err, path);
  if (parsed.device) throw std::invalid_argument("a device name cannot be a file or folder");
  auto drive = drives_.find(parsed.drive);
  if (drive == drives_.end()) throw std::invalid_argument("not a path on a known drive");
  Node* node = &drive->second.root;
  for (size_t i = 0; i < parsed.names.size(); ++i) {
    bool last = i + 1 == parsed.names.size();
    auto& slot = node->children[FoldName(parsed.names[i])];
    bool folder = !last || directory;
    if (!slot) slot = std::make_unique<Node>(Node{parsed.names[i], folder, false, {}, {}});
    if (slot->directory != folder)
      throw std::invalid_argument("a file and a folder of the same name");
    node = slot.get();
  }
  return {drive->second, *node};
}

void MemoryFileSystem::Put(const std::wstring& path, std::string_view bytes) {
  auto [drive, file] = Seed(path, false);
  uint64_t grown = bytes.size() > file.bytes.size() ? bytes.size() - file.bytes.size() : 0;
  drive.free_bytes -= std::min(drive.free_bytes, grown);
  drive.free_bytes += file.bytes.size() - std::min(file.bytes.size(), bytes.size());
  drive.used_bytes = drive.used_bytes - file.bytes.size() + bytes.size();
  file.bytes.assign(bytes);
}

void MemoryFileSystem::PutDirectory(const std::wstring& path) { Seed(path, true); }

std::optional<std::string> MemoryFileSystem::Get(const std::wstring& path) const {
  Location loc;
  if (Locate(path, loc) != 0 || !loc.node || loc.node->directory) return std::nullopt;
  return loc.node->bytes;
}

void MemoryFileSystem::SetReadOnly(const std::wstring& path, bool read_only) {
  Location loc;
  if (Locate(path, loc) != 0 || !loc.node)
    throw std::invalid_argument("SetReadOnly: no such entry");
  loc.node->read_only = read_only;
}

void MemoryFileSystem::Erase(const std::wstring& path) {
  Location loc;
  if (Locate(path, loc) != 0 || !loc.node || !loc.parent || !loc.node->children.empty())
    throw std::invalid_argument("Erase: no such file or empty folder");
  Store(*loc.drive, *loc.node, {});  // gives its bytes back to the drive
  loc.parent->children.erase(FoldName(loc.name));
}

std::vector<std::wstring> MemoryFileSystem::ListAll() const {
  std::vector<std::wstring> out;
  auto walk = [&out](auto& self, const Node& folder, const std::wstring& prefix) -> void {
    for (const auto& [key, child] : folder.children) {
      std::wstring p = prefix + child->name;
      if (child->directory) {
        out.push_back(p + L"\\");
        self(self, *child, p + L"\\");
      } else {
        out.push_back(p);
      }
    }
  };
  for (const auto& [letter, drive] : drives_) walk(walk, drive.root, drive.root.name + L"\\");
  return out;
}

bool MemoryFileSystem::FileExists(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "FileExists");
  Location loc;
  return Locate(path, loc) == 0 && loc.node && !loc.node->directory;
}

bool MemoryFileSystem::DirectoryExists(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "DirectoryExists");
  Location loc;
  return Locate(path, loc) == 0 && loc.node && loc.node->directory;
}

void MemoryFileSystem::CreateDirectory(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "CreateDirectory");
  Location loc = Need(path);
  // MkDir of a root or of a name already taken (by a folder or a file) is error 75.
  if (!loc.parent || loc.node) ThrowFileError(kErrPathFileAccess, path);
  loc.parent->children[FoldName(loc.name)] =
      std::make_unique<Node>(Node{loc.name, true, false, {}, {}});
}

void MemoryFileSystem::DeleteFile(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "DeleteFile");
  Location loc = Need(path);
  if (!loc.node || loc.node->directory) ThrowFileError(kErrFileNotFound, path);
  if (loc.node->read_only) ThrowFileError(kErrPermissionDenied, path);
  Store(*loc.drive, *loc.node, {});
  loc.parent->children.erase(FoldName(loc.name));
}

std::vector<std::wstring> MemoryFileSystem::ListFiles(const std::wstring& folder) {
  faults_.Enter(Service::kFiles, "ListFiles");
  Location loc = Need(folder);
  if (!loc.node || !loc.node->directory) ThrowFileError(kErrPathNotFound, folder);
  std::vector<std::wstring> names;
  for (const auto& [key, child] : loc.node->children)
    if (!child->directory) names.push_back(child->name);
  return names;
}

int64_t MemoryFileSystem::FileLength(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "FileLength");
  Location loc = Need(path);
  if (!loc.node || loc.node->directory) ThrowFileError(kErrFileNotFound, path);
  return static_cast<int64_t>(loc.node->bytes.size());
}

std::string MemoryFileSystem::ReadFile(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "ReadFile");
  Location loc = Need(path);
  if (!loc.node) ThrowFileError(kErrFileNotFound, path);
  if (loc.node->directory) ThrowFileError(kErrPathFileAccess, path);
  return loc.node->bytes;
}

void MemoryFileSystem::WriteFile(const std::wstring& path, std::string_view bytes) {
  faults_.Enter(Service::kFiles, "WriteFile");
  Location loc = NeedWritable(path);
  if (loc.device) return;  // the device swallows the bytes
  if (bytes.size() > loc.drive->free_bytes) ThrowFileError(kErrDiskFull, path);
  Node* file = loc.node;
  if (!file) {
    auto& slot = loc.parent->children[FoldName(loc.name)];
    slot = std::make_unique<Node>(Node{loc.name, false, false, {}, {}});
    file = slot.get();
  }
  Store(*loc.drive, *file, std::string(bytes));
}

void MemoryFileSystem::AppendFile(const std::wstring& path, std::string_view bytes) {
  faults_.Enter(Service::kFiles, "AppendFile");
  Location loc = NeedWritable(path);
  if (loc.device) return;
  if (bytes.size() > loc.drive->free_bytes) ThrowFileError(kErrDiskFull, path);
  auto& slot = loc.parent->children[FoldName(loc.name)];
  if (!slot) slot = std::make_unique<Node>(Node{loc.name, false, false, {}, {}});
  // In place: a log or a board appended to a thousand times must not be copied each time.
  loc.drive->free_bytes -= bytes.size();
  loc.drive->used_bytes += bytes.size();
  slot->bytes.append(bytes);
}

void MemoryFileSystem::CopyFile(const std::wstring& from, const std::wstring& to,
                                bool fail_if_exists) {
  faults_.Enter(Service::kFiles, "CopyFile");
  Location src = Need(from);
  if (!src.node || src.node->directory) ThrowFileError(kErrFileNotFound, from);
  Location dst = Need(to);
  if (dst.device) return;  // copied into the device, and gone
  if (dst.node && fail_if_exists) ThrowFileError(kErrFileExists, to);
  dst = NeedWritable(to);
  if (dst.node == src.node) ThrowFileError(kErrPathFileAccess, to);
  if (src.node->bytes.size() > dst.drive->free_bytes) ThrowFileError(kErrDiskFull, to);
  auto& slot = dst.parent->children[FoldName(dst.name)];
  if (!slot) slot = std::make_unique<Node>(Node{dst.name, false, false, {}, {}});
  Store(*dst.drive, *slot, src.node->bytes);
  slot->read_only = src.node->read_only;  // a copy keeps the file's attributes, as on Windows
}

void MemoryFileSystem::MoveFile(const std::wstring& from, const std::wstring& to,
                                bool replace_existing) {
  faults_.Enter(Service::kFiles, "MoveFile");
  Location src = Need(from);
  if (!src.node || src.node->directory) ThrowFileError(kErrFileNotFound, from);
  Location dst = NeedWritable(to);
  // A rename cannot take a file off its disk; without the copy fallback Windows refuses.
  if (dst.device) ThrowFileError(kErrPathFileAccess, to);
  if (dst.drive != src.drive) ThrowFileError(kErrPathFileAccess, to);  // a rename stays on its drive
  if (dst.node == src.node) return;
  if (dst.node && (!replace_existing || dst.node->directory)) ThrowFileError(kErrFileExists, to);
  if (dst.node) Store(*dst.drive, *dst.node, {});
  std::unique_ptr<Node> moving = std::move(src.parent->children[FoldName(src.name)]);
  src.parent->children.erase(FoldName(src.name));
  moving->name = dst.name;
  dst.parent->children[FoldName(dst.name)] = std::move(moving);
}

std::optional<DiskFreeSpace> MemoryFileSystem::GetDiskFreeSpace(const std::wstring& root) {
  faults_.Enter(Service::kFiles, "GetDiskFreeSpace");
  auto it = drives_.find(RootDrive(root));
  if (it == drives_.end() || !it->second.disk_present) return std::nullopt;
  const Drive& d = it->second;
  uint64_t used_clusters = (d.used_bytes + kClusterBytes - 1) / kClusterBytes;
  return DiskFreeSpace{kSectorsPerCluster, kBytesPerSector,
                       Saturate32(d.free_bytes / kClusterBytes),
                       Saturate32(used_clusters + d.free_bytes / kClusterBytes)};
}

}  // namespace corvina::sim
