#include "host/com/class_factory.h"

#include "host/com/des_vireo_object.h"
#include "host/com/module.h"

namespace corvina::com {

ClassFactory::ClassFactory() { ObjectCreated(); }
ClassFactory::~ClassFactory() { ObjectDestroyed(); }

HRESULT ClassFactory::QueryInterface(REFIID riid, void** ppv) {
  if (!ppv) return E_POINTER;
  if (riid == IID_IUnknown || riid == IID_IClassFactory) {
    *ppv = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  *ppv = nullptr;
  return E_NOINTERFACE;
}

ULONG ClassFactory::AddRef() { return ++refs_; }

ULONG ClassFactory::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
  if (!ppv) return E_POINTER;
  *ppv = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  DesVireoObject* object = nullptr;
  try {
    // The object catches the core's failures itself; only making its members can throw.
    object = new DesVireoObject();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  const HRESULT hr = object->QueryInterface(riid, ppv);
  object->Release();  // the caller's reference, if any, keeps it
  return hr;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  com::LockServer(lock != FALSE);
  return S_OK;
}

}  // namespace corvina::com
