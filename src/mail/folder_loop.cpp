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

bool IsOlderThanLastMonitor(outlook::Item& mail, const Config& config) {
  return IsOlderThanLastMonitor(mail.ReceivedTime(), config);
}

bool IsOlderThanLastMonitor(Date received, const Config& config) {
  return FormatStamp(received) < config.LastMailMonitorTime;
}

}  // namespace corvina
