#include "platform/win32/dispatch_id_cache.h"

#include <algorithm>
#include <cstring>

#include "platform/win32/dispatch_error.h"

namespace corvina::win32 {

namespace {

// Name lookups that failed for a described type: the object does not have the member.
constexpr DISPID kUnknownName = DISPID_UNKNOWN;

std::wstring Label(std::wstring_view object_name, const wchar_t* name) {
  return std::wstring(object_name) + L"." + name;
}

// GetIDsOfNames for one name.
HRESULT AskObject(IDispatch* object, const wchar_t* name, DISPID& id) {
  id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  return object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
}

}  // namespace

std::optional<DispatchTypeId> DescribedTypeOf(IDispatch* object) {
  UINT count = 0;
  if (FAILED(object->GetTypeInfoCount(&count)) || count == 0) return std::nullopt;
  Microsoft::WRL::ComPtr<ITypeInfo> info;
  if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf())) || !info) {
    return std::nullopt;
  }
  TYPEATTR* attr = nullptr;
  if (FAILED(info->GetTypeAttr(&attr)) || !attr) return std::nullopt;
  const GUID guid = attr->guid;
  info->ReleaseTypeAttr(attr);
  if (IsEqualGUID(guid, GUID_NULL)) return std::nullopt;
  DispatchTypeId type;
  static_assert(sizeof(guid) == sizeof(type));
  std::memcpy(type.data(), &guid, sizeof(guid));
  return type;
}

DISPID DispatchIdCache::IdOf(IDispatch* object, const DispatchTypeId& type, const wchar_t* name,
                             std::wstring_view object_name) {
  auto key = std::make_pair(type, std::wstring(name));
  if (auto found = ids_.find(key); found != ids_.end()) {
    if (found->second == kUnknownName) throw CallError(DISP_E_UNKNOWNNAME, Label(object_name, name));
    return found->second;
  }
  DISPID id;
  if (const HRESULT hr = AskObject(object, name, id); FAILED(hr)) {
    if (hr == DISP_E_UNKNOWNNAME) ids_.emplace(std::move(key), kUnknownName);
    throw CallError(hr, Label(object_name, name));
  }
  ids_.emplace(std::move(key), id);
  return id;
}

DISPID ObjectIds::IdOf(IDispatch* object, const wchar_t* name, std::wstring_view object_name) {
  const auto found = std::find_if(ids_.begin(), ids_.end(),
                                  [&](const auto& known) { return known.first == name; });
  if (found != ids_.end()) return found->second;
  DISPID id;
  if (const HRESULT hr = AskObject(object, name, id); FAILED(hr))
    throw CallError(hr, Label(object_name, name));
  ids_.emplace_back(name, id);
  return id;
}

}  // namespace corvina::win32
