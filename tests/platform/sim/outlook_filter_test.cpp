#include "platform/sim/outlook_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "platform/sim/outlook_errors.h"

namespace corvina::sim {
namespace {

Date At(int day, int hour, int minute = 0, int second = 0) {
  return FromCivil({2024, 1, day, hour, minute, second});
}

// A: unread mail, B: read reply, C: a read delivery report, D: an unread meeting request.
std::vector<SimItemData> Items() {
  SimItemData a = MakeMail(L"Hello world", At(5, 10));
  a.size = 100;
  SimItemData b = MakeMail(L"Re: hello", At(5, 10, 30, 30));
  b.size = 2000;
  b.unread = false;
  SimItemData c = MakeReport(At(6, 8));
  c.unread = false;
  SimItemData d = MakeMeetingRequest(L"Planning", At(4, 9));
  return {a, b, c, d};
}

std::string Matching(const std::wstring& filter) {
  SimFilter f(filter);
  std::string out;
  auto items = Items();
  for (size_t i = 0; i < items.size(); ++i) {
    if (f.Matches(items[i])) out += static_cast<char>('A' + i);
  }
  return out;
}

TEST(OutlookFilter, MatchesJetAndDaslConditions) {
  const struct {
    std::wstring filter;
    std::string expected;
  } cases[] = {
      {L"[Subject] = 'hello WORLD'", "A"},
      {L"[Subject] <> 'Hello world'", "BCD"},
      {L"[ReceivedTime] >= '2024-01-05 10:00'", "ABC"},  // the report's delivery time counts
      {L"[ReceivedTime] > '2024-01-05 10:30'", "BC"},    // seconds are not dropped
      {L"[ReceivedTime] <= '2024-01-05 10:30:30'", "ABD"},
      {L"[ReceivedTime] < '2024-01-05'", "D"},
      {L"[UnRead] = True", "AD"},
      {L"[Size] > 1000", "B"},
      {L"[MessageClass] = 'IPM.Note' OR [MessageClass] = 'IPM.Post'", "AB"},
      {L"[UnRead] = true and not ([Subject] = 'Planning')", "A"},
      {L"NOT [UnRead] = True OR [Size] = 100", "ABC"},  // NOT binds tighter than OR
      {L"[Subject] = 'Re: hello' OR [Subject] = 'Planning' AND [UnRead] = False", "B"},
      {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE 're:%'", "B"},
      {L"@SQL=\"urn:schemas:httpmail:subject\" like '%HELLO%'", "AB"},
      {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE 'Hello'", ""},
      {L"@SQL=\"http://schemas.microsoft.com/mapi/proptag/0x001A001F\" LIKE 'REPORT.%'", "C"},
      {L"@SQL=\"urn:schemas:httpmail:datereceived\" >= '2024-01-05 10:30:30' AND "
       L"\"urn:schemas:httpmail:read\" = 1",
       "BC"},
      {L"@SQL=(\"DAV:creationdate\" < '2024-01-05 00:00' OR "
       L"\"urn:schemas:httpmail:subject\" = 'Hello world')",
       "AD"},
  };
  for (const auto& c : cases) EXPECT_EQ(Matching(c.filter), c.expected) << ToUtf8(c.filter);
}

TEST(OutlookFilter, MalformedFilterThrowsOutlooksMessage) {
  const struct {
    std::wstring filter;
    std::wstring description;
  } cases[] = {
      {L"[Subject] = 'abc", L"Cannot parse condition. Error at \"'abc\"."},
      {L"[Subject] == 'x'", L"Cannot parse condition. Error at \"= 'x'\"."},
      {L"[Subject] LIKE 'x%'", L"Cannot parse condition. Error at \"LIKE 'x%'\"."},
      {L"([Subject] = 'x'", L"Cannot parse condition. Error at \"\"."},
      {L"[Subject] = 'x' AND", L"Cannot parse condition. Error at \"\"."},
      {L"[Subject] = 'x' garbage", L"Cannot parse condition. Error at \"garbage\"."},
      {L"", L"Cannot parse condition. Error at \"\"."},
      {L"[ReceivedTime] > '2024-02-30 10:00'",
       L"Cannot parse condition. Error at \"'2024-02-30 10:00'\"."},
      {L"[Size] > big", L"Cannot parse condition. Error at \"big\"."},
      {L"@SQL=\"urn:schemas:httpmail:date\" LIKE '2024%'",
       L"Cannot parse condition. Error at \"LIKE '2024%'\"."},
      {L"@SQL=[Subject] = 'x'", L"Cannot parse condition. Error at \"[Subject] = 'x'\"."},
      {L"[Nope] = 'x'", L"The property \"Nope\" is unknown."},
      {std::wstring(5000, L'('), L""},  // refused, not a stack overflow
  };
  for (const auto& c : cases) {
    try {
      SimFilter f(c.filter);
      ADD_FAILURE() << "accepted: " << ToUtf8(c.filter);
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), kDispException);
      if (!c.description.empty()) {
        EXPECT_EQ(e.description(), c.description);
      }
    }
  }
}

}  // namespace
}  // namespace corvina::sim
