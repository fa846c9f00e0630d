#pragma once
// What each toolbar control does when clicked. Features this build does not carry say so
// plainly instead of doing nothing.
#include <string>

#include "addin/addin.h"

namespace corvina {

// Runs the click (or, for the combo box, the change) of the control with this index, logging
// any error under "My_Button<index>_Click" / "My_Button7_Change" with `context`. `owner` is
// the mail window whose "VireoInspector" bar was clicked, or null for the main toolbar.
void RouteControlEvent(AddIn& addin, const std::wstring& context, int index,
                       const std::wstring& combo_text, outlook::Inspector* owner = nullptr);

void My_Menu1_Click(AddIn& addin, const std::wstring& context);

}  // namespace corvina
