#include "host/com/addin_services.h"

#include "host/com/com_ids.h"
#include "host/com/module.h"
#include "platform/win32/outlook_application.h"

namespace corvina::com {

Services AddinServices::Make() {
  return Services{files_, settings_, ui_, clock_, beeper_, clipboard_, ModuleFolder(), FindRunningOutlook};
}

outlook::Ref<outlook::Application> FindRunningOutlook() {
  Microsoft::WRL::ComPtr<IUnknown> running;
  if (FAILED(GetActiveObject(kClsidOutlookApplication, nullptr, &running))) return nullptr;
  Microsoft::WRL::ComPtr<IDispatch> application;
  if (FAILED(running.As(&application))) return nullptr;
  return win32::WrapApplication(application.Get());
}

}  // namespace corvina::com
