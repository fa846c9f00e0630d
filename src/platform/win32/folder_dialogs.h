#pragma once
// The Save button's folder menu (frmMenu's pop-up) and the shell's folder browser.
#include <cstdint>
#include <string>
#include <vector>

namespace corvina::win32 {

// One entry per folder and "Browse..." at the mouse position; the chosen index,
// kFolderMenuBrowse, or kFolderMenuNone when the menu was dismissed.
int32_t RunFolderMenu(const std::vector<std::wstring>& folders, const std::wstring& browse_caption);

// SHBrowseForFolder opening at `start_folder`; the chosen path (cut at the first NUL of a
// 256-character buffer) or "" on cancel.
std::wstring RunFolderBrowser(const std::wstring& title, uint32_t flags,
                              const std::wstring& start_folder);

}  // namespace corvina::win32
