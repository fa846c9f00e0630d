#include "platform/win32/win32_user_interface.h"

#include <algorithm>

#include "base/text.h"
#include "platform/dialog_filter.h"
#include "platform/win32/chat/chat_dialogs.h"
#include "platform/win32/chat/chat_frame.h"
#include "platform/win32/msg_box_window.h"
#include "platform/win32/folder_dialogs.h"
#include "platform/win32/progress_window.h"
#include "platform/win32/saving_window.h"
#include "platform/win32/virus/rule_wizard.h"
#include "platform/win32/virus/virus_alerter_frame.h"
#include "platform/win32/virus/virus_report_frame.h"
#include "platform/win32/windows_api.h"

#include <commdlg.h>

namespace corvina::win32 {
namespace {

constexpr wchar_t kProgressForm[] = L"frmInit";
constexpr wchar_t kSavingForm[] = L"frmSaving";
constexpr wchar_t kChatForm[] = L"frmChat";
constexpr wchar_t kVirusAlerterForm[] = L"frmVirusAlerter";
constexpr wchar_t kVirusReportForm[] = L"frmVirusReport";

std::wstring Environment(const wchar_t* name) {
  wchar_t buffer[1024];
  const DWORD n = GetEnvironmentVariableW(name, buffer, 1024);
  return n > 0 && n < 1024 ? std::wstring(buffer, n) : std::wstring();
}

// Boxes belong to the window the user is working in (Outlook's, inside Outlook).
HWND Owner() { return GetActiveWindow(); }

// Closes a frame and keeps it until its own code, which may be what closed it, has returned.
template <class Frame>
void Retire(std::unique_ptr<Frame>& frame, std::vector<std::unique_ptr<Frame>>& closed) {
  if (!frame) return;
  frame->Destroy();
  closed.push_back(std::move(frame));
}

template <class Frame>
void ReleaseRetired(std::vector<std::unique_ptr<Frame>>& closed) {
  std::erase_if(closed, [](const std::unique_ptr<Frame>& f) { return !f->busy(); });
}

void ToFront(HWND window) {
  if (window) SetForegroundWindow(window);
}

}  // namespace

Win32UserInterface::Win32UserInterface() : auto_answer_(AutoAnswerFromEnvironment()) {}
Win32UserInterface::~Win32UserInterface() = default;

int32_t Win32UserInterface::MsgBox(const std::wstring& prompt, int32_t style,
                                   const std::wstring& title) {
  if (auto_answer_) return AutoMsgBoxResult(*auto_answer_, style);
  // The classic style bits and results are those of MessageBox itself.
  const int result = MessageBoxW(Owner(), prompt.c_str(), title.c_str(),
                                 static_cast<UINT>(style) | MB_SETFOREGROUND);
  return result == 0 ? vbCancel : result;  // no box could be shown: as if closed
}

MsgBoxAnswer Win32UserInterface::ShowMsgBox(const MsgBoxView& view) {
  if (auto_answer_) return AutoShowMsgBoxAnswer(*auto_answer_, view);
  return RunMsgBoxWindow(view, Owner());
}

void Win32UserInterface::LoadForm(const std::wstring& name) {
  // Loading a loaded form does nothing, as in the classic runtime.
  for (const std::wstring& loaded : loaded_)
    if (EqualsIgnoreCase(loaded, name)) return;
  if (EqualsIgnoreCase(name, kProgressForm)) progress_ = std::make_unique<ProgressWindow>(progress_text_);
  loaded_.push_back(name);
}

void Win32UserInterface::UnloadForm(const std::wstring& name) {
  auto gone = std::remove_if(loaded_.begin(), loaded_.end(),
                             [&](const std::wstring& f) { return EqualsIgnoreCase(f, name); });
  if (gone == loaded_.end()) return;
  loaded_.erase(gone, loaded_.end());
  if (EqualsIgnoreCase(name, kProgressForm)) {
    progress_.reset();
    progress_text_.clear();  // a form loaded again starts with its design-time label
  }
  if (EqualsIgnoreCase(name, kSavingForm)) saving_.reset();
  if (EqualsIgnoreCase(name, kChatForm) && chat_) {
    chat_->Destroy();
    closed_chat_ = std::move(chat_);
  }
  if (EqualsIgnoreCase(name, kVirusAlerterForm)) Retire(alerter_, closed_alerters_);
  if (EqualsIgnoreCase(name, kVirusReportForm)) Retire(report_, closed_reports_);
}

bool Win32UserInterface::IsLoaded(const wchar_t* form) const {
  return std::any_of(loaded_.begin(), loaded_.end(),
                     [form](const std::wstring& f) { return EqualsIgnoreCase(f, form); });
}

void Win32UserInterface::BringFormToFront(const std::wstring& name) {
  if (EqualsIgnoreCase(name, kSavingForm) && saving_) saving_->BringToFront();
  if (EqualsIgnoreCase(name, kChatForm) && chat_ && chat_->hwnd())
    SetForegroundWindow(chat_->hwnd());
  if (EqualsIgnoreCase(name, kVirusAlerterForm) && alerter_) ToFront(alerter_->hwnd());
  if (EqualsIgnoreCase(name, kVirusReportForm) && report_) ToFront(report_->hwnd());
}

std::vector<std::wstring> Win32UserInterface::LoadedForms() { return loaded_; }

void Win32UserInterface::SetProgressText(const std::wstring& text) {
  progress_text_ = text;
  if (progress_) progress_->SetText(text);
}

void Win32UserInterface::DoEvents() {
  MSG msg;
  while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (msg.message == WM_QUIT) {
      // The host's loop must still see it.
      PostQuitMessage(static_cast<int>(msg.wParam));
      return;
    }
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
}

void Win32UserInterface::ShowSavingForm(const SavingFormView& view,
                                        const SavingFormEvents& events) {
  bool loaded = false;
  for (const std::wstring& f : loaded_) loaded |= EqualsIgnoreCase(f, kSavingForm);
  if (!loaded) return;
  if (!saving_) saving_ = std::make_unique<SavingWindow>(view);
  saving_->Show(view, events);
}

int32_t Win32UserInterface::ShowFolderMenu(const std::vector<std::wstring>& folders,
                                           const std::wstring& browse_caption) {
  if (auto_answer_) {
    const std::wstring choice = Environment(L"CORVINA_AUTOFOLDER");
    if (EqualsIgnoreCase(choice, L"browse")) return kFolderMenuBrowse;
    if (choice.empty() || choice.find_first_not_of(L"0123456789") != std::wstring::npos)
      return kFolderMenuNone;
    const int32_t index = static_cast<int32_t>(std::stol(choice));
    return static_cast<size_t>(index) < folders.size() ? index : kFolderMenuNone;
  }
  return RunFolderMenu(folders, browse_caption);
}

std::wstring Win32UserInterface::BrowseForFolder(const std::wstring& title, uint32_t flags,
                                                 const std::wstring& start_folder) {
  if (auto_answer_) return Environment(L"CORVINA_AUTOBROWSE");
  return RunFolderBrowser(title, flags, start_folder);
}

std::wstring Win32UserInterface::SaveFileDialog(const std::wstring& title,
                                                const std::wstring& start_folder,
                                                const std::wstring& file_name,
                                                const std::wstring& filter) {
  if (auto_answer_) return Environment(L"CORVINA_AUTOSAVE");
  const std::wstring filters = DialogFilter(filter);
  std::wstring buffer = file_name;
  buffer.resize(std::max<size_t>(buffer.size() + 1, 32768), L'\0');
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.lpstrFilter = filters.c_str();
  dialog.lpstrFile = buffer.data();
  dialog.nMaxFile = static_cast<DWORD>(buffer.size());
  dialog.lpstrInitialDir = start_folder.c_str();
  dialog.lpstrTitle = title.c_str();
  dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
  if (!GetSaveFileNameW(&dialog)) return L"";
  return std::wstring(buffer.c_str());
}

void Win32UserInterface::ShowChatWindow(const ChatWindowView& view,
                                        const ChatWindowEvents& events) {
  if (std::none_of(loaded_.begin(), loaded_.end(),
                   [](const std::wstring& f) { return EqualsIgnoreCase(f, kChatForm); }))
    return;
  if (!chat_) {
    closed_chat_.reset();
    chat_ = std::make_unique<ChatFrame>();
  }
  chat_->Show(view, events);
}

void Win32UserInterface::FlashChatWindow(bool on) {
  if (chat_) chat_->Flash(on);
}

bool Win32UserInterface::ShowChatUserProperties(ChatUserPropertiesView& view) {
  if (auto_answer_) return false;
  const bool rtl = chat_ && chat_->right_to_left();
  return RunChatUserDialog(view, chat_ && chat_->hwnd() ? chat_->hwnd() : Owner(), rtl);
}

std::wstring Win32UserInterface::AskChatAddress(const std::wstring& caption) {
  if (auto_answer_) return L"";
  const bool rtl = chat_ && chat_->right_to_left();
  return RunChatAddressDialog(caption, chat_ && chat_->hwnd() ? chat_->hwnd() : Owner(), rtl);
}

void Win32UserInterface::ShowVirusAlerter(const VirusAlerterView& view,
                                          const VirusAlerterEvents& events) {
  if (!IsLoaded(kVirusAlerterForm)) return;
  ReleaseRetired(closed_alerters_);
  if (!alerter_) alerter_ = std::make_unique<VirusAlerterFrame>();
  alerter_->Show(view, events);
}

bool Win32UserInterface::ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) {
  if (auto_answer_) return false;
  return RunRuleWizard(view, events, alerter_ && alerter_->hwnd() ? alerter_->hwnd() : Owner());
}

void Win32UserInterface::ShowVirusReport(const VirusReportView& view,
                                         const VirusReportEvents& events) {
  if (!IsLoaded(kVirusReportForm)) return;
  ReleaseRetired(closed_reports_);
  if (!report_) report_ = std::make_unique<VirusReportFrame>();
  report_->Show(view, events);
}

}  // namespace corvina::win32
