// The newest-item rule, the folder walk parameters and the new-mail handler.
#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "mail/folder_loop.h"
#include "host/new_mail.h"
#include "host/newest_item.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

Date At(int day, int hour, int minute, int second = 0) {
  return FromCivil({2026, 11, day, hour, minute, second});
}

outlook::Ref<outlook::Items> InboxItems(SimWorld& world) {
  return world.application->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox)->Items();
}

std::wstring Id(const outlook::Ref<outlook::Item>& item) { return item ? item->EntryID() : L"-"; }

TEST(NewestItemTest, MailsCountByReceivedTimeReportsByCreationTimeOthersNot) {
  SimWorld world;
  auto& s = world.store;
  auto mail = s.AddToInbox(sim::MakeMail(L"old", At(10, 9, 0)));
  auto newer = s.AddToInbox(sim::MakeMail(L"new", At(12, 9, 0)));
  s.AddToInbox(sim::MakeMeetingRequest(L"meeting", At(20, 9, 0)));  // skipped kind
  auto report = sim::MakeReport(At(11, 0, 0));
  report.received_time = At(25, 0, 0);  // a report counts by its creation time only
  s.AddToInbox(report);
  EXPECT_EQ(Id(ReportItem(*InboxItems(world), world.clock)), newer->entry_id);

  auto late_report = s.AddToInbox(sim::MakeReport(At(13, 0, 0)));
  EXPECT_EQ(Id(ReportItem(*InboxItems(world), world.clock)), late_report->entry_id);
  (void)mail;
}

TEST(NewestItemTest, OfEqualTimesTheFirstInFolderOrderWins) {
  SimWorld world;
  auto& s = world.store;
  s.AddToInbox(sim::MakeMail(L"a", At(10, 9, 0)));
  auto first_equal = s.AddToInbox(sim::MakeReport(At(12, 9, 0, 30)));
  s.AddToInbox(sim::MakeMail(L"b", At(12, 9, 0, 30)));
  s.AddToInbox(sim::MakeMail(L"c", At(12, 9, 0, 30)));
  EXPECT_EQ(Id(ReportItem(*InboxItems(world), world.clock)), first_equal->entry_id);
}

TEST(NewestItemTest, EmptyOrMaillessFolderHasNoNewestItem) {
  SimWorld world;
  EXPECT_FALSE(ReportItem(*InboxItems(world), world.clock));
  world.store.AddToInbox(sim::MakePost(L"post", At(10, 9, 0)));
  EXPECT_FALSE(ReportItem(*InboxItems(world), world.clock));
}

// The fast path must name exactly the item the plain walk names, on mailboxes full of
// reports, other kinds and repeated times.
TEST(NewestItemTest, AgreesWithTheWalkOnRandomMailboxes) {
  std::mt19937 random(20261122);
  for (int round = 0; round < 200; ++round) {
    SimWorld world;
    const int count = 1 + static_cast<int>(random() % 30);
    for (int i = 0; i < count; ++i) {
      // Few distinct times, so ties are common.
      const Date t = At(10 + static_cast<int>(random() % 3), 9, static_cast<int>(random() % 2));
      const Date other = At(10 + static_cast<int>(random() % 3), 9, 0);
      switch (random() % 4) {
        case 0:
        case 1: {
          auto mail = sim::MakeMail(L"m", t);
          mail.creation_time = other;
          world.store.AddToInbox(mail);
          break;
        }
        case 2: {
          auto report = sim::MakeReport(t);
          report.received_time = other;
          world.store.AddToInbox(report);
          break;
        }
        default:
          world.store.AddToInbox(sim::MakeMeetingRequest(L"r", t));
      }
    }
    SCOPED_TRACE(round);
    EXPECT_EQ(Id(ReportItem(*InboxItems(world), world.clock)),
              Id(ReportItemByWalk(*InboxItems(world))));
  }
}

