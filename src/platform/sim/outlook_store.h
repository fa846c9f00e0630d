#pragma once
// The sim Outlook's state: the default folders and their items, the open windows with their
// command bars, the application events and a few profile facts. A test builds it in a few lines,
// hands it to SimApplication and inspects it afterwards; it outlives any number of add-in
// instances (a "restart" of the add-in reuses the same store, as Outlook keeps running).
//
// The store must outlive every object-model object handed out over it. Nothing here is a
// counted object-model call: these are the test's hands and Outlook's own doings.
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/file_system.h"
#include "platform/outlook.h"
#include "platform/sim/faults.h"
#include "platform/sim/outlook_command_bar_data.h"
#include "platform/sim/outlook_event.h"
#include "platform/sim/outlook_item_data.h"

namespace corvina::sim {

struct SimFolderData {
  int32_t kind = 0;
  std::wstring name;
  std::vector<SimItemPtr> items;  // the folder's natural order: the order items arrived in
};

struct SimExplorerData {
  std::vector<SimItemPtr> selection;  // what the user selected, in selection order
  std::shared_ptr<SimCommandBarsData> command_bars = SimCommandBarsData::ExplorerDefaults();
  SimEvent close;
  SimEvent deactivate;
  int activated = 0;  // number of Activate calls
};

struct SimInspectorData {
  SimItemPtr item;
  std::shared_ptr<SimCommandBarsData> command_bars = SimCommandBarsData::InspectorDefaults();
  SimEvent close;
};

class SimStore {
 public:
  // Starts like Outlook with its main window: the default folders empty, one explorer open.
  SimStore(Faults& faults, FileSystem& files);
  SimStore(const SimStore&) = delete;
  SimStore& operator=(const SimStore&) = delete;

  Faults& faults() { return faults_; }
  FileSystem& files() { return files_; }
  // Counts one object-model call (and fails it when the test planned so).
  void Enter(const char* member) { faults_.Enter(Service::kOutlook, member); }

  // --- folders and items ---
  // Inbox 6, Deleted Items 3, Outbox 4, Sent Mail 5, Drafts 16; null for any other kind.
  std::shared_ptr<SimFolderData> FindFolder(int32_t kind) const;
  SimFolderData& Folder(int32_t kind);  // throws std::out_of_range for other kinds
  SimFolderData& Inbox() { return Folder(outlook::olFolderInbox); }
  // Appends the item to the folder, giving it an entry id (when empty) and the missing one of
  // its received and creation times. Returns the stored data. A duplicate entry id is a bug in
  // the test: std::invalid_argument.
  SimItemPtr Add(int32_t folder_kind, SimItemData item);
  SimItemPtr AddToInbox(SimItemData item) { return Add(outlook::olFolderInbox, std::move(item)); }
  // A new mail arrives: appended to the Inbox, then NewMail is raised.
  SimItemPtr DeliverNewMail(SimItemData item);
  SimItemPtr FindById(const std::wstring& entry_id) const;
  // Moves the item to the end of another folder.
  void Move(const SimItemPtr& item, int32_t folder_kind);
  // Takes the item out of the store for good (its folder becomes 0).
  void Remove(const SimItemPtr& item);

  // --- windows ---
  const std::vector<std::shared_ptr<SimExplorerData>>& explorers() const { return explorers_; }
  std::shared_ptr<SimExplorerData> AddExplorer();
  // The first explorer is the active one (ActiveExplorer); null when there is none.
  std::shared_ptr<SimExplorerData> ActiveExplorer() const;
  void ActivateExplorer(const std::shared_ptr<SimExplorerData>& explorer);
  // Raises Deactivate on the explorer.
  void DeactivateExplorer(const std::shared_ptr<SimExplorerData>& explorer);
  // Raises Close (the explorer is still listed while its handlers run), then removes it.
  void CloseExplorer(const std::shared_ptr<SimExplorerData>& explorer);

  const std::vector<std::shared_ptr<SimInspectorData>>& inspectors() const { return inspectors_; }
  // Opens a mail window on the item; the latest open one is the active inspector.
  std::shared_ptr<SimInspectorData> OpenInspector(SimItemPtr item);
  void CloseInspector(const std::shared_ptr<SimInspectorData>& inspector);
  std::shared_ptr<SimInspectorData> ActiveInspector() const;

  // --- application events and profile ---
  SimEvent& new_mail() { return new_mail_; }
  // Raised by OpenInspector once the window is listed (it is the last of inspectors()).
  SimEvent& new_inspector() { return new_inspector_; }
  SimEvent& startup() { return startup_; }
  uint64_t attachments_saved = 0;  // successful Attachment.SaveAsFile calls
  // Called with each item that MailItem.Send has moved to Sent Items: where a mail server
  // takes it (MailServer sets it).
  std::function<void(const SimItemPtr&)> on_send;
  int32_t address_list_count = 1;                 // AddressLists.Count; 0 = no address book
  // What the select-names dialog answers next, one answer per opening: the picked addresses
  // (none: cancelled). With nothing queued the dialog is cancelled. Each opening's caption is
  // kept in select_names_captions.
  std::vector<std::vector<std::wstring>> select_names_answers;
  std::vector<std::wstring> select_names_captions;
  Date now = FromCivil({2024, 1, 15, 12, 0, 0});  // time stamped on created and sent items
  // What closing and restarting Outlook does to the windows' bars (temporary ones vanish).
  void DropTemporaryCommandBars();

 private:
  std::wstring NextEntryId();

  Faults& faults_;
  FileSystem& files_;
  std::map<int32_t, std::shared_ptr<SimFolderData>> folders_;
  std::unordered_map<std::wstring, SimItemPtr> by_id_;
  uint64_t next_id_ = 1;
  std::vector<std::shared_ptr<SimExplorerData>> explorers_;
  std::vector<std::shared_ptr<SimInspectorData>> inspectors_;
  SimEvent new_mail_;
  SimEvent new_inspector_;
  SimEvent startup_;
};

}  // namespace corvina::sim
