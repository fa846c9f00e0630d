#pragma once
// One IDispatch::Invoke as a member of the stand-in sees it: the arguments in their natural
// order (IDispatch hands them over last first), coerced the way Office coerces late-bound
// arguments, optional ones left out as VT_ERROR/DISP_E_PARAMNOTFOUND or not passed at all, and
// the result slot. A bad argument stops the call with the HRESULT Office would return.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/date.h"
#include "base/error.h"
#include "platform/outlook.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"
#include "standin_context.h"

namespace corvina::standin {

// A call refused before (or instead of) the member's work: what Invoke returns, and for an
// argument error the argument's index in rgvarg.
struct InvokeFailure {
  HRESULT hr;
  UINT argument = 0;
};

// The DISPID of a member name: one number per name (in any case) for every kind of object.
DISPID DispIdOf(std::wstring_view name);

// What Office reports for a failed member: DISP_E_EXCEPTION with the error's number, source
// and description in the EXCEPINFO (a small number is a classic error in wCode, anything else
// an HRESULT in scode).
void FillException(EXCEPINFO* info, const Error& error);

class Call {
 public:
  Call(std::shared_ptr<Context> context, const DISPPARAMS& params, VARIANT* result)
      : context_(std::move(context)), params_(params), result_(result) {}

  const std::shared_ptr<Context>& context() const { return context_; }

  // Arguments by their position in the member's parameter list (0 = first).
  bool Missing(UINT i) const;
  bool IsText(UINT i) const;
  int32_t Int(UINT i) const;
  int32_t Int(UINT i, int32_t fallback) const { return Missing(i) ? fallback : Int(i); }
  bool Bool(UINT i) const;
  bool Bool(UINT i, bool fallback) const { return Missing(i) ? fallback : Bool(i); }
  std::wstring Text(UINT i) const;

  void Return(const std::wstring& value);
  void Return(int32_t value);
  void Return(bool value);
  void Return(Date value);
  // Nothing is a VT_DISPATCH holding null, as Office returns it.
  void Return(Microsoft::WRL::ComPtr<IDispatch> object);
  // A sim object shown as a stand-in object (defined in standin_object.h).
  template <class T>
  void Return(std::shared_ptr<T> object);
  template <class T>
  void Return(outlook::Ref<T> object) {
    Return(std::move(object).shared());
  }

 private:
  const VARIANT& Arg(UINT i) const;
  UINT Slot(UINT i) const { return params_.cArgs - 1 - i; }
  win32::UniqueVariant Converted(UINT i, VARTYPE type) const;
  void Set(win32::UniqueVariant value);

  std::shared_ptr<Context> context_;
  const DISPPARAMS& params_;
  VARIANT* result_;
};

}  // namespace corvina::standin