TEST(FolderLoopTest, ParametersWalkFromNewestToOldest) {
  struct Case {
    std::vector<Date> times;  // folder order; mails
    bool first_is_report;
    LoopParameters expected;
  };
  const Case cases[] = {
      {{}, false, {0, 0, 0}},
      {{At(12, 0, 0), At(11, 0, 0), At(10, 0, 0)}, false, {1, 3, 1}},
      {{At(10, 0, 0), At(11, 0, 0), At(12, 0, 0)}, false, {3, 1, -1}},
      {{At(10, 0, 0), At(11, 0, 0), At(10, 0, 0)}, false, {3, 1, -1}},  // equal ends
      {{At(10, 0, 0)}, false, {1, 1, -1}},
      {{At(12, 0, 0), At(11, 0, 0)}, true, {1, 2, 1}},  // a report counts by creation time
  };
  for (const Case& c : cases) {
    SimWorld world;
    for (size_t i = 0; i < c.times.size(); ++i) {
      if (i == 0 && c.first_is_report) {
        auto report = sim::MakeReport(c.times[i]);
        report.received_time = At(1, 0, 0);
        world.store.AddToInbox(report);
      } else {
        world.store.AddToInbox(sim::MakeMail(L"m", c.times[i]));
      }
    }
    auto inbox = world.application->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox);
    const LoopParameters p = GetLoopParametersByFolder(*inbox);
    EXPECT_EQ(p.start, c.expected.start);
    EXPECT_EQ(p.end, c.expected.end);
    EXPECT_EQ(p.step, c.expected.step);
  }
}

TEST(FolderLoopTest, MailsOfTheSameMinuteAreNotOlder) {
  SimWorld world;
  Config config;
  config.LastMailMonitorTime = L"202611120930";
  const std::pair<Date, bool> cases[] = {
      {At(12, 9, 29, 59), true}, {At(12, 9, 30, 0), false}, {At(12, 9, 30, 59), false},
      {At(13, 0, 0), false}};
  for (const auto& [time, older] : cases) {
    auto mail = world.store.AddToInbox(sim::MakeMail(L"m", time));
    auto item = world.application->GetNamespace(L"MAPI")->GetItemFromID(mail->entry_id);
    EXPECT_EQ(IsOlderThanLastMonitor(*item, config), older) << FormatStamp(time).c_str();
  }
}

TEST(NewMailTest, DefaultDestinationNamesOneOfTheFirstThreeFolders) {
  Config config(L"C:\\A");
  config.glbFolder = {L"C:\\F0", L"C:\\F1", L"C:\\F2", L"C:\\F3"};
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"0", L"C:\\F0"}, {L"1", L"C:\\F1"}, {L"2", L"C:\\F2"}, {L"3", L""}, {L"", L""},
      {L" 1", L""}, {L"x", L""}};
  for (const auto& [value, expected] : cases) {
    config.DefaultFolder = value;
    EXPECT_EQ(DefaultDestinationFor(config), expected) << ToUtf8(value);
  }
}

// The tray monitor is not part of this build: its stage must leave a mail exactly as it
// arrived.
TEST(NewMailTest, TrayStageLeavesAMailAsItArrived) {
  SimWorld world;
  world.Store(L"Configuration", L"TrayShow", L"1");
  world.Store(L"Configuration", L"TrayMonitor", L"1");
  world.Store(L"Chat", L"ChatDeleteMsg", L"1");
  auto addin = world.StartOutlook();
  const size_t events = world.ui.events().size();
  auto mail = world.store.DeliverNewMail(sim::MakeMail(L"Photos from the trip", At(22, 9, 0)));
  EXPECT_EQ(mail->folder, outlook::olFolderInbox);
  EXPECT_TRUE(mail->unread);
  EXPECT_EQ(world.beeper.beeps(), 0u);
  EXPECT_EQ(world.ui.events().size(), events);
}

TEST(NewMailTest, EventReadsOnlyTheNewestItemWhateverTheInboxSize) {
  // Object-model calls of one event must not grow with the Inbox: Outlook disables add-ins
  // that make too many.
  uint64_t calls[2] = {};
  for (int size : {10, 2000}) {
    SimWorld world;
    for (int i = 0; i < size; ++i)
      world.store.AddToInbox(sim::MakeMail(L"m", AddSeconds(At(1, 0, 0), i * 60.0)));
    auto addin = world.StartOutlook();
    const uint64_t before = world.faults.Calls(sim::Service::kOutlook);
    world.store.DeliverNewMail(sim::MakeMail(L"Chat message from: a@b", At(22, 9, 0)));
    calls[size == 10 ? 0 : 1] = world.faults.Calls(sim::Service::kOutlook) - before;
    EXPECT_EQ(addin->addin().saving.DefaultDestination,
              std::wstring(testing::kAddinFolder) + L"\\My Stuff");
  }
  EXPECT_EQ(calls[0], calls[1]);
  EXPECT_LT(calls[1], 40u);
}

}  // namespace
}  // namespace corvina
