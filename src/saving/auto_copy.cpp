#include "saving/auto_copy.h"

#include "base/text.h"
#include "mail/folder_loop.h"
#include "platform/user_interface.h"
#include "saving/file_names.h"

namespace corvina {
namespace {

std::vector<std::wstring> SplitColumn(const std::wstring& stored) {
  std::vector<std::wstring> rows{L""};
  size_t at = 0;
  for (size_t pos; (pos = stored.find(L';', at)) != std::wstring::npos; at = pos + 1)
    rows.push_back(stored.substr(at, pos - at));
  rows.push_back(stored.substr(at));
  return rows;
}

const std::wstring& Cell(const std::vector<std::wstring>& column, size_t row) {
  static const std::wstring kEmpty;
  return row < column.size() ? column[row] : kEmpty;
}

}  // namespace

void FillExtensionList(AddIn& addin) {
  ExtensionList& list = addin.saving.extension_list;
  list = ExtensionList{};
  if (!Trim(addin.config.ExtName).empty()) list.names = SplitColumn(addin.config.ExtName);
  if (!Trim(addin.config.ExtDest).empty()) list.destinations = SplitColumn(addin.config.ExtDest);
  if (!Trim(addin.config.ExtChecked).empty()) list.checked = SplitColumn(addin.config.ExtChecked);
}

bool FindFileTypeDest(const AddIn& addin, const std::wstring& file_type, std::wstring& destination) {
  const ExtensionList& list = addin.saving.extension_list;
  const std::wstring wanted = UCase(file_type);
  for (size_t row = 1; row < list.names.size(); ++row) {
    if (UCase(list.names[row]) == wanted && Cell(list.checked, row) == L"1") {
      destination = Cell(list.destinations, row);
      return true;
    }
  }
  return false;
}

void LoopForAotuCopyFileTypesAtEntry(AddIn& addin) {
  addin.Run(L"LoopForAotuCopyFileTypesAtEntry", [&] {
    if (!addin.oApplication) return;
    auto inbox = addin.oApplication->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox);
    const LoopParameters loop = GetLoopParametersByFolder(*inbox);
    if (loop.end == 0) return;
    auto items = inbox->Items();
    for (int32_t i = loop.start; loop.step > 0 ? i <= loop.end : i >= loop.end; i += loop.step) {
      auto item = items->Item(i);
      if (item->Class() != outlook::olMail) continue;
      // Older mails were handled in an earlier run; the folder order is trusted.
      if (IsOlderThanLastMonitor(*item, addin.config)) return;
      auto attachments = item->Attachments();
      const int32_t count = attachments->Count();
      for (int32_t a = 1; a <= count; ++a) {
        auto attachment = attachments->Item(a);
        const std::wstring name = attachment->FileName();
        auto type = FirstDotFileType(name);
        std::wstring destination;
        if (!type || !FindFileTypeDest(addin, *type, destination)) continue;
        const auto saved_as = NameToSaveAs(addin, L"LoopForAotuCopyFileTypesAtEntry", name);
        if (!saved_as) continue;
        attachment->SaveAsFile(destination + L"\\" + *saved_as);
      }
    }
  });
}

void CopyNewMailAttachmentsByType(AddIn& addin, outlook::Item& mail) {
  auto attachments = mail.Attachments();
  const int32_t count = attachments->Count();
  for (int32_t a = 1; a <= count; ++a) {
    auto attachment = attachments->Item(a);
    const std::wstring name = attachment->FileName();
    auto type = FirstDotFileType(name);
    std::wstring destination;
    if (!type || !FindFileTypeDest(addin, L"." + *type, destination)) continue;
    const auto saved_as = NameToSaveAs(addin, L"oApplication_NewMail", name);
    if (!saved_as) continue;
    const std::wstring target = destination + L"\\" + *saved_as;
    if (addin.services.files.FileExists(target) && addin.config.AutoReplace == L"0") {
      // Only Yes replaces the file. A box that could not be shown counts as No: the failure
      // is logged and the existing file stays.
      const int32_t answer = addin.Run(L"oApplication_NewMail", vbNo, [&] {
        return addin.services.ui.MsgBox(addin.Text(TextId::kReplaceFile, {RevealBidiControls(target)}),
                                        vbYesNo | vbQuestion, kProductName);
      });
      if (answer != vbYes) continue;
    }
    attachment->SaveAsFile(target);
  }
}

}  // namespace corvina
