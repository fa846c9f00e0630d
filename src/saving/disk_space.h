#pragma once
#include <cstdint>
#include <string>

#include "addin/addin.h"

namespace corvina {

// Before the preview window saves the selection: is there room on the destination's drive
// (unless `skip_disk_test` is 1), and does the user accept a selection over 50 MB? Both sides
// are decimal megabytes of whole-message sizes, a deliberate simplification.
bool CheckDiskSpace(AddIn& addin, int32_t skip_disk_test, const std::wstring& destination);

// Free megabytes of the drive of `path` (its first character + ":\"), whole; -1 when unknown.
int64_t FreeMegabytes(AddIn& addin, const std::wstring& path);

}  // namespace corvina
