#pragma once
// A whole simulated machine for one test: Outlook with its store, files, settings, the user
// interface, clock and beep, all counting their calls through one Faults object. AddIn()
// makes the connect class over it, the way Outlook would load the add-in.
#include <memory>
#include <string>
#include <vector>

#include "host/des_vireo.h"
#include "platform/sim/faults.h"
#include "platform/sim/memory_file_system.h"
#include "platform/sim/memory_settings_tree.h"
#include "platform/sim/outlook_application.h"
#include "platform/sim/outlook_store.h"
#include "platform/sim/scripted_user_interface.h"
#include "platform/sim/sim_beeper.h"
#include "platform/sim/sim_clipboard.h"
#include "platform/sim/sim_clock.h"

namespace corvina::testing {

inline constexpr wchar_t kAddinFolder[] = L"C:\\Program Files\\Corvina";

class SimWorld {
 public:
  SimWorld();

  Services MakeServices();
  // A new connect class (as Outlook creates one per load); AddinInstance_Initialize has run.
  std::unique_ptr<DesVireo> NewAddIn();
  // Creates the add-in and runs connection and start-up complete.
  std::unique_ptr<DesVireo> StartOutlook();

  std::wstring Setting(const std::wstring& section, const std::wstring& key);
  bool HasSetting(const std::wstring& section, const std::wstring& key);
  void Store(const std::wstring& section, const std::wstring& key, const std::wstring& value);
  std::vector<std::wstring> LogLines();
  // The log lines holding `text`.
  std::vector<std::wstring> LogLinesWith(std::wstring_view text);
  std::vector<std::wstring> ProgressTexts() const;
  std::vector<std::wstring> Boxes() const;  // prompts of MsgBox and texts of ShowMsgBox
  std::shared_ptr<sim::SimCommandBarData> Bar(const std::wstring& name = L"Vireo");

  sim::Faults faults;
  sim::MemoryFileSystem files{faults};
  sim::MemorySettingsTree settings{faults};
  sim::ScriptedUserInterface ui{faults};
  sim::SimClock clock{faults, FromCivil({2026, 11, 22, 9, 30, 0})};
  sim::SimBeeper beeper{faults};
  sim::SimClipboard clipboard{faults};
  sim::SimStore store{faults, files};
  std::shared_ptr<sim::SimApplication> application;
};

}  // namespace corvina::testing
