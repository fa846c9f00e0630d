#include "addin/addin.h"

namespace corvina {

AddIn::AddIn(Services s)
    : services(std::move(s)), config(services.addin_folder), log(services.files, services.clock) {}

ConfigStore AddIn::Store() {
  return ConfigStore{services.settings, services.files, services.clock, log,
                     services.addin_folder, ErrorContext()};
}

bool AddIn::IsFormLoaded(const std::wstring& name) {
  for (const std::wstring& form : services.ui.LoadedForms())
    if (form == name) return true;
  return false;
}

void AddIn::ShowProgress(const std::wstring& text) {
  if (!IsFormLoaded(L"frmInit")) return;
  services.ui.SetProgressText(text);
  services.ui.DoEvents();
}

}  // namespace corvina
