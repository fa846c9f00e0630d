#pragma once
// DesVireo: the connect class Outlook creates and drives. Its entries are the only doors
// Outlook uses into the add-in, and none of them ever lets an error out.
#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "addin/addin.h"
#include "host/control_table.h"
#include "host/inspector_bars.h"
#include "platform/event_connection.h"
#include "platform/outlook.h"

namespace corvina {

inline constexpr int32_t ext_cm_AfterStartup = 0;
inline constexpr int32_t ext_cm_Startup = 1;
inline constexpr int32_t ext_dm_HostShutdown = 0;
inline constexpr int32_t ext_dm_UserClosed = 1;

class DesVireo {
 public:
  explicit DesVireo(Services services);
  ~DesVireo();
  DesVireo(const DesVireo&) = delete;
  DesVireo& operator=(const DesVireo&) = delete;

  // Entries called by Outlook.
  void AddinInstance_Initialize() noexcept;
  void IDTExtensibility2_OnConnection(outlook::Ref<outlook::Application> Application,
                                      int32_t ConnectMode) noexcept;
  void IDTExtensibility2_OnStartupComplete() noexcept;
  void IDTExtensibility2_OnDisconnection(int32_t RemoveMode) noexcept;
  void IDTExtensibility2_OnBeginShutdown() noexcept;
  void IDTExtensibility2_OnAddInsUpdate() noexcept;
  void AddinInstance_OnDisconnection() noexcept;
  void AddinInstance_Terminate() noexcept;

  // Operations of the connect class, public so tests can drive them one by one.
  bool IsOutlookLoadedIndirect() noexcept;
  bool IsFirstTime();
  bool IsNewVersion();
  void Initilize_app();
  void ChangeButtonState(const std::wstring& tag, bool visible);
  void ClearTempFolder();
  void UnloadAllForms();
  void ReleaseGlobalObjects();

  // Outlook's events, as their handlers are named.
  void oApplication_NewMail() noexcept;
  void oApplication_Startup() noexcept;
  void oMainExplorer_Close() noexcept;
  void oMainExplorer_Deactivate() noexcept;
  // A toolbar click (or the combo box's change) on the control of this index.
  void OnControlEvent(int index) noexcept;

  AddIn& addin() { return addin_; }
  const InspectorBars& inspector_bars() const { return inspector_bars_; }
  const outlook::Ref<outlook::Explorer>& main_explorer() const { return oMainExplorer; }
  const outlook::Ref<outlook::CommandBarControl>& button(int index) const {
    return My_Button[static_cast<size_t>(index)];
  }

 private:
  std::wstring Context() const { return L"DesVireo"; }
  void RunConnectionSequence(outlook::Ref<outlook::Application> application);
  void LogApplicationUnusable() noexcept;
  void CreateToolbar(outlook::Application& application);
  void HookButton(int index);
  void ConnectApplicationEvents();
  void ConnectExplorerEvents();

  AddIn addin_;
  InspectorBars inspector_bars_{addin_, L"DesVireo"};
  outlook::Ref<outlook::Explorer> oMainExplorer;
  outlook::Ref<outlook::CommandBar> command_bar_;
  std::array<outlook::Ref<outlook::CommandBarControl>, kControlCount> My_Button;
  std::array<EventConnection, kControlCount> button_events_;
  EventConnection new_mail_event_;
  EventConnection startup_event_;
  EventConnection explorer_close_event_;
  EventConnection explorer_deactivate_event_;
  bool startup_complete_ = false;
};

// The forms unloaded at disconnection, in their order. "frmTumb" names no form and never
// matches; it has always been on the list and stays.
std::span<const wchar_t* const> UnloadFormList();

}  // namespace corvina
