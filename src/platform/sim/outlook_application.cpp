#include "platform/sim/outlook_application.h"

#include "base/text.h"
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_objects.h"

namespace corvina::sim {

namespace {

class SimNameSpace final : public outlook::NameSpace {
 public:
  explicit SimNameSpace(SimStore& store) : store_(store) {}

  outlook::Ref<outlook::Folder> GetDefaultFolder(int32_t kind) override {
    store_.Enter("NameSpace.GetDefaultFolder");
    if (store_.faults().TakeNothing()) return nullptr;
    auto folder = store_.FindFolder(kind);
    if (!folder) throw InvalidArgumentError();
    return WrapFolder(store_, std::move(folder));
  }
  outlook::Ref<outlook::Item> GetItemFromID(const std::wstring& entry_id) override {
    store_.Enter("NameSpace.GetItemFromID");
    if (store_.faults().TakeNothing()) return nullptr;
    auto item = store_.FindById(entry_id);
    if (!item) throw ObjectNotFoundError();
    return WrapItem(store_, std::move(item));
  }
  int32_t AddressListCount() override {
    store_.Enter("NameSpace.AddressListCount");
    return store_.address_list_count;
  }
  std::vector<std::wstring> SelectNames(const std::wstring& caption) override {
    store_.Enter("NameSpace.GetSelectNamesDialog");
    store_.select_names_captions.push_back(caption);
    if (store_.select_names_answers.empty()) return {};
    std::vector<std::wstring> picked = std::move(store_.select_names_answers.front());
    store_.select_names_answers.erase(store_.select_names_answers.begin());
    return picked;
  }

 private:
  SimStore& store_;
};

}  // namespace

outlook::Ref<outlook::Explorers> SimApplication::Explorers() {
  store_.Enter("Application.Explorers");
  if (store_.faults().TakeNothing()) return nullptr;
  return WrapExplorers(store_);
}

outlook::Ref<outlook::Explorer> SimApplication::ActiveExplorer() {
  store_.Enter("Application.ActiveExplorer");
  if (store_.faults().TakeNothing()) return nullptr;
  return WrapExplorer(store_, store_.ActiveExplorer());
}

outlook::Ref<outlook::Inspectors> SimApplication::Inspectors() {
  store_.Enter("Application.Inspectors");
  if (store_.faults().TakeNothing()) return nullptr;
  return WrapInspectors(store_);
}

outlook::Ref<outlook::Inspector> SimApplication::ActiveInspector() {
  store_.Enter("Application.ActiveInspector");
  if (store_.faults().TakeNothing()) return nullptr;
  return WrapInspector(store_, store_.ActiveInspector());
}

outlook::Ref<outlook::NameSpace> SimApplication::GetNamespace(const std::wstring& type) {
  store_.Enter("Application.GetNamespace");
  if (store_.faults().TakeNothing()) return nullptr;
  if (!EqualsIgnoreCase(type, L"MAPI")) throw InvalidArgumentError();
  return std::make_shared<SimNameSpace>(store_);
}

outlook::Ref<outlook::Item> SimApplication::CreateItem(int32_t kind) {
  store_.Enter("Application.CreateItem");
  if (store_.faults().TakeNothing()) return nullptr;
  if (kind != outlook::olMailItem) throw InvalidArgumentError();
  SimItemData draft = MakeMail(L"", store_.now);
  draft.unread = false;
  return WrapItem(store_, store_.Add(outlook::olFolderDrafts, std::move(draft)));
}

EventConnection SimApplication::OnNewMail(std::function<void()> handler) {
  store_.Enter("Application.OnNewMail");
  return store_.new_mail().Connect(std::move(handler));
}

EventConnection SimApplication::OnStartup(std::function<void()> handler) {
  store_.Enter("Application.OnStartup");
  return store_.startup().Connect(std::move(handler));
}

}  // namespace corvina::sim
