#pragma once
// The class factory COM asks DllGetClassObject for: it makes DesVireo objects.
#include <atomic>

#include "platform/win32/windows_api.h"

namespace corvina::com {

// A COM object is destroyed only by its own Release, never through an interface pointer, so
// the interfaces' non-virtual destructors are as intended.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class ClassFactory final : public IClassFactory {
 public:
  ClassFactory();  // one reference, the caller's

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ~ClassFactory();
  std::atomic<ULONG> refs_{1};
#pragma GCC diagnostic pop
};

}  // namespace corvina::com
