#include "platform/win32/dispatch_variant.h"

#include <new>

#include "base/error.h"

namespace corvina::win32 {

namespace {

[[noreturn]] void TypeMismatch(const VARIANT& value, std::wstring_view object,
                               std::wstring_view member) {
  throw Error(kErrTypeMismatch, kOwnErrorSource,
              L"Type mismatch: " + std::wstring(object) + L"." + std::wstring(member) +
                  L" returned a value of variant type " + std::to_wstring(value.vt));
}

// Coerces with the system's rules (which also follow VT_BYREF).
UniqueVariant Coerce(const VARIANT& value, VARTYPE type, std::wstring_view object,
                     std::wstring_view member) {
  UniqueVariant out;
  if (FAILED(VariantChangeType(out.get(), const_cast<VARIANT*>(&value), 0, type))) {
    TypeMismatch(value, object, member);
  }
  return out;
}

// VARIANTs pointing at VARIANTs: a caller's chain is a link or two; a longer one is taken for
// a loop.
constexpr int kMostReferenceLinks = 16;

UniqueVariant ErrorValue(HRESULT why) {
  UniqueVariant v;
  v.get()->vt = VT_ERROR;
  v.get()->scode = why;
  return v;
}

}  // namespace

UniqueVariant ArgumentValue(const VARIANT& argument) {
  const VARIANT* at = &argument;
  for (int links = 0; at->vt == (VT_VARIANT | VT_BYREF); ++links) {
    if (!at->pvarVal) return UniqueVariant();
    if (links == kMostReferenceLinks) return ErrorValue(E_INVALIDARG);
    at = at->pvarVal;
  }
  UniqueVariant value;
  VARIANT* source = const_cast<VARIANT*>(at);
  if (!(at->vt & VT_BYREF)) {
    if (const HRESULT hr = VariantCopy(value.get(), source); FAILED(hr)) return ErrorValue(hr);
  } else if (at->byref) {
    if (const HRESULT hr = VariantCopyInd(value.get(), source); FAILED(hr)) return ErrorValue(hr);
  }
  return value;
}

Microsoft::WRL::ComPtr<IDispatch> ObjectArgument(const VARIANT& argument) {
  Microsoft::WRL::ComPtr<IDispatch> object;
  const UniqueVariant value = ArgumentValue(argument);
  const VARIANT& v = *value.get();
  IUnknown* unknown = v.vt == VT_DISPATCH ? v.pdispVal : v.vt == VT_UNKNOWN ? v.punkVal : nullptr;
  if (unknown) unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.GetAddressOf()));
  return object;
}

UniqueVariant ToVariant(const std::wstring& value) {
  UniqueVariant v;
  BSTR s = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
  if (!s) throw std::bad_alloc();
  v.get()->vt = VT_BSTR;
  v.get()->bstrVal = s;
  return v;
}

UniqueVariant ToVariant(const wchar_t* value) { return ToVariant(std::wstring(value)); }

UniqueVariant ToVariant(int32_t value) {
  UniqueVariant v;
  v.get()->vt = VT_I4;
  v.get()->lVal = value;
  return v;
}

UniqueVariant ToVariant(bool value) {
  UniqueVariant v;
  v.get()->vt = VT_BOOL;
  v.get()->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return v;
}

UniqueVariant ToVariant(Date value) {
  UniqueVariant v;
  v.get()->vt = VT_DATE;
  v.get()->date = value.serial;
  return v;
}

UniqueVariant ToVariant(Missing) {
  UniqueVariant v;
  v.get()->vt = VT_ERROR;
  v.get()->scode = DISP_E_PARAMNOTFOUND;
  return v;
}

template <>
std::wstring FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member) {
  if (value.vt == VT_BSTR) {
    return value.bstrVal ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : std::wstring();
  }
  const UniqueVariant text = Coerce(value, VT_BSTR, object, member);
  const BSTR s = text.get()->bstrVal;
  return s ? std::wstring(s, SysStringLen(s)) : std::wstring();
}

template <>
int32_t FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member) {
  if (value.vt == VT_I4) return value.lVal;
  return Coerce(value, VT_I4, object, member).get()->lVal;
}

template <>
bool FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member) {
  if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE;
  return Coerce(value, VT_BOOL, object, member).get()->boolVal != VARIANT_FALSE;
}

template <>
Date FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member) {
  if (value.vt == VT_DATE) return Date{value.date};
  return Date{Coerce(value, VT_DATE, object, member).get()->date};
}

template <>
Microsoft::WRL::ComPtr<IDispatch> FromVariant(const VARIANT& value, std::wstring_view object,
                                              std::wstring_view member) {
  Microsoft::WRL::ComPtr<IDispatch> result;
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return result;
    case VT_DISPATCH:
      result = value.pdispVal;
      return result;
    case VT_DISPATCH | VT_BYREF:
      if (value.ppdispVal) result = *value.ppdispVal;
      return result;
    case VT_UNKNOWN:
      if (value.punkVal && FAILED(value.punkVal->QueryInterface(IID_IDispatch,
                                                                 reinterpret_cast<void**>(result.GetAddressOf())))) {
        TypeMismatch(value, object, member);
      }
      return result;
    default:
      TypeMismatch(value, object, member);
  }
}

}  // namespace corvina::win32
