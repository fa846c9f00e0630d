#pragma once
// "VireoVirus.Log": one tab-separated line per mail a scan deleted, in the add-in's folder.
#include <string>

#include "addin/addin.h"
#include "base/date.h"

namespace corvina {

inline constexpr wchar_t kVirusLogName[] = L"VireoVirus.Log";

std::wstring VirusLogPath(const AddIn& addin);
// "Subject", "Body", "From", "Attachment" for the tested fields, "UnKnown" for any other.
std::wstring MatchedFieldName(int type);
// Appends sent time, received time, sender, subject, the matched field's name and the action,
// tab-separated, ended by CRLF. A log that cannot be written costs the line, nothing else.
void LogVirusAlert(AddIn& addin, Date sent, Date received, const std::wstring& sender,
                   const std::wstring& subject, int type, const std::wstring& action);

}  // namespace corvina
