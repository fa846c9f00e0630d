#include "support/sim_world.h"

#include "base/text.h"
#include "platform/sim/ui_event.h"

namespace corvina::testing {

SimWorld::SimWorld() : application(std::make_shared<sim::SimApplication>(store)) {
  files.AddDrive(L'C', uint64_t{10} << 30);
  files.PutDirectory(kAddinFolder);
}

Services SimWorld::MakeServices() {
  return Services{files, settings, ui, clock, beeper, clipboard, kAddinFolder,
                  [app = application] { return app; }};
}

std::unique_ptr<DesVireo> SimWorld::NewAddIn() {
  auto addin = std::make_unique<DesVireo>(MakeServices());
  addin->AddinInstance_Initialize();
  return addin;
}

std::unique_ptr<DesVireo> SimWorld::StartOutlook() {
  auto addin = NewAddIn();
  addin->IDTExtensibility2_OnConnection(application, ext_cm_Startup);
  addin->IDTExtensibility2_OnStartupComplete();
  return addin;
}

std::wstring SimWorld::Setting(const std::wstring& section, const std::wstring& key) {
  const std::wstring* value = settings.table().Find(L"Vireo", section, key);
  return value ? *value : L"<missing>";
}

bool SimWorld::HasSetting(const std::wstring& section, const std::wstring& key) {
  return settings.table().Find(L"Vireo", section, key) != nullptr;
}

void SimWorld::Store(const std::wstring& section, const std::wstring& key,
                     const std::wstring& value) {
  settings.Write(L"Vireo", section, key, value);
}

std::vector<std::wstring> SimWorld::LogLines() {
  std::vector<std::wstring> lines;
  auto text = files.Get(std::wstring(kAddinFolder) + L"\\Vireo.log");
  if (!text) return lines;
  std::wstring all = FromUtf8(*text);
  size_t at = 0;
  for (size_t pos; (pos = all.find(L"\r\n", at)) != std::wstring::npos; at = pos + 2)
    lines.push_back(all.substr(at, pos - at));
  return lines;
}

std::vector<std::wstring> SimWorld::LogLinesWith(std::wstring_view text) {
  std::vector<std::wstring> found;
  for (std::wstring& line : LogLines())
    if (ContainsText(line, text)) found.push_back(std::move(line));
  return found;
}

std::vector<std::wstring> SimWorld::ProgressTexts() const {
  std::vector<std::wstring> out;
  for (const auto& e : ui.events())
    if (e.kind == sim::UiEventKind::kProgressText) out.push_back(e.text);
  return out;
}

std::vector<std::wstring> SimWorld::Boxes() const {
  std::vector<std::wstring> out;
  for (const auto& e : ui.events())
    if (e.kind == sim::UiEventKind::kMsgBox || e.kind == sim::UiEventKind::kShowMsgBox)
      out.push_back(e.text);
  return out;
}

std::shared_ptr<sim::SimCommandBarData> SimWorld::Bar(const std::wstring& name) {
  auto explorer = store.ActiveExplorer();
  return explorer ? explorer->command_bars->Find(name) : nullptr;
}

}  // namespace corvina::testing
