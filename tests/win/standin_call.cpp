#include "standin_call.h"

#include <map>
#include <new>
#include <utility>

namespace corvina::standin {
namespace {

// Member ids start well above DISPID_VALUE (0) and the negative reserved ids.
constexpr DISPID kFirstMemberId = 0x100;

BSTR AllocText(const std::wstring& text) {
  BSTR s = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (!s) throw std::bad_alloc();
  return s;
}

// An argument passed by reference to a VARIANT is read through the reference.
const VARIANT& Deref(const VARIANT& v) {
  return (v.vt == (VT_VARIANT | VT_BYREF) && v.pvarVal) ? *v.pvarVal : v;
}

}  // namespace

// Numbers are handed out as names are first seen; every call comes on the apartment's one thread.
DISPID DispIdOf(std::wstring_view name) {
  static std::map<std::wstring, DISPID> ids;
  auto [it, added] = ids.try_emplace(LCase(name), 0);
  if (added) it->second = kFirstMemberId + static_cast<DISPID>(ids.size()) - 1;
  return it->second;
}

void FillException(EXCEPINFO* info, const Error& error) {
  if (!info) return;
  *info = EXCEPINFO{};
  const int32_t number = error.number();
  if (number > 0 && number <= 0xFFFF) {
    info->wCode = static_cast<WORD>(number);
  } else {
    info->scode = number;
  }
  info->bstrSource = SysAllocString(error.source().c_str());
  info->bstrDescription = SysAllocString(error.description().c_str());
}

bool Call::Missing(UINT i) const {
  if (i >= params_.cArgs) return true;
  const VARIANT& v = Deref(params_.rgvarg[Slot(i)]);
  return v.vt == VT_ERROR && v.scode == DISP_E_PARAMNOTFOUND;
}

const VARIANT& Call::Arg(UINT i) const {
  if (Missing(i)) throw InvokeFailure{DISP_E_PARAMNOTOPTIONAL, i < params_.cArgs ? Slot(i) : 0};
  return Deref(params_.rgvarg[Slot(i)]);
}

bool Call::IsText(UINT i) const {
  if (Missing(i)) return false;
  const VARIANT& v = Arg(i);
  return v.vt == VT_BSTR || v.vt == (VT_BSTR | VT_BYREF);
}

win32::UniqueVariant Call::Converted(UINT i, VARTYPE type) const {
  win32::UniqueVariant out;
  // VariantChangeType follows a VT_BYREF argument itself.
  if (FAILED(VariantChangeType(out.get(), const_cast<VARIANT*>(&Arg(i)), 0, type)))
    throw InvokeFailure{DISP_E_TYPEMISMATCH, Slot(i)};
  return out;
}

int32_t Call::Int(UINT i) const { return Converted(i, VT_I4).get()->lVal; }

bool Call::Bool(UINT i) const { return Converted(i, VT_BOOL).get()->boolVal != VARIANT_FALSE; }

std::wstring Call::Text(UINT i) const {
  const win32::UniqueVariant text = Converted(i, VT_BSTR);
  const BSTR s = text.get()->bstrVal;
  return s ? std::wstring(s, SysStringLen(s)) : std::wstring();
}

void Call::Set(win32::UniqueVariant value) {
  if (!result_) return;  // the caller drops the result
  VariantClear(result_);
  *result_ = *value.get();
  VariantInit(value.get());  // ownership moved to the caller's VARIANT
}

void Call::Return(const std::wstring& value) {
  win32::UniqueVariant v;
  v.get()->bstrVal = AllocText(value);
  v.get()->vt = VT_BSTR;
  Set(std::move(v));
}

void Call::Return(int32_t value) {
  win32::UniqueVariant v;
  v.get()->vt = VT_I4;
  v.get()->lVal = value;
  Set(std::move(v));
}

void Call::Return(bool value) {
  win32::UniqueVariant v;
  v.get()->vt = VT_BOOL;
  v.get()->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  Set(std::move(v));
}

void Call::Return(Date value) {
  win32::UniqueVariant v;
  v.get()->vt = VT_DATE;
  v.get()->date = value.serial;
  Set(std::move(v));
}

void Call::Return(Microsoft::WRL::ComPtr<IDispatch> object) {
  win32::UniqueVariant v;
  v.get()->vt = VT_DISPATCH;
  v.get()->pdispVal = object.Detach();
  Set(std::move(v));
}

}  // namespace corvina::standin
