#include "platform/win32/registry_settings_tree.h"

#include <utility>

#include "base/text.h"
#include "platform/win32/system_message.h"
#include "platform/win32/unique_handle.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kSource[] = L"Settings";

std::wstring TypeName(DWORD type) {
  switch (type) {
    case REG_DWORD: return L"REG_DWORD";
    case REG_QWORD: return L"REG_QWORD";
    case REG_BINARY: return L"REG_BINARY";
    case REG_EXPAND_SZ: return L"REG_EXPAND_SZ";
    case REG_MULTI_SZ: return L"REG_MULTI_SZ";
  }
  return L"type " + std::to_wstring(type);
}

}  // namespace

std::wstring SettingsKeyPath(const std::wstring& application, const std::wstring& section) {
  return L"Software\\VB and VBA Program Settings\\" + application + L"\\" + section;
}

std::optional<std::wstring> RegistrySettingsTree::Read(const std::wstring& application,
                                                       const std::wstring& section,
                                                       const std::wstring& key) {
  const std::wstring path = SettingsKeyPath(application, section);
  const std::wstring name = L"HKEY_CURRENT_USER\\" + path + L"\\" + key;
  const auto unreadable = [&](LSTATUS why) {
    Report(name, kErrPermissionDenied,
           L"The setting " + name + L" cannot be read (" + SystemMessage(why) +
               L"); its default is used");
    return std::nullopt;
  };
  UniqueHKey hkey;
  LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_QUERY_VALUE, hkey.put());
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;  // never written
  if (status != ERROR_SUCCESS) return unreadable(status);

  DWORD type = 0;
  DWORD bytes = 0;
  status = RegQueryValueExW(hkey.get(), key.c_str(), nullptr, &type, nullptr, &bytes);
  std::wstring text;
  // The value can grow between the size query and the read when someone else writes: ask
  // again until it fits.
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    if (type != REG_SZ) {
      Report(name, kErrTypeMismatch,
             L"The setting " + name + L" is a " + TypeName(type) +
                 L" value, not text; its default is used");
      return std::nullopt;
    }
    text.assign(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    status = RegQueryValueExW(hkey.get(), key.c_str(), nullptr, &type,
                              reinterpret_cast<BYTE*>(text.data()), &bytes);
    if (status == ERROR_SUCCESS && type == REG_SZ) {
      text.resize(bytes / sizeof(wchar_t));
      break;
    }
  }
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
  if (status != ERROR_SUCCESS) return unreadable(status);
  // REG_SZ data usually carries its terminator, and may carry more than one.
  while (!text.empty() && text.back() == L'\0') text.pop_back();
  return text;
}

void RegistrySettingsTree::Write(const std::wstring& application, const std::wstring& section,
                                 const std::wstring& key, const std::wstring& value) {
  const std::wstring path = SettingsKeyPath(application, section);
  UniqueHKey hkey;
  LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                   nullptr, hkey.put(), nullptr);
  if (status == ERROR_SUCCESS) {
    const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    status = RegSetValueExW(hkey.get(), key.c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(value.c_str()), bytes);
  }
  if (status != ERROR_SUCCESS)
    throw Error(5, kSource,
                L"Cannot save HKEY_CURRENT_USER\\" + path + L"\\" + key + L": " +
                    SystemMessage(status));
}

std::vector<Error> RegistrySettingsTree::TakeProblems() { return std::exchange(problems_, {}); }

void RegistrySettingsTree::Report(const std::wstring& name, int32_t number,
                                  const std::wstring& description) {
  if (reported_.insert(UCase(name)).second) problems_.emplace_back(number, kSource, description);
}

}  // namespace corvina::win32
