#include "platform/sim/outlook_fixture.h"

namespace corvina::sim {
namespace {

class OutlookItemsTest : public OutlookTest {
 protected:
  // Folder order a b c d r; a and c share a time, b and the report r another.
  OutlookItemsTest() {
    const std::pair<const wchar_t*, Date> mails[] = {
        {L"a", Jan(5, 10)}, {L"b", Jan(5, 9)}, {L"c", Jan(5, 10)}, {L"d", Jan(5, 8)}};
    for (const auto& [subject, when] : mails) store.AddToInbox(MakeMail(subject, when));
    SimItemData report = MakeReport(Jan(5, 9));
    report.subject = L"r";
    report.size = 5;
    store.AddToInbox(report);
  }
};

TEST_F(OutlookItemsTest, SortIsStableInOneCountedCall) {
  const struct {
    const wchar_t* property;
    bool descending;
    const wchar_t* expected;
  } cases[] = {
      {L"[ReceivedTime]", false, L"d b r a c"},
      {L"[ReceivedTime]", true, L"a c b r d"},
      {L"[CreationTime]", false, L"d b r a c"},
      {L"[Subject]", true, L"r d c b a"},
      {L"[Size]", false, L"a b c d r"},  // computed sizes 2 < report's 5
      {L"[UnRead]", false, L"a b c d r"},
  };
  for (const auto& c : cases) {
    auto items = Inbox();
    const uint64_t before = faults.Calls(Service::kOutlook);
    items->Sort(c.property, c.descending);
    EXPECT_EQ(faults.Calls(Service::kOutlook), before + 1);
    EXPECT_EQ(Subjects(*items), c.expected) << ToUtf8(c.property);
  }
  EXPECT_EQ(CaughtError([&] { Inbox()->Sort(L"[Colour]", false); }).number(), kDispException);
}

TEST_F(OutlookItemsTest, ViewsFollowTheSortedOrder) {
  auto items = Inbox();
  items->Sort(L"[ReceivedTime]", true);
  auto recent = items->Restrict(L"[ReceivedTime] >= '2024-01-05 09:00'");
  EXPECT_EQ(Subjects(*recent), L"a c b r");
  EXPECT_EQ(Subjects(*items), L"a c b r d");  // Restrict leaves its source alone

  EXPECT_EQ(recent->GetLast()->Subject(), L"r");
  EXPECT_EQ(recent->GetNext(), nullptr);
  EXPECT_EQ(recent->GetFirst()->Subject(), L"a");
  EXPECT_EQ(recent->GetNext()->Subject(), L"c");

  EXPECT_EQ(items->Find(L"[ReceivedTime] = '2024-01-05 10:00'")->Subject(), L"a");
  EXPECT_EQ(items->FindNext()->Subject(), L"c");
  EXPECT_EQ(items->FindNext(), nullptr);
  EXPECT_EQ(items->Find(L"[Subject] = 'zzz'"), nullptr);
  EXPECT_EQ(Inbox()->FindNext(), nullptr);
}

TEST_F(OutlookItemsTest, ItemOutOfRangeFailsLikeOutlook) {
  auto items = Inbox();
  for (int32_t index : {0, 6, -1}) {
    Error e = CaughtError([&] { items->Item(index); });
    EXPECT_EQ(e.number(), -2147352565);
    EXPECT_EQ(e.description(), L"Array index out of bounds.");
  }
  auto none = items->Restrict(L"[Subject] = 'zzz'");
  EXPECT_EQ(none->Count(), 0);
  EXPECT_EQ(none->GetFirst(), nullptr);
  EXPECT_EQ(none->GetLast(), nullptr);
}

TEST_F(OutlookItemsTest, FolderCollectionIsLiveAndViewsAreSnapshots) {
  auto live = Inbox();
  auto sorted = Inbox();
  sorted->Sort(L"[Subject]", false);
  auto first = live->Item(1);
  first->Delete();
  store.DeliverNewMail(MakeMail(L"e", Jan(6, 1)));

  EXPECT_EQ(Subjects(*live), L"b c d r e");
  EXPECT_EQ(Subjects(*sorted), L"a b c d r");  // the deleted item stays visible in the view
  EXPECT_EQ(Subjects(*Folder(outlook::olFolderDeletedItems)), L"a");
}

}  // namespace
}  // namespace corvina::sim
