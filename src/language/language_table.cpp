// The texts of every TextId. English is complete; the other three languages follow.
#include "language/language.h"

namespace corvina {
namespace {

using enum TextId;

// Rows in TextId order: LanguageText finds a row by its index.
const LanguageRow kRows[] = {
    {kCaptionCoolMail, {L"Cool Mail"}},
    {kTipCoolMail, {L"Choose a stationery for this mail"}},
    {kCaptionSave, {L"Save"}},
    {kTipSave, {L"Save the attachments of the selected mails"}},
    {kCaptionConfiguration, {L"Configuration"}},
    {kTipConfiguration, {L"Corvina settings"}},
    {kCaptionPreview, {L"Preview"}},
    {kTipPreview, {L"Preview the pictures attached to the selected mails"}},
    {kCaptionSmartSender, {L"Smart Sender"}},
    {kTipSmartSender, {L"Send to a distribution list"}},
    {kCaptionHebrew, {L"Hebrew"}},
    {kTipHebrew, {L"Translate text typed with the wrong keyboard layout"}},
    {kCaptionVirusAlert, {L"Virus Alert"}},
    {kTipVirusAlert, {L"Virus-alert patterns and scans"}},
    {kCaptionAbout, {L"About"}},
    {kTipAbout, {L"About Corvina"}},
    {kCaptionChat, {L"Chat"}},
    {kTipChat, {L"Chat with other Corvina users"}},
    {kCaptionSearch, {L"Search"}},
    {kTipSearch, {L"Search the mail folders for attachments"}},
    {kCaptionVoiceMail, {L"Voice Mail"}},
    {kTipVoiceMail, {L"Record a voice message for this mail"}},

    {kNotMailItem, {L"Not a mail item"}},
    {kHebrewWarning,
     {L"Your system may not support Add-ins Hebrew fonts,\r\n"
      L"If Hebrew will not be displayed correctly, return to English"}},
    {kAboutText, {L"Corvina %1\r\nAttachments, chat and virus alerts for Outlook."}},
    {kNotInThisBuild, {L"%1 is not part of this build of Corvina."}},
    {kFeatureStationery, {L"The stationery picker"}},
    {kFeatureProperties, {L"The properties dialog"}},
    {kOpenVirusAlerterInstead, {L"Open the virus-alert window?"}},
    {kFeaturePreview, {L"The picture preview"}},
    {kFeatureDistributionLists, {L"The distribution-list menu"}},
    {kFeatureTranslator, {L"The keyboard-layout translator"}},
    {kFeatureSearch, {L"The attachment search"}},
    {kFeatureRecorder, {L"The voice recorder"}},

    {kMsgBoxYes, {L"Yes"}},
    {kMsgBoxNo, {L"No"}},
    {kMsgBoxOk, {L"OK"}},
    {kMsgBoxCancel, {L"Cancel"}},
    {kMsgBoxDontShow, {L"Don't show this message again"}},

    {kSavingTitle, {L"Corvina - Saving files ..."}},
    {kSavingCaption, {L"Saving attachments, please wait ..."}},
    {kSavingTotal, {L"Attachments: %1"}},
    {kSavingSaved, {L"Saved: %1"}},
    {kSavingCancel, {L"Cancel"}},
    {kSavingHide, {L"Hide"}},
    {kBrowseEntry, {L"Browse..."}},

    {kLargeSelection,
     {L"You have selected %1 Emails to save their attachments \r\n"
      L"with approximately total size In MB of %2\r\n"
      L"this may take a while\r\n"
      L"are you sure you want to procced?"}},
    {kInsertFloppy, {L"First, insert floppy, action canceled !"}},
    {kCreateDestination, {L"Destination directory %1 does not exist\r\nDo you want to create it ?"}},
    {kReplaceFile, {L"The file %1 Already exsists.\r\nDo you want to replace it ?"}},
    {kNoDiskSpace, {L"You do not have enought free disk space on the selected drive"}},

    {kChatCaption, {L"Corvina Chat"}},
    {kChatSelectRecipient, {L"Please select at least one recipient !"}},
    {kChatSendFailed, {L"ERROR - Failed to send last message to: %1 (%2) At %3 !!!"}},
    {kChatSent, {L"Last message sent successfully to: %1"}},
    {kChatMailNotFound, {L"Can not locate mail, open manually !"}},
    {kChatCannotExtractUser, {L"Can not extract user, action canceled !"}},
    {kChatUserExists, {L"User %1 already exists, action canceled !"}},
    {kChatInvalidEmail, {L"Invalid Email !"}},
    {kChatEmailSemicolon, {L"Email should not contains ;"}},
    {kChatEnterNickName, {L"Please enter a NickName."}},
    {kChatNickNameSemicolon, {L"NickName should not contains ;"}},
    {kChatEmailExists, {L"Email already exists !"}},
    {kChatAddressInvalid, {L"The Email you have entered is invalid"}},
    {kChatClearQuestion, {L"Are you sure u want to clear the message board ?"}},
    {kChatSaveError, {L"Error saving to a file !"}},
    {kChatPropertiesCaption, {L"%1 Properties"}},
    {kChatOwnAddress, {L"Your chat address (others see your messages as from it)"}},
    {kChatNewUserAddress, {L"The chat address of the new user"}},
    {kChatSaveTitle, {L"Save the chat board"}},

    {kVirusAlerterCaption, {L"Corvina Virus Alert"}},
    {kVirusItemsDeleted, {L" mail(s) matching an active rule were moved to Deleted Items."}},
    {kVirusAlertsTakenIn, {L" virus alert mail(s) were read and deleted."}},
    {kVirusSelectRule, {L"Please select a rule first."}},
    {kVirusNoRecipients, {L"No recipient was selected: the virus alert was not sent."}},
    {kVirusAlertSent, {L"The virus alert \"%1\" was sent to %2."}},
    {kVirusRemoveQuestion, {L"Remove the rule \"%1\"?"}},
    {kVirusWebHelp, {L"Each rule names values of a dangerous mail: its subject, its body, the name of one of its attachments or its sender's display name. Scan Inbox deletes every new mail in which one of these equals an active rule's value exactly (letter case counts); deleted mails go to Deleted Items and are listed in the log. Send Alert mails the selected rule to other Corvina users, whose Scan for Alerts adds it to their rules."}},
    {kVirusReportCaption, {L"Corvina Virus Log"}},
    {kVirusLogMissing, {L"There is no virus log: no mail has been deleted by a scan."}},
    {kVirusLogCleared, {L"The virus log was cleared."}},
    {kRuleWizardCaption, {L"Corvina Rule Wizard"}},
    {kRuleNameEmpty, {L"Please enter a name for the rule."}},
    {kRuleNameExists, {L"A rule named \"%1\" already exists. Please choose another name."}},
    {kRuleValueSemicolon, {L"A rule's name and values can not contain \";\"."}},
    {kRuleSentenceNone, {L"This rule has no values yet: it will never match a mail."}},
    {kRuleSentenceIntro, {L"This rule matches a new mail when"}},
    {kRuleSentenceSubject, {L"its subject is exactly \"%1\""}},
    {kRuleSentenceBody, {L"its whole body is exactly \"%1\""}},
    {kRuleSentenceAttachment, {L"one of its attachments is named exactly \"%1\""}},
    {kRuleSentenceFrom, {L"its sender's display name is exactly \"%1\""}},
    {kRuleSentenceOr, {L"or"}},
    {kRuleSentenceTail, {L"Each filled value is compared on its own, letter case included: one equal value is enough, the values are not combined. A matching mail is moved to Deleted Items when you scan."}},
    {kRuleSentenceInactive, {L"The rule is switched off: it matches nothing until you switch it on."}},
};

static_assert(std::size(kRows) == static_cast<size_t>(kCount), "one row per TextId");

}  // namespace

std::span<const LanguageRow> LanguageTable() { return kRows; }

}  // namespace corvina
