// Outlook's windows: the Explorers collection, one Explorer (main window) with its Selection
// and command bars, and an Inspector (mail window).
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_objects.h"

namespace corvina::sim {

namespace {

class SimSelection final : public outlook::Selection {
 public:
  SimSelection(SimStore& store, std::shared_ptr<SimExplorerData> explorer)
      : store_(store), explorer_(std::move(explorer)) {}

  int32_t Count() override {
    store_.Enter("Selection.Count");
    return static_cast<int32_t>(explorer_->selection.size());
  }
  outlook::Ref<outlook::Item> Item(int32_t index) override {
    store_.Enter("Selection.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    const auto& items = explorer_->selection;
    if (index < 1 || static_cast<size_t>(index) > items.size()) throw BadIndexError();
    return WrapItem(store_, items[static_cast<size_t>(index - 1)]);
  }

 private:
  SimStore& store_;
  std::shared_ptr<SimExplorerData> explorer_;
};

class SimExplorer final : public outlook::Explorer {
 public:
  SimExplorer(SimStore& store, std::shared_ptr<SimExplorerData> explorer)
      : store_(store), explorer_(std::move(explorer)) {}

  outlook::Ref<outlook::Selection> Selection() override {
    store_.Enter("Explorer.Selection");
    if (store_.faults().TakeNothing()) return nullptr;
    return std::make_shared<SimSelection>(store_, explorer_);
  }
  outlook::Ref<outlook::CommandBars> CommandBars() override {
    store_.Enter("Explorer.CommandBars");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapCommandBars(store_, explorer_->command_bars);
  }
  void Activate() override {
    store_.Enter("Explorer.Activate");
    ++explorer_->activated;
    store_.ActivateExplorer(explorer_);
  }
  EventConnection OnClose(std::function<void()> handler) override {
    store_.Enter("Explorer.OnClose");
    return explorer_->close.Connect(std::move(handler));
  }
  EventConnection OnDeactivate(std::function<void()> handler) override {
    store_.Enter("Explorer.OnDeactivate");
    return explorer_->deactivate.Connect(std::move(handler));
  }

 private:
  SimStore& store_;
  std::shared_ptr<SimExplorerData> explorer_;
};

class SimExplorers final : public outlook::Explorers {
 public:
  explicit SimExplorers(SimStore& store) : store_(store) {}

  int32_t Count() override {
    store_.Enter("Explorers.Count");
    return static_cast<int32_t>(store_.explorers().size());
  }
  outlook::Ref<outlook::Explorer> Item(int32_t index) override {
    store_.Enter("Explorers.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    const auto& all = store_.explorers();
    if (index < 1 || static_cast<size_t>(index) > all.size()) throw BadIndexError();
    return WrapExplorer(store_, all[static_cast<size_t>(index - 1)]);
  }

 private:
  SimStore& store_;
};

class SimInspector final : public outlook::Inspector {
 public:
  SimInspector(SimStore& store, std::shared_ptr<SimInspectorData> inspector)
      : store_(store), inspector_(std::move(inspector)) {}

  outlook::Ref<outlook::Item> CurrentItem() override {
    store_.Enter("Inspector.CurrentItem");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapItem(store_, inspector_->item);
  }
  outlook::Ref<outlook::CommandBars> CommandBars() override {
    store_.Enter("Inspector.CommandBars");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapCommandBars(store_, inspector_->command_bars);
  }
  EventConnection OnClose(std::function<void()> handler) override {
    store_.Enter("Inspector.OnClose");
    return inspector_->close.Connect(std::move(handler));
  }

 private:
  SimStore& store_;
  std::shared_ptr<SimInspectorData> inspector_;
};

class SimInspectors final : public outlook::Inspectors {
 public:
  explicit SimInspectors(SimStore& store) : store_(store) {}

  int32_t Count() override {
    store_.Enter("Inspectors.Count");
    return static_cast<int32_t>(store_.inspectors().size());
  }
  outlook::Ref<outlook::Inspector> Item(int32_t index) override {
    store_.Enter("Inspectors.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    const auto& all = store_.inspectors();
    if (index < 1 || static_cast<size_t>(index) > all.size()) throw BadIndexError();
    return WrapInspector(store_, all[static_cast<size_t>(index - 1)]);
  }
  EventConnection OnNewInspector(std::function<void(outlook::Ref<outlook::Inspector>)> handler) override {
    store_.Enter("Inspectors.OnNewInspector");
    SimStore& store = store_;
    return store_.new_inspector().Connect([&store, handler = std::move(handler)] {
      handler(WrapInspector(store, store.inspectors().back()));
    });
  }

 private:
  SimStore& store_;
};

}  // namespace

outlook::Ref<outlook::Explorer> WrapExplorer(SimStore& store,
                                                std::shared_ptr<SimExplorerData> explorer) {
  if (!explorer) return nullptr;
  return std::make_shared<SimExplorer>(store, std::move(explorer));
}

outlook::Ref<outlook::Explorers> WrapExplorers(SimStore& store) {
  return std::make_shared<SimExplorers>(store);
}

outlook::Ref<outlook::Inspectors> WrapInspectors(SimStore& store) {
  return std::make_shared<SimInspectors>(store);
}

outlook::Ref<outlook::Inspector> WrapInspector(SimStore& store,
                                                  std::shared_ptr<SimInspectorData> inspector) {
  if (!inspector) return nullptr;
  return std::make_shared<SimInspector>(store, std::move(inspector));
}

}  // namespace corvina::sim
