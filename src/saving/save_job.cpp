#include "saving/save_job.h"

#include <cmath>
#include <vector>

#include "base/text.h"
#include "platform/path.h"
#include "platform/user_interface.h"
#include "saving/file_names.h"
#include "saving/saving_form.h"

namespace corvina {
namespace {

// Counts of a job are 16-bit, as they have always been; a selection beyond that is refused
// with the overflow error rather than silently wrapping.
int32_t Add16(int32_t a, int32_t b) {
  const int32_t sum = a + b;
  if (sum > 32767) Raise(kErrOverflow, L"Overflow");
  return sum;
}

bool AskYesNo(AddIn& addin, const std::wstring& question) {
  return addin.services.ui.MsgBox(question, vbYesNo | vbQuestion, kProductName) == vbYes;
}

bool FloppyPresent(AddIn& addin) {
  try {
    addin.services.files.ListFiles(L"a:\\");
    return true;  // an empty disk counts as present
  } catch (const Error&) {
    return false;
  }
}

// Makes sure the destination exists, asking before creating it (one level).
bool DestinationReady(AddIn& addin, const std::wstring& destination) {
  auto& files = addin.services.files;
  if (files.DirectoryExists(destination)) return true;
  if (!AskYesNo(addin, addin.Text(TextId::kCreateDestination, {RevealBidiControls(destination)})))
    return false;
  files.CreateDirectory(path::WithoutTrailingSeparator(destination));
  return true;
}

struct JobCounts {
  int32_t total = 0;
  int32_t saved = 0;
};

// An item of the job with its attachments, read once while the job is sized up.
struct JobItem {
  outlook::Ref<outlook::Item> owned;  // empty when the caller owns the item
  outlook::Item* item = nullptr;
  outlook::Ref<outlook::Attachments> attachments;
  int32_t count = 0;
};

JobItem ReadJobItem(outlook::Item& item, outlook::Ref<outlook::Item> owned = nullptr) {
  JobItem j{std::move(owned), &item, item.Attachments(), 0};
  j.count = j.attachments->Count();
  return j;
}

// One item's attachments; false when the job must stop (cancel).
bool SaveItemAttachments(AddIn& addin, const JobItem& job_item, const std::wstring& destination,
                         JobCounts& counts, SavingForm& form, const wchar_t* procedure) {
  const bool is_mail = job_item.item->Class() == outlook::olMail;
  auto& attachments = job_item.attachments;
  for (int32_t a = 1; a <= job_item.count; ++a) {
    addin.services.ui.DoEvents();
    if (addin.saving.CancelRequested) return false;
    form.Update(counts.total, counts.saved);
    auto attachment = attachments->Item(a);
    const auto name = NameToSaveAs(addin, procedure, attachment->FileName());
    if (!name) continue;
    // Saved straight under its own name: no other file of the folder is ever touched.
    const std::wstring target = destination + *name;
    if (addin.services.files.FileExists(target) && addin.config.AutoReplace == L"0" &&
        !AskYesNo(addin, addin.Text(TextId::kReplaceFile, {RevealBidiControls(target)})))
      continue;
    // A picture embedded in an HTML mail body is not an attachment the user thinks of.
    if (is_mail && addin.config.IncludeHtmlEmbeded == L"0" && attachment->Position() == 0) continue;
    attachment->SaveAsFile(target);
    counts.saved = Add16(counts.saved, 1);
  }
  return true;
}

}  // namespace

double ShownMegabytes(double bytes) {
  // The same rounding FormatMegabytes applies to the two decimals it shows.
  return static_cast<double>(std::llround(bytes / 1000000.0 * 100.0)) / 100.0;
}

std::wstring LargeSelectionQuestion(const AddIn& addin, const std::wstring& count,
                                    const std::wstring& megabytes) {
  return addin.Text(TextId::kLargeSelection, {count, megabytes});
}

void GetSelectedItems(AddIn& addin) {
  addin.Run(L"GetSelectedItems", [&] {
    auto explorer = addin.oApplication ? addin.oApplication->ActiveExplorer() : nullptr;
    if (!explorer) return;
    auto selection = explorer->Selection();
    const std::wstring destination = path::WithTrailingSeparator(addin.saving.SaveDestination);
    const int32_t count = selection->Count();
    if (count > 32767) Raise(kErrOverflow, L"Overflow");
    std::vector<JobItem> items;
    double total_bytes = 0;
    JobCounts counts;
    for (int32_t i = 1; i <= count; ++i) {
      auto selected = selection->Item(i);
      items.push_back(ReadJobItem(*selected, selected));
      total_bytes += items.back().item->Size();
      counts.total = Add16(counts.total, items.back().count);
    }
    if (ShownMegabytes(total_bytes) > kLargeSelectionMegabytes &&
        !AskYesNo(addin, LargeSelectionQuestion(addin, std::to_wstring(count),
                                                FormatMegabytes(total_bytes / 1000000.0))))
      return;
    addin.saving.CancelRequested = false;
    SavingForm form(addin);
    for (const JobItem& item : items) {
      addin.services.ui.DoEvents();
      if (addin.saving.CancelRequested) return;
      if (UCase(destination) == L"A:\\" && !FloppyPresent(addin)) {
        addin.services.ui.MsgBox(addin.Text(TextId::kInsertFloppy), vbCritical, kProductName);
        return;
      }
      if (!DestinationReady(addin, destination)) return;
      if (!SaveItemAttachments(addin, item, destination, counts, form, L"GetSelectedItems")) return;
    }
    addin.saving.SaveDestination.clear();
  });
}

void GetSelectedItemsInspector(AddIn& addin, outlook::Item& item) {
  addin.Run(L"GetSelectedItemsInspector", [&] {
    if (item.Class() != outlook::olMail) return;
    const std::wstring destination = path::WithTrailingSeparator(addin.saving.SaveDestination);
    const double total_bytes = item.Size();
    const JobItem job_item = ReadJobItem(item);
    JobCounts counts;
    counts.total = job_item.count;
    if (ShownMegabytes(total_bytes) > kLargeSelectionMegabytes &&
        !AskYesNo(addin, LargeSelectionQuestion(addin, L"", FormatMegabytes(total_bytes / 1000000.0))))
      return;
    addin.saving.CancelRequested = false;
    SavingForm form(addin);
    addin.services.ui.DoEvents();
    if (addin.saving.CancelRequested) return;
    if (!DestinationReady(addin, destination)) return;
    if (!SaveItemAttachments(addin, job_item, destination, counts, form, L"GetSelectedItemsInspector"))
      return;
    addin.saving.SaveDestination.clear();
  });
}

}  // namespace corvina
