#pragma once
// The script's answers in one queue, whichever kind of box asks next: a plain message box or
// the add-in's own question box. Everything else goes to the recording user interface.
#include <deque>
#include <functional>

#include "platform/sim/scripted_user_interface.h"
#include "platform/user_interface.h"

namespace corvina::simulator {

class AnswerQueue : public UserInterface {
 public:
  explicit AnswerQueue(sim::ScriptedUserInterface& inner) : inner_(inner) {}

  void Push(MsgBoxAnswer answer) { answers_.push_back(answer); }
  size_t pending() const { return answers_.size(); }
  // Runs as each call of the add-in arrives, before it is passed on: the simulator looks there
  // at what the add-in did since its last call (the attachments it saved).
  void set_before_each_call(std::function<void()> hook) { before_each_call_ = std::move(hook); }

  int32_t MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) override;
  MsgBoxAnswer ShowMsgBox(const MsgBoxView& view) override;
  void LoadForm(const std::wstring& name) override { Before(); inner_.LoadForm(name); }
  void UnloadForm(const std::wstring& name) override { Before(); inner_.UnloadForm(name); }
  std::vector<std::wstring> LoadedForms() override { Before(); return inner_.LoadedForms(); }
  void BringFormToFront(const std::wstring& name) override {
    Before();
    inner_.BringFormToFront(name);
  }
  void SetProgressText(const std::wstring& text) override {
    Before();
    inner_.SetProgressText(text);
  }
  void DoEvents() override { Before(); inner_.DoEvents(); }
  void ShowSavingForm(const SavingFormView& view, const SavingFormEvents& events) override {
    Before();
    inner_.ShowSavingForm(view, events);
  }
  int32_t ShowFolderMenu(const std::vector<std::wstring>& folders,
                         const std::wstring& browse_caption) override {
    Before();
    return inner_.ShowFolderMenu(folders, browse_caption);
  }
  std::wstring BrowseForFolder(const std::wstring& title, uint32_t flags,
                               const std::wstring& start_folder) override {
    Before();
    return inner_.BrowseForFolder(title, flags, start_folder);
  }
  std::wstring SaveFileDialog(const std::wstring& title, const std::wstring& start_folder,
                              const std::wstring& file_name, const std::wstring& filter) override {
    Before();
    return inner_.SaveFileDialog(title, start_folder, file_name, filter);
  }
  void ShowChatWindow(const ChatWindowView& view, const ChatWindowEvents& events) override {
    Before();
    inner_.ShowChatWindow(view, events);
  }
  void FlashChatWindow(bool on) override {
    Before();
    inner_.FlashChatWindow(on);
  }
  bool ShowChatUserProperties(ChatUserPropertiesView& view) override {
    Before();
    return inner_.ShowChatUserProperties(view);
  }
  std::wstring AskChatAddress(const std::wstring& caption) override {
    Before();
    return inner_.AskChatAddress(caption);
  }
  void ShowVirusAlerter(const VirusAlerterView& view, const VirusAlerterEvents& events) override {
    Before();
    inner_.ShowVirusAlerter(view, events);
  }
  bool ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) override {
    Before();
    return inner_.ShowRuleWizard(view, events);
  }
  void ShowVirusReport(const VirusReportView& view, const VirusReportEvents& events) override {
    Before();
    inner_.ShowVirusReport(view, events);
  }

 private:
  void Before() {
    if (before_each_call_) before_each_call_();
  }

  sim::ScriptedUserInterface& inner_;
  std::deque<MsgBoxAnswer> answers_;
  std::function<void()> before_each_call_;
};

}  // namespace corvina::simulator
