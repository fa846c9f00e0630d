#pragma once
// The add-in connection interface every Office host drives, declared here because no Office
// header is used. A dual interface: the vtable below follows IDispatch's four methods, and the
// same five methods answer IDispatch::Invoke with DISPIDs 1 to 5.
#include "platform/win32/windows_api.h"

namespace corvina::com {

inline constexpr DISPID kDispIdOnConnection = 1;
inline constexpr DISPID kDispIdOnDisconnection = 2;
inline constexpr DISPID kDispIdOnAddInsUpdate = 3;
inline constexpr DISPID kDispIdOnStartupComplete = 4;
inline constexpr DISPID kDispIdOnBeginShutdown = 5;

// A COM object is destroyed only by its own Release, never through an interface pointer, so
// the interfaces' non-virtual destructors are as intended.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
struct IDTExtensibility2 : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* Application, long ConnectMode,
                                                 IDispatch* AddInInst, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(long RemoveMode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;

 protected:
  ~IDTExtensibility2() = default;
};
#pragma GCC diagnostic pop

}  // namespace corvina::com
