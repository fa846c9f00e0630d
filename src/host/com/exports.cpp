// The DLL's entries: what Windows, COM and regsvr32 call. Listed in vireo.def.
#include "host/com/class_factory.h"
#include "host/com/com_ids.h"
#include "host/com/module.h"
#include "host/com/registration.h"

using namespace corvina::com;

namespace {

// "user" registers for the current user; nothing or "machine" for every user.
bool ForUser(const wchar_t* command_line) {
  return command_line && CompareStringOrdinal(command_line, -1, L"user", -1, TRUE) == CSTR_EQUAL;
}
bool ForMachine(const wchar_t* command_line) {
  return !command_line || !*command_line ||
         CompareStringOrdinal(command_line, -1, L"machine", -1, TRUE) == CSTR_EQUAL;
}

// Registration reports its failures (regsvr32 shows them); an exception is one too.
template <class F>
HRESULT Guarded(F&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace

// Only the module handle is kept: the loader lock is held here, so nothing else may run.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) SetModule(instance);
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID riid, LPVOID* ppv) {
  if (!ppv) return E_POINTER;
  *ppv = nullptr;
  if (clsid != kClsidDesVireo) return CLASS_E_CLASSNOTAVAILABLE;
  return Guarded([&] {
    auto* factory = new ClassFactory();
    const HRESULT hr = factory->QueryInterface(riid, ppv);
    factory->Release();
    return hr;
  });
}

STDAPI DllCanUnloadNow() { return CanUnload() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  return Guarded([] { return Register(HKEY_LOCAL_MACHINE, ModuleFilePath()); });
}

STDAPI DllUnregisterServer() {
  return Guarded([] { return Unregister(HKEY_LOCAL_MACHINE); });
}

STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  return Guarded([&] {
    HKEY hive = ForUser(command_line) ? HKEY_CURRENT_USER
                : ForMachine(command_line) ? HKEY_LOCAL_MACHINE
                                           : nullptr;
    if (!hive) return E_INVALIDARG;
    return install ? Register(hive, ModuleFilePath()) : Unregister(hive);
  });
}
