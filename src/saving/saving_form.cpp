#include "saving/saving_form.h"

namespace corvina {

SavingFormView SavingForm::ViewFor(const std::wstring& language, int32_t total, int32_t saved) {
  auto text = [&](TextId id, std::initializer_list<std::wstring_view> args = {}) {
    return FillText(LanguageText(language, id), args);
  };
  SavingFormView view;
  view.caption = text(TextId::kSavingTitle);
  view.caption_label = text(TextId::kSavingCaption);
  view.total_label = text(TextId::kSavingTotal, {std::to_wstring(total)});
  view.saved_label = text(TextId::kSavingSaved, {std::to_wstring(saved)});
  view.cancel_caption = text(TextId::kSavingCancel);
  view.hide_caption = text(TextId::kSavingHide);
  view.progress_max = total;
  view.progress_value = saved;
  view.right_to_left = language == L"Hebrew";
  return view;
}

void SavingForm::Show(int32_t total, int32_t saved) {
  // The buttons outlive this object (it lives on the job's stack): they reach the add-in only.
  AddIn& addin = addin_;
  SavingFormEvents events;
  events.cancel = [&addin] { addin.saving.CancelRequested = true; };
  events.hide = [&addin] {
    addin.Run(L"cmdHideMe_Click", [&addin] {
      if (auto explorer = addin.oApplication ? addin.oApplication->ActiveExplorer() : nullptr)
        explorer->Activate();
    });
  };
  addin_.services.ui.ShowSavingForm(ViewFor(addin_.config.glbLanguage, total, saved), events);
}

void SavingForm::Load() {
  addin_.services.ui.LoadForm(L"frmSaving");
  Show(0, 0);
}

void SavingForm::Update(int32_t total, int32_t saved) {
  if (addin_.IsFormLoaded(L"frmSaving")) Show(total, saved);
}

void SavingForm::Unload() {
  if (addin_.IsFormLoaded(L"frmSaving")) addin_.services.ui.UnloadForm(L"frmSaving");
}

}  // namespace corvina
