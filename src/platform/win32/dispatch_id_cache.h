#pragma once
// DISPIDs looked up once per (type, member name). Asking an object for a name is a call into
// Outlook; reading the same property of a thousand items should ask once, not a thousand
// times. One cache serves every wrapper of one connection to Outlook (the Application wrapper
// creates it and hands it to each object it returns): nothing is global, so two add-in
// instances never share ids. Used on Outlook's main thread only, so it takes no lock.
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// What "the same type" means for the cache. An object that describes itself (GetTypeInfo)
// is keyed by its interface GUID: Outlook's MailItem and ReportItem are different types even
// if one C++ class implemented both. An object that does not is keyed by its vtable, which all
// objects of one implementation share.
struct DispatchTypeKey {
  std::array<unsigned char, 16> guid{};
  std::uintptr_t vtable = 0;
  auto operator<=>(const DispatchTypeKey&) const = default;
  bool described() const { return vtable == 0; }
};

DispatchTypeKey TypeKeyOf(IDispatch* object);

class DispatchIdCache {
 public:
  // The DISPID of `name` on `object` (of type `type`). Throws corvina::Error naming
  // `object_name`.`name` when the object does not know the name. Unknown names are remembered
  // too, but only for described types: a vtable may serve objects with different members.
  DISPID IdOf(IDispatch* object, const DispatchTypeKey& type, const wchar_t* name,
              std::wstring_view object_name);

  std::size_t size() const { return ids_.size(); }

 private:
  std::map<std::pair<DispatchTypeKey, std::wstring>, DISPID> ids_;
};

}  // namespace corvina::win32
