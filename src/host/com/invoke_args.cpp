#include "host/com/invoke_args.h"

#include "platform/win32/unique_handle.h"

namespace corvina::com {

const VARIANT* InvokeArgs::At(UINT position) const {
  if (position >= params_.cArgs || !params_.rgvarg) return nullptr;
  return &params_.rgvarg[params_.cArgs - 1 - position];
}

Microsoft::WRL::ComPtr<IDispatch> InvokeArgs::Dispatch(UINT position) const {
  Microsoft::WRL::ComPtr<IDispatch> out;
  const VARIANT* v = At(position);
  if (!v) return out;
  IUnknown* unknown = nullptr;
  switch (V_VT(v)) {
    case VT_DISPATCH: unknown = V_DISPATCH(v); break;
    case VT_DISPATCH | VT_BYREF: unknown = V_DISPATCHREF(v) ? *V_DISPATCHREF(v) : nullptr; break;
    case VT_UNKNOWN: unknown = V_UNKNOWN(v); break;
    case VT_UNKNOWN | VT_BYREF: unknown = V_UNKNOWNREF(v) ? *V_UNKNOWNREF(v) : nullptr; break;
    default: return out;
  }
  if (unknown) unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(out.GetAddressOf()));
  return out;
}

std::optional<long> InvokeArgs::Long(UINT position) const {
  const VARIANT* v = At(position);
  if (!v) return 0;
  win32::UniqueVariant converted;
  if (FAILED(VariantChangeType(converted.get(), const_cast<VARIANT*>(v), 0, VT_I4))) return std::nullopt;
  return V_I4(converted.get());
}

}  // namespace corvina::com
