#include "host/web_and_lists.h"

namespace corvina {

void SendStatistics(AddIn& addin, bool /*first_run*/) { addin.Run(L"SendStatistics", [] {}); }
void LoadLocalDistributionLists(AddIn& addin) { addin.Run(L"LoadLocalDistLists", [] {}); }
void LoadPublicDistributionLists(AddIn& addin) { addin.Run(L"LoadPublicDistLists", [] {}); }
void SetLanguageStrings(AddIn& addin) { addin.Run(L"SetLanguageStrings", [] {}); }

void ChangeLanuage(AddIn& addin, const std::wstring& language) {
  addin.Run(L"ChangeLanuage", [&] { addin.config.glbLanguage = language; });
}

}  // namespace corvina
