#include "virus/virus_scan.h"

#include <optional>

#include "mail/folder_loop.h"
#include "rules/rule.h"
#include "virus/virus_log.h"

namespace corvina {
namespace {

// A mail's properties, each read from Outlook once and only when asked for: on a big Inbox
// every read is a call into Outlook.
class MailReader {
 public:
  explicit MailReader(outlook::Item& mail) : mail_(mail) {}
  const std::wstring& SenderName() { return Once(sender_, [&] { return mail_.SenderName(); }); }
  const std::wstring& Body() { return Once(body_, [&] { return mail_.Body(); }); }
  const std::wstring& Subject() { return Once(subject_, [&] { return mail_.Subject(); }); }

 private:
  template <class F>
  const std::wstring& Once(std::optional<std::wstring>& slot, F read) {
    if (!slot) slot = read();
    return *slot;
  }
  outlook::Item& mail_;
  std::optional<std::wstring> sender_, body_, subject_;
};

// The field of the first hit, in the order the scan tests: sender, body, subject, then each
// attachment's name; 0 for none. A field no active rule holds a value for is not read at all:
// an empty rule value never equals a non-empty one, so the answer is the same.
int FirstHit(AddIn& addin, outlook::Item& mail, MailReader& reader) {
  Rules& rules = addin.rules.glbRules;
  if (rules.AnyActiveValue(kRuleFrom) && IsVirusList(addin, reader.SenderName(), kRuleFrom))
    return kRuleFrom;
  if (rules.AnyActiveValue(kRuleBody) && IsVirusList(addin, reader.Body(), kRuleBody))
    return kRuleBody;
  if (rules.AnyActiveValue(kRuleSubject) && IsVirusList(addin, reader.Subject(), kRuleSubject))
    return kRuleSubject;
  if (rules.AnyActiveValue(kRuleAttachment)) {
    auto attachments = mail.Attachments();
    const int32_t count = attachments->Count();
    for (int32_t i = 1; i <= count; ++i) {
      if (IsVirusList(addin, attachments->Item(i)->FileName(), kRuleAttachment))
        return kRuleAttachment;
    }
  }
  return 0;
}

}  // namespace

bool IsVirusList(AddIn& addin, const std::wstring& value, int type) {
  return addin.Run(L"IsVirusList", false, [&] {
    // The value goes in its field's place among the matcher's four arguments (subject, body,
    // attachment, from); the other three stay empty.
    int place = -1;
    switch (type) {
      case kRuleSubject: place = 0; break;
      case kRuleBody: place = 1; break;
      case kRuleAttachment: place = 2; break;
      case kRuleFrom: place = 3; break;
      default: return false;
    }
    std::wstring arguments[4];
    arguments[place] = value;
    return addin.rules.glbRules.IsMatchRuleAndActive(arguments[0], arguments[1], arguments[2],
                                                     arguments[3]);
  });
}

int32_t DeleteInfectedItems(AddIn& addin) {
  int32_t deleted = 0;
  addin.Run(L"DeleteInfectedItems", [&] {
    if (!addin.oApplication) return;
    auto inbox =
        addin.oApplication->GetNamespace(L"MAPI")->GetDefaultFolder(outlook::olFolderInbox);
    WalkNewMails(*inbox, addin.config, [&](outlook::Item& item, Date received) {
      MailReader reader(item);
      const int hit = FirstHit(addin, item, reader);
      if (hit == 0) return false;
      LogVirusAlert(addin, item.SentOn(), received, reader.SenderName(), reader.Subject(), hit,
                    L"Delete");
      item.Delete();  // into Deleted Items: the user can still get it back
      ++deleted;
      return true;
    });
  });
  return deleted;
}

}  // namespace corvina
