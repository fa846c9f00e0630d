#pragma once
// The save jobs behind the Save button: the attachments of the selected mails (main window) or
// of the open mail (mail window) into the folder just chosen from the folder menu.
#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// The jobs themselves, into the current save destination.
void GetSelectedItems(AddIn& addin);
void GetSelectedItemsInspector(AddIn& addin, outlook::Item& item);

// Above this many (decimal) megabytes the user is asked first; exactly 50.00 is not asked.
inline constexpr double kLargeSelectionMegabytes = 50.0;

// The megabyte figure as it is shown ("###,###.00" of bytes / 1,000,000) read back as a number,
// so 50.004 MB counts as 50.00 and is not "over 50".
double ShownMegabytes(double bytes);

// The question asked before a large job ("" count for the mail window's variant).
std::wstring LargeSelectionQuestion(const AddIn& addin, const std::wstring& count,
                                    const std::wstring& megabytes);

}  // namespace corvina
