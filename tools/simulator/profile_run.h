#pragma once
// One run of the add-in over a profile folder: the mailbox, the settings file and the folder
// mapped to drive C:, driven by a script, narrated as a transcript.
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "host/des_vireo.h"
#include "platform/sim/faults.h"
#include "platform/sim/file_settings_tree.h"
#include "platform/sim/mapped_file_system.h"
#include "platform/sim/outlook_application.h"
#include "platform/sim/outlook_store.h"
#include "platform/sim/scripted_user_interface.h"
#include "platform/sim/sim_beeper.h"
#include "platform/sim/sim_clipboard.h"
#include "platform/sim/sim_clock.h"
#include "simulator/answer_queue.h"
#include "simulator/script.h"

namespace corvina::simulator {

struct ProfilePaths {
  std::filesystem::path mailbox;   // *.eml files of the Inbox, in name order
  std::filesystem::path settings;  // the settings file
  std::filesystem::path drive;     // mapped to C:
};

// The folder the add-in is installed in, on the mapped drive.
inline constexpr wchar_t kAddinFolder[] = L"C:\\Program Files\\Corvina";

class ProfileRun {
 public:
  ProfileRun(ProfilePaths paths, std::ostream& out);
  ~ProfileRun();

  // Loads the mailbox into the Inbox; false (after saying why) when a mail cannot be read.
  bool LoadMailbox();
  // Runs every action; returns the number of actions that could not be carried out.
  int Run(const Script& script);

 private:
  bool Do(const Action& action);
  bool Start(int explorers);
  bool Stop(int32_t mode);
  bool Deliver(const std::wstring& file);
  bool Select(const std::vector<int32_t>& positions);
  bool Open(int32_t position);
  bool Click(const std::wstring& bar, const std::wstring& tag, const std::wstring* combo_text);
  void PrintToolbar();
  void PrintFileChanges();
  void PrintLog();
  void Say(const std::wstring& line);

  using Snapshot = std::map<std::filesystem::path, std::pair<uintmax_t, std::filesystem::file_time_type>>;
  Snapshot TakeSnapshot() const;

  ProfilePaths paths_;
  std::ostream& out_;
  sim::Faults faults_;
  sim::MappedFileSystem files_;
  sim::FileSettingsTree settings_;
  sim::ScriptedUserInterface recorded_ui_;
  AnswerQueue ui_;
  sim::SimClock clock_;
  sim::SimBeeper beeper_;
  sim::SimClipboard clipboard_;
  sim::SimStore store_;
  std::shared_ptr<sim::SimApplication> application_;
  std::unique_ptr<DesVireo> addin_;
  Snapshot files_before_;
};

}  // namespace corvina::simulator
