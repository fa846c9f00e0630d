#include "settings/log.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "settings/guard.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

TEST(LogTest, ErrorLineLayout) {
  struct Case {
    const wchar_t* context;
    const wchar_t* procedure;
    Error error;
    const wchar_t* line;
  };
  const Case cases[] = {
      {L"DesVireo", L"IDTExtensibility2_OnConnection", Error(440, L"Outlook", L"Boom"),
       L"Error Source=DesVireoIDTExtensibility2_OnConnection\\Outlook; Error Description=Boom"},
      {L"Nothing", L"LoadConfig", Error(13, L"Vireo", L"Type mismatch"),
       L"Error Source=NothingLoadConfig\\Vireo; Error Description=Type mismatch"},
      {L"frmMsgBox", L"cmdYes_Click", Error(5, L"", L""),
       L"Error Source=frmMsgBoxcmdYes_Click\\; Error Description="},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Log::ErrorLine(c.context, c.procedure, c.error), c.line);
}

TEST(LogTest, EntriesBeforeStartAreKeptAndWrittenFirst) {
  testing::SimWorld world;
  Log log(world.files, world.clock);
  const std::wstring path = std::wstring(testing::kAddinFolder) + L"\\Vireo.log";
  log.LogEvent(L"early", kLogInformation);
  log.LogEvent(L"line 7 skipped", kLogWarning);
  EXPECT_FALSE(world.files.FileExists(path));
  log.StartLog(path);
  log.LogError(L"Nothing", L"Proc", Error(1, L"Src", L"Desc"));
  auto lines = world.LogLines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], L"11/22/2026 9:30:00 AM | Information | early");
  EXPECT_EQ(lines[1], L"11/22/2026 9:30:00 AM | Warning | line 7 skipped");
  EXPECT_EQ(lines[2],
            L"11/22/2026 9:30:00 AM | Error | Error Source=NothingProc\\Src; Error Description=Desc");
}

TEST(LogTest, LineThatCannotBeWrittenIsRetriedWithTheNext) {
  testing::SimWorld world;
  Log log(world.files, world.clock);
  log.StartLog(std::wstring(testing::kAddinFolder) + L"\\Vireo.log");
  world.faults.FailNthCall(sim::Service::kFiles, 1, Error(61, L"Files", L"Disk full"));
  log.LogEvent(L"first", kLogInformation);
  log.LogEvent(L"second", kLogInformation);
  auto lines = world.LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(ContainsText(lines[0], L"first"));
  EXPECT_TRUE(ContainsText(lines[1], L"second"));
}

TEST(LogTest, GuardLogsAndReturnsTheNeutralResult) {
  testing::SimWorld world;
  Log log(world.files, world.clock);
  log.StartLog(std::wstring(testing::kAddinFolder) + L"\\Vireo.log");
  int result = Guard(log, L"DesVireo", L"Answer", -1, []() -> int { Raise(91, L"Not set"); });
  EXPECT_EQ(result, -1);
  bool unknown = Guard(log, L"DesVireo", L"Std", true, []() -> bool {
    throw std::runtime_error("bad");
  });
  EXPECT_TRUE(unknown);
  auto lines = world.LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(ContainsText(lines[0], L"Error Source=DesVireoAnswer\\Vireo; Error Description=Not set"));
  EXPECT_TRUE(ContainsText(lines[1], L"Error Source=DesVireoStd\\Vireo; Error Description=Internal error: bad"));
}

}  // namespace
}  // namespace corvina
