#include "settings/bulid_path.h"

#include "platform/path.h"
#include "settings/guard.h"

namespace corvina {

bool BulidPath(FileSystem& files, Log& log, const std::wstring& context, const std::wstring& path) {
  return Guard(log, context, L"BulidPath", false, [&] {
    std::wstring current = path::Drive(path);
    if (current.empty()) Raise(kErrPathNotFound, L"Path not found: " + path);
    for (const std::wstring& part : path::Components(path.substr(2))) {
      current = path::Join(current.size() == 2 ? current + L"\\" : current, part);
      if (!files.DirectoryExists(current)) files.CreateDirectory(current);
    }
    return true;
  });
}

}  // namespace corvina
