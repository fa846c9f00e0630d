#include "platform/sim/outlook_members.h"

#include "platform/outlook.h"
#include "platform/sim/outlook_errors.h"

namespace corvina::sim {

namespace {

struct Gap {
  int32_t item_class;
  ItemMember member;
};

// A delivery report is a message from the system: no sender, no recipients, never sent, and its
// time is CreationTime only. A post lives in a folder and is never addressed or sent.
constexpr Gap kGaps[] = {
    {outlook::olReport, ItemMember::kSenderName},
    {outlook::olReport, ItemMember::kTo},
    {outlook::olReport, ItemMember::kReceivedTime},
    {outlook::olReport, ItemMember::kSentOn},
    {outlook::olReport, ItemMember::kRecipients},
    {outlook::olReport, ItemMember::kSend},
    {outlook::olPost, ItemMember::kTo},
    {outlook::olPost, ItemMember::kRecipients},
    {outlook::olPost, ItemMember::kSend},
};

}  // namespace

std::wstring ItemTypeName(int32_t item_class) {
  switch (item_class) {
    case outlook::olMail: return L"MailItem";
    case outlook::olReport: return L"ReportItem";
    case outlook::olMeetingRequest:
    case outlook::olMeetingCancellation: return L"MeetingItem";
    case outlook::olPost: return L"PostItem";
    default: return L"Item";
  }
}

bool ItemHasMember(int32_t item_class, ItemMember member) {
  for (const Gap& g : kGaps) {
    if (g.item_class == item_class && g.member == member) return false;
  }
  return true;
}

void RequireMember(const SimItemData& item, ItemMember member, const wchar_t* member_name) {
  if (!ItemHasMember(item.item_class, member)) {
    throw UnknownMemberError(ItemTypeName(item.item_class), member_name);
  }
}

}  // namespace corvina::sim
