#include "virus/virus_log.h"

#include "base/text.h"
#include "rules/rule.h"

namespace corvina {

std::wstring VirusLogPath(const AddIn& addin) {
  return addin.services.addin_folder + L"\\" + kVirusLogName;
}

std::wstring MatchedFieldName(int type) {
  switch (type) {
    case kRuleSubject: return L"Subject";
    case kRuleBody: return L"Body";
    case kRuleFrom: return L"From";
    case kRuleAttachment: return L"Attachment";
    default: return L"UnKnown";
  }
}

void LogVirusAlert(AddIn& addin, Date sent, Date received, const std::wstring& sender,
                   const std::wstring& subject, int type, const std::wstring& action) {
  addin.Run(L"LogVirusAlert", [&] {
    Clock& clock = addin.services.clock;
    const std::wstring line = clock.GeneralDate(sent) + L"\t" + clock.GeneralDate(received) +
                              L"\t" + sender + L"\t" + subject + L"\t" + MatchedFieldName(type) +
                              L"\t" + action + L"\r\n";
    addin.services.files.AppendFile(VirusLogPath(addin), ToUtf8(line));
  });
}

}  // namespace corvina
