#pragma once
// The COM object Outlook creates: IDTExtensibility2 (vtable and IDispatch) over one
// corvina::DesVireo. The core's entries never throw; this is the last wall all the same:
// anything that still escapes is caught here and the call returns S_OK, because an add-in
// that fails a call from Outlook gets disabled.
#include <atomic>
#include <memory>

#include "host/com/addin_services.h"
#include "host/com/idt_extensibility2.h"
#include "host/des_vireo.h"

namespace corvina::com {

// A COM object is destroyed only by its own Release, never through an interface pointer, so
// the interfaces' non-virtual destructors are as intended.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class DesVireoObject final : public IDTExtensibility2 {
 public:
  // Runs AddinInstance_Initialize. Starts with one reference, the caller's.
  DesVireoObject();

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // IDispatch: no type information; the five names and DISPIDs 1-5.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID lcid,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID lcid, WORD flags,
                                   DISPPARAMS* params, VARIANT* result, EXCEPINFO* excep,
                                   UINT* arg_error) override;
  // IDTExtensibility2
  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* Application, long ConnectMode,
                                         IDispatch* AddInInst, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(long RemoveMode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

 private:
  ~DesVireoObject();  // runs AddinInstance_Terminate; only Release deletes

  std::atomic<ULONG> refs_{1};
#pragma GCC diagnostic pop
  AddinServices services_;             // before connect_: the core holds references into it
  std::unique_ptr<DesVireo> connect_;  // null only if building it failed
};

}  // namespace corvina::com
