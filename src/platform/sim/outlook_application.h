#pragma once
// The sim Outlook's Application object: the add-in's entry to the object model over a SimStore.
// Several SimApplication objects may serve one store in turn (the add-in restarting inside a
// running Outlook). Every member is one counted call (Faults, Service::kOutlook).
#include <memory>
#include <string>

#include "platform/outlook.h"
#include "platform/sim/outlook_store.h"

namespace corvina::sim {

class SimApplication final : public outlook::Application {
 public:
  explicit SimApplication(SimStore& store) : store_(store) {}

  SimStore& store() { return store_; }

  outlook::Ref<outlook::Explorers> Explorers() override;
  outlook::Ref<outlook::Explorer> ActiveExplorer() override;
  outlook::Ref<outlook::Inspector> ActiveInspector() override;
  outlook::Ref<outlook::Inspectors> Inspectors() override;
  // Only "MAPI" (any case) is a namespace; anything else fails as in Outlook.
  outlook::Ref<outlook::NameSpace> GetNamespace(const std::wstring& type) override;
  // Only mail items (olMailItem); the new item is stored in Drafts with the store's `now`.
  outlook::Ref<outlook::Item> CreateItem(int32_t kind) override;
  EventConnection OnNewMail(std::function<void()> handler) override;
  EventConnection OnStartup(std::function<void()> handler) override;

 private:
  SimStore& store_;
};

}  // namespace corvina::sim
