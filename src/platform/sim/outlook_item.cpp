// MailItem, ReportItem, MeetingItem, PostItem: one object over SimItemData, with the members
// each kind lacks failing as in Outlook (see outlook_members.h).
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_members.h"
#include "platform/sim/outlook_objects.h"

namespace corvina::sim {

namespace {

using M = ItemMember;

class SimItem final : public outlook::Item {
 public:
  SimItem(SimStore& store, SimItemPtr data) : store_(store), d_(std::move(data)) {}

  int32_t Class() override { return Get("Item.Class", d_->item_class); }
  std::wstring MessageClass() override { return Get("Item.MessageClass", d_->message_class); }
  std::wstring EntryID() override { return Get("Item.EntryID", d_->entry_id); }
  std::wstring Subject() override { return Get("Item.Subject", d_->subject); }
  void SetSubject(const std::wstring& v) override { Set("Item.SetSubject", d_->subject, v); }
  std::wstring Body() override { return Get("Item.Body", d_->body); }
  void SetBody(const std::wstring& v) override { Set("Item.SetBody", d_->body, v); }
  std::wstring SenderName() override {
    Enter("Item.SenderName", M::kSenderName, L"SenderName");
    return d_->sender_name;
  }
  std::wstring To() override {
    Enter("Item.To", M::kTo, L"To");
    return d_->to;
  }
  void SetTo(const std::wstring& v) override {
    Enter("Item.SetTo", M::kTo, L"To");
    d_->to = v;
  }
  Date ReceivedTime() override {
    Enter("Item.ReceivedTime", M::kReceivedTime, L"ReceivedTime");
    return d_->received_time;
  }
  Date CreationTime() override { return Get("Item.CreationTime", d_->creation_time); }
  Date SentOn() override {
    Enter("Item.SentOn", M::kSentOn, L"SentOn");
    return d_->sent_on;
  }
  bool UnRead() override { return Get("Item.UnRead", d_->unread); }
  void SetUnRead(bool v) override { Set("Item.SetUnRead", d_->unread, v); }
  int32_t Size() override {
    Enter("Item.Size");
    return EffectiveSize(*d_);
  }

  outlook::Ref<outlook::Attachments> Attachments() override {
    Enter("Item.Attachments");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapAttachments(store_, d_);
  }
  outlook::Ref<outlook::Recipients> Recipients() override {
    Enter("Item.Recipients", M::kRecipients, L"Recipients");
    if (store_.faults().TakeNothing()) return nullptr;
    return WrapRecipients(store_, d_);
  }

  // Straight to Sent Items (Outlook passes through the Outbox on its own time).
  void Send() override {
    Enter("Item.Send", M::kSend, L"Send");
    if (d_->sent) throw OutlookError(kFail, L"The item has been moved or deleted.");
    if (d_->to.empty() && d_->recipients.empty()) {
      throw OutlookError(kFail,
                         L"There must be at least one name or contact group in the To, Cc, or "
                         L"Bcc box.");
    }
    d_->sent = true;
    d_->unread = false;
    d_->sent_on = store_.now;
    if (d_->folder != 0) store_.Move(d_, outlook::olFolderSentMail);
    if (store_.on_send) store_.on_send(d_);
  }

  // To Deleted Items; deleting from Deleted Items removes the item for good.
  void Delete() override {
    Enter("Item.Delete");
    d_->deleted = true;
    if (d_->folder == outlook::olFolderDeletedItems) {
      store_.Remove(d_);
    } else if (d_->folder != 0) {
      store_.Move(d_, outlook::olFolderDeletedItems);
    }
  }

  // Opens a mail window on the item, which becomes the active inspector.
  void Display() override {
    Enter("Item.Display");
    ++d_->displayed;
    store_.OpenInspector(d_);
  }

 private:
  void Enter(const char* name) { store_.Enter(name); }
  template <typename T>
  T Get(const char* name, const T& field) {
    Enter(name);
    return field;
  }
  template <typename T>
  void Set(const char* name, T& field, const T& value) {
    Enter(name);
    field = value;
  }
  void Enter(const char* name, ItemMember member, const wchar_t* member_name) {
    store_.Enter(name);
    RequireMember(*d_, member, member_name);
  }

  SimStore& store_;
  SimItemPtr d_;
};

}  // namespace

outlook::Ref<outlook::Item> WrapItem(SimStore& store, SimItemPtr item) {
  if (!item) return nullptr;
  return std::make_shared<SimItem>(store, std::move(item));
}

}  // namespace corvina::sim
