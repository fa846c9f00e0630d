#include "platform/win32/dispatch_id_cache.h"

#include <cstring>

#include "platform/win32/dispatch_error.h"

namespace corvina::win32 {

namespace {

// Name lookups that failed for a described type: the object does not have the member.
constexpr DISPID kUnknownName = DISPID_UNKNOWN;

bool DescribedGuid(IDispatch* object, GUID& guid) {
  UINT count = 0;
  if (FAILED(object->GetTypeInfoCount(&count)) || count == 0) return false;
  Microsoft::WRL::ComPtr<ITypeInfo> info;
  if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf())) || !info) {
    return false;
  }
  TYPEATTR* attr = nullptr;
  if (FAILED(info->GetTypeAttr(&attr)) || !attr) return false;
  guid = attr->guid;
  info->ReleaseTypeAttr(attr);
  return !IsEqualGUID(guid, GUID_NULL);
}

std::wstring Label(std::wstring_view object_name, const wchar_t* name) {
  return std::wstring(object_name) + L"." + name;
}

}  // namespace

DispatchTypeKey TypeKeyOf(IDispatch* object) {
  DispatchTypeKey key;
  GUID guid;
  if (DescribedGuid(object, guid)) {
    static_assert(sizeof(guid) == sizeof(key.guid));
    std::memcpy(key.guid.data(), &guid, sizeof(guid));
  } else {
    key.vtable = reinterpret_cast<std::uintptr_t>(*reinterpret_cast<void* const*>(object));
  }
  return key;
}

DISPID DispatchIdCache::IdOf(IDispatch* object, const DispatchTypeKey& type, const wchar_t* name,
                             std::wstring_view object_name) {
  auto key = std::make_pair(type, std::wstring(name));
  if (auto found = ids_.find(key); found != ids_.end()) {
    if (found->second == kUnknownName) throw CallError(DISP_E_UNKNOWNNAME, Label(object_name, name));
    return found->second;
  }
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {key.second.data()};
  const HRESULT hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(hr)) {
    if (hr == DISP_E_UNKNOWNNAME && type.described()) ids_.emplace(std::move(key), kUnknownName);
    throw CallError(hr, Label(object_name, name));
  }
  ids_.emplace(std::move(key), id);
  return id;
}

}  // namespace corvina::win32
