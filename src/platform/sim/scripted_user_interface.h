#pragma once
// A UserInterface that answers from a script and records everything it was shown, so a test
// can assert the exact text of each box and the simulator can print a transcript.
//
// Answers: each MsgBox takes the next queued vb result, each ShowMsgBox the next queued
// MsgBoxAnswer. With an empty queue a box answers its default and the event says so: MsgBox
// its first button (OK, Yes for the yes/no styles, Abort, Retry), ShowMsgBox the first
// visible of Yes, OK, No, Cancel (Cancel when none is visible: closing the window). A queued
// answer the box cannot give (a button it does not show, a ticked "don't show" box that is
// hidden) is a mistake in the test: the box answers Cancel (and leaves the box unticked), and
// the mistake is kept in script_errors() for the fixture to assert empty.
//
// Every UserInterface member counts itself through Faults first; a failed call takes no
// answer and records nothing.
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/sim/faults.h"
#include "platform/sim/ui_event.h"
#include "platform/user_interface.h"

namespace corvina::sim {

class ScriptedUserInterface : public UserInterface {
 public:
  explicit ScriptedUserInterface(Faults& faults);

  void QueueMsgBoxAnswer(int32_t vb_result);
  void QueueShowMsgBoxAnswer(MsgBoxAnswer answer);
  size_t PendingMsgBoxAnswers() const { return msgbox_answers_.size(); }
  size_t PendingShowMsgBoxAnswers() const { return showmsgbox_answers_.size(); }
  // The folder menu's next choice: an entry index, kFolderMenuBrowse or kFolderMenuNone
  // (the default when nothing is queued).
  void QueueFolderMenuChoice(int32_t choice) { menu_choices_.push_back(choice); }
  // The folder browser's next result; "" is Cancel (the default).
  void QueueBrowseResult(std::wstring folder) { browse_results_.push_back(std::move(folder)); }
  // The save-file dialog's next result; "" is Cancel (the default).
  void QueueSaveFileResult(std::wstring path) { save_results_.push_back(std::move(path)); }
  // The next user properties dialog: the edit makes the user's changes to the fields and
  // returns true for OK, false for Cancel. With nothing queued the dialog is cancelled.
  void QueueChatUserProperties(std::function<bool(ChatUserPropertiesView&)> edit) {
    properties_edits_.push_back(std::move(edit));
  }
  // The address dialog's next answer; "" is Cancel (the default).
  void QueueChatAddress(std::wstring address) { addresses_.push_back(std::move(address)); }
  // The next rule wizard: `play` acts as the user would (it calls the wizard's checks, edits
  // the values) and returns true for Finish. With nothing queued the wizard is cancelled.
  using WizardPlay = std::function<bool(RuleWizardView&, const RuleWizardEvents&)>;
  void QueueRuleWizard(WizardPlay play) { wizard_plays_.push_back(std::move(play)); }
  // frmVirusAlerter and frmVirusReport as last drawn, and what their controls would do.
  const VirusAlerterView& virus_view() const { return virus_view_; }
  const VirusAlerterEvents& virus_events() const { return virus_events_; }
  const VirusReportView& report_view() const { return report_view_; }
  const VirusReportEvents& report_events() const { return report_events_; }
  // frmChat as last drawn, and the caption flash.
  const ChatWindowView& chat_view() const { return chat_view_; }
  // What frmChat's controls would do; empty before the window is first drawn.
  const ChatWindowEvents& chat_events() const { return chat_events_; }
  // The blocks the window was given since its page was last started again, in order: what a
  // browser appending them would show.
  const std::vector<std::string>& chat_blocks_shown() const { return chat_blocks_shown_; }
  uint64_t chat_draws() const { return chat_draws_; }
  bool chat_flash_on() const { return chat_flash_on_; }
  uint64_t chat_flash_ticks() const { return chat_flash_ticks_; }
  // Presses frmSaving's Cancel: the handler runs at the next DoEvents, as a click would.
  void PressSavingCancel() { cancel_pressed_ = true; }
  // Runs at every DoEvents (before a pressed Cancel is handled), so a test can act, and press
  // Cancel, while a job runs.
  void set_do_events_hook(std::function<void()> hook) { do_events_hook_ = std::move(hook); }
  const SavingFormView& saving_view() const { return saving_view_; }

