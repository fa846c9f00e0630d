#pragma once
// The module this code is linked into: Vireo.dll inside Outlook, the test program in the
// tests. Window classes are registered on it and the add-in folder is its folder.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

HMODULE ThisModule() noexcept;
// Full path of a module's file (GetModuleFileNameW, without its length limit).
std::wstring ModulePath(HMODULE module);

}  // namespace corvina::win32
