#include "host/save_button.h"

#include "host/command_bars.h"
#include "saving/file_names.h"
#include "saving/folder_menu.h"
#include "saving/save_job.h"
#include "saving/saving_form.h"

namespace corvina {

namespace {

// Marks the job under way for as long as the click runs, however it ends.
class RunningJob {
 public:
  explicit RunningJob(SavingState& saving) : saving_(saving) { saving_.JobRunning = true; }
  ~RunningJob() { saving_.JobRunning = false; }
  RunningJob(const RunningJob&) = delete;
  RunningJob& operator=(const RunningJob&) = delete;

 private:
  SavingState& saving_;
};

}  // namespace

void SaveButtonClick(AddIn& addin, outlook::Inspector* owner) {
  if (addin.saving.JobRunning) {
    // A click on either bar while a job runs shows that job; it starts nothing.
    addin.services.ui.BringFormToFront(L"frmSaving");
    return;
  }
  const RunningJob running(addin.saving);
  ValidateDestFolders(addin);
  PopUpFolderMenu(addin);
  if (addin.saving.SaveDestination.empty()) return;
  SavingForm form(addin);
  form.Load();
  ToggleSaveFaceID(addin, true);
  if (owner) {
    if (auto item = owner->CurrentItem()) GetSelectedItemsInspector(addin, *item);
  } else {
    GetSelectedItems(addin);
  }
  ToggleSaveFaceID(addin, false);
  form.Unload();
}

}  // namespace corvina
