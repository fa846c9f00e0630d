#pragma once
#include <string>

#include "platform/file_system.h"
#include "settings/log.h"

namespace corvina {

// Creates every missing folder of `path` ("C:\a\b\" creates C:\a and C:\a\b). Returns false,
// after logging under "BulidPath", when a level cannot be made.
bool BulidPath(FileSystem& files, Log& log, const std::wstring& context, const std::wstring& path);

}  // namespace corvina
