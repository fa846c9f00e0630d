// The disconnection entry: save, tidy up and let go of Outlook.
#include "base/text.h"
#include "chat/chat_window.h"
#include "virus/virus_alerter.h"
#include "virus/virus_report.h"
#include "corvina/version.h"
#include "host/command_bars.h"
#include "host/des_vireo.h"
#include "platform/path.h"
#include "settings/config_store.h"
#include "settings/guard.h"

namespace corvina {
namespace {

const wchar_t* const kUnloadForms[] = {
    L"frmBugReport",  L"frmMenu",        L"frmMenuDistList",  L"frmProperties",
    L"frmSaving",     L"frmSplash",      L"frmZoom",          L"frmThumb",
    L"frmTranslate",  L"frmVirusAlerter", L"frmVirusReport",  L"frmTrayMenu",
    L"frmInit",       L"frmChat",        L"frmChatMail",      L"frmHotKey",
    L"frmWaitUploading", L"frmRuleWiz6", L"frmRuleWiz5",      L"frmRuleWiz4",
    L"frmRuleWiz3",   L"frmRuleWiz2",    L"frmRuleWiz1",      L"frmRuleWiz0",
    L"frmWait",       L"frmUserDetails", L"frmTumb",          L"frmMsgBox",
    L"frmChatUserProperties"};

void DeleteAllFiles(FileSystem& files, const std::wstring& folder) {
  if (!files.DirectoryExists(folder)) return;
  for (const std::wstring& name : files.ListFiles(folder)) files.DeleteFile(folder + L"\\" + name);
}

}  // namespace

std::span<const wchar_t* const> UnloadFormList() { return kUnloadForms; }

void DesVireo::ClearTempFolder() {
  // Logged under the name of the log window's clear command, which has always shared it.
  Guard(addin_.log, addin_.ErrorContext(), L"cmdClearLog_Click", [&] {
    auto& files = addin_.services.files;
    const std::wstring temp = path::WithoutTrailingSeparator(addin_.config.TempFolder);
    DeleteAllFiles(files, temp);
    DeleteAllFiles(files, temp + L"\\ClipBoard");
  });
}

void DesVireo::UnloadAllForms() {
  Guard(addin_.log, Context(), L"UnloadAllForms", [&] {
    for (const wchar_t* name : kUnloadForms) {
      if (!addin_.IsFormLoaded(name)) continue;
      // The chat window keeps the user list and tidies its board as it closes.
      if (std::wstring_view(name) == kChatFormName) {
        CloseChatWindow(addin_);
        continue;
      }
      if (std::wstring_view(name) == kVirusAlerterFormName) {
        CloseVirusAlerter(addin_);
        continue;
      }
      if (std::wstring_view(name) == kVirusReportFormName) {
        CloseVirusReport(addin_);
        continue;
      }
      addin_.services.ui.UnloadForm(name);
    }
  });
}

void DesVireo::ReleaseGlobalObjects() {
  for (auto& connection : button_events_) connection.Reset();
  for (auto& control : My_Button) control.reset();
  command_bar_.reset();
  AddinInstance_OnDisconnection();
  addin_.error_context_object.clear();
}

void DesVireo::IDTExtensibility2_OnDisconnection(int32_t RemoveMode) noexcept {
  // A save job waiting in its message loop stops at its next test instead of running on
  // against an Outlook that has let the add-in go.
  addin_.saving.CancelRequested = true;
  if (addin_.LoadedIndirectly) {
    AddinInstance_OnDisconnection();
    return;
  }
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnDisconnection", [&] {
    ClearTempFolder();
    RemoveAddInCommandBarButton(addin_, RemoveMode);
    ConfigStore store = addin_.Store();
    SaveConfig(addin_.config, store);
    auto& tree = addin_.services.settings;
    tree.Write(kAppName, L"Configuration", L"VersionMajor", std::to_wstring(kVersionMajor));
    tree.Write(kAppName, L"Configuration", L"VersionMinor", std::to_wstring(kVersionMinor));
    tree.Write(kAppName, L"Configuration", L"VersionRevision", std::to_wstring(kVersionRevision));
    UnloadAllForms();
    ReleaseGlobalObjects();
    addin_.log.LogEvent(std::wstring(kProductName) + L" was removed successfully at " +
                            addin_.services.clock.GeneralDate(addin_.services.clock.Now()),
                        kLogInformation);
  });
  // Whatever failed above, nothing of Outlook's stays referenced and the log is on disk.
  ReleaseGlobalObjects();
  addin_.log.Flush(addin_.LogPath());
}

}  // namespace corvina
