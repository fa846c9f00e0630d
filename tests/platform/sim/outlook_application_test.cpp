#include <functional>

#include "platform/sim/outlook_fixture.h"

namespace corvina::sim {
namespace {

using OutlookApplicationTest = OutlookTest;

TEST_F(OutlookApplicationTest, CountsEveryCallAndFailsThePlannedOne) {
  store.AddToInbox(MakeMail(L"x", Jan(5, 10)));
  auto items = Inbox();
  faults.set_record(true);
  faults.FailNthCall(Service::kOutlook, 2, Error(-1, L"Outlook", L"planned"));

  EXPECT_EQ(items->Count(), 1);
  EXPECT_EQ(CaughtError([&] { items->Item(1)->Subject(); }).description(), L"planned");
  EXPECT_EQ(faults.last_failed_call(), "Outlook.Items.Item");
  EXPECT_EQ(items->Item(1)->Subject(), L"x");  // only that one call failed
  EXPECT_EQ(faults.recorded(),
            (std::vector<std::string>{"Outlook.Items.Count", "Outlook.Items.Item",
                                      "Outlook.Items.Item", "Outlook.Item.Subject"}));
}

TEST_F(OutlookApplicationTest, MembersAnItemKindLacksFailAsUnknownNames) {
  const struct {
    const char* member;
    std::function<void(outlook::Item&)> call;
  } members[] = {
      {"ReceivedTime", [](outlook::Item& i) { i.ReceivedTime(); }},
      {"SenderName", [](outlook::Item& i) { i.SenderName(); }},
      {"SentOn", [](outlook::Item& i) { i.SentOn(); }},
      {"Recipients", [](outlook::Item& i) { i.Recipients(); }},
      {"To", [](outlook::Item& i) { i.SetTo(L"a@b"); }},
      {"Send", [](outlook::Item& i) { i.Send(); }},
  };
  auto report = WrapItem(store, store.AddToInbox(MakeReport(Jan(5, 10))));
  auto mail = WrapItem(store, store.AddToInbox(MakeMail(L"m", Jan(5, 10))));
  for (const auto& m : members) {
    Error e = CaughtError([&] { m.call(*report); });
    EXPECT_EQ(e.number(), static_cast<int32_t>(0x80020006u)) << m.member;
    EXPECT_EQ(e.source(), L"Outlook");
    EXPECT_TRUE(ContainsText(e.description(), FromUtf8(m.member))) << m.member;
  }
  EXPECT_EQ(report->CreationTime(), Jan(5, 10));
  EXPECT_EQ(mail->ReceivedTime(), Jan(5, 10));
  EXPECT_NO_THROW(mail->Recipients());
}

TEST_F(OutlookApplicationTest, NameSpaceFindsFoldersAndItems) {
  EXPECT_EQ(CaughtError([&] { app.GetNamespace(L"Other"); }).number(), kInvalidArgument);
  auto ns = app.GetNamespace(L"mapi");
  EXPECT_EQ(ns->GetDefaultFolder(outlook::olFolderSentMail)->Name(), L"Sent Items");
  EXPECT_EQ(CaughtError([&] { ns->GetDefaultFolder(99); }).number(), kInvalidArgument);

  auto stored = store.AddToInbox(MakeMail(L"kept", Jan(5, 10)));
  EXPECT_EQ(ns->GetItemFromID(stored->entry_id)->Subject(), L"kept");
  Error missing = CaughtError([&] { ns->GetItemFromID(L"0000"); });
  EXPECT_EQ(missing.number(), kMapiNotFound);
  EXPECT_EQ(missing.description(), L"The operation failed. An object could not be found.");

  EXPECT_EQ(ns->AddressListCount(), 1);
  store.address_list_count = 0;
  EXPECT_EQ(ns->AddressListCount(), 0);
}

TEST_F(OutlookApplicationTest, CreatedMailIsSentAndDeletedThroughTheFolders) {
  auto mail = app.CreateItem(outlook::olMailItem);
  const std::wstring id = mail->EntryID();
  EXPECT_EQ(Folder(outlook::olFolderDrafts)->Count(), 1);
  EXPECT_EQ(CaughtError([&] { mail->Send(); }).number(), kFail);  // nobody to send to

  mail->SetSubject(L"alert");
  mail->Recipients()->Add(L"a@example.com");
  mail->Send();
  EXPECT_TRUE(store.FindById(id)->sent);
  EXPECT_EQ(Folder(outlook::olFolderDrafts)->Count(), 0);
  EXPECT_EQ(Subjects(*Folder(outlook::olFolderSentMail)), L"alert");

  mail->Delete();
  EXPECT_EQ(Subjects(*Folder(outlook::olFolderDeletedItems)), L"alert");
  mail->Delete();  // from Deleted Items: gone for good
  EXPECT_EQ(Folder(outlook::olFolderDeletedItems)->Count(), 0);
  EXPECT_EQ(CaughtError([&] { app.GetNamespace(L"MAPI")->GetItemFromID(id); }).number(),
            kMapiNotFound);
}

TEST_F(OutlookApplicationTest, AttachmentsGoThroughTheFileSystem) {
  SimItemData data = MakeMail(L"files", Jan(5, 10));
  data.attachments.push_back({L"report.pdf", 1, "%PDF-1.4"});
  auto mail = WrapItem(store, store.AddToInbox(data));
  auto attachments = mail->Attachments();
  // The disk's own error passes through unchanged.
  EXPECT_THROW(attachments->Item(1)->SaveAsFile(L"C:\\out\\report.pdf"), Error);
  files.PutDirectory(L"C:\\out");
  attachments->Item(1)->SaveAsFile(L"C:\\out\\report.pdf");
  EXPECT_EQ(files.Get(L"C:\\out\\report.pdf"), "%PDF-1.4");

  files.Put(L"C:\\in\\notes.txt", "hello");
  auto added = attachments->Add(L"C:\\in\\notes.txt");
  EXPECT_EQ(added->FileName(), L"notes.txt");
  EXPECT_EQ(added->Size(), 5);
  EXPECT_EQ(attachments->Count(), 2);
  EXPECT_EQ(mail->Size(), 2 * 5 + 8 + 5);
}

TEST_F(OutlookApplicationTest, WindowsAreNothingWhenNoneIsOpen) {
  EXPECT_NE(app.ActiveExplorer(), nullptr);
  EXPECT_EQ(app.ActiveInspector(), nullptr);
  auto mail = WrapItem(store, store.AddToInbox(MakeMail(L"open me", Jan(5, 10))));
  mail->Display();
  EXPECT_EQ(app.ActiveInspector()->CurrentItem()->Subject(), L"open me");

  store.explorers().front()->selection = {store.Inbox().items.front()};
  EXPECT_EQ(app.ActiveExplorer()->Selection()->Item(1)->Subject(), L"open me");
  store.CloseExplorer(store.ActiveExplorer());
  EXPECT_EQ(app.ActiveExplorer(), nullptr);
  EXPECT_EQ(app.Explorers()->Count(), 0);
}

}  // namespace
}  // namespace corvina::sim
