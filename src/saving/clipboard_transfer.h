#pragma once
// Handing attachment files to the clipboard as a shell file list (CF_HDROP), so they can be
// pasted into any folder. The files are first copied into the private "ClipBoard" folder
// under the temporary folder; its contents belong to the latest copy only.
#include <string>
#include <vector>

#include "addin/addin.h"

namespace corvina {

struct ClipboardFile {
  std::wstring source;     // the file as it lies on disk now
  std::wstring file_name;  // the name to give it (cleaned before use)
};

inline constexpr uint32_t kCfHdrop = 15;

bool CopyFilesToClipboard(AddIn& addin, const std::vector<ClipboardFile>& files);
void ClipboardClear(AddIn& addin);
bool ClipboardCopyFiles(AddIn& addin, const std::vector<std::wstring>& paths);

// The CF_HDROP block: a 20-byte header (list offset 20, drop point 0,0, non-client flag 0,
// wide flag 0) and each path in the 8-bit code page followed by NUL, then one more NUL. An
// empty path therefore ends the list early, as receivers read it.
std::string DropBlock(const std::vector<std::string>& narrow_paths);

}  // namespace corvina
