// A folder and its Items collection with Outlook's views over it.
//
// A folder's own collection reads the folder's live list, so Count and Item cost nothing however
// large the folder. Sort and Restrict give a collection a list of its own (a snapshot of item
// pointers): items arriving later do not appear in it, and an item deleted meanwhile stays
// visible in it (its data lives on through the pointer).
#include <optional>

#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_filter.h"
#include "platform/sim/outlook_objects.h"
#include "platform/sim/outlook_sort.h"

namespace corvina::sim {

namespace {

class SimItems final : public outlook::Items {
 public:
  SimItems(SimStore& store, std::shared_ptr<SimFolderData> folder,
           std::optional<std::vector<SimItemPtr>> own = std::nullopt)
      : store_(store), folder_(std::move(folder)), own_(std::move(own)) {}

  int32_t Count() override {
    store_.Enter("Items.Count");
    return static_cast<int32_t>(list().size());
  }

  outlook::Ref<outlook::Item> Item(int32_t index) override {
    store_.Enter("Items.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    if (index < 1 || static_cast<size_t>(index) > list().size()) throw BadIndexError();
    return WrapItem(store_, list()[static_cast<size_t>(index - 1)]);
  }

  void Sort(const std::wstring& property, bool descending) override {
    store_.Enter("Items.Sort");
    std::vector<SimItemPtr> sorted = list();
    SortItems(sorted, property, descending);
    own_ = std::move(sorted);
    cursor_ = 0;
    find_.reset();
  }

  outlook::Ref<outlook::Items> Restrict(const std::wstring& filter) override {
    store_.Enter("Items.Restrict");
    if (store_.faults().TakeNothing()) return nullptr;
    const SimFilter f(filter);
    std::vector<SimItemPtr> matches;
    for (const auto& item : list()) {
      if (f.Matches(*item)) matches.push_back(item);
    }
    return std::make_shared<SimItems>(store_, folder_, std::move(matches));
  }

  outlook::Ref<outlook::Item> Find(const std::wstring& filter) override {
    store_.Enter("Items.Find");
    if (store_.faults().TakeNothing()) return nullptr;
    find_.emplace(filter);
    find_next_ = 0;
    return NextMatch();
  }

  // Without a Find before it there is nothing to continue: Nothing.
  outlook::Ref<outlook::Item> FindNext() override {
    store_.Enter("Items.FindNext");
    if (store_.faults().TakeNothing()) return nullptr;
    return NextMatch();
  }

  outlook::Ref<outlook::Item> GetFirst() override {
    store_.Enter("Items.GetFirst");
    if (store_.faults().TakeNothing()) return nullptr;
    cursor_ = 0;
    return TakeAtCursor();
  }

  outlook::Ref<outlook::Item> GetNext() override {
    store_.Enter("Items.GetNext");
    if (store_.faults().TakeNothing()) return nullptr;
    return TakeAtCursor();
  }

  outlook::Ref<outlook::Item> GetLast() override {
    store_.Enter("Items.GetLast");
    if (store_.faults().TakeNothing()) return nullptr;
    const auto& items = list();
    cursor_ = items.size();
    return items.empty() ? nullptr : WrapItem(store_, items.back());
  }

 private:
  const std::vector<SimItemPtr>& list() const { return own_ ? *own_ : folder_->items; }

  outlook::Ref<outlook::Item> TakeAtCursor() {
    const auto& items = list();
    if (cursor_ >= items.size()) return nullptr;
    return WrapItem(store_, items[cursor_++]);
  }

  outlook::Ref<outlook::Item> NextMatch() {
    if (!find_) return nullptr;
    const auto& items = list();
    while (find_next_ < items.size()) {
      const SimItemPtr& item = items[find_next_++];
      if (find_->Matches(*item)) return WrapItem(store_, item);
    }
    return nullptr;
  }

  SimStore& store_;
  std::shared_ptr<SimFolderData> folder_;
  std::optional<std::vector<SimItemPtr>> own_;
  size_t cursor_ = 0;  // index of what GetNext returns
  std::optional<SimFilter> find_;
  size_t find_next_ = 0;  // index where FindNext resumes
};

class SimFolder final : public outlook::Folder {
 public:
  SimFolder(SimStore& store, std::shared_ptr<SimFolderData> folder)
      : store_(store), folder_(std::move(folder)) {}

  std::wstring Name() override {
    store_.Enter("Folder.Name");
    return folder_->name;
  }
  outlook::Ref<outlook::Items> Items() override {
    store_.Enter("Folder.Items");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapFolderItems(store_, folder_);
  }

 private:
  SimStore& store_;
  std::shared_ptr<SimFolderData> folder_;
};

}  // namespace

outlook::Ref<outlook::Items> WrapFolderItems(SimStore& store,
                                                std::shared_ptr<SimFolderData> folder) {
  if (!folder) return nullptr;
  return std::make_shared<SimItems>(store, std::move(folder));
}

outlook::Ref<outlook::Folder> WrapFolder(SimStore& store,
                                            std::shared_ptr<SimFolderData> folder) {
  if (!folder) return nullptr;
  return std::make_shared<SimFolder>(store, std::move(folder));
}

}  // namespace corvina::sim
