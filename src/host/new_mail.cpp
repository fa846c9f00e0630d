#include "host/new_mail.h"

#include "base/text.h"
#include "chat/chat_receiver.h"
#include "host/newest_item.h"
#include "saving/auto_copy.h"
#include "settings/guard.h"
#include "tray/tray_stage.h"

namespace corvina {

std::wstring DefaultDestinationFor(const Config& config) {
  const std::wstring& d = config.DefaultFolder;
  if (d == L"0" || d == L"1" || d == L"2") {
    const size_t at = static_cast<size_t>(d[0] - L'0');
    return at < config.glbFolder.size() ? config.glbFolder[at] : L"";
  }
  return L"";
}

void oApplication_NewMail(AddIn& addin, const std::wstring& context) {
  Guard(addin.log, context, L"oApplication_NewMail", [&] {
    addin.saving.DefaultDestination = DefaultDestinationFor(addin.config);
    if (!addin.oApplication) return;
    auto inbox = addin.oApplication->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox);
    auto items = inbox->Items();
    auto item = ReportItem(*items, addin.services.clock);
    if (!item || item->Class() != outlook::olMail) return;

    if (!Trim(addin.config.ExtChecked).empty()) CopyNewMailAttachmentsByType(addin, *item);
    if (addin.config.TrayShow == L"1" && addin.config.TrayMonitor == L"1")
      AddNewMailToTray(addin, *item);
    ReceiveNewChatMail(addin, *item);
  });
}

}  // namespace corvina
