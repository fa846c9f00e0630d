#include "host/newest_item.h"

#include <optional>

#include "base/text.h"

namespace corvina {
namespace {

constexpr wchar_t kMessageClass[] = L"\"http://schemas.microsoft.com/mapi/proptag/0x001A001F\"";

// The time the rule looks at, or nothing for an item kind the rule skips.
std::optional<Date> RuleTime(outlook::Item& item) {
  const int32_t cls = item.Class();
  if (cls == outlook::olMail) return item.ReceivedTime();
  if (cls == outlook::olReport) return item.CreationTime();
  return std::nullopt;
}

// The newest item of one kind: restrict to its message classes, sort on its time, and take the
// first item of the wanted class (normally the very first).
outlook::Ref<outlook::Item> NewestOfKind(outlook::Items& items, const wchar_t* class_prefix,
                                            const wchar_t* sort_property, int32_t wanted) {
  auto kind = items.Restrict(std::wstring(L"@SQL=") + kMessageClass + L" LIKE '" + class_prefix +
                             L"%'");
  kind->Sort(sort_property, true);
  for (auto item = kind->GetFirst(); item; item = kind->GetNext())
    if (item->Class() == wanted) return item;
  return nullptr;
}

std::wstring DaslMinute(Date utc) {
  const CivilTime t = ToCivil(utc);
  auto two = [](int v) { return (v < 10 ? L"0" : L"") + std::to_wstring(v); };
  return std::to_wstring(t.year) + L"-" + two(t.month) + L"-" + two(t.day) + L" " +
         two(t.hour) + L":" + two(t.minute);
}

}  // namespace

outlook::Ref<outlook::Item> ReportItemByWalk(outlook::Items& items) {
  outlook::Ref<outlook::Item> newest;
  Date newest_time;
  const int32_t count = items.Count();
  for (int32_t i = 1; i <= count; ++i) {
    auto item = items.Item(i);
    auto time = RuleTime(*item);
    if (time && (!newest || *time > newest_time)) {
      newest = item;
      newest_time = *time;
    }
  }
  return newest;
}

outlook::Ref<outlook::Item> ReportItem(outlook::Items& items, Clock& clock) {
  auto mail = NewestOfKind(items, L"IPM.Note", L"[ReceivedTime]", outlook::olMail);
  auto report = NewestOfKind(items, L"REPORT.", L"[CreationTime]", outlook::olReport);
  if (!mail && !report) return nullptr;
  std::optional<Date> newest;
  if (mail) newest = mail->ReceivedTime();
  if (report) {
    const Date t = report->CreationTime();
    if (!newest || t > *newest) newest = t;
  }
  // Several items may share the newest time (of either kind). Only the folder's own order can
  // break that tie, so walk, in that order, the few items not older than the newest minute.
  // The filter compares by the minute in UTC, hence a minute of margin.
  const std::wstring since = DaslMinute(AddSeconds(clock.LocalToUtc(*newest), -60));
  auto recent = items.Restrict(L"@SQL=\"urn:schemas:httpmail:datereceived\" >= '" + since +
                               L"' OR \"DAV:creationdate\" >= '" + since + L"'");
  outlook::Ref<outlook::Item> best;
  Date best_time;
  for (auto item = recent->GetFirst(); item; item = recent->GetNext()) {
    auto time = RuleTime(*item);
    if (time && (!best || *time > best_time)) {
      best = item;
      best_time = *time;
    }
  }
  return best;
}

}  // namespace corvina
