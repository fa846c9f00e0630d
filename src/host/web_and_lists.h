#pragma once
// Start-up calls into features this build does not carry: the usage statistics of the web
// client and the distribution-list loaders of the address tools. They are named here so the
// start-up order stays complete; each does nothing.
#include "addin/addin.h"

namespace corvina {

void SendStatistics(AddIn& addin, bool first_run);
void LoadLocalDistributionLists(AddIn& addin);
void LoadPublicDistributionLists(AddIn& addin);
// Applies the current language's texts to the forms and the toolbar (English only here).
void SetLanguageStrings(AddIn& addin);
void ChangeLanuage(AddIn& addin, const std::wstring& language);

}  // namespace corvina
