#pragma once
// Items.Sort: orders a collection by one property ("[ReceivedTime]", "[CreationTime]",
// "[SentOn]", "[Subject]", "[Size]", also "[MessageClass]" and "[UnRead]"; brackets optional,
// any case). The sort is stable in both directions: items with equal keys keep the order they
// had, which for a fresh collection is the folder's order. Text sorts without regard to case.
// An unknown property throws corvina::Error ("The property "X" is unknown.").
#include <string_view>
#include <vector>

#include "platform/sim/outlook_item_data.h"

namespace corvina::sim {

void SortItems(std::vector<SimItemPtr>& items, std::wstring_view property, bool descending);

}  // namespace corvina::sim
