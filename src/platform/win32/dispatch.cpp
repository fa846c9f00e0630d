#include "platform/win32/dispatch.h"

#include <vector>

#include "base/error.h"
#include "platform/win32/dispatch_error.h"

namespace corvina::win32 {

Dispatch::Dispatch(Microsoft::WRL::ComPtr<IDispatch> object, std::shared_ptr<DispatchIdCache> ids,
                   const wchar_t* type)
    : object_(std::move(object)), ids_(std::move(ids)), type_(type) {
  if (!ids_) ids_ = std::make_shared<DispatchIdCache>();
}

UniqueVariant Dispatch::Invoke(const wchar_t* name, WORD flags, std::span<UniqueVariant> args) {
  if (!object_) {
    throw Error(kErrObjectVariableNotSet, kOwnErrorSource,
                L"Object variable not set: " + std::wstring(type_) + L"." + name);
  }
  if (!type_known_) {
    described_type_ = DescribedTypeOf(object_.Get());
    type_known_ = true;
  }
  const DISPID id = described_type_ ? ids_->IdOf(object_.Get(), *described_type_, name, type_)
                                    : own_ids_.IdOf(object_.Get(), name, type_);

  // Shallow copies: `args` keeps owning the values; IDispatch wants the last argument first.
  std::vector<VARIANT> reversed(args.size());
  for (std::size_t i = 0; i < args.size(); ++i) reversed[args.size() - 1 - i] = *args[i].get();
  DISPID put_id = DISPID_PROPERTYPUT;
  const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS params{reversed.data(), put ? &put_id : nullptr, static_cast<UINT>(reversed.size()),
                    put ? 1u : 0u};

  UniqueVariant result;
  ExcepInfo exception;
  UINT bad_argument = 0;
  const HRESULT hr = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                                     put ? nullptr : result.get(), exception.get(), &bad_argument);
  if (hr == DISP_E_EXCEPTION) throw ExceptionError(exception, std::wstring(type_) + L"." + name);
  if (FAILED(hr)) throw CallError(hr, std::wstring(type_) + L"." + name);
  return result;
}

}  // namespace corvina::win32
