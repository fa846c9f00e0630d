// The connection entry and the start-up sequence behind frmInit.
#include "base/text.h"
#include "chat/chat_receiver.h"
#include "host/command_bars.h"
#include "host/des_vireo.h"
#include "host/web_and_lists.h"
#include "rules/rule_storage.h"
#include "saving/auto_copy.h"
#include "settings/config_store.h"
#include "settings/guard.h"
#include "corvina/version.h"

namespace corvina {
namespace {

constexpr wchar_t kConfiguration[] = L"Configuration";

}  // namespace

bool DesVireo::IsOutlookLoadedIndirect() noexcept {
  // Errors are ignored: an Outlook that cannot even count its windows has none for us.
  bool indirect = true;
  addin_.Ignore([&] { indirect = addin_.oApplication->Explorers()->Count() == 0; });
  return indirect;
}

void DesVireo::LogApplicationUnusable() noexcept {
  // The add-in stays inert for this whole session; without this line nobody could tell why.
  // Inert add-ins never start the log, so the line goes to the file at once.
  const Error why = addin_.ignored_errors.empty()
                        ? Error(kErrObjectVariableNotSet, kOwnErrorSource,
                                L"Object variable or With block variable not set")
                        : addin_.ignored_errors.back();
  addin_.log.LogError(Context(), L"IDTExtensibility2_OnConnection",
                      Error(why.number(), why.source(),
                            L"Outlook's Application object cannot be used, the add-in stays "
                            L"inactive: " + why.description()));
  addin_.log.Flush(addin_.LogPath());
}

bool DesVireo::IsFirstTime() {
  return Guard(addin_.log, Context(), L"IsFirstTime", false, [&] {
    auto& tree = addin_.services.settings;
    if (GetSetting(tree, kAppName, kConfiguration, L"IsFirstTime", L"0") != L"0") return false;
    tree.Write(kAppName, kConfiguration, L"IsFirstTime", L"1");
    return true;
  });
}

bool DesVireo::IsNewVersion() {
  return Guard(addin_.log, Context(), L"IsNewVersion", false, [&] {
    auto& tree = addin_.services.settings;
    const std::wstring running[] = {std::to_wstring(kVersionMajor), std::to_wstring(kVersionMinor),
                                    std::to_wstring(kVersionRevision)};
    const wchar_t* keys[] = {L"VersionMajor", L"VersionMinor", L"VersionRevision"};
    bool differs = false;
    for (int i = 0; i < 3; ++i)
      differs |= GetSetting(tree, kAppName, kConfiguration, keys[i], L"0") != running[i];
    for (int i = 0; i < 3; ++i) tree.Write(kAppName, kConfiguration, keys[i], running[i]);
    return differs;
  });
}

void DesVireo::ChangeButtonState(const std::wstring& tag, bool visible) {
  Guard(addin_.log, Context(), L"ChangeButtonState", [&] {
    if (!addin_.oApplication) return;
    auto explorer = addin_.oApplication->ActiveExplorer();
    if (!explorer) return;
    auto bar = FindBar(*explorer->CommandBars(), kBarName);
    if (!bar) return;
    if (auto control = FindTaggedControl(*bar, tag)) control->SetVisible(visible);
  });
}

void DesVireo::Initilize_app() {
  Guard(addin_.log, Context(), L"Initilize_app", [&] {
    // The log holds the current run only; a log that cannot be deleted is simply appended to.
    addin_.Ignore([&] {
      if (addin_.services.files.FileExists(addin_.LogPath()))
        addin_.services.files.DeleteFile(addin_.LogPath());
    });
    addin_.ShowProgress(L"Applying Configuration Settings \u2026");
    ConfigStore store = addin_.Store();
    LoadConfig(addin_.config, store);
    addin_.ShowProgress(L"Applying V Settings \u2026");
    LoadRules(addin_);
    addin_.ShowProgress(L"Applying Tray Settings \u2026");
    addin_.ShowProgress(L"Applying Chat User List \u2026");
    if (!Trim(addin_.config.ChatUserEmail).empty()) LoadChatUsers(addin_);
    addin_.ShowProgress(L"Verifying Chat Folder Structure \u2026");
    auto& files = addin_.services.files;
    const std::wstring chat = addin_.services.addin_folder + L"\\Chat";
    if (!files.DirectoryExists(chat)) files.CreateDirectory(chat);
    if (!files.DirectoryExists(chat + L"\\Images")) files.CreateDirectory(chat + L"\\Images");
    addin_.ShowProgress(L"Continue Loading \u2026");
  });
}

void DesVireo::IDTExtensibility2_OnConnection(outlook::Ref<outlook::Application> Application,
                                              int32_t ConnectMode) noexcept {
  // The object Outlook hands over is the one it trusts (a separately created one raises its
  // security prompts); the creation-time object is only kept when none is given.
  if (Application) addin_.oApplication = std::move(Application);
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnConnection",
        [&] { RunConnectionSequence(addin_.oApplication); });
  // Outlook does not send start-up complete to an add-in connected after its own start-up.
  if (!addin_.LoadedIndirectly && ConnectMode != ext_cm_Startup && !startup_complete_)
    IDTExtensibility2_OnStartupComplete();
}

