#include "platform/sim/mapped_file_system.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <string>

#include "base/text.h"
#include "platform/sim/drive_path.h"
#include "platform/sim/file_errors.h"
#include "platform/sim/memory_file_system.h"

namespace corvina::sim {

namespace fs = std::filesystem;

namespace {

// Host names go through UTF-8 explicitly: a wide-string path would be converted with the
// process locale on Linux, which is "C" in tests and cannot hold accented names.
fs::path ToHost(std::wstring_view name) {
  std::string u = ToUtf8(name);
  return fs::path(std::u8string(u.begin(), u.end()));
}

std::wstring FromHost(const fs::path& p) {
  std::u8string u = p.u8string();
  return FromUtf8(std::string(u.begin(), u.end()));
}

bool IsReadOnly(const fs::path& p) {
  std::error_code ec;
  auto st = fs::status(p, ec);
  return !ec && fs::exists(st) && (st.permissions() & fs::perms::owner_write) == fs::perms::none;
}

uint32_t Clusters(uintmax_t bytes) {
  return static_cast<uint32_t>(std::min<uintmax_t>(bytes / MemoryFileSystem::kClusterBytes,
                                                   std::numeric_limits<uint32_t>::max()));
}

bool HasRoom(const fs::path& folder, size_t bytes) {
  std::error_code ec;
  fs::space_info s = fs::space(folder, ec);
  return ec || s.available >= bytes;  // unknown space: let the write itself tell
}

int32_t ErrorFor(const std::error_code& ec) {
  if (ec == std::errc::permission_denied || ec == std::errc::operation_not_permitted)
    return kErrPermissionDenied;
  if (ec == std::errc::no_space_on_device) return kErrDiskFull;
  return kErrPathFileAccess;
}

}  // namespace

MappedFileSystem::MappedFileSystem(Faults& faults) : faults_(faults) {}

// The entry of `folder` that `name` means: the exact spelling when it exists, else the first
// (in host order of names, so the choice is stable) that equals it ignoring case, else the
// name as given (for an entry about to be created). The case-insensitive search uses an
// index of the folder kept while the folder's modification time says nobody else changed it,
// so writing many new files into one folder does not rescan it each time.
fs::path MappedFileSystem::FindEntry(const fs::path& folder, const std::wstring& name) const {
  fs::path exact = folder / ToHost(name);
  std::error_code ec;
  if (fs::exists(fs::symlink_status(exact, ec)) || !fs::is_directory(folder, ec)) return exact;
  const auto stamp = fs::last_write_time(folder, ec);
  FolderIndex& index = indexes_[folder];
  if (ec || !index.valid || index.stamp != stamp) {
    index.entries.clear();
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
      fs::path leaf = entry.path().filename();
      auto [it, added] = index.entries.emplace(FoldName(FromHost(leaf)), leaf);
      if (!added && leaf < it->second) it->second = leaf;
    }
    index.stamp = stamp;
    index.valid = !ec;
  }
  auto it = index.entries.find(FoldName(name));
  return it != index.entries.end() ? folder / it->second : exact;
}

void MappedFileSystem::NoteChange(const fs::path& entry) const {
  auto it = indexes_.find(entry.parent_path());
  if (it == indexes_.end() || !it->second.valid) return;
  FolderIndex& index = it->second;
  std::error_code ec;
  const bool present = fs::exists(fs::symlink_status(entry, ec));
  const std::wstring key = FoldName(FromHost(entry.filename()));
  if (present) {
    index.entries[key] = entry.filename();
  } else {
    index.entries.erase(key);
  }
  index.stamp = fs::last_write_time(entry.parent_path(), ec);
  if (ec) index.valid = false;
}

void MappedFileSystem::Map(wchar_t letter, fs::path folder) {
  drives_[UCase(std::wstring(1, letter))[0]] = std::move(folder);
}

MappedFileSystem::Resolved MappedFileSystem::Resolve(const std::wstring& path) const {
  DrivePath parsed;
  if (int32_t err = ParseDrivePath(path, parsed)) ThrowFileError(err, path);
  if (parsed.device) return Resolved{{}, false, true};
  auto it = drives_.find(parsed.drive);
  if (it == drives_.end()) ThrowFileError(kErrPathNotFound, path);
  Resolved r{it->second, parsed.names.empty()};
  for (const std::wstring& name : parsed.names) r.host = FindEntry(r.host, name);
  return r;
}

