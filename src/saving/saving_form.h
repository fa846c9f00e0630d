#pragma once
// frmSaving: the small non-modal progress form of a save job. Its texts and numbers live here;
// the platform only draws them and reports the Cancel and hide buttons.
#include <cstdint>

#include "addin/addin.h"
#include "platform/user_interface.h"

namespace corvina {

class SavingForm {
 public:
  explicit SavingForm(AddIn& addin) : addin_(addin) {}

  // Loads the form (captions from the language table) and shows it.
  void Load();
  // Both counts and the progress bar; repaints. Only while the form is loaded.
  void Update(int32_t total, int32_t saved);
  void Unload();

  static SavingFormView ViewFor(const std::wstring& language, int32_t total, int32_t saved);

 private:
  void Show(int32_t total, int32_t saved);
  AddIn& addin_;
};

}  // namespace corvina
