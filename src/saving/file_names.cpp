#include "saving/file_names.h"

#include "base/text.h"

namespace corvina {

std::wstring CleanFileName(const std::wstring& name) {
  std::wstring out = name;
  for (wchar_t bad : {L'\\', L'/', L':', L'*', L'?', L'"', L'<', L'>', L'|'})
    for (wchar_t& c : out)
      if (c == bad) c = L'_';
  return out;
}

std::wstring GetNextFileName(FileSystem& files, const std::wstring& path) {
  if (!files.FileExists(path) && !files.DirectoryExists(path)) return path;
  const int64_t dot = InStrRev(path, L".");
  const int64_t slash = InStrRev(path, L"\\");
  std::wstring stem = path;
  std::wstring extension = L".";
  if (dot > 0 && dot > slash) {
    extension = LCase(Mid(path, dot + 1));
    stem = Left(path, dot - 1);
  }
  for (int32_t n = 1;; ++n) {
    if (n > 32767) Raise(kErrOverflow, L"Overflow");
    std::wstring candidate = stem + L"(" + std::to_wstring(n) + L")." + extension;
    if (!files.FileExists(candidate) && !files.DirectoryExists(candidate)) return candidate;
  }
}

void ValidateDestFolders(AddIn& addin) {
  addin.Run(L"ValidateDestFolders", [&] {
    auto& files = addin.services.files;
    for (const wchar_t* sub : {L"\\Temp", L"\\VoiceMail"}) {
      const std::wstring folder = addin.services.addin_folder + sub;
      if (!files.DirectoryExists(folder)) files.CreateDirectory(folder);
    }
  });
}

bool IsSafeAttachmentName(const std::wstring& name) {
  if (Trim(name).empty() || name == L"." || name == L"..") return false;
  return name.find_first_of(L"\\/:") == std::wstring::npos;
}

void LogRefusedName(AddIn& addin, const wchar_t* procedure, const std::wstring& name) {
  addin.log.LogError(addin.ErrorContext(), procedure,
                     Error(kErrPathNotFound, kOwnErrorSource,
                           L"Attachment name refused, it would leave the destination folder: " + name));
}

std::optional<std::wstring> FirstDotFileType(const std::wstring& name) {
  const int64_t dot = InStr(name, L".");
  if (dot == 0) return std::nullopt;
  return Mid(name, dot + 1);
}

}  // namespace corvina