std::optional<fs::path> MappedFileSystem::HostPath(const std::wstring& path) const {
  try {
    Resolved r = Resolve(path);
    if (r.device) return std::nullopt;
    return r.host;
  } catch (const Error&) {
    return std::nullopt;
  }
}

MappedFileSystem::Resolved MappedFileSystem::ResolveInExistingFolder(
    const std::wstring& path) const {
  Resolved r = Resolve(path);
  if (r.device) return r;
  std::error_code ec;
  if (!fs::is_directory(r.root ? r.host : r.host.parent_path(), ec))
    ThrowFileError(kErrPathNotFound, path);
  return r;
}

MappedFileSystem::Resolved MappedFileSystem::ResolveWritable(const std::wstring& path) const {
  Resolved r = ResolveInExistingFolder(path);
  if (r.device) return r;
  std::error_code ec;
  if (r.root || fs::is_directory(r.host, ec)) ThrowFileError(kErrPathFileAccess, path);
  // Linux would replace or delete a file without write permission; Windows refuses.
  if (IsReadOnly(r.host)) ThrowFileError(kErrPermissionDenied, path);
  return r;
}

void MappedFileSystem::Replace(const Resolved& target, const std::wstring& path,
                               std::string_view bytes) {
  if (!HasRoom(target.host.parent_path(), bytes.size())) ThrowFileError(kErrDiskFull, path);
  const fs::path temp =
      target.host.parent_path() / (".corvina-" + std::to_string(++temp_serial_) + ".tmp");
  std::error_code ec;
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
      fs::remove(temp, ec);
      ThrowFileError(
          HasRoom(target.host.parent_path(), bytes.size()) ? kErrPathFileAccess : kErrDiskFull,
          path);
    }
  }
  fs::rename(temp, target.host, ec);
  if (ec) {
    std::error_code ignored;
    fs::remove(temp, ignored);
    ThrowFileError(ErrorFor(ec), path);
  }
  NoteChange(target.host);
}

bool MappedFileSystem::FileExists(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "FileExists");
  auto host = HostPath(path);
  std::error_code ec;
  return host && fs::is_regular_file(*host, ec);
}

bool MappedFileSystem::DirectoryExists(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "DirectoryExists");
  auto host = HostPath(path);
  std::error_code ec;
  return host && fs::is_directory(*host, ec);
}

void MappedFileSystem::CreateDirectory(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "CreateDirectory");
  Resolved r = ResolveInExistingFolder(path);
  std::error_code ec;
  if (r.device || r.root || fs::exists(fs::symlink_status(r.host, ec)))
    ThrowFileError(kErrPathFileAccess, path);
  if (!fs::create_directory(r.host, ec)) ThrowFileError(ErrorFor(ec), path);
  NoteChange(r.host);
}

void MappedFileSystem::DeleteFile(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "DeleteFile");
  Resolved r = ResolveInExistingFolder(path);
  std::error_code ec;
  if (r.device || !fs::is_regular_file(r.host, ec)) ThrowFileError(kErrFileNotFound, path);
  if (IsReadOnly(r.host)) ThrowFileError(kErrPermissionDenied, path);
  if (!fs::remove(r.host, ec)) ThrowFileError(ErrorFor(ec), path);
  NoteChange(r.host);
}

std::vector<std::wstring> MappedFileSystem::ListFiles(const std::wstring& folder) {
  faults_.Enter(Service::kFiles, "ListFiles");
  Resolved r = Resolve(folder);
  std::error_code ec;
  if (r.device || !fs::is_directory(r.host, ec)) ThrowFileError(kErrPathNotFound, folder);
  std::vector<std::wstring> names;
  for (const auto& entry : fs::directory_iterator(r.host, ec))
    if (entry.is_regular_file(ec)) names.push_back(FromHost(entry.path().filename()));
  if (ec) ThrowFileError(ErrorFor(ec), folder);
  return names;
}

int64_t MappedFileSystem::FileLength(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "FileLength");
  Resolved r = ResolveInExistingFolder(path);
  std::error_code ec;
  if (r.device || !fs::is_regular_file(r.host, ec)) ThrowFileError(kErrFileNotFound, path);
  auto size = fs::file_size(r.host, ec);
  if (ec) ThrowFileError(ErrorFor(ec), path);
  return static_cast<int64_t>(size);
}

