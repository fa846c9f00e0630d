#include "platform/sim/outlook_store.h"

#include <algorithm>
#include <stdexcept>

namespace corvina::sim {

namespace {

void Detach(std::vector<SimItemPtr>& items, const SimItemPtr& item) {
  // Recent items sit at the end (a draft just sent, a mail just delivered): search backwards.
  auto it = std::find(items.rbegin(), items.rend(), item);
  if (it != items.rend()) items.erase(std::next(it).base());
}

}  // namespace

// Entry ids look like Outlook's: a long upper-case hex string, unique in the store.
std::wstring SimStore::NextEntryId() {
  std::wstring id = L"00000000A1C0FFEE0000000000000000";
  uint64_t n = next_id_++;
  wchar_t digits[16];
  for (int i = 15; i >= 0; --i, n >>= 4) digits[i] = L"0123456789ABCDEF"[n & 15];
  return id.append(digits, 16);
}

SimStore::SimStore(Faults& faults, FileSystem& files) : faults_(faults), files_(files) {
  const std::pair<int32_t, const wchar_t*> kDefaults[] = {
      {outlook::olFolderDeletedItems, L"Deleted Items"},
      {outlook::olFolderOutbox, L"Outbox"},
      {outlook::olFolderSentMail, L"Sent Items"},
      {outlook::olFolderInbox, L"Inbox"},
      {outlook::olFolderDrafts, L"Drafts"}};
  for (const auto& [kind, name] : kDefaults) {
    folders_[kind] = std::make_shared<SimFolderData>(SimFolderData{kind, name, {}});
  }
  AddExplorer();
}

std::shared_ptr<SimFolderData> SimStore::FindFolder(int32_t kind) const {
  auto it = folders_.find(kind);
  return it == folders_.end() ? nullptr : it->second;
}

SimFolderData& SimStore::Folder(int32_t kind) {
  auto f = FindFolder(kind);
  if (!f) throw std::out_of_range("no such default folder in the sim store");
  return *f;
}

SimItemPtr SimStore::Add(int32_t folder_kind, SimItemData data) {
  SimFolderData& folder = Folder(folder_kind);
  if (data.entry_id.empty()) data.entry_id = NextEntryId();
  if (by_id_.contains(data.entry_id))
    throw std::invalid_argument("duplicate entry id in sim store");
  if (data.received_time.serial == 0) data.received_time = data.creation_time;
  if (data.creation_time.serial == 0) data.creation_time = data.received_time;
  data.folder = folder_kind;
  auto item = std::make_shared<SimItemData>(std::move(data));
  by_id_.emplace(item->entry_id, item);
  folder.items.push_back(item);
  return item;
}

SimItemPtr SimStore::DeliverNewMail(SimItemData item) {
  auto stored = AddToInbox(std::move(item));
  new_mail_.Raise();
  return stored;
}

SimItemPtr SimStore::FindById(const std::wstring& entry_id) const {
  auto it = by_id_.find(entry_id);
  return it == by_id_.end() ? nullptr : it->second;
}

void SimStore::Move(const SimItemPtr& item, int32_t folder_kind) {
  SimFolderData& to = Folder(folder_kind);
  if (auto from = FindFolder(item->folder)) Detach(from->items, item);
  item->folder = folder_kind;
  to.items.push_back(item);
}

void SimStore::Remove(const SimItemPtr& item) {
  if (auto from = FindFolder(item->folder)) Detach(from->items, item);
  item->folder = 0;
  by_id_.erase(item->entry_id);
}

std::shared_ptr<SimExplorerData> SimStore::AddExplorer() {
  explorers_.push_back(std::make_shared<SimExplorerData>());
  return explorers_.back();
}

std::shared_ptr<SimExplorerData> SimStore::ActiveExplorer() const {
  return explorers_.empty() ? nullptr : explorers_.front();
}

void SimStore::ActivateExplorer(const std::shared_ptr<SimExplorerData>& explorer) {
  auto it = std::find(explorers_.begin(), explorers_.end(), explorer);
  if (it != explorers_.end()) std::rotate(explorers_.begin(), it, it + 1);
}

void SimStore::DeactivateExplorer(const std::shared_ptr<SimExplorerData>& explorer) {
  explorer->deactivate.Raise();
}

void SimStore::CloseExplorer(const std::shared_ptr<SimExplorerData>& explorer) {
  auto remove = [&] { std::erase(explorers_, explorer); };
  try {
    explorer->close.Raise();
  } catch (...) {
    remove();
    throw;
  }
  remove();
}

std::shared_ptr<SimInspectorData> SimStore::OpenInspector(SimItemPtr item) {
  auto inspector = std::make_shared<SimInspectorData>();
  inspector->item = std::move(item);
  inspectors_.push_back(inspector);
  new_inspector_.Raise();
  return inspector;
}

void SimStore::CloseInspector(const std::shared_ptr<SimInspectorData>& inspector) {
  auto keep = inspector;  // the caller's reference may be the list's own
  auto remove = [&] { std::erase(inspectors_, keep); };
  try {
    keep->close.Raise();
  } catch (...) {
    remove();
    throw;
  }
  remove();
}

std::shared_ptr<SimInspectorData> SimStore::ActiveInspector() const {
  return inspectors_.empty() ? nullptr : inspectors_.back();
}

void SimStore::DropTemporaryCommandBars() {
  for (const auto& e : explorers_) e->command_bars->DropTemporary();
  for (const auto& i : inspectors_) i->command_bars->DropTemporary();
}

}  // namespace corvina::sim
