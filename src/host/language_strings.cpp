#include "host/language_strings.h"

#include "settings/config.h"

namespace corvina {

ControlTexts TextsForControl(int index) {
  switch (index) {
    case 0: return {L"Cool Mail", L"Choose a stationery for this mail"};
    case 1: return {L"Save", L"Save the attachments of the selected mails"};
    case 2: return {L"Configuration", L"Corvina settings"};
    case 3: return {L"Preview", L"Preview the pictures attached to the selected mails"};
    case 4: return {L"Smart Sender", L"Send to a distribution list"};
    case 5: return {L"Hebrew", L"Translate text typed with the wrong keyboard layout"};
    case 7: return {L"Language", L"Choose the language of Corvina"};
    case 8: return {L"Virus Alert", L"Virus-alert patterns and scans"};
    case 9: return {L"About", L"About Corvina"};
    case 10: return {L"Upload", L"Upload files"};
    case 11: return {L"My Storage", L"Open My Storage"};
    case 12: return {L"Chat", L"Chat with other Corvina users"};
    case 13: return {L"Search", L"Search the mail folders for attachments"};
    case 14: return {L"Voice Mail", L"Record a voice message for this mail"};
    default: return {L"", L""};
  }
}

std::wstring NotInThisBuildText(const std::wstring& feature) {
  return feature + L" is not part of this build of " + kProductName + L".";
}

}  // namespace corvina
