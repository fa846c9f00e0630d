#pragma once
// frmMenu, the Save button's pop-up of destination folders, and the shell folder browser.
#include <string>

#include "addin/addin.h"

namespace corvina {

// Pops up one entry per destination folder and a browse entry. Sets the current save
// destination to the chosen folder (empty when the menu or the browser was dismissed) and
// brings the active explorer back to the front.
void PopUpFolderMenu(AddIn& addin);

// The shell's folder browser titled "Please Select A Folder..." (flags 0x50), opening at
// `start_folder`, else at the last folder chosen here, else at "c:\". Returns the chosen
// folder (remembered for next time) or "" on cancel.
std::wstring BrowseForFolder(AddIn& addin, const std::wstring& start_folder);

inline constexpr wchar_t kBrowseTitle[] = L"Please Select A Folder...";
inline constexpr uint32_t kBrowseFlags = 0x50;

}  // namespace corvina