void DesVireo::RunConnectionSequence(outlook::Ref<outlook::Application> application) {
  const size_t ignored_before = addin_.ignored_errors.size();
  if (IsOutlookLoadedIndirect()) {
    addin_.LoadedIndirectly = true;
    // No main window is a normal way to be loaded (Outlook run for a task); a Nothing
    // application or one that cannot count its windows is not.
    if (!application || addin_.ignored_errors.size() > ignored_before) LogApplicationUnusable();
    return;
  }
  addin_.LoadedIndirectly = false;
  addin_.error_context_object = Context();
  addin_.services.ui.LoadForm(L"frmInit");
  addin_.ShowProgress(L"Applying Version ...");
  bool NeedButtonReset = false;
  if (IsFirstTime()) {
    SendStatistics(addin_, true);
    NeedButtonReset = true;
  } else if (IsNewVersion()) {
    NeedButtonReset = true;
    SendStatistics(addin_, false);
  }
  addin_.ShowProgress(L"Initializing Application ...");
  Initilize_app();
  addin_.ShowProgress(L"Applying Language Settings \u2026");
  SetLanguageStrings(addin_);
  ChangeLanuage(addin_, addin_.config.glbLanguage);
  addin_.ShowProgress(L"Creating Corvina Toolbar ...");
  command_bar_ = CreateAddInCommandBar(addin_, *application);
  addin_.ShowProgress(L"Creating Corvina Toolbar Buttons ...");
  CreateToolbar(*application);
  if (NeedButtonReset) {
    const std::pair<const wchar_t*, bool> reset[] = {
        {kTagCoolMail, true},     {kTagSave, true},       {kTagConfiguration, true},
        {kTagPreview, true},      {kTagSmartSender, false}, {kTagUpload, false},
        {kTagMyStorage, false},   {kTagChat, false},      {kTagSearch, false},
        {kTagVoiceMail, false}};
    for (const auto& [tag, visible] : reset) ChangeButtonState(tag, visible);
  }
  // Upload and MyStorage are never offered after start-up.
  ChangeButtonState(kTagUpload, false);
  ChangeButtonState(kTagMyStorage, false);
  addin_.ShowProgress(L"Applying Local Distribution Lists ...");
  if (addin_.config.HideDistListOnServer != L"1") {
    LoadLocalDistributionLists(addin_);
    addin_.ShowProgress(L"Applying Public Distribution Lists ...");
    LoadPublicDistributionLists(addin_);
  } else {
    LoadLocalDistributionLists(addin_);
  }
  if (!Trim(addin_.config.ExtName).empty()) {
    addin_.ShowProgress(L"Applying Extension List ...");
    FillExtensionList(addin_);
  }
  if (!Trim(addin_.config.ExtChecked).empty()) {
    addin_.ShowProgress(L"Applying Auto Copy File Types ...");
    LoopForAotuCopyFileTypesAtEntry(addin_);
  }
  addin_.ShowProgress(L"Finishing Loading Process ...");
}

void DesVireo::CreateToolbar(outlook::Application& application) {
  // Each creator logs its own failure; the next control is still made.
  for (int index : StartupCreationOrder()) {
    const size_t at = static_cast<size_t>(index);
    button_events_[at].Reset();
    My_Button[at] = index == kComboIndex ? CreateAddInComboBox(addin_, application, index)
                                         : CreateAddInButton(addin_, application, index);
    HookButton(index);
  }
}

void DesVireo::IDTExtensibility2_OnStartupComplete() noexcept {
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnStartupComplete", [&] {
    startup_complete_ = true;
    if (addin_.LoadedIndirectly || !addin_.oApplication) return;
    addin_.ShowProgress(L"Loading Completed Successfully.");
    ConnectApplicationEvents();
    if (addin_.config.TrayShow == L"1") addin_.services.ui.LoadForm(L"frmTrayMenu");
    oMainExplorer = addin_.oApplication->ActiveExplorer();
    ConnectExplorerEvents();
    addin_.services.ui.DoEvents();
    if (addin_.config.ChatBlockAll == L"0") {
      addin_.ShowProgress(L"Applying New Chat Messages ...");
      LoopForNewChatsAtEntry(addin_);
    }
  });
  // However the entry ended, its progress form does not stay on screen.
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnStartupComplete", [&] {
    if (addin_.IsFormLoaded(L"frmInit")) addin_.services.ui.UnloadForm(L"frmInit");
  });
}

}  // namespace corvina
