#include "virus/virus_report.h"

#include "base/text.h"
#include "virus/virus_log.h"

namespace corvina {

VirusReport::VirusReport(AddIn& addin) : addin_(addin) {
  view_.caption = addin.Text(TextId::kVirusReportCaption);
  events_.clear_log = [&addin] {
    if (addin.virus.report) addin.virus.report->cmdClearLog_Click();
  };
  // Closing ends this object: the handler reaches the window through the add-in.
  events_.close = [&addin] {
    addin.Run(L"cmdClose_Click", [&] { CloseVirusReport(addin); });
  };
}

void VirusReport::Draw() { addin_.services.ui.ShowVirusReport(view_, events_); }

void VirusReport::LoadList() {
  addin_.Run(L"LoadList", [&] {
    view_.lines.clear();
    view_.origins.clear();
    for (const auto& rule : addin_.rules.glbRules)
      if (!rule->Origin.empty()) view_.origins.push_back(rule->Description + L": " + rule->Origin);
    const std::wstring path = VirusLogPath(addin_);
    if (!addin_.services.files.FileExists(path)) {
      Draw();
      addin_.services.ui.MsgBox(addin_.Text(TextId::kVirusLogMissing), vbExclamation,
                                kProductName);
      return;
    }
    const std::wstring text = FromUtf8(addin_.services.files.ReadFile(path));
    size_t from = 0;
    while (from < text.size()) {
      size_t end = text.find(L'\n', from);
      if (end == std::wstring::npos) end = text.size();
      std::wstring line = text.substr(from, end - from);
      if (!line.empty() && line.back() == L'\r') line.pop_back();
      view_.lines.push_back(std::move(line));
      from = end + 1;
    }
    Draw();
  });
}

void VirusReport::cmdClearLog_Click() {
  addin_.Run(L"cmdClearLog_Click", [&] {
    const std::wstring path = VirusLogPath(addin_);
    if (!addin_.services.files.FileExists(path)) return;
    addin_.services.files.DeleteFile(path);
    view_.lines.clear();
    Draw();
    addin_.services.ui.MsgBox(addin_.Text(TextId::kVirusLogCleared), vbInformation, kProductName);
  });
}

void VirusReport::cmdClose_Click() { CloseVirusReport(addin_); }

VirusReport& OpenVirusReport(AddIn& addin) {
  if (!addin.virus.report || !addin.IsFormLoaded(kVirusReportFormName)) {
    addin.virus.report = std::make_unique<VirusReport>(addin);
    addin.services.ui.LoadForm(kVirusReportFormName);
  }
  addin.virus.report->LoadList();
  return *addin.virus.report;
}

void CloseVirusReport(AddIn& addin) {
  if (!addin.virus.report) return;
  // The model outlives the call that closes its window: the window's own Close handler runs
  // inside this object's events.
  std::unique_ptr<VirusReport> closing = std::move(addin.virus.report);
  addin.services.ui.UnloadForm(kVirusReportFormName);
}

}  // namespace corvina
