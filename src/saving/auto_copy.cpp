#include "saving/auto_copy.h"

#include "base/text.h"

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

}  // namespace

void LoopForAotuCopyFileTypesAtEntry(AddIn& addin) {
  addin.Run(L"LoopForAotuCopyFileTypesAtEntry", [] {});
}

void CopyNewMailAttachmentsByType(AddIn& addin, outlook::Item& /*mail*/) {
  addin.Run(L"CopyNewMailAttachmentsByType", [] {});
}

void FillExtensionList(AddIn& addin) {
  ExtensionList& list = addin.extension_list;
  list = ExtensionList{};
  if (!Trim(addin.config.ExtName).empty()) list.names = SplitColumn(addin.config.ExtName);
  if (!Trim(addin.config.ExtDest).empty()) list.destinations = SplitColumn(addin.config.ExtDest);
  if (!Trim(addin.config.ExtChecked).empty()) list.checked = SplitColumn(addin.config.ExtChecked);
}

}  // namespace corvina
