#pragma once
// Takes the first reference of a COM object just made with `new` (its count starts at 1).
// Not ComPtr::Attach: mingw-w64's <wrl/client.h> AddRefs in Attach, unlike the Windows SDK's,
// so an object attached there would never be freed.
#include "platform/win32/windows_api.h"

namespace corvina::standin {

template <class Interface, class Object>
Microsoft::WRL::ComPtr<Interface> Adopt(Object* fresh) {
  Microsoft::WRL::ComPtr<Interface> owner;
  *owner.ReleaseAndGetAddressOf() = fresh;
  return owner;
}

}  // namespace corvina::standin
