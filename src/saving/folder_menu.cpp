#include "saving/folder_menu.h"

#include "platform/user_interface.h"

namespace corvina {

std::wstring BrowseForFolder(AddIn& addin, const std::wstring& start_folder) {
  return addin.Run(L"BrowseForFolder", std::wstring(), [&] {
    std::wstring start = start_folder;
    if (start.empty()) start = addin.saving.LastBrowsedFolder;
    if (start.empty()) start = L"c:\\";
    std::wstring chosen = addin.services.ui.BrowseForFolder(kBrowseTitle, kBrowseFlags, start);
    if (!chosen.empty()) addin.saving.LastBrowsedFolder = chosen;
    return chosen;
  });
}

void PopUpFolderMenu(AddIn& addin) {
  addin.services.ui.LoadForm(L"frmMenu");
  const int32_t choice = addin.services.ui.ShowFolderMenu(addin.config.glbFolder, addin.Text(TextId::kBrowseEntry));
  // Either entry hands the focus back to Outlook's main window once the folder is chosen.
  auto activate_explorer = [&] {
    if (auto explorer = addin.oApplication ? addin.oApplication->ActiveExplorer() : nullptr)
      explorer->Activate();
  };
  addin.saving.SaveDestination.clear();
  if (choice >= 0 && static_cast<size_t>(choice) < addin.config.glbFolder.size()) {
    addin.Run(L"mnu_Folder_Click", [&] {
      addin.saving.SaveDestination = addin.config.glbFolder[static_cast<size_t>(choice)];
      activate_explorer();
    });
  } else if (choice == kFolderMenuBrowse) {
    addin.Run(L"mnu_FolderBrowse_Click", [&] {
      addin.saving.SaveDestination = BrowseForFolder(addin, L"");
      activate_explorer();
    });
  }
}

}  // namespace corvina
