#pragma once
// Every user setting, in memory. Members are named like their keys (the keys are the names
// other code and the stored settings use), and each is initialised to its default, so a
// setting that loading never reached keeps the default it was declared with.
#include <cstdint>
#include <string>
#include <vector>

#include "base/date.h"

namespace corvina {

inline constexpr wchar_t kAppName[] = L"Vireo";
inline constexpr wchar_t kProductName[] = L"Corvina";
// The vendor's site, written with backslashes as the stored defaults always have been.
inline constexpr wchar_t kHomePage[] = L"http:\\\\www.corvina-mail.example";

struct Config {
  // Section "Configuration".
  int32_t glbThumbColor = 16777215;
  int32_t glbThumbWidth = 92;
  int32_t glbThumbHeight = 92;
  std::wstring glbThumbZoomFit = L"1";
  int16_t glbFoldersMax = -1;
  std::vector<std::wstring> glbFolder;
  std::wstring ExtName;
  std::wstring ExtDest;
  std::wstring ExtChecked;
  std::wstring AutoReplace = L"1";
  std::wstring SmartSenderAs = L"0";
  std::wstring SmartSenderAttachments = L"1";
  std::wstring SmartSenderSubject = L"You've got Mail";
  std::wstring DefaultFolder = L"1";
  std::wstring TempFolder;  // add-in folder + "\Temp"
  std::wstring VirusSubject;
  std::wstring VirusBody;
  std::wstring VirusFrom;
  std::wstring VirusAttachments;
  std::wstring VirusDescription;
  std::wstring VirusActive;
  // Pairs of rule name and sender, tab-separated, for the rules alert mails brought.
  std::wstring VirusRuleOrigins;
  std::wstring PromtForIncomingVirus = L"1";
  std::wstring BeepForIncomingVirus = L"1";
  std::wstring AutoDeleteInfectedMessage;
  std::wstring HidePreviewPanel = L"1";
  std::wstring PromtForIncomingVirusAutoUpdate;
  std::wstring AllowAutoUpdateVirusList = L"1";
  std::wstring BackGroundColorAll = L"16744576";
  std::wstring IsdAddressBookAvailable = L"1";
  std::wstring ScanForVirusAtStartup;
  std::wstring ScanForVirusAlertAtStartup;
  std::wstring IncludeHtmlEmbeded = L"1";
  std::wstring InformNewVersion = L"1";
  std::wstring VersionMajor = L"0";
  std::wstring VersionMinor = L"0";
  std::wstring VersionRevision = L"0";
  std::wstring IsFirstTime = L"0";
  std::wstring HomePageLink = kHomePage;
  std::wstring UrlVireoVersion = std::wstring(kHomePage) + L"\\Vireo.asp";
  std::wstring UrlVireoDll = std::wstring(kHomePage) + L"\\Vireo.txt";
  std::wstring AppPath;  // the add-in's folder
  std::wstring HideAllText = L"0";
  std::wstring HideDistListOnServer = L"1";
  // Usage counters sent by the web client; there is deliberately no Statistic6.
  std::wstring Statistic1 = L"0";
  std::wstring Statistic2 = L"0";
  std::wstring Statistic3 = L"0";
  std::wstring Statistic4 = L"0";
  std::wstring Statistic5 = L"0";
  std::wstring Statistic7 = L"0";
  std::wstring Statistic8 = L"0";
  std::wstring Statistic9 = L"0";
  std::wstring Statistic10 = L"0";
  std::wstring Statistic11 = L"0";
  std::wstring Statistic12 = L"0";
  std::wstring Statistic13 = L"0";
  std::wstring Statistic14 = L"0";
  std::wstring FitImage = L"0";
  std::wstring FullScanOnStartUpDone = L"0";
  std::wstring FullScanOnStartDontShowAgain = L"0";
  std::wstring TrayShow = L"0";
  std::wstring TrayMonitor = L"0";
  std::wstring TrayAnimateIcon = L"1";
  std::wstring DontShowAgainForVersion = L"28";
  std::wstring DangerousExtentions = L"vbs;bat;com;eml;nws;hta;sys;inf";
  std::wstring ShellExtentions;
  std::wstring LastMailMonitorTime;  // "yyyymmddhhnn"; now when loading finds none

  // Section "Thumbnail".
  std::wstring ZoomLeft = L"0";
  std::wstring ZoomTop = L"0";
  std::wstring ZoomWidth = L"2000";
  std::wstring ZoomHeight = L"2500";
  std::wstring ZoomMaximized = L"False";
  int32_t ThumbListView = 0;
  std::wstring ColorExistingFiles = L"1";
  std::wstring ZoomZoom = L"200";
  std::wstring ZoomGrid = L"False";
  std::wstring ZoomOnTop = L"True";
  std::wstring ThumbnailLeft = L"100";
  std::wstring ThumbnailTop = L"100";
  std::wstring ThumbnailWidth = L"9105";
  std::wstring ThumbnailHeight = L"7455";
  std::wstring ThumbnailMaximized = L"False";
  bool ThumbnailSorted = false;
  int16_t ThumbnailSortIndex = 0;
  int32_t ThumbnailSortOrder = 0;

  // Section "Picker".
  std::wstring PickerLeft = L"2925";
  std::wstring PickerTop = L"1770";
  std::wstring PickerWidth = L"8385";
  std::wstring PickerHeight = L"7035";
  std::wstring PickerMaximized = L"False";

  // Section "Uploader". The password is kept as typed.
  std::wstring UploaderID;
  std::wstring UploaderPwd;

  // Section "Chat".
  std::wstring ChatEmail;
  std::wstring ChatImags = L"0";
  std::wstring ChatTime = L"1";
  int32_t ChatLong = 0;
  std::wstring ChatBlockAll = L"0";
  std::wstring ChatUserEmail;
  std::wstring ChatUserNickName;
  std::wstring ChatUserIcon;
  std::wstring ChatUserStatus;
  std::wstring ChatUserColorChatMessage;
  std::wstring ChatUserColorChatUser;
  std::wstring ChatFormTop;
  std::wstring ChatFormLeft;
  std::wstring ChatFormWidth;
  std::wstring ChatFormHeight;
  std::wstring ChatDeleteMsg = L"1";
  std::wstring ChatAutoInsertUser = L"1";
  std::wstring ChatAutoSendReceive = L"0";
  std::wstring ChatBeepOnMsg = L"1";
  std::wstring ChatClearBoardOnClose = L"1";
  std::wstring ChatRTL = L"0";

  // Set by loading, never stored.
  std::wstring glbLanguage = L"English";
  std::wstring PictureTypes;      // ",gif,jpg,...": types the preview shows
  std::wstring ImageTypes;        // ",gif,jpg,jpe,jpeg,bmp,ico,": types drawn as pictures

  // Defaults that depend on where the add-in lives.
  explicit Config(const std::wstring& addin_folder = L"");
};

}  // namespace corvina
