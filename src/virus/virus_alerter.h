#pragma once
// frmVirusAlerter's model: the rule list and its commands, the two scans, the alert mails and
// the virus settings' check boxes. The Windows window and the sim only draw `view()` and
// forward the user's actions here.
#include <cstddef>
#include <string>

#include "addin/addin.h"
#include "platform/virus_windows.h"

namespace corvina {

inline constexpr wchar_t kVirusAlerterFormName[] = L"frmVirusAlerter";

class VirusAlerter {
 public:
  explicit VirusAlerter(AddIn& addin);

  void Form_Load();
  // The rule list filled again from glbRules (an alert mail may have added a rule).
  void RefreshRules();

  void lsvRules_Click(size_t row);
  // cmdAdd_Click, mnuNewRule_Click: a new rule through the wizard; Cancel removes it again.
  void cmdAdd_Click();
  // mnuEditRule_Click, lsvRules_DblClick: the selected rule in the wizard.
  void mnuEditRule_Click();
  void cmdRemove_Click();
  // cmdActivate_Click, mnuCheck_Click / cmdDeActivate_Click, mnuUnCheck_Click.
  void cmdActivate_Click();
  void cmdDeActivate_Click();
  void lsvRules_ItemCheck(size_t row, bool checked);
  // Sorts by the column; the same column again turns the order round.
  void lsvRules_ColumnClick(int column);
  void chkSetting_Click(size_t box, bool checked);
  // Stores the rule lists and the check boxes, and writes every setting.
  void cmdApply_Click();
  void cmdScanInboxForVirusNow_Click();
  void cmdScanInboxForVirusAlerts_Click();
  void cmdSendAutoVirusAlert_Click();
  void cmdShowLog_Click();
  void imgWebHelp_Click();

  const VirusAlerterView& view() const { return view_; }

 private:
  void Draw();
  VirusAlerterEvents MakeEvents();
  // The rule of the selected row, or null (the user is then told to select one).
  Rule* SelectedRule();
  void SetActive(Rule& rule, bool active);
  // A rule change takes effect at once: the lists are stored and the settings written.
  void SaveRules();
  void Tell(const std::wstring& text, int32_t style);

  AddIn& addin_;
  VirusAlerterView view_;
  VirusAlerterEvents events_;
};

// The window, loaded and shown first when it is not.
VirusAlerter& OpenVirusAlerter(AddIn& addin);
void CloseVirusAlerter(AddIn& addin);
// Refills the open window's rule list; nothing when it is not open.
void RefreshVirusAlerter(AddIn& addin);

}  // namespace corvina
