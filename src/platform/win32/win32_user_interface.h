#pragma once
// The UserInterface drawn with Win32 windows. The rules of each window (which buttons, which
// captions) come from the core; this only draws them and reports what the user did.
// CORVINA_AUTOANSWER (see auto_answer.h) makes every box answer at once without a window.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/user_interface.h"
#include "platform/win32/auto_answer.h"

namespace corvina::win32 {

class ProgressWindow;
class SavingWindow;
class ChatFrame;
class VirusAlerterFrame;
class VirusReportFrame;

class Win32UserInterface : public UserInterface {
 public:
  Win32UserInterface();
  ~Win32UserInterface() override;

  int32_t MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) override;
  MsgBoxAnswer ShowMsgBox(const MsgBoxView& view) override;
  // "frmInit" gets its window; the other forms are only listed for now.
  void LoadForm(const std::wstring& name) override;
  void UnloadForm(const std::wstring& name) override;
  void BringFormToFront(const std::wstring& name) override;
  std::vector<std::wstring> LoadedForms() override;
  void SetProgressText(const std::wstring& text) override;
  void DoEvents() override;
  // "frmSaving" must be loaded; its window comes with the first view.
  void ShowSavingForm(const SavingFormView& view, const SavingFormEvents& events) override;
  // Under CORVINA_AUTOANSWER the menu answers CORVINA_AUTOFOLDER (an index, "browse", or
  // nothing: dismissed) and the browser CORVINA_AUTOBROWSE (a folder, or nothing: cancel).
  int32_t ShowFolderMenu(const std::vector<std::wstring>& folders,
                         const std::wstring& browse_caption) override;
  std::wstring BrowseForFolder(const std::wstring& title, uint32_t flags,
                               const std::wstring& start_folder) override;
  // The common save dialog; under CORVINA_AUTOANSWER it answers CORVINA_AUTOSAVE (or Cancel).
  std::wstring SaveFileDialog(const std::wstring& title, const std::wstring& start_folder,
                              const std::wstring& file_name, const std::wstring& filter) override;
  // "frmChat" must be loaded; its window comes with the first view. Under CORVINA_AUTOANSWER
  // the window is shown all the same (nothing in it waits for the user) and the two chat
  // dialogs answer Cancel.
  void ShowChatWindow(const ChatWindowView& view, const ChatWindowEvents& events) override;
  void FlashChatWindow(bool on) override;
  bool ShowChatUserProperties(ChatUserPropertiesView& view) override;
  std::wstring AskChatAddress(const std::wstring& caption) override;
  // "frmVirusAlerter" and "frmVirusReport" must be loaded; their windows come with the first
  // view and are shown under CORVINA_AUTOANSWER too (nothing in them waits). The wizard is
  // modal to the alerter's window; under CORVINA_AUTOANSWER it answers Cancel at once.
  void ShowVirusAlerter(const VirusAlerterView& view, const VirusAlerterEvents& events) override;
  bool ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) override;
  void ShowVirusReport(const VirusReportView& view, const VirusReportEvents& events) override;

 private:
  std::optional<AutoAnswer> auto_answer_;
  std::vector<std::wstring> loaded_;
  std::wstring progress_text_;
  std::unique_ptr<ProgressWindow> progress_;
  std::unique_ptr<SavingWindow> saving_;
  std::unique_ptr<ChatFrame> chat_;
  // A chat window closed from its own button is closed while its code still runs: it is let
  // go of at the next opening, or with this object.
  std::unique_ptr<ChatFrame> closed_chat_;
  std::unique_ptr<VirusAlerterFrame> alerter_;
  std::unique_ptr<VirusReportFrame> report_;
  // Virus windows closed from their own controls: each is let go of once none of its code
  // runs any more (at the next opening, or with this object).
  std::vector<std::unique_ptr<VirusAlerterFrame>> closed_alerters_;
  std::vector<std::unique_ptr<VirusReportFrame>> closed_reports_;
  bool IsLoaded(const wchar_t* form) const;
};

}  // namespace corvina::win32
