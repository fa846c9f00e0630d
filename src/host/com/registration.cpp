#include "host/com/registration.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/com/com_ids.h"
#include "platform/win32/unique_handle.h"

namespace corvina::com {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";

// The parents registration had to create along with its own keys, kept on the class key
// (REG_MULTI_SZ, paths below the hive) so that unregistration can remove them again, and only
// them. A user who never had an add-in has no ...\Outlook\Addins: registering and
// unregistering must leave that user's registry as it was.
constexpr wchar_t kCreatedParents[] = L"CreatedParentKeys";

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

// The key trees that are registration's own, removed whole.
std::vector<std::wstring> OwnKeys() {
  return {ClassKeyPath(), std::wstring(kClasses) + kProgId, AddinKeyPath()};
}

bool KeyExists(HKEY hive, const std::wstring& path) {
  win32::UniqueHKey key;
  return RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, key.put()) == ERROR_SUCCESS;
}

// The ancestors of the own keys that do not exist yet, in the order they would be created.
std::vector<std::wstring> MissingParents(HKEY hive) {
  std::vector<std::wstring> missing;
  for (const std::wstring& own : OwnKeys()) {
    for (size_t at = own.find(L'\\'); at != std::wstring::npos; at = own.find(L'\\', at + 1)) {
      std::wstring parent = own.substr(0, at);
      if (std::find(missing.begin(), missing.end(), parent) == missing.end() &&
          !KeyExists(hive, parent))
        missing.push_back(std::move(parent));
    }
  }
  return missing;
}

std::vector<std::wstring> ReadCreatedParents(HKEY hive) {
  const std::wstring key = ClassKeyPath();
  DWORD bytes = 0;
  if (RegGetValueW(hive, key.c_str(), kCreatedParents, RRF_RT_REG_MULTI_SZ, nullptr, nullptr,
                   &bytes) != ERROR_SUCCESS)
    return {};
  std::wstring block(bytes / sizeof(wchar_t) + 1, L'\0');
  bytes = static_cast<DWORD>(block.size() * sizeof(wchar_t));
  if (RegGetValueW(hive, key.c_str(), kCreatedParents, RRF_RT_REG_MULTI_SZ, nullptr, block.data(),
                   &bytes) != ERROR_SUCCESS)
    return {};
  std::vector<std::wstring> paths;
  for (size_t at = 0; at < block.size() && block[at] != L'\0';) {
    const size_t end = block.find(L'\0', at);
    paths.push_back(block.substr(at, end - at));
    at = end + 1;
  }
  return paths;
}

LSTATUS WriteCreatedParents(HKEY hive, const std::vector<std::wstring>& paths) {
  std::wstring block;
  for (const std::wstring& p : paths) block += p + L'\0';
  block += L'\0';
  win32::UniqueHKey key;
  LSTATUS status = RegOpenKeyExW(hive, ClassKeyPath().c_str(), 0, KEY_SET_VALUE, key.put());
  if (status == ERROR_SUCCESS)
    status = RegSetValueExW(key.get(), kCreatedParents, 0, REG_MULTI_SZ,
                            reinterpret_cast<const BYTE*>(block.data()),
                            static_cast<DWORD>(block.size() * sizeof(wchar_t)));
  return status;
}

// Removes the key if it holds nothing: no subkey, no value (a set default value counts).
LSTATUS RemoveIfEmpty(HKEY hive, const std::wstring& path) {
  DWORD subkeys = 0, values = 0;
  {
    win32::UniqueHKey key;
    LSTATUS status = RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, key.put());
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (status == ERROR_SUCCESS)
      status = RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                                &values, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS) return status;
  }
  if (subkeys > 0 || values > 0) return ERROR_SUCCESS;  // someone else's by now: it stays
  const LSTATUS status = RegDeleteKeyW(hive, path.c_str());
  return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

size_t Depth(const std::wstring& path) { return static_cast<size_t>(std::count(path.begin(), path.end(), L'\\')); }

}  // namespace

std::wstring AddinKeyPath() {
  return std::wstring(L"Software\\Microsoft\\Office\\Outlook\\Addins\\") + kProgId;
}

std::wstring ClassKeyPath() { return std::wstring(kClasses) + L"CLSID\\" + kClsidText; }

HRESULT Register(HKEY hive, const std::wstring& dll_path) {
  // A registration over an earlier one keeps what that one created.
  std::vector<std::wstring> created = ReadCreatedParents(hive);
  for (std::wstring& parent : MissingParents(hive))
    if (std::find(created.begin(), created.end(), parent) == created.end())
      created.push_back(std::move(parent));

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
  LSTATUS status = ERROR_SUCCESS;
  for (const auto& [path, values] : keys)
    if ((status = WriteKey(hive, path, values)) != ERROR_SUCCESS) break;
  // Noted even after a failure: Unregister cleans up what was written so far.
  if (!created.empty() && KeyExists(hive, cls)) {
    const LSTATUS noted = WriteCreatedParents(hive, created);
    if (status == ERROR_SUCCESS) status = noted;
  }
  return status == ERROR_SUCCESS ? S_OK : HRESULT_FROM_WIN32(status);
}

HRESULT Unregister(HKEY hive) {
  HRESULT result = S_OK;
  const auto note = [&](LSTATUS status) {
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND && SUCCEEDED(result))
      result = HRESULT_FROM_WIN32(status);
  };
  std::vector<std::wstring> created = ReadCreatedParents(hive);
  for (const std::wstring& path : OwnKeys()) note(RegDeleteTreeW(hive, path.c_str()));
  // Deepest first, so a parent emptied by its child's removal goes too.
  std::stable_sort(created.begin(), created.end(),
                   [](const std::wstring& a, const std::wstring& b) { return Depth(a) > Depth(b); });
  for (const std::wstring& parent : created) note(RemoveIfEmpty(hive, parent));
  return result;
}

}  // namespace corvina::com
