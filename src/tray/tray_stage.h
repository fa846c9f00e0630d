#pragma once
#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// The tray stage of the new-mail handler: lists the mail's attachments in the tray menu.
// Not part of this build yet; the stage is named so the handler's order is already fixed.
void AddNewMailToTray(AddIn& addin, outlook::Item& mail);

}  // namespace corvina
