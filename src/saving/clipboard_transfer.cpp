#include "saving/clipboard_transfer.h"

#include "platform/clipboard.h"
#include "settings/bulid_path.h"
#include "saving/file_names.h"

namespace corvina {
namespace {

void PutInt32(std::string& out, uint32_t v) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

std::wstring ClipboardFolder(const AddIn& addin) {
  std::wstring temp = addin.config.TempFolder;
  if (temp.empty() || temp.back() != L'\\') temp += L'\\';
  return temp + L"ClipBoard\\";
}

}  // namespace

std::string DropBlock(const std::vector<std::string>& narrow_paths) {
  std::string block;
  PutInt32(block, 20);
  for (int i = 0; i < 4; ++i) PutInt32(block, 0);
  for (const std::string& p : narrow_paths) {
    block += p;
    block.push_back('\0');
  }
  block.push_back('\0');
  return block;
}

bool ClipboardCopyFiles(AddIn& addin, const std::vector<std::wstring>& paths) {
  Clipboard& clipboard = addin.services.clipboard;
  bool opened = false;
  bool done = addin.Run(L"ClipboardCopyFiles", false, [&] {
    if (!clipboard.Open()) return false;
    opened = true;
    clipboard.Empty();
    std::vector<std::string> narrow;
    for (const std::wstring& p : paths) narrow.push_back(clipboard.ToCodePage(p));
    return clipboard.SetData(kCfHdrop, DropBlock(narrow));
  });
  if (opened) addin.Run(L"ClipboardCopyFiles", [&] { clipboard.Close(); });
  return done;
}

void ClipboardClear(AddIn& addin) {
  Clipboard& clipboard = addin.services.clipboard;
  addin.Run(L"ClipboardClear", [&] {
    if (!clipboard.Open()) return;
    try {
      clipboard.Empty();
    } catch (...) {
      clipboard.Close();
      throw;
    }
    clipboard.Close();
  });
}

bool CopyFilesToClipboard(AddIn& addin, const std::vector<ClipboardFile>& files) {
  return addin.Run(L"CopyFilesToClipboard", false, [&] {
    auto& fs = addin.services.files;
    std::vector<std::wstring> paths(files.size());
    const std::wstring folder = ClipboardFolder(addin);
    const std::wstring bare = folder.substr(0, folder.size() - 1);
    if (fs.DirectoryExists(bare))
      for (const std::wstring& name : fs.ListFiles(bare)) fs.DeleteFile(folder + name);
    if (!BulidPath(fs, addin.log, addin.ErrorContext(), folder)) return false;
    for (size_t i = 0; i < files.size(); ++i) {
      const std::wstring target = GetNextFileName(fs, folder + CleanFileName(files[i].file_name));
      try {
        fs.CopyFile(files[i].source, target, true);
        paths[i] = target;
      } catch (const Error&) {
        // Left empty: the list that reaches the clipboard ends before it.
      }
    }
    ClipboardClear(addin);
    return ClipboardCopyFiles(addin, paths);
  });
}

}  // namespace corvina
