#include "saving/auto_copy.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

Date Day(int day, int hour = 9) { return FromCivil({2026, 11, day, hour, 0, 0}); }

sim::SimItemData MailWith(Date received, std::vector<std::wstring> names) {
  auto mail = sim::MakeMail(L"m", received);
  for (auto& n : names) mail.attachments.push_back({n, 1, ToUtf8(n)});
  return mail;
}

class AutoCopyTest : public ::testing::Test {
 protected:
  void SetUpTable(const wchar_t* names, const wchar_t* dests, const wchar_t* checked) {
    world.Store(L"Configuration", L"ExtName ", names);
    world.Store(L"Configuration", L"ExtDest ", dests);
    world.Store(L"Configuration", L"ExtChecked ", checked);
  }
  SimWorld world;
};

TEST_F(AutoCopyTest, OnlyACheckedFlagOfExactlyOneMatchesAndTheFirstRowWins) {
  SetUpTable(L"PDF;doc;zip;txt;pdf;gif", L"C:\\P;C:\\D;C:\\Z;C:\\T;C:\\P2;C:\\G", L"1;0;;True;1");
  auto addin = world.StartOutlook();
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"pdf", L"C:\\P"}, {L"Pdf", L"C:\\P"}, {L"doc", L"-"}, {L"zip", L"-"},
      {L"txt", L"-"},     {L"gif", L"-"},     {L"exe", L"-"}};
  for (const auto& [type, dest] : cases) {
    std::wstring found = L"-";
    FindFileTypeDest(addin->addin(), type, found);
    EXPECT_EQ(found, dest) << ToUtf8(type);
  }
}

// Loading has just moved LastMailMonitorTime on to "now", so the sweep takes the mails of the
// current minute (and any stamped later) and stops at the first older one.
TEST_F(AutoCopyTest, StartupSweepCopiesBackToTheLastMonitorTime) {
  SetUpTable(L"pdf;.pdf;txt", L"C:\\Bare;C:\\Dotted;C:\\Texts", L"1;1;1");
  for (const wchar_t* f : {L"C:\\Bare", L"C:\\Dotted", L"C:\\Texts"}) world.files.PutDirectory(f);
  world.files.Put(L"C:\\Bare\\a.pdf", "old content");
  const Date now = FromCivil({2026, 11, 22, 9, 0, 0});
  const Date same_minute = FromCivil({2026, 11, 22, 9, 0, 40});
  world.store.AddToInbox(MailWith(Day(19), {L"old.pdf"}));           // older: never reached
  world.store.AddToInbox(MailWith(same_minute, {L"after-stop.pdf"}));  // new, but after the stop
  world.store.AddToInbox(MailWith(Day(10), {L"stop.pdf"}));            // the first older one
  world.store.AddToInbox(MailWith(same_minute, {L"same.pdf", L"archive", L"r.final.pdf"}));
  world.store.AddToInbox(sim::MakeReport(same_minute));
  world.store.AddToInbox(MailWith(now, {L"a.PDF", L"notes.txt", L"x.doc"}));
  world.clock.Set(now);
  auto addin = world.StartOutlook();
  EXPECT_EQ(addin->addin().config.LastMailMonitorTime, L"202611220900");
  EXPECT_EQ(world.files.Get(L"C:\\Bare\\a.PDF").value_or("-"), "a.PDF");  // overwritten
  EXPECT_TRUE(world.files.Get(L"C:\\Texts\\notes.txt"));
  EXPECT_TRUE(world.files.Get(L"C:\\Bare\\same.pdf"));
  for (const wchar_t* absent : {L"C:\\Bare\\old.pdf", L"C:\\Bare\\after-stop.pdf",
                                L"C:\\Bare\\stop.pdf", L"C:\\Bare\\r.final.pdf",
                                L"C:\\Dotted\\a.PDF"})
    EXPECT_FALSE(world.files.Get(absent)) << ToUtf8(absent);
  EXPECT_TRUE(world.LogLinesWith(L"LoopForAotuCopyFileTypesAtEntry").empty());
}

TEST_F(AutoCopyTest, MissingFolderEndsTheSweepWithOneLogLine) {
  SetUpTable(L"pdf", L"C:\\Nowhere", L"1");
  world.clock.Set(Day(22));
  world.store.AddToInbox(MailWith(Day(22), {L"a.pdf"}));
  world.store.AddToInbox(MailWith(Day(22), {L"b.pdf", L"c.pdf"}));
  auto addin = world.StartOutlook();
  EXPECT_EQ(world.LogLinesWith(L"Error Source=DesVireoLoopForAotuCopyFileTypesAtEntry\\").size(), 1u);
  EXPECT_FALSE(world.files.DirectoryExists(L"C:\\Nowhere"));
}

TEST_F(AutoCopyTest, NewMailUsesTheDottedKeyAndAsksBeforeReplacing) {
  SetUpTable(L"pdf;.pdf;.jpg", L"C:\\Bare;C:\\Dotted;C:\\Pics", L"1;1;1");
  world.Store(L"Configuration", L"AutoReplace", L"0");
  for (const wchar_t* f : {L"C:\\Bare", L"C:\\Dotted", L"C:\\Pics"}) world.files.PutDirectory(f);
  world.files.Put(L"C:\\Pics\\photo.jpg", "keep me");
  auto addin = world.StartOutlook();
  world.ui.QueueMsgBoxAnswer(vbNo);
  world.store.DeliverNewMail(MailWith(Day(22, 10), {L"photo.jpg", L"x.pdf", L"sub\\evil.pdf"}));
  EXPECT_EQ(world.files.Get(L"C:\\Pics\\photo.jpg").value_or("-"), "keep me");
  EXPECT_TRUE(world.files.Get(L"C:\\Dotted\\x.pdf"));
  EXPECT_FALSE(world.files.Get(L"C:\\Bare\\x.pdf"));
  EXPECT_FALSE(world.files.DirectoryExists(L"C:\\Dotted\\sub"));
  ASSERT_FALSE(world.Boxes().empty());
  EXPECT_EQ(world.Boxes().back(),
            L"The file C:\\Pics\\photo.jpg Already exsists.\r\nDo you want to replace it ?");
  EXPECT_FALSE(world.LogLinesWith(L"Error Source=DesVireooApplication_NewMail\\Vireo; Error "
                                  L"Description=Attachment name refused").empty());

  world.ui.QueueMsgBoxAnswer(vbYes);
  world.store.DeliverNewMail(MailWith(Day(22, 11), {L"photo.jpg"}));
  EXPECT_EQ(world.files.Get(L"C:\\Pics\\photo.jpg").value_or("-"), "photo.jpg");
}

}  // namespace
}  // namespace corvina
