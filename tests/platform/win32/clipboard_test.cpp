// Files handed to the real clipboard, read back the way a paste target reads them.
#include "saving/clipboard_transfer.h"

#include <gtest/gtest.h>

#include "addin/addin.h"
#include "platform/sim/faults.h"
#include "platform/sim/memory_settings_tree.h"
#include "platform/sim/scripted_user_interface.h"
#include "platform/sim/sim_beeper.h"
#include "platform/sim/sim_clock.h"
#include "platform/win32/win32_clipboard.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/windows_api.h"

#include <shellapi.h>  // after windows.h, which it needs

namespace corvina::win32 {
namespace {

std::vector<std::wstring> PastedFiles() {
  std::vector<std::wstring> names;
  if (!OpenClipboard(nullptr)) return names;
  if (HANDLE data = GetClipboardData(CF_HDROP)) {
    auto drop = static_cast<HDROP>(data);
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
      wchar_t name[MAX_PATH] = {};
      DragQueryFileW(drop, i, name, MAX_PATH);
      names.push_back(name);
    }
  }
  CloseClipboard();
  return names;
}

TEST(Win32ClipboardTest, CopiedAttachmentsArePastedFromThePrivateFolder) {
  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  const std::wstring dir = std::wstring(temp) + L"corvina-clip-" + std::to_wstring(GetCurrentProcessId());
  Win32FileSystem files;
  files.CreateDirectory(dir);
  files.WriteFile(dir + L"\\source.txt", "pasted bytes");

  sim::Faults faults;
  sim::MemorySettingsTree settings(faults);
  sim::ScriptedUserInterface ui(faults);
  sim::SimClock clock(faults, FromCivil({2026, 11, 22, 9, 0, 0}));
  sim::SimBeeper beeper(faults);
  Win32Clipboard clipboard;
  AddIn addin(Services{files, settings, ui, clock, beeper, clipboard, dir, nullptr});
  addin.config.TempFolder = dir;

  ASSERT_TRUE(CopyFilesToClipboard(addin, {{dir + L"\\source.txt", L"report?.txt"},
                                           {dir + L"\\source.txt", L"report?.txt"}}));
  const std::vector<std::wstring> pasted = PastedFiles();
  ASSERT_EQ(pasted.size(), 2u);
  EXPECT_EQ(pasted[0], dir + L"\\ClipBoard\\report_.txt");
  EXPECT_EQ(pasted[1], dir + L"\\ClipBoard\\report_(1).txt");
  for (const std::wstring& file : pasted) EXPECT_EQ(files.ReadFile(file), "pasted bytes");

  for (const std::wstring& file : pasted) DeleteFileW(file.c_str());
  RemoveDirectoryW((dir + L"\\ClipBoard").c_str());
  DeleteFileW((dir + L"\\source.txt").c_str());
  RemoveDirectoryW(dir.c_str());
}

}  // namespace
}  // namespace corvina::win32
