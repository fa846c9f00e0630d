#include "standin_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "base/text.h"
#include "platform/win32/unique_handle.h"

namespace corvina::standin {
namespace {

VARIANT Long(long value) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_I4;
  v.lVal = value;
  return v;
}

VARIANT Object(IDispatch* object) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_DISPATCH;
  v.pdispVal = object;
  return v;
}

// The custom array Office passes to every IDTExtensibility2 call: empty, by reference.
VARIANT Custom(SAFEARRAY** array) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_ARRAY | VT_VARIANT | VT_BYREF;
  v.pparray = array;
  return v;
}

// A reference to a caller's variable.
VARIANT Reference(VARIANT* target) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_VARIANT | VT_BYREF;
  v.pvarVal = target;
  return v;
}

}  // namespace

AddinDll::AddinDll(std::wstring path) : path_(std::move(path)), module_(LoadLibraryW(path_.c_str())) {}

AddinDll::~AddinDll() {
  if (module_) FreeLibrary(module_);
}

HRESULT AddinDll::Entry(const char* name) const {
  using Function = HRESULT(STDAPICALLTYPE*)();
  const auto entry = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  return entry ? entry() : HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND);
}

AddinDll& SuiteAddin() {
  static AddinDll dll = [] {
    wchar_t exe[MAX_PATH];
    const DWORD n = GetModuleFileNameW(nullptr, exe, MAX_PATH);
    const std::wstring path(exe, n);
    return AddinDll(path.substr(0, path.rfind(L'\\')) + L"\\" WINE_SUITE_ADDIN_DIR L"\\Vireo.dll");
  }();
  return dll;
}

Addin::Addin(CallStyle style) : style_(style) {
  CLSID clsid;
  created_ = CLSIDFromProgID(kProgId, &clsid);
  if (FAILED(created_)) return;
  Microsoft::WRL::ComPtr<IUnknown> unknown;
  created_ = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                              reinterpret_cast<void**>(unknown.GetAddressOf()));
  if (FAILED(created_)) return;
  created_ = unknown->QueryInterface(kIidExtensibility, reinterpret_cast<void**>(object_.GetAddressOf()));
}

HRESULT Addin::Invoke(DISPID id, std::vector<VARIANT> args) {
  // The caller's variables, and the references to them (both stay put during the call).
  const std::vector<VARIANT> variables = args;
  std::vector<VARIANT> links(args.size());
  if (style_ == CallStyle::kDispatchByReference) {
    for (size_t i = 0; i < args.size(); ++i) {
      if (args[i].vt & VT_BYREF) continue;  // the custom array is passed by reference already
      links[i] = Reference(const_cast<VARIANT*>(&variables[i]));
      args[i] = i == 0 ? links[i] : Reference(&links[i]);
    }
  }
  std::vector<VARIANT> reversed(args.rbegin(), args.rend());
  DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  EXCEPINFO exception{};
  UINT bad_argument = 0;
  const HRESULT hr = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                     nullptr, &exception, &bad_argument);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  return hr;
}

// Both styles pass Office's empty custom array; a dispatch call passes it by reference after
// the method's own arguments.
template <class F>
HRESULT Addin::Call(DISPID id, std::vector<VARIANT> args, F&& vtable) {
  if (!object_) return E_POINTER;
  SAFEARRAY* custom = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  args.push_back(Custom(&custom));
  const HRESULT hr = style_ == CallStyle::kVtable ? vtable(&custom) : Invoke(id, std::move(args));
  SafeArrayDestroy(custom);
  return hr;
}

HRESULT Addin::OnConnection(IDispatch* application, long mode) {
  return Call(1, {Object(application), Long(mode), Object(nullptr)}, [&](SAFEARRAY** custom) {
    return object_->OnConnection(application, mode, nullptr, custom);
  });
}

HRESULT Addin::OnDisconnection(long mode) {
  return Call(2, {Long(mode)}, [&](SAFEARRAY** custom) { return object_->OnDisconnection(mode, custom); });
}

HRESULT Addin::OnStartupComplete() {
  return Call(4, {}, [&](SAFEARRAY** custom) { return object_->OnStartupComplete(custom); });
}

HRESULT Addin::OnBeginShutdown() {
  return Call(5, {}, [&](SAFEARRAY** custom) { return object_->OnBeginShutdown(custom); });
}

std::optional<std::wstring> ReadSetting(const std::wstring& section, const std::wstring& key) {
  const std::wstring path = std::wstring(kSettingsKey) + L"\\" + section;
  DWORD bytes = 0;
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                   &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring value(bytes / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr,
                   value.data(), &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.resize(bytes / sizeof(wchar_t));
  while (!value.empty() && value.back() == L'\0') value.pop_back();
  return value;
}

void WriteSetting(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
  const std::wstring path = std::wstring(kSettingsKey) + L"\\" + section;
  RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), key.c_str(), REG_SZ, value.c_str(),
                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void DeleteSettings() { RegDeleteTreeW(HKEY_CURRENT_USER, kSettingsKey); }

bool KeyExists(HKEY hive, const std::wstring& path) {
  win32::UniqueHKey key;
  return RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, key.put()) == ERROR_SUCCESS;
}

void EmptyFolder(const std::wstring& folder, const std::wstring& keep) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (EqualsIgnoreCase(entry.path().filename().wstring(), keep)) continue;
    std::filesystem::remove_all(entry.path(), error);
  }
}

std::vector<std::wstring> ReadLines(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::vector<std::wstring> lines;
  size_t start = 0;
  while (start < bytes.size()) {
    size_t end = bytes.find('\n', start);
    if (end == std::string::npos) end = bytes.size();
    std::string line = bytes.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(FromUtf8(line));
    start = end + 1;
  }
  return lines;
}

}  // namespace corvina::standin
