// The mailbox side: NameSpace, Folder, and the two item lists (a folder's Items and an
// explorer's Selection).
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {

namespace {

class ComNameSpace final : public outlook::NameSpace {
 public:
  explicit ComNameSpace(Dispatch d) : d_(std::move(d)) {}
  outlook::Ref<outlook::Folder> GetDefaultFolder(int32_t kind) override {
    return WrapFolder(d_.Call<Dispatch>(L"GetDefaultFolder", kind));
  }
  outlook::Ref<outlook::Item> GetItemFromID(const std::wstring& entry_id) override {
    return WrapItem(d_.Call<Dispatch>(L"GetItemFromID", entry_id));
  }
  int32_t AddressListCount() override {
    Dispatch lists = d_.Get<Dispatch>(L"AddressLists");
    lists.set_type(L"AddressLists");
    return lists.Get<int32_t>(L"Count");
  }
  std::vector<std::wstring> SelectNames(const std::wstring& caption) override {
    Dispatch dialog = d_.Call<Dispatch>(L"GetSelectNamesDialog");
    dialog.set_type(L"SelectNamesDialog");
    dialog.Put(L"Caption", caption);
    if (!dialog.Call<bool>(L"Display")) return {};  // cancelled
    Dispatch recipients = dialog.Get<Dispatch>(L"Recipients");
    recipients.set_type(L"Recipients");
    std::vector<std::wstring> addresses;
    const int32_t count = recipients.Get<int32_t>(L"Count");
    for (int32_t i = 1; i <= count; ++i) {
      Dispatch recipient = recipients.Call<Dispatch>(L"Item", i);
      recipient.set_type(L"Recipient");
      // A name typed into the dialog that the address book could not resolve has no address
      // yet; Outlook resolves it again when the mail is sent.
      std::wstring address = recipient.Get<std::wstring>(L"Address");
      addresses.push_back(address.empty() ? recipient.Get<std::wstring>(L"Name") : address);
    }
    return addresses;
  }

 private:
  Dispatch d_;
};

class ComFolder final : public outlook::Folder {
 public:
  explicit ComFolder(Dispatch d) : d_(std::move(d)) {}
  std::wstring Name() override { return d_.Get<std::wstring>(L"Name"); }
  outlook::Ref<outlook::Items> Items() override { return WrapItems(d_.Get<Dispatch>(L"Items")); }

 private:
  Dispatch d_;
};

class ComItems final : public outlook::Items {
 public:
  explicit ComItems(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::Item> Item(int32_t index) override {
    return WrapItem(d_.Call<Dispatch>(L"Item", index));
  }
  void Sort(const std::wstring& property, bool descending) override {
    d_.Call(L"Sort", property, descending);
  }
  outlook::Ref<outlook::Items> Restrict(const std::wstring& filter) override {
    return WrapItems(d_.Call<Dispatch>(L"Restrict", filter));
  }
  outlook::Ref<outlook::Item> Find(const std::wstring& filter) override {
    return WrapItem(d_.Call<Dispatch>(L"Find", filter));
  }
  outlook::Ref<outlook::Item> FindNext() override { return WrapItem(d_.Call<Dispatch>(L"FindNext")); }
  outlook::Ref<outlook::Item> GetFirst() override { return WrapItem(d_.Call<Dispatch>(L"GetFirst")); }
  outlook::Ref<outlook::Item> GetNext() override { return WrapItem(d_.Call<Dispatch>(L"GetNext")); }
  outlook::Ref<outlook::Item> GetLast() override { return WrapItem(d_.Call<Dispatch>(L"GetLast")); }

 private:
  Dispatch d_;
};

class ComSelection final : public outlook::Selection {
 public:
  explicit ComSelection(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::Item> Item(int32_t index) override {
    return WrapItem(d_.Call<Dispatch>(L"Item", index));
  }

 private:
  Dispatch d_;
};

}  // namespace

outlook::Ref<outlook::NameSpace> WrapNameSpace(Dispatch object) {
  return MakeWrapper<ComNameSpace>(std::move(object), L"NameSpace");
}
outlook::Ref<outlook::Folder> WrapFolder(Dispatch object) {
  return MakeWrapper<ComFolder>(std::move(object), L"Folder");
}
outlook::Ref<outlook::Items> WrapItems(Dispatch object) {
  return MakeWrapper<ComItems>(std::move(object), L"Items");
}
outlook::Ref<outlook::Selection> WrapSelection(Dispatch object) {
  return MakeWrapper<ComSelection>(std::move(object), L"Selection");
}

}  // namespace corvina::win32
