#include "standin_probe.h"

#include <atomic>

#include "standin_adopt.h"

namespace corvina::standin {
namespace {

std::wstring TakeText(BSTR& s) {
  std::wstring text = s ? std::wstring(s, SysStringLen(s)) : std::wstring();
  SysFreeString(s);
  s = nullptr;
  return text;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class RecordingSink final : public IDispatch {
 public:
  RecordingSink(const IID& events, std::vector<Received>& log) : events_(events), log_(log) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    *out = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch) && !IsEqualIID(iid, events_))
      return E_NOINTERFACE;
    *out = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    Received r{id, {}, {}};
    for (UINT i = 0; i < params->cArgs; ++i) {
      const VARIANT& v = params->rgvarg[i];
      r.types.push_back(v.vt);
      if (v.vt == VT_DISPATCH && v.pdispVal) r.ctrl_tag = Late(v.pdispVal, L"Tag").text();
    }
    log_.push_back(std::move(r));
    return S_OK;
  }

 private:
  ~RecordingSink() = default;
  std::atomic<ULONG> refs_{1};
  IID events_;
  std::vector<Received>& log_;
};
#pragma GCC diagnostic pop

}  // namespace

IDispatch* Outcome::object() const {
  const VARIANT& v = *result.get();
  return v.vt == VT_DISPATCH ? v.pdispVal : nullptr;
}

std::wstring Outcome::text() const {
  win32::UniqueVariant text;
  if (FAILED(VariantChangeType(text.put(), const_cast<VARIANT*>(result.get()), VARIANT_ALPHABOOL,
                               VT_BSTR))) {
    return L"";
  }
  return std::wstring(text.get()->bstrVal, SysStringLen(text.get()->bstrVal));
}

Outcome Late(IDispatch* object, const wchar_t* name, WORD flags, const std::vector<VARIANT>& args) {
  Outcome out;
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  out.hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(out.hr)) return out;
  std::vector<VARIANT> reversed(args.rbegin(), args.rend());
  DISPID put_id = DISPID_PROPERTYPUT;
  const bool put = (flags & DISPATCH_PROPERTYPUT) != 0;
  DISPPARAMS params{reversed.data(), put ? &put_id : nullptr, static_cast<UINT>(reversed.size()),
                    put ? 1u : 0u};
  EXCEPINFO exception{};
  out.hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                          put ? nullptr : out.result.get(), &exception, &out.bad_argument);
  out.number = exception.wCode != 0 ? exception.wCode : exception.scode;
  out.source = TakeText(exception.bstrSource);
  out.description = TakeText(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  return out;
}

Outcome Put(IDispatch* object, const wchar_t* name, const VARIANT& value) {
  return Late(object, name, DISPATCH_PROPERTYPUT, {value});
}

Microsoft::WRL::ComPtr<IDispatch> Path(IDispatch* object, std::initializer_list<const wchar_t*> names) {
  Microsoft::WRL::ComPtr<IDispatch> at = object;
  for (const wchar_t* name : names) {
    if (!at) break;
    at = Late(at.Get(), name).object();
  }
  return at;
}

VARIANT I4(int32_t value) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_I4;
  v.lVal = value;
  return v;
}

VARIANT I2(int16_t value) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_I2;
  v.iVal = value;
  return v;
}

VARIANT Bool(bool value) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_BOOL;
  v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return v;
}

VARIANT Omitted() {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_ERROR;
  v.scode = DISP_E_PARAMNOTFOUND;
  return v;
}

ArgList::~ArgList() {
  for (BSTR s : owned_) SysFreeString(s);
}

VARIANT ArgList::Text(const wchar_t* value) {
  VARIANT v;
  VariantInit(&v);
  v.vt = VT_BSTR;
  v.bstrVal = SysAllocString(value);
  owned_.push_back(v.bstrVal);
  return v;
}

Microsoft::WRL::ComPtr<IDispatch> MakeRecordingSink(const IID& events, std::vector<Received>& log) {
  return Adopt<IDispatch>(new RecordingSink(events, log));
}

DWORD Advise(IDispatch* source, const IID& events, IDispatch* sink,
             Microsoft::WRL::ComPtr<IConnectionPoint>& point) {
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container;
  if (FAILED(source->QueryInterface(IID_IConnectionPointContainer,
                                    reinterpret_cast<void**>(container.GetAddressOf()))) ||
      FAILED(container->FindConnectionPoint(events, point.ReleaseAndGetAddressOf()))) {
    return 0;
  }
  DWORD cookie = 0;
  return SUCCEEDED(point->Advise(sink, &cookie)) ? cookie : 0;
}

}  // namespace corvina::standin
