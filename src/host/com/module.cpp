#include "host/com/module.h"

#include <atomic>

#include "platform/path.h"
#include "platform/win32/this_module.h"

namespace corvina::com {
namespace {

HMODULE g_module = nullptr;
std::atomic<long> g_objects{0};
std::atomic<long> g_locks{0};

}  // namespace

void SetModule(HMODULE module) noexcept { g_module = module; }
HMODULE Module() noexcept { return g_module ? g_module : win32::ThisModule(); }

std::wstring ModuleFilePath() { return win32::ModulePath(Module()); }
std::wstring ModuleFolder() { return path::Parent(ModuleFilePath()); }

void ObjectCreated() noexcept { ++g_objects; }
void ObjectDestroyed() noexcept { --g_objects; }
void LockServer(bool lock) noexcept {
  if (lock) ++g_locks;
  else --g_locks;
}
bool CanUnload() noexcept { return g_objects == 0 && g_locks == 0; }

}  // namespace corvina::com
