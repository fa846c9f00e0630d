#include "host/com/invoke_args.h"

#include "platform/win32/dispatch_variant.h"
#include "platform/win32/unique_handle.h"

namespace corvina::com {

const VARIANT* InvokeArgs::At(UINT position) const {
  if (position >= params_.cArgs || !params_.rgvarg) return nullptr;
  return &params_.rgvarg[params_.cArgs - 1 - position];
}

Microsoft::WRL::ComPtr<IDispatch> InvokeArgs::Dispatch(UINT position) const {
  const VARIANT* v = At(position);
  return v ? win32::ObjectArgument(*v) : nullptr;
}

std::optional<long> InvokeArgs::Long(UINT position) const {
  const VARIANT* v = At(position);
  if (!v) return 0;
  win32::UniqueVariant value = win32::ArgumentValue(*v);
  win32::UniqueVariant converted;
  if (FAILED(VariantChangeType(converted.get(), value.get(), 0, VT_I4))) return std::nullopt;
  return V_I4(converted.get());
}

}  // namespace corvina::com
