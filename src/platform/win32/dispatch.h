#pragma once
// Late binding over IDispatch: Get, Put and Call by member name, as script code calls Outlook.
// Arguments and results are RAII VARIANTs; names become DISPIDs through the connection's shared
// cache when the object describes its type, through the wrapper's own list otherwise (see
// dispatch_id_cache.h); every failure becomes corvina::Error naming the member ("Items.Restrict failed: ...").
//
// Get and Call pass DISPATCH_PROPERTYGET | DISPATCH_METHOD, as late-bound callers do: some
// collections' Item is a property and others' a method, and the object picks what it has.
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "platform/win32/dispatch_id_cache.h"
#include "platform/win32/dispatch_variant.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

class Dispatch {
 public:
  Dispatch() = default;
  // `type` names the object in error messages; it must be a string literal (it is not copied).
  Dispatch(Microsoft::WRL::ComPtr<IDispatch> object, std::shared_ptr<DispatchIdCache> ids,
           const wchar_t* type = L"Object");

  IDispatch* get() const { return object_.Get(); }
  // The id cache shared by every described object reached from one Application.
  const std::shared_ptr<DispatchIdCache>& ids() const { return ids_; }
  explicit operator bool() const { return object_ != nullptr; }
  const wchar_t* type() const { return type_; }
  void set_type(const wchar_t* type) { type_ = type; }

  // A property (or an argument-less method) read as T: std::wstring, int32_t, bool, Date,
  // Dispatch (an object, empty for Nothing) or the raw UniqueVariant.
  template <class T = UniqueVariant>
  T Get(const wchar_t* name) {
    return Convert<T>(Invoke(name, kGetOrCall, {}), name);
  }

  template <class T>
  void Put(const wchar_t* name, const T& value) {
    UniqueVariant v = ToVariant(value);
    Invoke(name, DISPATCH_PROPERTYPUT, std::span<UniqueVariant>(&v, 1));
  }

  // A method with its arguments in their natural order (Missing for a left-out optional);
  // the result is read as R (void to drop it).
  template <class R = void, class... A>
  R Call(const wchar_t* name, const A&... args) {
    std::array<UniqueVariant, sizeof...(A)> list{ToVariant(args)...};
    UniqueVariant result = Invoke(name, kGetOrCall, list);
    if constexpr (!std::is_void_v<R>) return Convert<R>(std::move(result), name);
  }

  // The low-level call: `args` in natural order (they are reversed for IDispatch::Invoke).
  // A property put passes DISPID_PROPERTYPUT as the named argument.
  UniqueVariant Invoke(const wchar_t* name, WORD flags, std::span<UniqueVariant> args);

 private:
  static constexpr WORD kGetOrCall = DISPATCH_PROPERTYGET | DISPATCH_METHOD;

  template <class T>
  T Convert(UniqueVariant value, const wchar_t* name) const {
    if constexpr (std::is_same_v<T, UniqueVariant>) {
      return value;
    } else if constexpr (std::is_same_v<T, Dispatch>) {
      return Dispatch(FromVariant<Microsoft::WRL::ComPtr<IDispatch>>(*value.get(), type_, name),
                      ids_);
    } else {
      return FromVariant<T>(*value.get(), type_, name);
    }
  }

  Microsoft::WRL::ComPtr<IDispatch> object_;
  std::shared_ptr<DispatchIdCache> ids_;
  const wchar_t* type_ = L"Object";
  // Worked out at the first call: asking an object for its type is itself a call.
  bool type_known_ = false;
  std::optional<DispatchTypeId> described_type_;
  ObjectIds own_ids_;  // of an object without type information
};

}  // namespace corvina::win32
