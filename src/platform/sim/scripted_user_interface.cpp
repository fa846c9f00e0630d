#include "platform/sim/scripted_user_interface.h"

#include <algorithm>

#include "base/text.h"

namespace corvina::sim {

namespace {

// The results a MsgBox of this style can return, its default first.
std::vector<int32_t> MsgBoxResults(int32_t style) {
  switch (style & 7) {
    case vbOKCancel:
      return {vbOK, vbCancel};
    case 2:
      return {3, 4, 5};  // Abort, Retry, Ignore
    case vbYesNoCancel:
      return {vbYes, vbNo, vbCancel};
    case vbYesNo:
      return {vbYes, vbNo};
    case 5:
      return {4, vbCancel};  // Retry, Cancel
  }
  return {vbOK};
}

bool Visible(const MsgBoxView& v, MsgBoxButton b) {
  switch (b) {
    case MsgBoxButton::kYes:
      return v.yes_visible;
    case MsgBoxButton::kNo:
      return v.no_visible;
    case MsgBoxButton::kOk:
      return v.ok_visible;
    case MsgBoxButton::kCancel:
      return v.cancel_visible;
  }
  return false;
}

MsgBoxButton DefaultButton(const MsgBoxView& v) {
  for (MsgBoxButton b : {MsgBoxButton::kYes, MsgBoxButton::kOk, MsgBoxButton::kNo})
    if (Visible(v, b)) return b;
  return MsgBoxButton::kCancel;
}

UiEvent MakeEvent(UiEventKind kind, const std::wstring& text) {
  UiEvent e;
  e.kind = kind;
  e.text = text;
  return e;
}

// Form names, like every name of the classic runtime, ignore case.
auto SameForm(const std::wstring& name) {
  return [&name](const std::wstring& loaded) { return EqualsIgnoreCase(loaded, name); };
}

}  // namespace

ScriptedUserInterface::ScriptedUserInterface(Faults& faults) : faults_(faults) {}

void ScriptedUserInterface::QueueMsgBoxAnswer(int32_t vb_result) {
  msgbox_answers_.push_back(vb_result);
}

void ScriptedUserInterface::QueueShowMsgBoxAnswer(MsgBoxAnswer answer) {
  showmsgbox_answers_.push_back(answer);
}

void ScriptedUserInterface::Record(UiEvent event) {
  events_.push_back(std::move(event));
  if (echo_) echo_(Describe(events_.back()));
}

int32_t ScriptedUserInterface::MsgBox(const std::wstring& prompt, int32_t style,
                                      const std::wstring& title) {
  faults_.Enter(Service::kUserInterface, "MsgBox");
  UiEvent e = MakeEvent(UiEventKind::kMsgBox, prompt);
  e.style = style;
  e.title = title;
  std::vector<int32_t> results = MsgBoxResults(style);
  if (msgbox_answers_.empty()) {
    e.result = results.front();
    e.defaulted = true;
  } else {
    e.result = msgbox_answers_.front();
    msgbox_answers_.pop_front();
    if (std::find(results.begin(), results.end(), e.result) == results.end()) {
      script_errors_.push_back(L"MsgBox " + Describe(e) + L": the box has no such button");
      e.result = vbCancel;
      e.rejected_answer = true;
    }
  }
  int32_t result = e.result;
  Record(std::move(e));
  return result;
}

MsgBoxAnswer ScriptedUserInterface::ShowMsgBox(const MsgBoxView& view) {
  faults_.Enter(Service::kUserInterface, "ShowMsgBox");
  UiEvent e = MakeEvent(UiEventKind::kShowMsgBox, view.text);
  e.view = view;
  if (showmsgbox_answers_.empty()) {
    e.answer = MsgBoxAnswer{DefaultButton(view), false};
    e.defaulted = true;
  } else {
    e.answer = showmsgbox_answers_.front();
    showmsgbox_answers_.pop_front();
    bool closing = e.answer.button == MsgBoxButton::kCancel;  // the window can always close
    if ((!closing && !Visible(view, e.answer.button)) ||
        (e.answer.dont_show_checked && !view.dont_show_visible)) {
      script_errors_.push_back(L"ShowMsgBox " + Describe(e) + L": the box cannot answer that");
      e.answer = MsgBoxAnswer{MsgBoxButton::kCancel, false};
      e.rejected_answer = true;
    }
  }
  MsgBoxAnswer answer = e.answer;
  Record(std::move(e));
  return answer;
}

void ScriptedUserInterface::LoadForm(const std::wstring& name) {
  faults_.Enter(Service::kUserInterface, "LoadForm");
  if (std::none_of(loaded_forms_.begin(), loaded_forms_.end(), SameForm(name)))
    loaded_forms_.push_back(name);
  Record(MakeEvent(UiEventKind::kLoadForm, name));
}

void ScriptedUserInterface::UnloadForm(const std::wstring& name) {
  faults_.Enter(Service::kUserInterface, "UnloadForm");
  std::erase_if(loaded_forms_, SameForm(name));
  // An unloaded form's buttons are gone with it: nothing can press them any more.
  if (SameForm(L"frmSaving")(name)) saving_events_ = {};
  if (SameForm(L"frmChat")(name)) {
    chat_events_ = {};
    chat_blocks_shown_.clear();  // a window loaded again shows its page from the file
  }
  if (SameForm(L"frmVirusAlerter")(name)) virus_events_ = {};
  if (SameForm(L"frmVirusReport")(name)) report_events_ = {};
  Record(MakeEvent(UiEventKind::kUnloadForm, name));
}

void ScriptedUserInterface::BringFormToFront(const std::wstring& name) {
  faults_.Enter(Service::kUserInterface, "BringFormToFront");
  if (std::none_of(loaded_forms_.begin(), loaded_forms_.end(), SameForm(name))) return;
  Record(MakeEvent(UiEventKind::kFormToFront, name));
}

std::vector<std::wstring> ScriptedUserInterface::LoadedForms() {
  faults_.Enter(Service::kUserInterface, "LoadedForms");
  return loaded_forms_;
}

void ScriptedUserInterface::SetProgressText(const std::wstring& text) {
  faults_.Enter(Service::kUserInterface, "SetProgressText");
  Record(MakeEvent(UiEventKind::kProgressText, text));
}

void ScriptedUserInterface::DoEvents() {
  faults_.Enter(Service::kUserInterface, "DoEvents");
  ++do_events_;
  if (do_events_hook_) do_events_hook_();
  if (cancel_pressed_ && saving_events_.cancel) {
    cancel_pressed_ = false;
    saving_events_.cancel();
  }
}

void ScriptedUserInterface::ShowSavingForm(const SavingFormView& view,
                                           const SavingFormEvents& events) {
  faults_.Enter(Service::kUserInterface, "ShowSavingForm");
  saving_view_ = view;
  saving_events_ = events;
  UiEvent e = MakeEvent(UiEventKind::kSavingForm, view.caption);
  e.saving = view;
  Record(std::move(e));
}

int32_t ScriptedUserInterface::ShowFolderMenu(const std::vector<std::wstring>& folders,
                                              const std::wstring& browse_caption) {
  faults_.Enter(Service::kUserInterface, "ShowFolderMenu");
  std::wstring entries;
  for (size_t i = 0; i < folders.size(); ++i)
    entries += std::to_wstring(i) + L":" + folders[i] + L" | ";
  UiEvent e = MakeEvent(UiEventKind::kFolderMenu, entries + browse_caption);
  if (menu_choices_.empty()) {
    e.result = kFolderMenuNone;
    e.defaulted = true;
  } else {
    e.result = menu_choices_.front();
    menu_choices_.pop_front();
    const bool valid = e.result == kFolderMenuBrowse || e.result == kFolderMenuNone ||
                       (e.result >= 0 && static_cast<size_t>(e.result) < folders.size());
    if (!valid) {
      script_errors_.push_back(L"folder menu has no entry " + std::to_wstring(e.result));
      e.result = kFolderMenuNone;
      e.rejected_answer = true;
    }
  }
  const int32_t result = e.result;
  Record(std::move(e));
  return result;
}

std::wstring ScriptedUserInterface::RecordTextAnswer(UiEvent event,
                                                     std::deque<std::wstring>& answers) {
  if (answers.empty()) {
    event.defaulted = true;
  } else {
    event.result_text = std::move(answers.front());
    answers.pop_front();
  }
  std::wstring result = event.result_text;
  Record(std::move(event));
  return result;
}

std::wstring ScriptedUserInterface::BrowseForFolder(const std::wstring& title, uint32_t /*flags*/,
                                                    const std::wstring& start_folder) {
  faults_.Enter(Service::kUserInterface, "BrowseForFolder");
  UiEvent e = MakeEvent(UiEventKind::kBrowse, start_folder);
  e.title = title;
  return RecordTextAnswer(std::move(e), browse_results_);
}

std::wstring ScriptedUserInterface::SaveFileDialog(const std::wstring& title,
                                                   const std::wstring& start_folder,
                                                   const std::wstring& /*file_name*/,
                                                   const std::wstring& /*filter*/) {
  faults_.Enter(Service::kUserInterface, "SaveFileDialog");
  UiEvent e = MakeEvent(UiEventKind::kSaveFile, start_folder);
  e.title = title;
  return RecordTextAnswer(std::move(e), save_results_);
}

void ScriptedUserInterface::ShowChatWindow(const ChatWindowView& view,
                                           const ChatWindowEvents& events) {
  faults_.Enter(Service::kUserInterface, "ShowChatWindow");
  if (view.board_serial != chat_view_.board_serial) chat_blocks_shown_.clear();
  chat_blocks_shown_.insert(chat_blocks_shown_.end(), view.board_blocks.begin(),
                            view.board_blocks.end());
  chat_view_ = view;
  chat_events_ = events;
  ++chat_draws_;
}

void ScriptedUserInterface::FlashChatWindow(bool on) {
  faults_.Enter(Service::kUserInterface, "FlashChatWindow");
  chat_flash_on_ = on;
  ++chat_flash_ticks_;
}

bool ScriptedUserInterface::ShowChatUserProperties(ChatUserPropertiesView& view) {
  faults_.Enter(Service::kUserInterface, "ShowChatUserProperties");
  UiEvent e = MakeEvent(UiEventKind::kChatUserProperties, view.caption);
  bool ok = false;
  if (properties_edits_.empty()) {
    e.defaulted = true;
  } else {
    auto edit = std::move(properties_edits_.front());
    properties_edits_.pop_front();
    ok = edit(view);
  }
  e.result = ok ? 1 : 0;
  e.properties = view;
  Record(std::move(e));
  return ok;
}

std::wstring ScriptedUserInterface::AskChatAddress(const std::wstring& caption) {
  faults_.Enter(Service::kUserInterface, "AskChatAddress");
  UiEvent e = MakeEvent(UiEventKind::kChatAddress, caption);
  return RecordTextAnswer(std::move(e), addresses_);
}

void ScriptedUserInterface::ShowVirusAlerter(const VirusAlerterView& view,
                                             const VirusAlerterEvents& events) {
  faults_.Enter(Service::kUserInterface, "ShowVirusAlerter");
  virus_view_ = view;
  virus_events_ = events;
}

bool ScriptedUserInterface::ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) {
  faults_.Enter(Service::kUserInterface, "ShowRuleWizard");
  UiEvent e = MakeEvent(UiEventKind::kRuleWizard, view.caption);
  bool finished = false;
  if (wizard_plays_.empty()) {
    e.defaulted = true;
  } else {
    WizardPlay play = std::move(wizard_plays_.front());
    wizard_plays_.pop_front();
    finished = play(view, events);
  }
  e.result = finished ? 1 : 0;
  e.rule = view.values;
  Record(std::move(e));
  return finished;
}

void ScriptedUserInterface::ShowVirusReport(const VirusReportView& view,
                                            const VirusReportEvents& events) {
  faults_.Enter(Service::kUserInterface, "ShowVirusReport");
  report_view_ = view;
  report_events_ = events;
}

std::vector<std::wstring> ScriptedUserInterface::Transcript() const {
  std::vector<std::wstring> lines;
  lines.reserve(events_.size());
  for (const UiEvent& e : events_) lines.push_back(Describe(e));
  return lines;
}

}  // namespace corvina::sim
