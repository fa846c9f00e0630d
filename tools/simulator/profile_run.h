#pragma once
// One run of the add-in over a profile folder: the mailbox, the settings file and the folder
// mapped to drive C:, driven by a script, narrated as a transcript.
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

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
#include "platform/sim/ui_event.h"
#include "simulator/answer_queue.h"
#include "simulator/chat_script.h"
#include "simulator/script.h"

namespace corvina::simulator {

// Host paths in UTF-8, whatever the locale: under the "C" locale, which a program has until it
// calls setlocale, path::wstring() throws on the first Cyrillic or Japanese name.
std::filesystem::path HostPath(std::string_view utf8);
std::string Utf8Of(const std::filesystem::path& path);
std::wstring TextOf(const std::filesystem::path& path);

struct ProfilePaths {
  std::filesystem::path mailbox;   // *.eml files of the Inbox, in name order
  std::filesystem::path settings;  // the settings file
  std::filesystem::path drive;     // mapped to C:
};

// The folder the add-in is installed in, on the mapped drive.
inline constexpr wchar_t kAddinFolder[] = L"C:\\Program Files\\Corvina";

// One simulated user: an Outlook with its add-in over a profile folder. Every line it prints
// starts with `prefix` (the user's name when several users share the transcript).
class ProfileRun {
 public:
  ProfileRun(ProfilePaths paths, std::ostream& out, std::wstring prefix = L"");
  ~ProfileRun();

  // Loads the mailbox into the Inbox, naming and skipping each mail that cannot be read; false
  // (after saying why) only when the mailbox folder itself cannot be read.
  bool LoadMailbox();
  // Echoes one action of this user and carries it out; false when it could not be carried
  // out (said in the transcript). The files it wrote are told by PrintFileChanges, which the
  // simulation calls for every user after each action.
  bool Perform(const Action& action);
  // The end of the script: Outlook closes if it runs, then the log is shown.
  void Finish();
  // Moves this user's clock on (the simulation keeps every user's clock together).
  void AdvanceClock(double seconds);
  Date Now() const { return store_.now; }
  sim::SimStore& store() { return store_; }
  // The address others write to: the chat address setting where it is set, else `fallback`.
  std::wstring Address(const std::wstring& fallback);
  void Say(const std::wstring& line);
  void PrintFileChanges();

 private:
  bool Do(const Action& action);
  // Writes a mail through the object model, as a feature of the add-in would, and sends it.
  bool SendMail(const std::wstring& to, const std::wstring& subject);
  // MailItem.Delete on Inbox item n, as a feature that removes mail would call it.
  bool DeleteMail(int32_t position);
  // `show inbox` or `show deleted`: the folder's mails, read or unread.
  void ShowFolder(bool inbox);
  bool Start(int explorers);
  bool Stop(int32_t mode);
  bool Deliver(const std::wstring& file);
  bool Select(const std::vector<int32_t>& positions);
  bool Open(int32_t position);
  bool Click(const std::wstring& bar, const std::wstring& tag, const std::wstring* combo_text);
  // Lists the bar `name` of a window's command bars (null when there is no such window).
  void PrintToolbar(const std::shared_ptr<sim::SimCommandBarsData>& bars, const std::wstring& name);
  void PrintLog();
  // A line of the recording user interface, as it happens.
  void Echo(const std::wstring& line);
  // The saving form's count once an attachment more is saved than the form shows.
  void PrintSavedCount();

  using Snapshot = std::map<std::filesystem::path, std::pair<uintmax_t, std::filesystem::file_time_type>>;
  Snapshot TakeSnapshot() const;

  ProfilePaths paths_;
  std::ostream& out_;
  std::wstring prefix_;
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
  // frmSaving as the add-in last showed it, while it is loaded; the store's count of saved
  // attachments then and when a count was last printed; the last [saving] line printed.
  std::optional<sim::UiEvent> saving_form_;
  uint64_t saved_at_form_ = 0, saved_printed_ = 0;
  std::wstring last_saving_line_;
  std::vector<std::wstring> attachments_to_send_;
  ChatWatch chat_;  // `attach` files for the next `send`
};

}  // namespace corvina::simulator
