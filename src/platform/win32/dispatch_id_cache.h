#pragma once
// Where DISPIDs are remembered. Asking an object for a name is a call into Outlook; reading
// the same property of a thousand items should ask once, not a thousand times.
//
// Only a type description makes an id valid beyond the object that gave it: objects whose
// type information names one interface GUID number that interface's members alike, so their
// ids are shared (DispatchIdCache, one per connection to Outlook: the Application wrapper
// creates it and hands it to each object it returns; nothing is global, so two add-in
// instances never share ids). An object without type information promises nothing of the
// kind. A script host serves all its objects from one implementation (one vtable) while each
// object numbers its members its own way, so a name is asked of each such object and the
// answer kept only with the reference to that object (ObjectIds).
//
// Used on Outlook's main thread only, so nothing here takes a lock.
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// The interface GUID of an object's type information, as bytes so it can key a map.
using DispatchTypeId = std::array<unsigned char, 16>;

// Nothing for an object that does not describe itself (no type information, or none that
// names a GUID).
std::optional<DispatchTypeId> DescribedTypeOf(IDispatch* object);

// Ids shared by every object of one described type.
class DispatchIdCache {
 public:
  // The DISPID of `name` on `object`, whose type information names `type`. Throws
  // corvina::Error naming `object_name`.`name` when the object does not know the name; an
  // unknown name is remembered too, since the type says which members exist.
  DISPID IdOf(IDispatch* object, const DispatchTypeId& type, const wchar_t* name,
              std::wstring_view object_name);

  std::size_t size() const { return ids_.size(); }

 private:
  std::map<std::pair<DispatchTypeId, std::wstring>, DISPID> ids_;
};

// Ids one object without type information gave, kept beside the reference to that object (so
// the object outlives them and no other object ever sees them). An unknown name is asked again
// each time: such an object may gain members.
class ObjectIds {
 public:
  DISPID IdOf(IDispatch* object, const wchar_t* name, std::wstring_view object_name);

 private:
  // A wrapper calls a handful of names: a short list beats a tree.
  std::vector<std::pair<std::wstring, DISPID>> ids_;
};

}  // namespace corvina::win32
