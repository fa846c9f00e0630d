#include "platform/win32/win32_file_system.h"

#include <algorithm>
#include <cwchar>
#include <limits>

#include "platform/path.h"
#include "platform/win32/file_errors.h"
#include "platform/win32/long_path.h"
#include "platform/win32/unique_handle.h"

namespace corvina::win32 {
namespace {

// Every path goes to Windows in its long form (long_path.h); errors name the caller's path.
std::optional<WIN32_FILE_ATTRIBUTE_DATA> Attributes(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(LongPath(path).c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
  return data;
}

bool IsDirectory(const WIN32_FILE_ATTRIBUTE_DATA& data) {
  return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

[[noreturn]] void ThrowLastError(const std::wstring& path) { ThrowFileError(GetLastError(), path); }

// A file found as a folder is a "path/file access error", as the classic runtime says.
void RefuseDirectory(const std::wstring& path) {
  auto data = Attributes(path);
  if (data && IsDirectory(*data)) ThrowClassicFileError(kErrPathFileAccess, ERROR_ACCESS_DENIED, path);
}

// Before writing: no folder, and no read-only file (checked here because a rename over a
// read-only file is refused by Windows but not by every file system Wine runs on).
void RefuseUnwritable(const std::wstring& path) {
  auto data = Attributes(path);
  if (!data) return;
  if (IsDirectory(*data)) ThrowClassicFileError(kErrPathFileAccess, ERROR_ACCESS_DENIED, path);
  if (data->dwFileAttributes & FILE_ATTRIBUTE_READONLY) ThrowFileError(ERROR_ACCESS_DENIED, path);
}

void WriteAll(HANDLE file, std::string_view bytes, const std::wstring& path) {
  while (!bytes.empty()) {
    const DWORD chunk = static_cast<DWORD>(std::min<size_t>(bytes.size(), 1u << 20));
    DWORD written = 0;
    if (!::WriteFile(file, bytes.data(), chunk, &written, nullptr)) ThrowLastError(path);
    bytes.remove_prefix(written);
  }
}

// `name` is the caller's path, for the error; `long_path` what Windows is given.
UniqueFile OpenLong(const std::wstring& long_path, const std::wstring& name, DWORD access,
                    DWORD share, DWORD disposition) {
  UniqueFile file(CreateFileW(long_path.c_str(), access, share, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) ThrowLastError(name);
  return file;
}

UniqueFile Open(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
  return OpenLong(LongPath(path), path, access, share, disposition);
}

// A new, empty file "vir<hex>.tmp" in `long_folder`, as GetTempFileNameW would make it; that
// function refuses (or, under Wine, overruns its buffer on) folders longer than MAX_PATH.
std::wstring CreateTempFile(const std::wstring& long_folder, const std::wstring& target) {
  DWORD unique = GetTickCount() ^ (GetCurrentProcessId() << 16);
  for (int attempt = 0; attempt < 1000; ++attempt, ++unique) {
    wchar_t name[24];
    std::swprintf(name, 24, L"\\vir%04lX.tmp", static_cast<unsigned long>(unique & 0xFFFF));
    std::wstring temp = long_folder + name;
    UniqueFile file(CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file) return temp;
    const DWORD code = GetLastError();
    if (code != ERROR_FILE_EXISTS && code != ERROR_ALREADY_EXISTS) ThrowFileError(code, target);
  }
  ThrowFileError(ERROR_FILE_EXISTS, target);
}

}  // namespace

bool Win32FileSystem::FileExists(const std::wstring& path) {
  auto data = Attributes(path);
  return data && !IsDirectory(*data);
}

bool Win32FileSystem::DirectoryExists(const std::wstring& path) {
  auto data = Attributes(path);
  return data && IsDirectory(*data);
}

void Win32FileSystem::CreateDirectory(const std::wstring& path) {
  if (CreateDirectoryW(LongPath(path).c_str(), nullptr)) return;
  const DWORD code = GetLastError();
  // MkDir of a name already taken is a "path/file access error", not "file already exists".
  if (code == ERROR_ALREADY_EXISTS) ThrowClassicFileError(kErrPathFileAccess, code, path);
  ThrowFileError(code, path);
}

void Win32FileSystem::DeleteFile(const std::wstring& path) {
  // Kill of a folder finds no file to delete.
  auto data = Attributes(path);
  if (data && IsDirectory(*data)) ThrowClassicFileError(kErrFileNotFound, ERROR_FILE_NOT_FOUND, path);
  if (!DeleteFileW(LongPath(path).c_str())) ThrowLastError(path);
}

std::vector<std::wstring> Win32FileSystem::ListFiles(const std::wstring& folder) {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW found;
  UniqueFind find(FindFirstFileW(path::Join(LongPath(folder), L"*").c_str(), &found));
  if (!find) {
    const DWORD code = GetLastError();
    if (code == ERROR_FILE_NOT_FOUND || code == ERROR_NO_MORE_FILES) return names;  // empty
    ThrowFileError(code, folder);
  }
  do {
    if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.emplace_back(found.cFileName);
  } while (FindNextFileW(find.get(), &found));
  if (GetLastError() != ERROR_NO_MORE_FILES) ThrowLastError(folder);
  return names;
}

int64_t Win32FileSystem::FileLength(const std::wstring& path) {
  auto data = Attributes(path);
  if (!data) ThrowLastError(path);
  if (IsDirectory(*data)) ThrowClassicFileError(kErrFileNotFound, ERROR_FILE_NOT_FOUND, path);
  return static_cast<int64_t>((uint64_t{data->nFileSizeHigh} << 32) | data->nFileSizeLow);
}

std::string Win32FileSystem::ReadFile(const std::wstring& path) {
  RefuseDirectory(path);
  // Others may keep writing (the log) or delete it meanwhile; we read what is there.
  UniqueFile file = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                         OPEN_EXISTING);
  std::string bytes;
  char buffer[64 * 1024];
  DWORD got = 0;
  do {
    if (!::ReadFile(file.get(), buffer, sizeof buffer, &got, nullptr)) ThrowLastError(path);
    bytes.append(buffer, got);
  } while (got > 0);
  return bytes;
}

void Win32FileSystem::WriteFile(const std::wstring& path, std::string_view bytes) {
  RefuseUnwritable(path);
  // The temporary file sits in the target's folder so the final move is a rename on one
  // volume, which Windows does in one step.
  const std::wstring target = LongPath(path);
  const std::wstring temp = CreateTempFile(target.substr(0, target.rfind(L'\\')), path);
  struct RemoveTemp {
    const std::wstring& name;
    bool keep = false;
    ~RemoveTemp() {
      if (!keep) DeleteFileW(name.c_str());
    }
  } guard{temp};
  {
    UniqueFile file = OpenLong(temp, path, GENERIC_WRITE, 0, TRUNCATE_EXISTING);
    WriteAll(file.get(), bytes, path);
  }
  if (!MoveFileExW(temp.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING)) ThrowLastError(path);
  guard.keep = true;
}

void Win32FileSystem::AppendFile(const std::wstring& path, std::string_view bytes) {
  RefuseUnwritable(path);
  UniqueFile file = Open(path, FILE_APPEND_DATA, FILE_SHARE_READ, OPEN_ALWAYS);
  WriteAll(file.get(), bytes, path);
}

void Win32FileSystem::CopyFile(const std::wstring& from, const std::wstring& to,
                               bool fail_if_exists) {
  auto source = Attributes(from);
  if (!source || IsDirectory(*source))
    ThrowClassicFileError(kErrFileNotFound, ERROR_FILE_NOT_FOUND, from);
  // A file copied onto itself is refused before Windows would report a sharing violation.
  const std::wstring source_path = LongPath(from), target = LongPath(to);
  if (path::SamePath(source_path, target))
    ThrowClassicFileError(kErrPathFileAccess, ERROR_ACCESS_DENIED, to);
  if (!CopyFileW(source_path.c_str(), target.c_str(), fail_if_exists)) ThrowLastError(to);
}

void Win32FileSystem::MoveFile(const std::wstring& from, const std::wstring& to,
                               bool replace_existing) {
  // Same drive only (no copy fallback): callers use it to swap a complete file in at once.
  const DWORD flags = replace_existing ? MOVEFILE_REPLACE_EXISTING : 0;
  if (!MoveFileExW(LongPath(from).c_str(), LongPath(to).c_str(), flags)) ThrowLastError(to);
}

std::optional<DiskFreeSpace> Win32FileSystem::GetDiskFreeSpace(const std::wstring& root) {
  // Any path on the volume will do: Windows is asked about its root.
  const std::wstring volume = LongPathRoot(LongPath(root));
  if (volume.empty()) return std::nullopt;
  DWORD sectors = 0, bytes = 0, free_clusters = 0, total = 0;
  if (!GetDiskFreeSpaceW(volume.c_str(), &sectors, &bytes, &free_clusters, &total)) return std::nullopt;
  return DiskFreeSpace{sectors, bytes, free_clusters, total};
}

}  // namespace corvina::win32
