#pragma once
// Values across IDispatch: the add-in's types to VARIANT arguments and VARIANT results back.
// Text is a BSTR (wchar_t is UTF-16 on Windows, so nothing is lost), numbers VT_I4, flags
// VT_BOOL and dates VT_DATE, whose double is exactly corvina::Date's serial. Results are
// coerced the way late binding does (a VT_I2 or VT_UI1 count reads as int32, a numeric text
// as a number); a value that does not convert is error 13, as in the classic runtime.
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date.h"
#include "platform/win32/unique_handle.h"

namespace corvina::win32 {

// An optional argument left out: VT_ERROR carrying DISP_E_PARAMNOTFOUND, as late binding
// passes an omitted parameter.
struct Missing {};

UniqueVariant ToVariant(const std::wstring& value);
UniqueVariant ToVariant(const wchar_t* value);
UniqueVariant ToVariant(int32_t value);
UniqueVariant ToVariant(bool value);
UniqueVariant ToVariant(Date value);
UniqueVariant ToVariant(Missing);

// `object` and `member` name the call that returned `value`, for the error message.
template <class T>
T FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member);
template <>
std::wstring FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member);
template <>
int32_t FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member);
template <>
bool FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member);
template <>
Date FromVariant(const VARIANT& value, std::wstring_view object, std::wstring_view member);
// An object result: VT_EMPTY, VT_NULL and a null VT_DISPATCH are Nothing (null).
template <>
Microsoft::WRL::ComPtr<IDispatch> FromVariant(const VARIANT& value, std::wstring_view object,
                                              std::wstring_view member);

// An argument someone passed us (an event's, or one of IDispatch::Invoke), as its value.
// Late-bound callers in the VB style pass a variable by reference: VT_BYREF of a number, a
// text or an object, or VT_VARIANT | VT_BYREF pointing at a VARIANT that may be such a
// reference again. Every reader of arguments goes through here, so no reader meets a
// reference it does not expect. The copy is the value the references end in; a null
// reference is VT_EMPTY, and one that cannot be followed is VT_ERROR with the reason.
UniqueVariant ArgumentValue(const VARIANT& argument);

// An object argument, read through ArgumentValue: null for Nothing, for a missing argument
// and for anything that is not an object.
Microsoft::WRL::ComPtr<IDispatch> ObjectArgument(const VARIANT& argument);

}  // namespace corvina::win32
