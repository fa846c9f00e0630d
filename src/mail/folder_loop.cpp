#include "mail/folder_loop.h"

#include "base/text.h"

namespace corvina {
namespace {

Date ItemTime(outlook::Item& item) {
  return item.Class() == outlook::olMail ? item.ReceivedTime() : item.CreationTime();
}

}  // namespace

LoopParameters GetLoopParametersByFolder(outlook::Folder& folder) {
  LoopParameters p;
  auto items = folder.Items();
  const int32_t count = items->Count();
  if (count == 0) return p;
  const Date first = ItemTime(*items->Item(1));
  const Date last = ItemTime(*items->Item(count));
  if (first > last) {
    p = {1, count, 1};
  } else {
    p = {count, 1, -1};
  }
  return p;
}

void WalkNewMails(outlook::Folder& folder, const Config& config,
                  const std::function<bool(outlook::Item& mail, Date received)>& handle) {
  const LoopParameters loop = GetLoopParametersByFolder(folder);
  if (loop.end == 0) return;
  auto items = folder.Items();
  int32_t end = loop.end;
  for (int32_t i = loop.start; loop.step > 0 ? i <= end : i >= end; i += loop.step) {
    auto item = items->Item(i);
    if (item->Class() != outlook::olMail) continue;
    const Date received = item->ReceivedTime();
    if (IsOlderThanLastMonitor(received, config)) return;
    if (!handle(*item, received)) continue;
    // Walking upwards, the next mail has just moved into this position.
    if (loop.step > 0) {
      i -= loop.step;
      --end;
    }
  }
}

bool IsOlderThanLastMonitor(outlook::Item& mail, const Config& config) {
  return IsOlderThanLastMonitor(mail.ReceivedTime(), config);
}

bool IsOlderThanLastMonitor(Date received, const Config& config) {
  return FormatStamp(received) < config.LastMailMonitorTime;
}

}  // namespace corvina
