#include "platform/sim/outlook_item_data.h"

#include <limits>
#include <utility>

#include "platform/outlook.h"

namespace corvina::sim {

int32_t EffectiveSize(const SimItemData& item) {
  if (item.size) return *item.size;
  uint64_t total = 2 * (item.subject.size() + item.body.size());
  for (const auto& a : item.attachments) total += a.bytes.size();
  return static_cast<int32_t>(std::min<uint64_t>(total, std::numeric_limits<int32_t>::max()));
}

namespace {

SimItemData Make(int32_t item_class, std::wstring message_class, std::wstring subject, Date when) {
  SimItemData d;
  d.item_class = item_class;
  d.message_class = std::move(message_class);
  d.subject = std::move(subject);
  d.received_time = d.creation_time = d.sent_on = when;
  return d;
}

}  // namespace

SimItemData MakeMail(std::wstring subject, Date received) {
  return Make(outlook::olMail, L"IPM.Note", std::move(subject), received);
}

SimItemData MakeReport(Date created) {
  return Make(outlook::olReport, L"REPORT.IPM.Note.NDR", L"Undeliverable: ", created);
}

SimItemData MakeMeetingRequest(std::wstring subject, Date received) {
  return Make(outlook::olMeetingRequest, L"IPM.Schedule.Meeting.Request", std::move(subject),
              received);
}

SimItemData MakePost(std::wstring subject, Date created) {
  return Make(outlook::olPost, L"IPM.Post", std::move(subject), created);
}

}  // namespace corvina::sim
