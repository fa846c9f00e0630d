// The mail server between simulated Outlooks: who receives a sent mail, when, and what is
// reported as leaving the simulation.
#include "platform/sim/mail_server.h"

#include <gtest/gtest.h>

#include "platform/sim/memory_file_system.h"
#include "platform/sim/outlook_application.h"

namespace corvina::sim {
namespace {

// Three users on one server, each with an Outlook of their own.
struct Office {
  struct User {
    explicit User(Faults& faults) : files(faults), store(faults, files), app(store) {}
    MemoryFileSystem files;
    SimStore store;
    SimApplication app;
    int new_mail = 0;
    EventConnection listening;
  };
  Office() {
    const wchar_t* names[] = {L"anna", L"ben", L"cleo"};
    const wchar_t* addresses[] = {L"anna@example.com", L"Ben@Example.com", L"cleo@example.org"};
    for (int i = 0; i < 3; ++i) {
      users.push_back(std::make_unique<User>(faults));
      User& u = *users.back();
      u.listening = u.app.OnNewMail([&u] { ++u.new_mail; });
      server.Join(names[i], addresses[i], u.store);
    }
    server.on_delivery = [this](const MailServer::Delivery& d) { reports.push_back(d); };
  }
  // Anna sends a mail through the object model, as the add-in would.
  void AnnaSends(const std::wstring& to, const std::wstring& cc = L"", const std::wstring& bcc = L"",
                 const std::wstring& added = L"") {
    auto mail = users[0]->app.CreateItem(outlook::olMailItem);
    mail->SetSubject(L"Hello");
    mail->SetBody(L"Body");
    mail->SetTo(to);
    SimItemPtr data = users[0]->store.Folder(outlook::olFolderDrafts).items.back();
    data->cc = cc;
    data->bcc = bcc;
    if (!added.empty()) mail->Recipients()->Add(added);
    mail->Send();
  }
  std::vector<int> InboxSizes() const {
    std::vector<int> sizes;
    for (const auto& u : users)
      sizes.push_back(static_cast<int>(u->store.Folder(outlook::olFolderInbox).items.size()));
    return sizes;
  }

  Faults faults;
  Date now = FromCivil({2026, 11, 22, 9, 0, 0});
  MailServer server{[this] { return now; }};
  std::vector<std::unique_ptr<User>> users;
  std::vector<MailServer::Delivery> reports;
};

TEST(MailServer, DeliversToEveryAddressedUserAndReportsTheRest) {
  struct Case {
    std::wstring to, cc, bcc, added;
    std::vector<int> inboxes;  // anna, ben, cleo
    std::vector<std::wstring> outside;
  } cases[] = {
      {L"ben@example.com", L"", L"", L"", {0, 1, 0}, {}},
      {L"BEN@EXAMPLE.COM", L"", L"", L"", {0, 1, 0}, {}},  // addresses ignore case
      {L"Ben Miller <ben@example.com>; cleo@example.org", L"", L"", L"", {0, 1, 1}, {}},
      {L"x@elsewhere.net", L"cleo@example.org", L"", L"", {0, 0, 1}, {L"x@elsewhere.net"}},
      {L"ben@example.com", L"", L"cleo@example.org, X@Elsewhere.net", L"", {0, 1, 1}, {L"X@Elsewhere.net"}},
      {L"anna@example.com", L"", L"", L"", {1, 0, 0}, {}},  // to oneself
      {L"ben@example.com", L"ben@example.com", L"Ben <BEN@example.com>", L"", {0, 1, 0}, {}},
      {L"", L"", L"", L"cleo@example.org", {0, 0, 1}, {}},  // Recipients.Add
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.to + L" | " + c.cc + L" | " + c.bcc + L" | " + c.added);
    Office office;
    office.AnnaSends(c.to, c.cc, c.bcc, c.added);
    EXPECT_EQ(office.InboxSizes(), c.inboxes);
    for (size_t u = 0; u < 3; ++u) EXPECT_EQ(office.users[u]->new_mail, c.inboxes[u]);
    ASSERT_EQ(office.reports.size(), 1u);
    EXPECT_EQ(office.reports[0].outside, c.outside);
    EXPECT_EQ(office.users[0]->store.Folder(outlook::olFolderSentMail).items.size(), 1u);
  }
}

TEST(MailServer, ReadersGetTheMailAsWrittenAtTheServersTime) {
  Office office;
  office.AnnaSends(L"ben@example.com", L"", L"cleo@example.org");
  const SimItemData& got = *office.users[1]->store.Folder(outlook::olFolderInbox).items[0];
  EXPECT_EQ(got.subject, L"Hello");
  EXPECT_EQ(got.body, L"Body");
  EXPECT_EQ(got.sender_name, L"anna");
  EXPECT_EQ(got.sender_address, L"anna@example.com");
  EXPECT_EQ(got.received_time, office.now);
  EXPECT_TRUE(got.bcc.empty());  // nobody sees the blind copies
  EXPECT_TRUE(got.unread);
}

TEST(MailServer, HeldMailArrivesWhenReleasedWithTheTimeOfRelease) {
  Office office;
  office.server.set_holding(true);
  office.AnnaSends(L"ben@example.com; x@elsewhere.net");
  office.AnnaSends(L"cleo@example.org");
  EXPECT_EQ(office.InboxSizes(), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(office.reports[0].outside, (std::vector<std::wstring>{L"x@elsewhere.net"}));
  ASSERT_EQ(office.reports.size(), 2u);
  EXPECT_TRUE(office.reports[0].held);
  office.now = FromCivil({2026, 11, 23, 8, 0, 0});
  EXPECT_EQ(office.server.DeliverHeld(), 2u);
  EXPECT_EQ(office.InboxSizes(), (std::vector<int>{0, 1, 1}));
  EXPECT_EQ(office.users[1]->store.Folder(outlook::olFolderInbox).items[0]->received_time,
            office.now);
  ASSERT_EQ(office.reports.size(), 4u);
  EXPECT_FALSE(office.reports[2].held);
  EXPECT_TRUE(office.reports[2].released);
  EXPECT_FALSE(office.reports[0].released);
  EXPECT_TRUE(office.reports[2].outside.empty());  // told once, when it was sent
  EXPECT_EQ(office.server.DeliverHeld(), 0u);
}

TEST(MailServer, AddressesOfARecipientField) {
  EXPECT_EQ(MailServer::Addresses(L" a@x.org; Name <b@y.org> ,c@z.org;; "),
            (std::vector<std::wstring>{L"a@x.org", L"b@y.org", L"c@z.org"}));
  Office office;
  EXPECT_EQ(office.server.UserOf(L"Cleo <CLEO@example.org>"), L"cleo");
  EXPECT_EQ(office.server.UserOf(L"nobody@example.org"), L"");
  EXPECT_EQ(office.server.UserOf(L""), L"");
}

}  // namespace
}  // namespace corvina::sim
