#pragma once
// The stand-in Outlook's other half: what Outlook does with an add-in DLL besides showing it the
// object model. It loads and registers the DLL as regsvr32 does, creates the connect class by
// its ProgID, and drives IDTExtensibility2 through the vtable or through IDispatch::Invoke
// (hosts differ in which they use). It also knows where an add-in leaves its traces: the
// files beside the DLL and the per-user settings key.
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/windows_api.h"

namespace corvina::standin {

inline constexpr wchar_t kProgId[] = L"Vireo.DesVireo";
inline constexpr wchar_t kSettingsKey[] = L"Software\\VB and VBA Program Settings\\Vireo";

// IDTExtensibility2 as a host declares it, independently of the add-in's own header.
inline constexpr IID kIidExtensibility = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
struct HostExtensibility : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch*, long, IDispatch*, SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(long, SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) = 0;
};
#pragma GCC diagnostic pop

// The add-in DLL loaded by path; it stays loaded as long as this object lives.
class AddinDll {
 public:
  explicit AddinDll(std::wstring path);
  ~AddinDll();
  AddinDll(const AddinDll&) = delete;
  AddinDll& operator=(const AddinDll&) = delete;

  bool loaded() const { return module_ != nullptr; }
  const std::wstring& path() const { return path_; }
  std::wstring folder() const { return path_.substr(0, path_.rfind(L'\\')); }
  // DllRegisterServer / DllUnregisterServer: machine-wide, the registration Wine looks up.
  HRESULT Register() const { return Entry("DllRegisterServer"); }
  HRESULT Unregister() const { return Entry("DllUnregisterServer"); }

 private:
  HRESULT Entry(const char* name) const;

  std::wstring path_;
  HMODULE module_ = nullptr;
};

// The suite's own copy of the add-in (in a folder of its own beside the suite), loaded for the
// whole run.
AddinDll& SuiteAddin();

// kDispatchByReference calls IDispatch::Invoke as a VB-style late-bound caller passing its
// variables: every argument as VT_VARIANT | VT_BYREF, the later ones through two references.
enum class CallStyle { kVtable, kDispatch, kDispatchByReference };

// One instance of the connect class, created by ProgID as Outlook creates it.
class Addin {
 public:
  explicit Addin(CallStyle style);
  Addin(const Addin&) = delete;
  Addin& operator=(const Addin&) = delete;

  // S_OK when the class was found, created and answered IDTExtensibility2.
  HRESULT created() const { return created_; }

  HRESULT OnConnection(IDispatch* application, long mode);
  HRESULT OnStartupComplete();
  HRESULT OnBeginShutdown();
  HRESULT OnDisconnection(long mode);
  // Outlook's last reference goes: the add-in terminates.
  void Release() { object_.Reset(); }

 private:
  template <class F>
  HRESULT Call(DISPID id, std::vector<VARIANT> args, F&& vtable);
  HRESULT Invoke(DISPID id, std::vector<VARIANT> args);  // natural order

  CallStyle style_;
  HRESULT created_ = E_FAIL;
  Microsoft::WRL::ComPtr<HostExtensibility> object_;
};

// The per-user settings the add-in keeps in the registry.
std::optional<std::wstring> ReadSetting(const std::wstring& section, const std::wstring& key);
void WriteSetting(const std::wstring& section, const std::wstring& key, const std::wstring& value);
void DeleteSettings();
bool KeyExists(HKEY hive, const std::wstring& path);

// Deletes everything in `folder` but the file named `keep`.
void EmptyFolder(const std::wstring& folder, const std::wstring& keep);
// The lines of a UTF-8 text file; empty when there is no such file.
std::vector<std::wstring> ReadLines(const std::wstring& path);

}  // namespace corvina::standin
