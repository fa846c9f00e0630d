#include "platform/sim/file_errors.h"

namespace corvina::sim {

namespace {
const wchar_t* ClassicText(int32_t number) {
  switch (number) {
    case kErrBadFileName:
      return L"Bad file name or number";
    case kErrFileNotFound:
      return L"File not found";
    case kErrFileExists:
      return L"File already exists";
    case kErrDiskFull:
      return L"Disk full";
    case kErrPermissionDenied:
      return L"Permission denied";
    case kErrDiskNotReady:
      return L"Disk not ready";
    case kErrPathFileAccess:
      return L"Path/File access error";
    case kErrPathNotFound:
      return L"Path not found";
  }
  return L"File error";
}
}  // namespace

Error FileError(int32_t number, const std::wstring& path) {
  return Error(number, kFilesSource, std::wstring(ClassicText(number)) + L": " + path);
}

void ThrowFileError(int32_t number, const std::wstring& path) { throw FileError(number, path); }

}  // namespace corvina::sim
