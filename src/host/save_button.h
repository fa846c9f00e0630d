#pragma once
// The Save button's click, on either bar: the folder menu, then the save job behind frmSaving
// with the button showing its busy face.
#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// A click on a mail window's bar saves that window's mail (`owner`); a click on the main
// toolbar (no owner) saves the selected mails.
void SaveButtonClick(AddIn& addin, outlook::Inspector* owner = nullptr);

}  // namespace corvina
