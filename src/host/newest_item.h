#pragma once
// ReportItem: the newest item of a folder, where a mail counts by its received time, a
// delivery report by its creation time and other kinds not at all. Of several items with the
// newest time, the one first in the folder's order wins.
#include <memory>

#include "platform/clock.h"
#include "platform/outlook.h"

namespace corvina {

// Answers through Outlook's own views (Restrict, Sort, GetFirst) so the number of object-model
// calls does not grow with the folder: Outlook disables an add-in that makes too many.
outlook::Ref<outlook::Item> ReportItem(outlook::Items& items, Clock& clock);

// The same rule by walking every item (two calls per item): the reference the fast path is
// checked against; never used inside Outlook.
outlook::Ref<outlook::Item> ReportItemByWalk(outlook::Items& items);

}  // namespace corvina
