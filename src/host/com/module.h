#pragma once
// What the DLL keeps for its whole life: its module handle and the counts that tell COM
// whether it may be unloaded. Nothing here runs code at load time: the counters are
// constant-initialised and DllMain only stores the handle.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::com {

void SetModule(HMODULE module) noexcept;
HMODULE Module() noexcept;
// Full path of Vireo.dll.
std::wstring ModuleFilePath();
// Folder of Vireo.dll, without a trailing "\": the add-in folder (App.Path).
std::wstring ModuleFolder();

// Live COM objects (class factories included) and IClassFactory::LockServer locks.
void ObjectCreated() noexcept;
void ObjectDestroyed() noexcept;
void LockServer(bool lock) noexcept;
bool CanUnload() noexcept;

}  // namespace corvina::com
