#pragma once
// The key of every user-visible text that follows the user's language: captions, tooltips and
// the texts of windows and boxes. A feature adds its texts here and to the language table.
//
// Texts that read the same in every language (the progress messages of frmInit, "My_Menu1_Click
// ", the folder browser's title, log lines) are not keys: they stay literal where they are used.
#include <cstdint>

namespace corvina {

enum class TextId : uint16_t {
  // Toolbar controls, caption and tooltip, in the order of the control table.
  kCaptionCoolMail,
  kTipCoolMail,
  kCaptionSave,
  kTipSave,
  kCaptionConfiguration,
  kTipConfiguration,
  kCaptionPreview,
  kTipPreview,
  kCaptionSmartSender,
  kTipSmartSender,
  kCaptionHebrew,
  kTipHebrew,
  kCaptionVirusAlert,
  kTipVirusAlert,
  kCaptionAbout,
  kTipAbout,
  kCaptionChat,
  kTipChat,
  kCaptionSearch,
  kTipSearch,
  kCaptionVoiceMail,
  kTipVoiceMail,

  // Toolbar messages.
  kNotMailItem,
  kHebrewWarning,
  kAboutText,           // %1: the version
  kNotInThisBuild,      // %1: the feature
  kFeatureStationery,
  kFeatureProperties,
  kOpenVirusAlerterInstead,
  kFeaturePreview,
  kFeatureDistributionLists,
  kFeatureTranslator,
  kFeatureSearch,
  kFeatureRecorder,

  // frmMsgBox.
  kMsgBoxYes,
  kMsgBoxNo,
  kMsgBoxOk,
  kMsgBoxCancel,
  kMsgBoxDontShow,

  // frmSaving and the folder menu.
  kSavingTitle,
  kSavingCaption,
  kSavingTotal,         // %1: attachments in the job
  kSavingSaved,         // %1: saved so far
  kSavingCancel,
  kSavingHide,
  kBrowseEntry,

  // Saving's questions and messages.
  kLargeSelection,      // %1: number of mails, %2: megabytes
  kInsertFloppy,
  kCreateDestination,   // %1: the folder
  kReplaceFile,         // %1: the file
  kNoDiskSpace,

  // frmChat and its dialogs.
  kChatCaption,
  kChatSelectRecipient,
  kChatSendFailed,      // %1: names, %2: addresses, %3: the time
  kChatSent,            // %1: names
  kChatMailNotFound,
  kChatCannotExtractUser,
  kChatUserExists,      // %1: the address
  kChatInvalidEmail,
  kChatEmailSemicolon,
  kChatEnterNickName,
  kChatNickNameSemicolon,
  kChatEmailExists,
  kChatAddressInvalid,
  kChatClearQuestion,
  kChatSaveError,
  kChatPropertiesCaption,  // %1: the nick name
  kChatOwnAddress,
  kChatNewUserAddress,
  kChatSaveTitle,

  // frmVirusAlerter, the rule wizard and frmVirusReport.
  kVirusAlerterCaption,
  kVirusItemsDeleted,  // follows the count
  kVirusAlertsTakenIn,  // follows the count
  kVirusSelectRule,
  kVirusNoRecipients,
  kVirusAlertSent,  // %1: the rule, %2: the recipients
  kVirusRemoveQuestion,  // %1: the rule
  kVirusWebHelp,
  kVirusReportCaption,
  kVirusLogMissing,
  kVirusLogCleared,
  kRuleWizardCaption,
  kRuleNameEmpty,
  kRuleNameExists,  // %1: the name
  kRuleValueSemicolon,
  kRuleSentenceNone,
  kRuleSentenceIntro,  // followed by the filled values
  kRuleSentenceSubject,  // %1: the value
  kRuleSentenceBody,
  kRuleSentenceAttachment,
  kRuleSentenceFrom,
  kRuleSentenceOr,
  kRuleSentenceTail,
  kRuleSentenceInactive,

  kCount
};

}  // namespace corvina
