#pragma once
// File-name and folder helpers used wherever the add-in writes files.
#include <optional>
#include <string>
#include <string_view>

#include "addin/addin.h"
#include "platform/file_system.h"

namespace corvina {

// Replaces each of \ / : * ? " < > | by "_", one character after the other.
std::wstring CleanFileName(const std::wstring& name);

// `path` itself when nothing exists there; otherwise stem + "(n)." + extension for the first
// free n = 1, 2, ... The extension (after the last "." that lies after the last "\") is
// lower-cased; a name without one gets the extension "." (so "readme" becomes "readme(1).."),
// which is how these names have always looked. The counter is 16-bit: past 32767 the attempt
// fails with an overflow.
std::wstring GetNextFileName(FileSystem& files, const std::wstring& path);

// Makes sure the add-in folder's "\Temp" and "\VoiceMail" exist (one level each).
void ValidateDestFolders(AddIn& addin);

// A name Outlook hands over is used as it stands, but never to leave the destination: a name
// with a path separator, a drive, or that is "." / ".." / empty is refused.
bool IsSafeAttachmentName(const std::wstring& name);

// Whether Windows opens a device instead of a file for this name: CON, PRN, AUX, NUL,
// CONIN$, CONOUT$, COM1-9 and LPT1-9 (also with the superscript digits 1-3), in any case, alone
// or before the first dot, trailing dots and blanks aside ("nul.txt", "COM1.tar.gz", "NUL .").
bool IsDeviceName(std::wstring_view name);
// A device name with "_" after its device part, its trailing dots and blanks dropped
// ("NUL" -> "NUL_", "nul.txt" -> "nul_.txt", "CON ." -> "CON_"); any other name unchanged.
std::wstring DeviceSafeName(const std::wstring& name);

// The file name an attachment is saved under, on every saving route: nothing for a name that
// would leave the folder (logged), a device name made safe (logged), any other name as it is.
std::optional<std::wstring> NameToSaveAs(AddIn& addin, const wchar_t* procedure,
                                         const std::wstring& name);

// The file type by the first-dot rule: everything after the first "." of the name
// ("report.final.pdf" -> "final.pdf"); nothing for a name without a dot.
std::optional<std::wstring> FirstDotFileType(const std::wstring& name);

}  // namespace corvina
