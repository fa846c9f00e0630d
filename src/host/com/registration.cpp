#include "host/com/registration.h"

#include <utility>
#include <vector>

#include "host/com/com_ids.h"
#include "platform/win32/unique_handle.h"

namespace corvina::com {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";

struct Value {
  const wchar_t* name;  // nullptr: the key's default value
  std::wstring text;
  DWORD number = 0;
  bool is_number = false;
};

LSTATUS WriteKey(HKEY hive, const std::wstring& path, const std::vector<Value>& values) {
  win32::UniqueHKey key;
  LSTATUS status = RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                                   key.put(), nullptr);
  for (const Value& v : values) {
    if (status != ERROR_SUCCESS) break;
    status = v.is_number
                 ? RegSetValueExW(key.get(), v.name, 0, REG_DWORD,
                                  reinterpret_cast<const BYTE*>(&v.number), sizeof v.number)
                 : RegSetValueExW(key.get(), v.name, 0, REG_SZ,
                                  reinterpret_cast<const BYTE*>(v.text.c_str()),
                                  static_cast<DWORD>((v.text.size() + 1) * sizeof(wchar_t)));
  }
  return status;
}

Value Text(const wchar_t* name, std::wstring text) { return Value{name, std::move(text)}; }
Value Number(const wchar_t* name, DWORD number) { return Value{name, {}, number, true}; }

}  // namespace

std::wstring AddinKeyPath() {
  return std::wstring(L"Software\\Microsoft\\Office\\Outlook\\Addins\\") + kProgId;
}

std::wstring ClassKeyPath() { return std::wstring(kClasses) + L"CLSID\\" + kClsidText; }

HRESULT Register(HKEY hive, const std::wstring& dll_path) {
  const std::wstring cls = ClassKeyPath();
  const std::wstring prog = std::wstring(kClasses) + kProgId;
  const std::vector<std::pair<std::wstring, std::vector<Value>>> keys = {
      {cls, {Text(nullptr, kFriendlyName)}},
      {cls + L"\\InprocServer32", {Text(nullptr, dll_path), Text(L"ThreadingModel", L"Apartment")}},
      {cls + L"\\ProgID", {Text(nullptr, kProgId)}},
      {prog, {Text(nullptr, kFriendlyName)}},
      {prog + L"\\CLSID", {Text(nullptr, kClsidText)}},
      // 3: load at start-up; 1: ask for OnDisconnection even on a fast shutdown, since the
      // settings are saved there.
      {AddinKeyPath(),
       {Text(L"FriendlyName", kFriendlyName), Text(L"Description", kDescription),
        Number(L"LoadBehavior", 3), Number(L"RequireShutdownNotification", 1)}},
  };
  for (const auto& [path, values] : keys)
    if (const LSTATUS status = WriteKey(hive, path, values); status != ERROR_SUCCESS)
      return HRESULT_FROM_WIN32(status);
  return S_OK;
}

HRESULT Unregister(HKEY hive) {
  HRESULT result = S_OK;
  // The parents (Software\Classes\CLSID, ...\Outlook\Addins) are shared and stay.
  for (const std::wstring& path : {ClassKeyPath(), std::wstring(kClasses) + kProgId, AddinKeyPath()}) {
    const LSTATUS status = RegDeleteTreeW(hive, path.c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND && SUCCEEDED(result))
      result = HRESULT_FROM_WIN32(status);
  }
  return result;
}

}  // namespace corvina::com
