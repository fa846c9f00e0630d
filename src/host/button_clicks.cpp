#include "host/button_clicks.h"

#include "base/text.h"
#include "chat/chat_window.h"
#include "corvina/version.h"
#include "host/control_table.h"
#include "host/web_and_lists.h"
#include "host/save_button.h"
#include "platform/user_interface.h"
#include "settings/config_keys.h"
#include "settings/config_store.h"
#include "settings/guard.h"
#include "virus/virus_alerter.h"

namespace corvina {
namespace {

void Tell(AddIn& addin, const std::wstring& text, int32_t style) {
  addin.services.ui.MsgBox(text, style, kProductName);
}

// Told when a toolbar command's feature is not part of this build, instead of doing nothing.
void NotInThisBuild(AddIn& addin, TextId feature) {
  Tell(addin, addin.Text(TextId::kNotInThisBuild, {addin.Text(feature)}), vbInformation);
}

// The virus-alert button is hidden from the second start on; until the properties dialog
// (which will hold the way there) exists, its button offers the virus-alert window instead.
void PropertiesNotInThisBuild(AddIn& addin) {
  const std::wstring text = addin.Text(TextId::kNotInThisBuild, {addin.Text(TextId::kFeatureProperties)}) +
                            L"\r\n" + addin.Text(TextId::kOpenVirusAlerterInstead);
  if (addin.services.ui.MsgBox(text, vbYesNo | vbQuestion, kProductName) != vbYes) return;
  OpenVirusAlerter(addin);
  addin.services.ui.BringFormToFront(kVirusAlerterFormName);
}

// Adds one to a usage counter (one of the Statistic settings) as a command opens its window.
void CountUse(std::wstring& counter) { counter = std::to_wstring(ToLong(counter) + 1); }

// Buttons that work on the mail being written need an open mail window showing a mail: the
// window whose bar was clicked, else the active one.
bool HasOpenMail(AddIn& addin, outlook::Inspector* owner) {
  outlook::Ref<outlook::Inspector> active;
  if (!owner && addin.oApplication) active = addin.oApplication->ActiveInspector();
  outlook::Inspector* inspector = owner ? owner : active.get();
  auto item = inspector ? inspector->CurrentItem() : nullptr;
  if (item && item->Class() == outlook::olMail) return true;
  Tell(addin, addin.Text(TextId::kNotMailItem), vbOKOnly);
  return false;
}

void About(AddIn& addin) {
  CountUse(addin.config.Statistic9);
  const std::wstring version = std::to_wstring(kVersionMajor) + L"." +
                              std::to_wstring(kVersionMinor) + L"." +
                              std::to_wstring(kVersionRevision);
  Tell(addin, addin.Text(TextId::kAboutText, {version}), vbInformation);
}

void ChangeLanguage(AddIn& addin, const std::wstring& choice) {
  if (choice == L"Hebrew") Tell(addin, addin.Text(TextId::kHebrewWarning), vbExclamation);
  ChangeLanuage(addin, choice);
  SetLanguageStrings(addin);
  ConfigStore store = addin.Store();
  SaveConfig(addin.config, store);
}

void Click(AddIn& addin, int index, outlook::Inspector* owner) {
  using enum TextId;
  switch (index) {
    case 0:
      if (HasOpenMail(addin, owner)) NotInThisBuild(addin, kFeatureStationery);
      return;
    case 1:
      CountUse(addin.config.Statistic2);
      return SaveButtonClick(addin, owner);
    case 2: return PropertiesNotInThisBuild(addin);
    case 3: return NotInThisBuild(addin, kFeaturePreview);
    case 4: return NotInThisBuild(addin, kFeatureDistributionLists);
    case 5: return NotInThisBuild(addin, kFeatureTranslator);
    case 8:
      OpenVirusAlerter(addin);
      return addin.services.ui.BringFormToFront(kVirusAlerterFormName);
    case 9: return About(addin);
    case 12:
      OpenChatWindow(addin);
      return addin.services.ui.BringFormToFront(kChatFormName);
    case 13: return NotInThisBuild(addin, kFeatureSearch);
    case 14:
      if (HasOpenMail(addin, owner)) NotInThisBuild(addin, kFeatureRecorder);
      return;
    default: return;
  }
}

}  // namespace

void RouteControlEvent(AddIn& addin, const std::wstring& context, int index,
                       const std::wstring& combo_text, outlook::Inspector* owner) {
  if (index == kComboIndex) {
    Guard(addin.log, context, L"My_Button7_Change", [&] { ChangeLanguage(addin, combo_text); });
    return;
  }
  const std::wstring procedure = L"My_Button" + std::to_wstring(index) + L"_Click";
  Guard(addin.log, context, procedure.c_str(), [&] { Click(addin, index, owner); });
}

void My_Menu1_Click(AddIn& addin, const std::wstring& context) {
  // A leftover entry whose message is its own name, kept word for word in every language.
  Guard(addin.log, context, L"My_Menu1_Click", [&] { Tell(addin, L"My_Menu1_Click  ", vbOKOnly); });
}

}  // namespace corvina
