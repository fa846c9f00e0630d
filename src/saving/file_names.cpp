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


namespace {

// Logs that an attachment's name was refused by IsSafeAttachmentName; the job goes on.
void LogRefusedName(AddIn& addin, const wchar_t* procedure, const std::wstring& name) {
  addin.log.LogError(addin.ErrorContext(), procedure,
                     Error(kErrPathNotFound, kOwnErrorSource,
                           L"Attachment name refused, it would leave the destination folder: " + name));
}

bool IsTrailing(wchar_t c) { return c == L'.' || c == L' '; }

std::wstring_view WithoutTrailingDotsAndBlanks(std::wstring_view name) {
  while (!name.empty() && IsTrailing(name.back())) name.remove_suffix(1);
  return name;
}

// The part Windows compares with its device names: up to the first dot, blanks before it
// dropped.
std::wstring_view DevicePart(std::wstring_view name) {
  std::wstring_view base = name.substr(0, name.find(L'.'));
  while (!base.empty() && base.back() == L' ') base.remove_suffix(1);
  return base;
}

bool IsPortDigit(wchar_t c) {
  return (c >= L'1' && c <= L'9') || c == L'\u00B9' || c == L'\u00B2' || c == L'\u00B3';
}

}  // namespace

bool IsDeviceName(std::wstring_view name) {
  const std::wstring base = UCase(std::wstring(DevicePart(WithoutTrailingDotsAndBlanks(name))));
  for (const wchar_t* device : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"})
    if (base == device) return true;
  return base.size() == 4 && (base.starts_with(L"COM") || base.starts_with(L"LPT")) &&
         IsPortDigit(base[3]);
}

std::wstring DeviceSafeName(const std::wstring& name) {
  if (!IsDeviceName(name)) return name;
  const std::wstring_view kept = WithoutTrailingDotsAndBlanks(name);
  const size_t end = DevicePart(kept).size();
  return std::wstring(kept.substr(0, end)) + L"_" + std::wstring(kept.substr(end));
}

std::optional<std::wstring> NameToSaveAs(AddIn& addin, const wchar_t* procedure,
                                         const std::wstring& name) {
  if (!IsSafeAttachmentName(name)) {
    LogRefusedName(addin, procedure, name);
    return std::nullopt;
  }
  std::wstring safe = DeviceSafeName(name);
  if (safe != name) {
    addin.log.LogEvent(std::wstring(procedure) + L": the attachment name \"" + name +
                           L"\" is a Windows device name; saved as \"" + safe + L"\"",
                       kLogInformation);
  }
  return safe;
}

std::optional<std::wstring> FirstDotFileType(const std::wstring& name) {
  const int64_t dot = InStr(name, L".");
  if (dot == 0) return std::nullopt;
  return Mid(name, dot + 1);
}

}  // namespace corvina
