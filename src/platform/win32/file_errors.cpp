#include "platform/win32/file_errors.h"

#include "platform/win32/system_message.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

int32_t ClassicFileErrorNumber(uint32_t win32_code) {
  switch (win32_code) {
    case ERROR_FILE_NOT_FOUND:
      return kErrFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
      return kErrPathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return kErrPermissionDenied;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return kErrFileExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return kErrDiskFull;
    case ERROR_NOT_READY:
      return kErrDiskNotReady;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
      return kErrBadFileName;
  }
  return kErrPathFileAccess;
}

void ThrowFileError(uint32_t win32_code, const std::wstring& path) {
  ThrowClassicFileError(ClassicFileErrorNumber(win32_code), win32_code, path);
}

void ThrowClassicFileError(int32_t number, uint32_t win32_code, const std::wstring& path) {
  throw Error(number, kFilesSource, SystemMessage(win32_code) + L" (" + path + L")");
}

}  // namespace corvina::win32
