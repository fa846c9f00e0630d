// An item's Attachments and Recipients. Attachment files go through the store's FileSystem,
// so a test sees exactly what SaveAsFile wrote and Add read; its errors pass through as they are.
#include "platform/path.h"
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_objects.h"

namespace corvina::sim {

namespace {

class SimAttachment final : public outlook::Attachment {
 public:
  // Addressed by position: the item's attachment list may grow while this object lives.
  SimAttachment(SimStore& store, SimItemPtr item, size_t index)
      : store_(store), item_(std::move(item)), index_(index) {}

  std::wstring FileName() override {
    store_.Enter("Attachment.FileName");
    return data().file_name;
  }
  int32_t Position() override {
    store_.Enter("Attachment.Position");
    return data().position;
  }
  int32_t Size() override {
    store_.Enter("Attachment.Size");
    return static_cast<int32_t>(data().bytes.size());
  }
  void SaveAsFile(const std::wstring& path) override {
    store_.Enter("Attachment.SaveAsFile");
    store_.files().WriteFile(path, data().bytes);
    ++store_.attachments_saved;
  }

 private:
  const SimAttachmentData& data() const {
    // An attachment taken away behind this object's back (the test edited the item).
    if (index_ >= item_->attachments.size()) throw ObjectNotFoundError();
    return item_->attachments[index_];
  }

  SimStore& store_;
  SimItemPtr item_;
  size_t index_;
};

class SimAttachments final : public outlook::Attachments {
 public:
  SimAttachments(SimStore& store, SimItemPtr item) : store_(store), item_(std::move(item)) {}

  int32_t Count() override {
    store_.Enter("Attachments.Count");
    return static_cast<int32_t>(item_->attachments.size());
  }
  outlook::Ref<outlook::Attachment> Item(int32_t index) override {
    store_.Enter("Attachments.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    if (index < 1 || static_cast<size_t>(index) > item_->attachments.size()) throw BadIndexError();
    return std::make_shared<SimAttachment>(store_, item_, static_cast<size_t>(index - 1));
  }
  outlook::Ref<outlook::Attachment> Add(const std::wstring& file) override {
    store_.Enter("Attachments.Add");
    if (store_.faults().TakeNothing()) return nullptr;
    std::string bytes = store_.files().ReadFile(file);
    item_->attachments.push_back(SimAttachmentData{path::FileName(file), 1, std::move(bytes)});
    return std::make_shared<SimAttachment>(store_, item_, item_->attachments.size() - 1);
  }

 private:
  SimStore& store_;
  SimItemPtr item_;
};

class SimRecipients final : public outlook::Recipients {
 public:
  SimRecipients(SimStore& store, SimItemPtr item) : store_(store), item_(std::move(item)) {}

  int32_t Count() override {
    store_.Enter("Recipients.Count");
    return static_cast<int32_t>(item_->recipients.size());
  }
  void Add(const std::wstring& address) override {
    store_.Enter("Recipients.Add");
    item_->recipients.push_back(address);
  }

 private:
  SimStore& store_;
  SimItemPtr item_;
};

}  // namespace

outlook::Ref<outlook::Attachments> WrapAttachments(SimStore& store, SimItemPtr item) {
  return std::make_shared<SimAttachments>(store, std::move(item));
}

outlook::Ref<outlook::Recipients> WrapRecipients(SimStore& store, SimItemPtr item) {
  return std::make_shared<SimRecipients>(store, std::move(item));
}

}  // namespace corvina::sim
