#include "host/com/des_vireo_object.h"

#include "host/com/com_ids.h"
#include "host/com/invoke_args.h"
#include "host/com/last_wall.h"
#include "host/com/module.h"
#include "platform/win32/outlook_application.h"

namespace corvina::com {
namespace {

struct Member {
  const wchar_t* name;
  DISPID id;
  UINT parameters;
};
constexpr Member kMembers[] = {
    {L"OnConnection", kDispIdOnConnection, 4},
    {L"OnDisconnection", kDispIdOnDisconnection, 2},
    {L"OnAddInsUpdate", kDispIdOnAddInsUpdate, 1},
    {L"OnStartupComplete", kDispIdOnStartupComplete, 1},
    {L"OnBeginShutdown", kDispIdOnBeginShutdown, 1},
};

const Member* FindMember(DISPID id) {
  for (const Member& m : kMembers)
    if (m.id == id) return &m;
  return nullptr;
}

// A host that passes no number for the mode gets the type mismatch IDispatch prescribes; the
// log says so, or an add-in that never connected would leave no trace of why.
void LogRefusedMode(DesVireo* connect, const Member& member, const VARIANT& passed) noexcept {
  LastWall(member.name, [&] {
    if (!connect) return;
    const bool connecting = member.id == kDispIdOnConnection;
    AddIn& addin = connect->addin();
    addin.log.LogError(
        L"DesVireo", connecting ? L"IDTExtensibility2_OnConnection" : L"IDTExtensibility2_OnDisconnection",
        Error(kErrTypeMismatch, kOwnErrorSource,
              std::wstring(L"Type mismatch: ") + member.name + L" was called with a " +
                  (connecting ? L"ConnectMode" : L"RemoveMode") + L" of variant type " +
                  std::to_wstring(passed.vt) + L", which is no number; the call was refused"));
    addin.log.Flush(addin.LogPath());
  });
}

}  // namespace

DesVireoObject::DesVireoObject() {
  ObjectCreated();
  LastWall(L"AddinInstance_Initialize", [&] {
    connect_ = std::make_unique<DesVireo>(services_.Make());
    connect_->AddinInstance_Initialize();
  });
}

DesVireoObject::~DesVireoObject() {
  LastWall(L"AddinInstance_Terminate", [&] {
    if (connect_) connect_->AddinInstance_Terminate();
    connect_.reset();
  });
  ObjectDestroyed();
}

HRESULT DesVireoObject::QueryInterface(REFIID riid, void** ppv) {
  if (!ppv) return E_POINTER;
  if (riid == IID_IUnknown || riid == IID_IDispatch || riid == kIidIDTExtensibility2) {
    *ppv = static_cast<IDTExtensibility2*>(this);
    AddRef();
    return S_OK;
  }
  *ppv = nullptr;
  return E_NOINTERFACE;
}

ULONG DesVireoObject::AddRef() { return ++refs_; }

ULONG DesVireoObject::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT DesVireoObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT DesVireoObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT DesVireoObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids) return E_POINTER;
  HRESULT hr = S_OK;
  for (UINT i = 0; i < count; ++i) {
    ids[i] = DISPID_UNKNOWN;
    // Only member names are known; parameter names (i > 0) are not.
    if (i == 0 && names[0])
      for (const Member& m : kMembers)
        if (CompareStringOrdinal(names[0], -1, m.name, -1, TRUE) == CSTR_EQUAL) ids[0] = m.id;
    if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
  }
  return hr;
}

HRESULT DesVireoObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                               VARIANT* result, EXCEPINFO*, UINT* arg_error) {
  const Member* member = FindMember(id);
  if (!member || !(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;
  const DISPPARAMS none{nullptr, nullptr, 0, 0};
  const DISPPARAMS& p = params ? *params : none;
  if (p.cNamedArgs > 0) return DISP_E_NONAMEDARGS;
  // Trailing parameters may be left out; the custom arrays are never used by the add-in.
  if (p.cArgs > member->parameters) return DISP_E_BADPARAMCOUNT;
  if (result) VariantInit(result);
  const InvokeArgs args(p);
  const UINT number_at = id == kDispIdOnConnection ? 1 : 0;  // ConnectMode / RemoveMode
  std::optional<long> number = 0;
  if (id == kDispIdOnConnection || id == kDispIdOnDisconnection) number = args.Long(number_at);
  if (!number) {
    LogRefusedMode(connect_.get(), *member, *args.At(number_at));
    if (arg_error) *arg_error = p.cArgs - 1 - number_at;
    return DISP_E_TYPEMISMATCH;
  }
  switch (id) {
    case kDispIdOnConnection:
      return OnConnection(args.Dispatch(0).Get(), *number, args.Dispatch(2).Get(), nullptr);
    case kDispIdOnDisconnection: return OnDisconnection(*number, nullptr);
    case kDispIdOnAddInsUpdate: return OnAddInsUpdate(nullptr);
    case kDispIdOnStartupComplete: return OnStartupComplete(nullptr);
    default: return OnBeginShutdown(nullptr);
  }
}

HRESULT DesVireoObject::OnConnection(IDispatch* Application, long ConnectMode, IDispatch*,
                                     SAFEARRAY**) {
  return LastWall(L"OnConnection", [&] {
    if (!connect_) return;
    // The wrapper takes its own reference: Outlook's object is kept until disconnection.
    connect_->IDTExtensibility2_OnConnection(win32::WrapApplication(Application), ConnectMode);
  });
}

HRESULT DesVireoObject::OnDisconnection(long RemoveMode, SAFEARRAY**) {
  return LastWall(L"OnDisconnection", [&] {
    if (connect_) connect_->IDTExtensibility2_OnDisconnection(RemoveMode);
  });
}

HRESULT DesVireoObject::OnAddInsUpdate(SAFEARRAY**) {
  return LastWall(L"OnAddInsUpdate", [&] {
    if (connect_) connect_->IDTExtensibility2_OnAddInsUpdate();
  });
}

HRESULT DesVireoObject::OnStartupComplete(SAFEARRAY**) {
  return LastWall(L"OnStartupComplete", [&] {
    if (connect_) connect_->IDTExtensibility2_OnStartupComplete();
  });
}

HRESULT DesVireoObject::OnBeginShutdown(SAFEARRAY**) {
  return LastWall(L"OnBeginShutdown", [&] {
    if (connect_) connect_->IDTExtensibility2_OnBeginShutdown();
  });
}

}  // namespace corvina::com
