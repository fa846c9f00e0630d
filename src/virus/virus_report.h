#pragma once
// frmVirusReport: the lines of the deletion log, and the rules that came in alert mails.
#include "addin/addin.h"
#include "platform/virus_windows.h"

namespace corvina {

inline constexpr wchar_t kVirusReportFormName[] = L"frmVirusReport";

class VirusReport {
 public:
  explicit VirusReport(AddIn& addin);
  // Fills lstVirus from the log; without a log the user is told and the list stays empty.
  void LoadList();
  // Deletes the log (when there is one) and tells the user.
  void cmdClearLog_Click();
  void cmdClose_Click();
  const VirusReportView& view() const { return view_; }

 private:
  void Draw();
  AddIn& addin_;
  VirusReportView view_;
  VirusReportEvents events_;
};

// The window, loaded (and its list filled) first when it is not.
VirusReport& OpenVirusReport(AddIn& addin);
void CloseVirusReport(AddIn& addin);

}  // namespace corvina
