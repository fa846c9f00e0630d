#include "platform/win32/folder_dialogs.h"

#include <shlobj.h>

#include "platform/user_interface.h"
#include "platform/win32/this_module.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/window_class.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kMenuClass[] = L"Corvina.frmMenu";
constexpr UINT kBrowseCommand = 1;
constexpr UINT kFirstFolderCommand = 100;

struct PidlTraits {
  using Handle = LPITEMIDLIST;
  static LPITEMIDLIST Invalid() noexcept { return nullptr; }
  static void Close(LPITEMIDLIST p) noexcept { CoTaskMemFree(p); }
};

int CALLBACK SelectStartFolder(HWND hwnd, UINT message, LPARAM, LPARAM data) {
  if (message == BFFM_INITIALIZED) SendMessageW(hwnd, BFFM_SETSELECTIONW, TRUE, data);
  return 0;
}

}  // namespace

int32_t RunFolderMenu(const std::vector<std::wstring>& folders, const std::wstring& browse_caption) {
  // A pop-up menu needs an owner window in the foreground: frmMenu is that hidden window.
  ScopedWindowClass cls(kMenuClass, DefWindowProcW);
  UniqueHWnd owner(CreateWindowExW(WS_EX_TOOLWINDOW, kMenuClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                   nullptr, ThisModule(), nullptr));
  HMENU menu = CreatePopupMenu();
  if (!owner || !menu) {
    if (menu) DestroyMenu(menu);
    return kFolderMenuNone;
  }
  for (size_t i = 0; i < folders.size(); ++i)
    AppendMenuW(menu, MF_STRING, kFirstFolderCommand + i, folders[i].c_str());
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING, kBrowseCommand, browse_caption.c_str());
  POINT at{};
  GetCursorPos(&at);
  SetForegroundWindow(owner.get());
  const UINT command = static_cast<UINT>(TrackPopupMenu(
      menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN, at.x, at.y, 0, owner.get(), nullptr));
  DestroyMenu(menu);
  if (command == kBrowseCommand) return kFolderMenuBrowse;
  if (command >= kFirstFolderCommand && command < kFirstFolderCommand + folders.size())
    return static_cast<int32_t>(command - kFirstFolderCommand);
  return kFolderMenuNone;
}

std::wstring RunFolderBrowser(const std::wstring& title, uint32_t flags,
                              const std::wstring& start_folder) {
  BROWSEINFOW info{};
  info.hwndOwner = GetActiveWindow();
  info.lpszTitle = title.c_str();
  info.ulFlags = flags;
  info.lpfn = SelectStartFolder;
  info.lParam = reinterpret_cast<LPARAM>(start_folder.c_str());
  UniqueHandle<PidlTraits> chosen(SHBrowseForFolderW(&info));
  if (!chosen) return {};
  wchar_t buffer[MAX_PATH] = {};  // the call writes up to MAX_PATH characters
  if (!SHGetPathFromIDListW(chosen.get(), buffer)) return {};
  return std::wstring(buffer);  // cut at its first NUL
}

}  // namespace corvina::win32
