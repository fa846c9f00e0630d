#pragma once
// Which object-model members an item kind lacks. In Outlook a late-bound call resolves the
// member by name on the item's actual type (MailItem, ReportItem, ...); calling one the type
// does not have fails with DISP_E_UNKNOWNNAME. The table lists only the gaps the add-in can
// meet in mail folders; every member not listed exists on every kind.
#include <cstdint>
#include <string>

#include "platform/sim/outlook_item_data.h"

namespace corvina::sim {

enum class ItemMember { kSenderName, kTo, kReceivedTime, kSentOn, kRecipients, kSend };

// "MailItem", "ReportItem", "MeetingItem", "PostItem"; "Item" for other classes.
std::wstring ItemTypeName(int32_t item_class);
bool ItemHasMember(int32_t item_class, ItemMember member);
// Throws the unknown-name error (naming `member_name`) when the item's kind lacks the member.
void RequireMember(const SimItemData& item, ItemMember member, const wchar_t* member_name);

}  // namespace corvina::sim
