// IConnectionPoint of the stand-in: each Advise subscribes the sink to the sim's events (the
// sim raises them, the point calls the sink's Invoke), each Unadvise ends that subscription.
// Both are counted so a test sees whether the add-in let go of every sink it advised.
#include <map>

#include "standin_object.h"

#include <olectl.h>  // CONNECT_E_*, after <windows.h>

namespace corvina::standin {
namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(std::shared_ptr<Context> context, IConnectionPointContainer* container,
                  const IID& events, std::function<std::vector<EventConnection>(const Fire&)> connect)
      : context_(std::move(context)), container_(container), events_(events),
        connect_(std::move(connect)) {
    ++context_->counters().live_objects;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IConnectionPoint)) return E_NOINTERFACE;
    *out = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    if (!iid) return E_POINTER;
    *iid = events_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override {
    if (!out) return E_POINTER;
    *out = container_.Get();
    (*out)->AddRef();
    return S_OK;
  }

  // As Office does, the sink is asked for the events interface itself; plain IDispatch will do.
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* unknown, DWORD* cookie) override {
    if (!unknown || !cookie) return E_POINTER;
    *cookie = 0;
    Microsoft::WRL::ComPtr<IDispatch> sink;
    if (FAILED(unknown->QueryInterface(events_, reinterpret_cast<void**>(sink.GetAddressOf()))) &&
        FAILED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(sink.GetAddressOf())))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    std::shared_ptr<Context> context = context_;
    Fire fire = [context, sink](DISPID id, std::span<VARIANT> args) {
      DISPPARAMS params{args.data(), nullptr, static_cast<UINT>(args.size()), 0};
      ++context->counters().events_raised;
      const HRESULT hr = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                      nullptr, nullptr, nullptr);
      if (hr != S_OK) ++context->counters().events_failed;
    };
    try {
      connections_.emplace(next_cookie_, connect_(fire));
    } catch (const Error& e) {
      // A failed subscription (an injected fault) refuses the sink.
      return FAILED(e.number()) ? e.number() : CONNECT_E_CANNOTCONNECT;
    } catch (...) {
      return E_OUTOFMEMORY;
    }
    *cookie = next_cookie_++;
    ++context_->counters().advises;
    context_->KeepSink(unknown);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    const auto found = connections_.find(cookie);
    if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
    // Taken out first: a subscription's end may run code that reaches this point again.
    std::vector<EventConnection> ended = std::move(found->second);
    connections_.erase(found);
    ended.clear();
    ++context_->counters().unadvises;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** out) override {
    if (out) *out = nullptr;
    return E_NOTIMPL;
  }

 private:
  ~ConnectionPoint() { --context_->counters().live_objects; }

  std::atomic<ULONG> refs_{1};
  std::shared_ptr<Context> context_;
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container_;
  IID events_;
  std::function<std::vector<EventConnection>(const Fire&)> connect_;
  std::map<DWORD, std::vector<EventConnection>> connections_;
  DWORD next_cookie_ = 1;
};
#pragma GCC diagnostic pop

}  // namespace

Microsoft::WRL::ComPtr<IConnectionPoint> MakeConnectionPoint(
    std::shared_ptr<Context> context, IConnectionPointContainer* container, const IID& events,
    std::function<std::vector<EventConnection>(const Fire&)> connect) {
  return Adopt<IConnectionPoint>(
      new ConnectionPoint(std::move(context), container, events, std::move(connect)));
}

}  // namespace corvina::standin
