#pragma once
// Copying incoming attachments to folders by file type: the catch-up sweep at start-up and the
// copy stage of the new-mail handler. Both use one table (rows numbered from 1) and one lookup.
#include <string>

#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// Splits the three stored columns into the in-memory table, each column only when its stored
// text is not blank.
void FillExtensionList(AddIn& addin);

// The first row whose name equals `file_type` ignoring case and whose checked flag is exactly
// "1" gives its destination; false (destination untouched) when no row matches.
bool FindFileTypeDest(const AddIn& addin, const std::wstring& file_type, std::wstring& destination);

// Start-up sweep of the Inbox, newest first, back to LastMailMonitorTime. Rows are named
// without a dot ("pdf"); existing files are overwritten and missing folders are not created.
// The first failure is logged and ends the sweep.
void LoopForAotuCopyFileTypesAtEntry(AddIn& addin);

// The new-mail copy of one mail. Rows are looked up with a leading dot (".pdf"); an existing
// file is only replaced after asking when AutoReplace is "0". Errors are left to the caller:
// the new-mail handler ends at the first one.
void CopyNewMailAttachmentsByType(AddIn& addin, outlook::Item& mail);

}  // namespace corvina
