// One item of a folder (of any kind: the late-bound call fails for a member the kind lacks, as
// it does in Outlook) and what hangs from it: attachments and recipients.
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {

namespace {

class ComItem final : public outlook::Item {
 public:
  explicit ComItem(Dispatch d) : d_(std::move(d)) {}

  int32_t Class() override { return d_.Get<int32_t>(L"Class"); }
  std::wstring MessageClass() override { return d_.Get<std::wstring>(L"MessageClass"); }
  std::wstring EntryID() override { return d_.Get<std::wstring>(L"EntryID"); }
  std::wstring Subject() override { return d_.Get<std::wstring>(L"Subject"); }
  void SetSubject(const std::wstring& value) override { d_.Put(L"Subject", value); }
  std::wstring Body() override { return d_.Get<std::wstring>(L"Body"); }
  void SetBody(const std::wstring& value) override { d_.Put(L"Body", value); }
  std::wstring SenderName() override { return d_.Get<std::wstring>(L"SenderName"); }
  std::wstring To() override { return d_.Get<std::wstring>(L"To"); }
  void SetTo(const std::wstring& value) override { d_.Put(L"To", value); }
  Date ReceivedTime() override { return d_.Get<Date>(L"ReceivedTime"); }
  Date CreationTime() override { return d_.Get<Date>(L"CreationTime"); }
  Date SentOn() override { return d_.Get<Date>(L"SentOn"); }
  bool UnRead() override { return d_.Get<bool>(L"UnRead"); }
  void SetUnRead(bool value) override { d_.Put(L"UnRead", value); }
  int32_t Size() override { return d_.Get<int32_t>(L"Size"); }
  outlook::Ref<outlook::Attachments> Attachments() override {
    return WrapAttachments(d_.Get<Dispatch>(L"Attachments"));
  }
  outlook::Ref<outlook::Recipients> Recipients() override {
    return WrapRecipients(d_.Get<Dispatch>(L"Recipients"));
  }
  void Send() override { d_.Call(L"Send"); }
  void Delete() override { d_.Call(L"Delete"); }
  void Display() override { d_.Call(L"Display"); }

 private:
  Dispatch d_;
};

class ComAttachments final : public outlook::Attachments {
 public:
  explicit ComAttachments(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::Attachment> Item(int32_t index) override {
    return WrapAttachment(d_.Call<Dispatch>(L"Item", index));
  }
  outlook::Ref<outlook::Attachment> Add(const std::wstring& path) override {
    return WrapAttachment(d_.Call<Dispatch>(L"Add", path));
  }

 private:
  Dispatch d_;
};

class ComAttachment final : public outlook::Attachment {
 public:
  explicit ComAttachment(Dispatch d) : d_(std::move(d)) {}
  std::wstring FileName() override { return d_.Get<std::wstring>(L"FileName"); }
  int32_t Position() override { return d_.Get<int32_t>(L"Position"); }
  int32_t Size() override { return d_.Get<int32_t>(L"Size"); }
  void SaveAsFile(const std::wstring& path) override { d_.Call(L"SaveAsFile", path); }

 private:
  Dispatch d_;
};

class ComRecipients final : public outlook::Recipients {
 public:
  explicit ComRecipients(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  void Add(const std::wstring& address) override { d_.Call(L"Add", address); }

 private:
  Dispatch d_;
};

}  // namespace

outlook::Ref<outlook::Item> WrapItem(Dispatch object) {
  return MakeWrapper<ComItem>(std::move(object), L"Item");
}
outlook::Ref<outlook::Attachments> WrapAttachments(Dispatch object) {
  return MakeWrapper<ComAttachments>(std::move(object), L"Attachments");
}
outlook::Ref<outlook::Attachment> WrapAttachment(Dispatch object) {
  return MakeWrapper<ComAttachment>(std::move(object), L"Attachment");
}
outlook::Ref<outlook::Recipients> WrapRecipients(Dispatch object) {
  return MakeWrapper<ComRecipients>(std::move(object), L"Recipients");
}

}  // namespace corvina::win32
