#include "platform/win32/event_sink.h"

#include <atomic>
#include <memory>
#include <utility>

#include "base/error.h"
#include "platform/win32/dispatch_error.h"

namespace corvina::win32 {

namespace {

// A COM object is destroyed only by its own Release, never through a base pointer, so the
// interfaces' non-virtual destructors are as intended.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class EventSink final : public IDispatch {
 public:
  EventSink(const IID& events, DISPID dispid, EventHandler handler)
      : events_(events),
        dispid_(dispid),
        handler_(std::make_shared<const EventHandler>(std::move(handler))) {}

  void Disconnect() noexcept { handler_.reset(); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, events_)) {
      *out = static_cast<IDispatch*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (info) *info = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }

  // Events the add-in does not handle are accepted and ignored, as an empty VB event
  // procedure would be.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params,
                                   VARIANT*, EXCEPINFO*, UINT*) override {
    if (dispid != dispid_) return S_OK;
    // Both kept alive for the call: the handler may end this very subscription.
    Microsoft::WRL::ComPtr<EventSink> self(this);
    const auto handler = handler_;
    if (handler && *handler) {
      try {
        static const DISPPARAMS kNone{nullptr, nullptr, 0, 0};
        (*handler)(params ? *params : kNone);
      } catch (...) {
        // Outlook is the caller: nothing may unwind into it.
      }
    }
    return S_OK;
  }

 private:
  ~EventSink() = default;

  std::atomic<ULONG> refs_{1};
  IID events_;
  DISPID dispid_;
  std::shared_ptr<const EventHandler> handler_;
};
#pragma GCC diagnostic pop

// What Outlook answered, with the event the add-in tried to hook and what went wrong: the log
// line has to tell a reader which event is dead.
Error HookError(HRESULT hr, std::wstring_view event, const wchar_t* why) {
  return Error(static_cast<int32_t>(hr), kOutlookSource,
               L"Cannot hook the event " + std::wstring(event) + L": " + why + L"; " +
                   DescribeHResult(hr));
}

std::wstring GuidText(const IID& iid) {
  wchar_t text[40] = L"";
  StringFromGUID2(iid, text, 40);
  return text;
}

}  // namespace

EventConnection AdviseEvent(IDispatch* source, const IID& events, DISPID dispid,
                            std::function<void()> handler, std::wstring_view event) {
  return AdviseEventWithArguments(
      source, events, dispid, [handler = std::move(handler)](const DISPPARAMS&) { handler(); },
      event);
}

EventConnection AdviseEventWithArguments(IDispatch* source, const IID& events, DISPID dispid,
                                         EventHandler handler, std::wstring_view event) {
  if (!source) {
    throw Error(kErrObjectVariableNotSet, kOwnErrorSource,
                L"Cannot hook the event " + std::wstring(event) +
                    L": Object variable or With block variable not set");
  }
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container;
  HRESULT hr = source->QueryInterface(IID_IConnectionPointContainer,
                                      reinterpret_cast<void**>(container.GetAddressOf()));
  if (FAILED(hr) || !container) {
    throw HookError(FAILED(hr) ? hr : E_NOINTERFACE, event,
                    L"the object offers no events (it has no connection points)");
  }
  Microsoft::WRL::ComPtr<IConnectionPoint> point;
  hr = container->FindConnectionPoint(events, point.GetAddressOf());
  if (FAILED(hr) || !point) {
    const std::wstring why = L"the object has no connection point for the events interface " +
                             GuidText(events);
    throw HookError(FAILED(hr) ? hr : E_NOINTERFACE, event, why.c_str());
  }

  Microsoft::WRL::ComPtr<EventSink> sink;
  // Takes over the one reference the sink is born with. (mingw-w64's ComPtr::Attach adds a
  // reference of its own, unlike the Windows SDK's, and would leak every sink.)
  *sink.ReleaseAndGetAddressOf() = new EventSink(events, dispid, std::move(handler));
  DWORD cookie = 0;
  hr = point->Advise(sink.Get(), &cookie);
  if (FAILED(hr)) throw HookError(hr, event, L"the object refused the add-in's event sink");
  return EventConnection([point, sink, cookie] {
    sink->Disconnect();
    point->Unadvise(cookie);
  });
}

}  // namespace corvina::win32
