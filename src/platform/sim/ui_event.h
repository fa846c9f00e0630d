#pragma once
// One thing the scripted user interface was shown, and its transcript line.
#include <cstdint>
#include <string>

#include "platform/user_interface.h"

namespace corvina::sim {

enum class UiEventKind {
  kMsgBox, kShowMsgBox, kProgressText, kLoadForm, kUnloadForm, kFormToFront, kSavingForm,
  kFolderMenu, kBrowse, kSaveFile, kChatUserProperties, kChatAddress, kRuleWizard
};

struct UiEvent {
  UiEventKind kind = UiEventKind::kMsgBox;
  std::wstring text;  // the prompt (MsgBox) or text (ShowMsgBox), progress text, form name
  // MsgBox
  int32_t style = 0;
  std::wstring title;
  int32_t result = 0;
  // ShowMsgBox
  MsgBoxView view;
  SavingFormView saving;
  ChatUserPropertiesView properties;  // as the user left the dialog
  RuleValues rule;  // the rule wizard's values as the user left it
  std::wstring result_text;  // the folder a browser returned
  MsgBoxAnswer answer;
  // Either box: the answer queue was empty, so the box answered its default; or the queued
  // answer named a button the box does not show, so it answered Cancel.
  bool defaulted = false;
  bool rejected_answer = false;
};

// "OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No" for vbOK..vbNo.
std::wstring MsgBoxResultName(int32_t vb_result);
std::wstring ButtonName(MsgBoxButton button);

// One line, line breaks of the texts shown as "\n":
//   [box] "Corvina" Yes/No ? "Save the attachments?" -> Yes
//   [dialog] "Corvina" Yes/No/Cancel +don't-show "Replace a.txt?" | "" -> No, don't show again
//   [progress] "Loading rules ..."
//   [form] load frmInit
std::wstring Describe(const UiEvent& event);

}  // namespace corvina::sim
