#include "saving/disk_space.h"

#include "base/text.h"
#include "platform/user_interface.h"
#include "saving/save_job.h"

namespace corvina {

int64_t FreeMegabytes(AddIn& addin, const std::wstring& path) {
  const std::wstring trimmed = Trim(path);
  if (trimmed.empty()) return -1;
  auto free = addin.services.files.GetDiskFreeSpace(trimmed.substr(0, 1) + L":\\");
  if (!free) return -1;
  const double bytes = static_cast<double>(free->sectors_per_cluster) * free->bytes_per_sector *
                       free->free_clusters;
  return static_cast<int64_t>(bytes / 1000000.0);
}

bool CheckDiskSpace(AddIn& addin, int32_t skip_disk_test, const std::wstring& destination) {
  return addin.Run(L"CheckDiskSpace", false, [&] {
    auto refetch = [&] {
      if (!addin.services.create_application) return false;
      addin.oApplication = addin.services.create_application();
      return true;
    };
    if (!addin.oApplication) refetch();
    outlook::Ref<outlook::Explorer> explorer;
    try {
      explorer = addin.oApplication->ActiveExplorer();
    } catch (const Error& e) {
      // Outlook's object has gone away (462): the running Outlook is asked for again.
      if (e.number() != kErrServerUnavailable || !refetch()) throw;
      explorer = addin.oApplication->ActiveExplorer();
    }
    if (!explorer) return false;
    auto selection = explorer->Selection();
    const int32_t count = selection->Count();
    double bytes = 0;
    for (int32_t i = 1; i <= count; ++i) bytes += selection->Item(i)->Size();
    const double needed = ShownMegabytes(bytes);
    const bool tested = skip_disk_test != 1;
    const int64_t free = tested ? FreeMegabytes(addin, destination) : -1;
    if (tested && free != -1 && needed > static_cast<double>(free)) {
      addin.services.ui.MsgBox(addin.Text(TextId::kNoDiskSpace),
                               vbInformation, kProductName);
      return false;
    }
    if (needed > kLargeSelectionMegabytes) {
      return addin.services.ui.MsgBox(
                 LargeSelectionQuestion(addin, std::to_wstring(count), FormatMegabytes(needed)),
                 vbYesNo | vbQuestion, kProductName) == vbYes;
    }
    return true;
  });
}

}  // namespace corvina
