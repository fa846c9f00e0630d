#pragma once
// Reading IDispatch::Invoke arguments. DISPPARAMS holds them last first: the first parameter
// of the method is rgvarg[cArgs - 1]. Each is read through win32::ArgumentValue, so a value
// passed by reference (as VB-style callers pass a variable) reads like one passed by value.
#include <optional>

#include "platform/win32/windows_api.h"

namespace corvina::com {

class InvokeArgs {
 public:
  explicit InvokeArgs(const DISPPARAMS& params) : params_(params) {}
  UINT count() const { return params_.cArgs; }
  // The parameter at `position` (0 = first) as passed, or nullptr when the caller passed fewer.
  const VARIANT* At(UINT position) const;
  // An object parameter; nothing for a missing, empty or null one, or one that is no object.
  Microsoft::WRL::ComPtr<IDispatch> Dispatch(UINT position) const;
  // A number parameter converted as Invoke converts; nothing when it does not convert. A
  // missing one is 0.
  std::optional<long> Long(UINT position) const;

 private:
  const DISPPARAMS& params_;
};

}  // namespace corvina::com
