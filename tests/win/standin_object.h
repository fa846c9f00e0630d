#pragma once
// The stand-in's COM object: one class template over the sim objects of platform/outlook.h.
// Each kind of object (Items, CommandBar, ...) is described by a table of its members, as
// Office's type libraries describe them: a name, the most arguments it takes, what a property
// get or method call does and what a property put does, and the event interfaces its
// connection points offer. The template turns IDispatch calls into calls of the sim object:
// names are found in any case, arguments are coerced, a corvina::Error the sim throws
// (injected faults included) comes back as DISP_E_EXCEPTION with a filled EXCEPINFO, and no
// exception ever crosses the COM boundary.
//
// Every call that hands out an object hands out a new stand-in object over a new sim object,
// as Outlook hands out new references; events still reach every sink because they are raised
// by the sim data the objects share.
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/event_connection.h"
#include "platform/outlook.h"
#include "standin_adopt.h"
#include "standin_call.h"
#include "standin_context.h"

#include <olectl.h>  // CONNECT_E_*, after <windows.h>

namespace corvina::standin {

// Calls the sink of one Advise: the event's DISPID and its arguments, last first (rgvarg order).
using Fire = std::function<void(DISPID, std::span<VARIANT>)>;

// How a member body receives its object.
template <class T>
using Ref = const std::shared_ptr<T>&;

template <class T>
struct Member {
  const wchar_t* name;
  UINT max_args;                         // of a get or method call
  void (*get)(Ref<T>, Call&);            // property get or method; null when there is none
  void (*put)(Ref<T>, Call&) = nullptr;  // property put; null for a read-only member
};

template <class T>
struct EventSource {
  IID events;  // the dispinterface a sink advises on
  // Subscribes `fire` to the sim events that interface carries on `target`.
  std::vector<EventConnection> (*connect)(const std::shared_ptr<Context>& context,
                                          Ref<T> target, const Fire& fire);
};

template <class T>
struct KindTable {
  const wchar_t* name;  // how StandIn::Hide names the kind
  std::vector<Member<T>> members;
  std::vector<EventSource<T>> events;
};

template <class T>
struct KindTag {};

// Outlook's AddressLists collection, which platform/outlook.h folds into one NameSpace member.
struct AddressLists {
  outlook::Ref<outlook::NameSpace> name_space;
};

// Outlook's SelectNamesDialog, which platform/outlook.h folds into NameSpace::SelectNames: the
// caption is kept until Display asks the sim for the pick, which Recipients then hands out.
struct SelectNamesDialog {
  outlook::Ref<outlook::NameSpace> name_space;
  std::wstring caption;
  std::vector<std::wstring> picked;
};
// The dialog's Recipients collection and one Recipient in it, over the sim's answer entries.
struct PickedRecipients {
  std::vector<std::wstring> entries;
};
struct PickedRecipient {
  std::wstring entry;
};

// The tables, each defined beside its kind's members.
const KindTable<outlook::Application>& TableOf(KindTag<outlook::Application>);
const KindTable<outlook::Explorers>& TableOf(KindTag<outlook::Explorers>);
const KindTable<outlook::Explorer>& TableOf(KindTag<outlook::Explorer>);
const KindTable<outlook::Inspectors>& TableOf(KindTag<outlook::Inspectors>);
const KindTable<outlook::Inspector>& TableOf(KindTag<outlook::Inspector>);
const KindTable<outlook::Selection>& TableOf(KindTag<outlook::Selection>);
const KindTable<outlook::NameSpace>& TableOf(KindTag<outlook::NameSpace>);
const KindTable<AddressLists>& TableOf(KindTag<AddressLists>);
const KindTable<SelectNamesDialog>& TableOf(KindTag<SelectNamesDialog>);
const KindTable<PickedRecipients>& TableOf(KindTag<PickedRecipients>);
const KindTable<PickedRecipient>& TableOf(KindTag<PickedRecipient>);
const KindTable<outlook::Folder>& TableOf(KindTag<outlook::Folder>);
const KindTable<outlook::Items>& TableOf(KindTag<outlook::Items>);
const KindTable<outlook::Item>& TableOf(KindTag<outlook::Item>);
const KindTable<outlook::Attachments>& TableOf(KindTag<outlook::Attachments>);
const KindTable<outlook::Attachment>& TableOf(KindTag<outlook::Attachment>);
const KindTable<outlook::Recipients>& TableOf(KindTag<outlook::Recipients>);
const KindTable<outlook::CommandBars>& TableOf(KindTag<outlook::CommandBars>);
const KindTable<outlook::CommandBar>& TableOf(KindTag<outlook::CommandBar>);
const KindTable<outlook::CommandBarControls>& TableOf(KindTag<outlook::CommandBarControls>);
const KindTable<outlook::CommandBarControl>& TableOf(KindTag<outlook::CommandBarControl>);

// A connection point of `container` for `events`; each Advise calls `connect` for the sink.
Microsoft::WRL::ComPtr<IConnectionPoint> MakeConnectionPoint(
    std::shared_ptr<Context> context, IConnectionPointContainer* container, const IID& events,
    std::function<std::vector<EventConnection>(const Fire&)> connect);

// A COM object is destroyed only by its own Release, never through an interface pointer, so
// the interfaces' non-virtual destructors are as intended.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
template <class T>
class Object final : public IDispatch, public IConnectionPointContainer {
 public:
  Object(std::shared_ptr<Context> context, std::shared_ptr<T> target)
      : context_(std::move(context)), target_(std::move(target)) {
    ++context_->counters().live_objects;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch)) {
      *out = static_cast<IDispatch*>(this);
    } else if (IsEqualIID(iid, IID_IConnectionPointContainer) && !Table().events.empty() &&
               !context_->EventsTaken(Table().name)) {
      *out = static_cast<IConnectionPointContainer*>(this);
    } else {
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

  // No type information, as a script host's objects: a caller must ask each object for its ids.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
  }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    if (!names || !ids) return E_POINTER;
    ++context_->counters().name_lookups;
    HRESULT hr = S_OK;
    for (UINT i = 0; i < count; ++i) {
      ids[i] = DISPID_UNKNOWN;
      // Named arguments are not offered: only the member name (i == 0) is known.
      if (i == 0 && names[0]) {
        if (const Member<T>* m = ByName(names[0]); m && !Hidden(*m)) ids[0] = DispIdOf(m->name);
      }
      if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception,
                                   UINT* bad_argument) override {
    ++context_->counters().invokes;
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    const Member<T>* m = ById(id);
    if (!m || Hidden(*m)) return DISP_E_MEMBERNOTFOUND;
    const DISPPARAMS none{nullptr, nullptr, 0, 0};
    const DISPPARAMS& p = params ? *params : none;
    void (*body)(Ref<T>, Call&) = nullptr;
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
      body = m->put;
      if (!body) return DISP_E_MEMBERNOTFOUND;
      if (p.cArgs != 1) return DISP_E_BADPARAMCOUNT;
      if (p.cNamedArgs != 1 || !p.rgdispidNamedArgs || p.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        return DISP_E_PARAMNOTFOUND;
      result = nullptr;
    } else if (flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)) {
      body = m->get;
      if (!body) return DISP_E_MEMBERNOTFOUND;
      if (p.cNamedArgs > 0) return DISP_E_NONAMEDARGS;
      if (p.cArgs > m->max_args) return DISP_E_BADPARAMCOUNT;
    } else {
      return E_INVALIDARG;
    }
    if (result) VariantInit(result);
    if (body == m->get) {
      if (const auto nothing = context_->NothingFrom(Table().name, m->name)) {
        if (result && *nothing == Nothing::kNullObject) {
          result->vt = VT_DISPATCH;
          result->pdispVal = nullptr;
        }
        return S_OK;
      }
    }
    try {
      Call call(context_, p, result);
      body(target_, call);
      return S_OK;
    } catch (const InvokeFailure& failure) {
      if (bad_argument) *bad_argument = failure.argument;
      return failure.hr;
    } catch (const Error& error) {
      FillException(exception, error);
    } catch (const std::exception& error) {
      FillException(exception, Error(E_FAIL, L"Outlook", FromUtf8(error.what())));
    } catch (...) {
      return E_UNEXPECTED;
    }
    return DISP_E_EXCEPTION;
  }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override {
    if (out) *out = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override {
    if (!out) return E_POINTER;
    *out = nullptr;
    for (const EventSource<T>& source : Table().events) {
      if (!IsEqualIID(iid, source.events)) continue;
      auto connect = [context = context_, target = target_, c = source.connect](const Fire& fire) {
        return c(context, target, fire);
      };
      try {
        *out = MakeConnectionPoint(context_, this, source.events, connect).Detach();
        return S_OK;
      } catch (...) {
        return E_OUTOFMEMORY;
      }
    }
    return CONNECT_E_NOCONNECTION;
  }

 private:
  ~Object() { --context_->counters().live_objects; }

  static const KindTable<T>& Table() { return TableOf(KindTag<T>{}); }

  static const Member<T>* ByName(const wchar_t* name) {
    for (const Member<T>& m : Table().members)
      if (EqualsIgnoreCase(m.name, name)) return &m;
    return nullptr;
  }
  // DISPID_VALUE is the collection's default member, Item.
  static const Member<T>* ById(DISPID id) {
    static const std::map<DISPID, const Member<T>*> by_id = [] {
      std::map<DISPID, const Member<T>*> ids;
      for (const Member<T>& m : Table().members) ids[DispIdOf(m.name)] = &m;
      if (const Member<T>* item = ByName(L"Item")) ids[DISPID_VALUE] = item;
      return ids;
    }();
    const auto found = by_id.find(id);
    return found == by_id.end() ? nullptr : found->second;
  }
  bool Hidden(const Member<T>& m) const { return context_->IsHidden(Table().name, m.name); }

  std::atomic<ULONG> refs_{1};
  std::shared_ptr<Context> context_;
  std::shared_ptr<T> target_;
};
#pragma GCC diagnostic pop

// The stand-in object over `target`; null (Nothing) for a null target.
template <class T>
Microsoft::WRL::ComPtr<IDispatch> Expose(std::shared_ptr<Context> context, std::shared_ptr<T> target) {
  if (!target) return nullptr;
  return Adopt<IDispatch>(static_cast<IDispatch*>(new Object<T>(std::move(context), std::move(target))));
}

template <class T>
void Call::Return(std::shared_ptr<T> object) {
  Return(Expose(context_, std::move(object)));
}

}  // namespace corvina::standin
