#pragma once
// Copying incoming attachments to folders by file type: the catch-up sweep at start-up and the
// copy stage of the new-mail handler.
#include "host/addin.h"
#include "platform/outlook.h"

namespace corvina {

// Not part of this build yet: both routes are named stages that copy nothing until the
// file-type copy feature lands.
void LoopForAotuCopyFileTypesAtEntry(AddIn& addin);
void CopyNewMailAttachmentsByType(AddIn& addin, outlook::Item& mail);

// Splits the three stored columns into the in-memory table (rows from 1), each column only
// when its stored text is not blank.
void FillExtensionList(AddIn& addin);

}  // namespace corvina
