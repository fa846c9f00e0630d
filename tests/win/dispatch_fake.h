#pragma once
// A hand-made late-bound object for the dispatch tests: a few named members backed by a value
// store, one connection point, and a record of what each call passed. It counts name lookups
// and can describe itself with a type GUID, as Outlook's objects do.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

#include <olectl.h>  // CONNECT_E_*, after <windows.h>

namespace corvina::win32::testing {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class FakeObject final : public IDispatch, public IConnectionPointContainer, public IConnectionPoint {
 public:
  static inline const std::map<std::wstring, DISPID> kMembers = {
      {L"Name", 1}, {L"Add", 2}, {L"Item", 3}, {L"Count", 4}};

  static Microsoft::WRL::ComPtr<FakeObject> Make(const GUID& type = GUID_NULL,
                                                 const IID& events = IID_NULL) {
    Microsoft::WRL::ComPtr<FakeObject> fake;
    fake.Attach(new FakeObject(type, events));
    return fake;
  }

  // What the test sets up.
  std::map<std::wstring, DISPID> members = kMembers;  // this object's own numbering
  std::map<DISPID, UniqueVariant> values;  // what a property get returns, what a put stores
  HRESULT invoke_result = S_OK;           // DISP_E_EXCEPTION fills `exception`
  EXCEPINFO exception{};                  // BSTRs are handed over to the caller
  // What the calls passed.
  std::map<std::wstring, int> lookups;
  int type_questions = 0;  // GetTypeInfoCount calls
  WORD flags = 0;
  std::vector<UniqueVariant> args;  // as received: last argument first
  std::vector<DISPID> named;
  bool had_result = false;
  Microsoft::WRL::ComPtr<IDispatch> sink;
  std::vector<DWORD> unadvised;

  HRESULT Raise(IDispatch* to, DISPID dispid) {
    VARIANT cancel_and_control[2];
    VARIANT_BOOL cancel = VARIANT_FALSE;
    cancel_and_control[0].vt = VT_BOOL | VT_BYREF;
    cancel_and_control[0].pboolVal = &cancel;
    cancel_and_control[1].vt = VT_DISPATCH;
    cancel_and_control[1].pdispVal = static_cast<IDispatch*>(this);
    DISPPARAMS params{cancel_and_control, nullptr, 2, 0};
    return to->Invoke(dispid, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
  }

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch)) {
      *out = static_cast<IDispatch*>(this);
    } else if (IsEqualIID(iid, IID_IConnectionPointContainer) && !IsEqualIID(events_, IID_NULL)) {
      *out = static_cast<IConnectionPointContainer*>(this);
    } else if (IsEqualIID(iid, IID_IConnectionPoint)) {
      *out = static_cast<IConnectionPoint*>(this);
    } else {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    ++type_questions;
    *count = type_info_ ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    *info = type_info_.Get();
    if (!*info) return E_NOTIMPL;
    (*info)->AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
    ++lookups[names[0]];
    const auto found = members.find(names[0]);
    *id = found == members.end() ? DISPID_UNKNOWN : found->second;
    return found == members.end() ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD call_flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* info, UINT*) override {
    flags = call_flags;
    had_result = result != nullptr;
    args.clear();
    for (UINT i = 0; i < params->cArgs; ++i) {
      args.emplace_back();
      VariantCopy(args.back().get(), &params->rgvarg[i]);
    }
    named.assign(params->rgdispidNamedArgs, params->rgdispidNamedArgs + params->cNamedArgs);
    if (invoke_result == DISP_E_EXCEPTION) *info = std::exchange(exception, EXCEPINFO{});
    if (FAILED(invoke_result)) return invoke_result;
    if (call_flags & DISPATCH_PROPERTYPUT) return VariantCopy(values[id].put(), &params->rgvarg[0]);
    if (result && values.count(id)) return VariantCopy(result, values[id].get());
    return S_OK;
  }

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    *point = nullptr;
    if (!IsEqualIID(iid, events_)) return CONNECT_E_NOCONNECTION;
    return QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(point));
  }

  // IConnectionPoint
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    *iid = events_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override {
    return QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(out));
  }
  // A real source asks the sink for the events interface, as this one does.
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* unknown, DWORD* cookie) override {
    if (sink) return CONNECT_E_ADVISELIMIT;
    const HRESULT hr = unknown->QueryInterface(events_, reinterpret_cast<void**>(sink.GetAddressOf()));
    if (FAILED(hr)) return CONNECT_E_CANNOTCONNECT;
    *cookie = 42;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    unadvised.push_back(cookie);
    sink.Reset();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  FakeObject(const GUID& type, const IID& events) : events_(events) {
    if (IsEqualGUID(type, GUID_NULL)) return;
    // A real type description carrying the GUID, built the way a type library compiler would.
    Microsoft::WRL::ComPtr<ICreateTypeLib2> library;
    Microsoft::WRL::ComPtr<ICreateTypeInfo> created;
    if (SUCCEEDED(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"fake.tlb",
                                 library.GetAddressOf())) &&
        SUCCEEDED(library->CreateTypeInfo(const_cast<LPOLESTR>(L"Fake"), TKIND_DISPATCH,
                                          created.GetAddressOf())) &&
        SUCCEEDED(created->SetGuid(type)) && SUCCEEDED(created->LayOut())) {
      created.As(&type_info_);
    }
  }
  ~FakeObject() = default;

  ULONG refs_ = 1;
  IID events_;
  Microsoft::WRL::ComPtr<ITypeInfo> type_info_;
};
#pragma GCC diagnostic pop

}  // namespace corvina::win32::testing