  int32_t MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) override;
  MsgBoxAnswer ShowMsgBox(const MsgBoxView& view) override;
  void LoadForm(const std::wstring& name) override;
  void UnloadForm(const std::wstring& name) override;
  std::vector<std::wstring> LoadedForms() override;
  void BringFormToFront(const std::wstring& name) override;
  void SetProgressText(const std::wstring& text) override;
  void DoEvents() override;
  void ShowSavingForm(const SavingFormView& view, const SavingFormEvents& events) override;
  int32_t ShowFolderMenu(const std::vector<std::wstring>& folders,
                         const std::wstring& browse_caption) override;
  std::wstring BrowseForFolder(const std::wstring& title, uint32_t flags,
                               const std::wstring& start_folder) override;
  std::wstring SaveFileDialog(const std::wstring& title, const std::wstring& start_folder,
                              const std::wstring& file_name, const std::wstring& filter) override;
  // The chat window is not a line of the transcript at each redraw: the simulator prints the
  // board blocks and reports itself.
  void ShowChatWindow(const ChatWindowView& view, const ChatWindowEvents& events) override;
  void FlashChatWindow(bool on) override;
  bool ShowChatUserProperties(ChatUserPropertiesView& view) override;
  std::wstring AskChatAddress(const std::wstring& caption) override;
  void ShowVirusAlerter(const VirusAlerterView& view, const VirusAlerterEvents& events) override;
  bool ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) override;
  void ShowVirusReport(const VirusReportView& view, const VirusReportEvents& events) override;

  // What was shown, in order (DoEvents is only counted: it would drown the transcript).
  const std::vector<UiEvent>& events() const { return events_; }
  std::vector<std::wstring> Transcript() const;
  uint64_t do_events_count() const { return do_events_; }
  const std::vector<std::wstring>& script_errors() const { return script_errors_; }
  // Receives each transcript line as it happens (the simulator prints them).
  void set_echo(std::function<void(const std::wstring&)> echo) { echo_ = std::move(echo); }

 private:
  void Record(UiEvent event);
  // Records a dialog that answers with a text: the next queued one, "" (Cancel) when none is.
  std::wstring RecordTextAnswer(UiEvent event, std::deque<std::wstring>& answers);

  Faults& faults_;
  std::deque<int32_t> msgbox_answers_;
  std::deque<MsgBoxAnswer> showmsgbox_answers_;
  std::vector<UiEvent> events_;
  std::vector<std::wstring> loaded_forms_;
  std::vector<std::wstring> script_errors_;
  uint64_t do_events_ = 0;
  std::function<void(const std::wstring&)> echo_;
  std::deque<int32_t> menu_choices_;
  std::deque<std::wstring> browse_results_;
  bool cancel_pressed_ = false;
  std::function<void()> do_events_hook_;
  SavingFormView saving_view_;
  SavingFormEvents saving_events_;
  std::deque<std::wstring> save_results_;
  std::deque<std::function<bool(ChatUserPropertiesView&)>> properties_edits_;
  std::deque<std::wstring> addresses_;
  std::deque<WizardPlay> wizard_plays_;
  VirusAlerterView virus_view_;
  VirusAlerterEvents virus_events_;
  VirusReportView report_view_;
  VirusReportEvents report_events_;
  ChatWindowView chat_view_;
  ChatWindowEvents chat_events_;
  std::vector<std::string> chat_blocks_shown_;
  uint64_t chat_draws_ = 0;
  bool chat_flash_on_ = false;
  uint64_t chat_flash_ticks_ = 0;
};

}  // namespace corvina::sim