std::string MappedFileSystem::ReadFile(const std::wstring& path) {
  faults_.Enter(Service::kFiles, "ReadFile");
  Resolved r = ResolveInExistingFolder(path);
  std::error_code ec;
  if (r.device || !fs::exists(r.host, ec)) ThrowFileError(kErrFileNotFound, path);
  if (fs::is_directory(r.host, ec)) ThrowFileError(kErrPathFileAccess, path);
  std::ifstream in(r.host, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad() || !in.is_open()) ThrowFileError(kErrPermissionDenied, path);
  return bytes;
}

void MappedFileSystem::WriteFile(const std::wstring& path, std::string_view bytes) {
  faults_.Enter(Service::kFiles, "WriteFile");
  Resolved r = ResolveWritable(path);
  if (r.device) return;  // the device swallows the bytes
  Replace(r, path, bytes);
}

void MappedFileSystem::AppendFile(const std::wstring& path, std::string_view bytes) {
  faults_.Enter(Service::kFiles, "AppendFile");
  Resolved r = ResolveWritable(path);
  if (r.device) return;
  if (!HasRoom(r.host.parent_path(), bytes.size())) ThrowFileError(kErrDiskFull, path);
  std::ofstream out(r.host, std::ios::binary | std::ios::app);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) ThrowFileError(kErrPathFileAccess, path);
  NoteChange(r.host);
}

void MappedFileSystem::CopyFile(const std::wstring& from, const std::wstring& to,
                                bool fail_if_exists) {
  faults_.Enter(Service::kFiles, "CopyFile");
  Resolved src = ResolveInExistingFolder(from);
  std::error_code ec;
  if (src.device || !fs::is_regular_file(src.host, ec)) ThrowFileError(kErrFileNotFound, from);
  Resolved dst = ResolveInExistingFolder(to);
  if (dst.device) return;  // copied into the device, and gone
  if (fail_if_exists && fs::exists(fs::symlink_status(dst.host, ec)))
    ThrowFileError(kErrFileExists, to);
  dst = ResolveWritable(to);
  if (fs::equivalent(src.host, dst.host, ec)) ThrowFileError(kErrPathFileAccess, to);
  std::ifstream in(src.host, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (!in.is_open() || in.bad()) ThrowFileError(kErrPermissionDenied, from);
  Replace(dst, to, bytes);
  // A copy keeps the file's attributes (read-only among them), as on Windows.
  fs::permissions(dst.host, fs::status(src.host, ec).permissions(), ec);
}

void MappedFileSystem::MoveFile(const std::wstring& from, const std::wstring& to,
                                bool replace_existing) {
  faults_.Enter(Service::kFiles, "MoveFile");
  Resolved src = ResolveInExistingFolder(from);
  std::error_code ec;
  if (src.device || !fs::is_regular_file(src.host, ec)) ThrowFileError(kErrFileNotFound, from);
  Resolved dst = ResolveWritable(to);
  // A rename cannot take a file off its disk; without the copy fallback Windows refuses.
  if (dst.device) ThrowFileError(kErrPathFileAccess, to);
  if (fs::exists(fs::symlink_status(dst.host, ec)) && !fs::equivalent(src.host, dst.host, ec)) {
    if (!replace_existing || fs::is_directory(dst.host, ec)) ThrowFileError(kErrFileExists, to);
  }
  fs::rename(src.host, dst.host, ec);  // atomic on one file system
  if (ec) ThrowFileError(ErrorFor(ec), to);
  NoteChange(src.host);
  NoteChange(dst.host);
}

std::optional<DiskFreeSpace> MappedFileSystem::GetDiskFreeSpace(const std::wstring& root) {
  faults_.Enter(Service::kFiles, "GetDiskFreeSpace");
  auto it = drives_.find(RootDrive(root));
  if (it == drives_.end()) return std::nullopt;
  std::error_code ec;
  fs::space_info s = fs::space(it->second, ec);
  if (ec) return std::nullopt;
  return DiskFreeSpace{MemoryFileSystem::kSectorsPerCluster, MemoryFileSystem::kBytesPerSector,
                       Clusters(s.available), Clusters(s.capacity)};
}

}  // namespace corvina::sim
