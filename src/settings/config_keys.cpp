#include "settings/config_keys.h"

#include "base/text.h"

namespace corvina {
namespace {

constexpr wchar_t kConf[] = L"Configuration";
constexpr wchar_t kThumb[] = L"Thumbnail";
constexpr wchar_t kPicker[] = L"Picker";
constexpr wchar_t kUploader[] = L"Uploader";
constexpr wchar_t kChat[] = L"Chat";

#define CORVINA_KEY(section, name) ConfigKey{section, L## #name, L## #name, &Config::name}

const ConfigKey kThumbnailKeys[] = {
    CORVINA_KEY(kConf, glbThumbColor),
    CORVINA_KEY(kConf, glbThumbWidth),
    CORVINA_KEY(kConf, glbThumbHeight),
    CORVINA_KEY(kConf, glbThumbZoomFit),
};

const ConfigKey kGeneralKeys[] = {
    // The three columns of the automatic-copy table; their keys end in a blank.
    ConfigKey{kConf, L"ExtName ", L"ExtName ", &Config::ExtName},
    ConfigKey{kConf, L"ExtDest ", L"ExtDest ", &Config::ExtDest},
    ConfigKey{kConf, L"ExtChecked ", L"ExtChecked ", &Config::ExtChecked},
    CORVINA_KEY(kConf, AutoReplace),
    CORVINA_KEY(kConf, SmartSenderAs),
    CORVINA_KEY(kConf, SmartSenderAttachments),
    ConfigKey{kConf, L"DefaultFolder", L"DefaultFolder", &Config::DefaultFolder,
              FixUp::kBlankIsDefault},
    // Read with a trailing blank, written without: a saved choice is not read back, and the
    // add-in folder's Temp stays in use. Long-standing behaviour that users' stores rely on.
    ConfigKey{kConf, L"TempFolder ", L"TempFolder", &Config::TempFolder, FixUp::kBlankIsDefault},
    // The language is written for other tools to see but never read: loading always starts
    // in English.
    ConfigKey{kConf, nullptr, L"Interfacelanguage", &Config::glbLanguage},
    CORVINA_KEY(kConf, VirusSubject),
    CORVINA_KEY(kConf, VirusBody),
    CORVINA_KEY(kConf, VirusFrom),
    CORVINA_KEY(kConf, VirusAttachments),
    CORVINA_KEY(kConf, VirusDescription),
    CORVINA_KEY(kConf, VirusActive),
    // Who sent each rule that came in an alert mail, kept beside the six lists above.
    CORVINA_KEY(kConf, VirusRuleOrigins),
    CORVINA_KEY(kConf, PromtForIncomingVirus),
    CORVINA_KEY(kConf, BeepForIncomingVirus),
    CORVINA_KEY(kConf, AutoDeleteInfectedMessage),
    CORVINA_KEY(kConf, HidePreviewPanel),
    CORVINA_KEY(kConf, PromtForIncomingVirusAutoUpdate),
    CORVINA_KEY(kConf, AllowAutoUpdateVirusList),
    CORVINA_KEY(kConf, BackGroundColorAll),
    CORVINA_KEY(kConf, IsdAddressBookAvailable),
    CORVINA_KEY(kConf, ScanForVirusAtStartup),
    CORVINA_KEY(kConf, ScanForVirusAlertAtStartup),
    CORVINA_KEY(kConf, IncludeHtmlEmbeded),
    CORVINA_KEY(kConf, InformNewVersion),
    // Written by start-up and shut-down themselves, not by the general save.
    ConfigKey{kConf, L"VersionMajor", nullptr, &Config::VersionMajor},
    ConfigKey{kConf, L"VersionMinor", nullptr, &Config::VersionMinor},
    ConfigKey{kConf, L"VersionRevision", nullptr, &Config::VersionRevision},
    ConfigKey{kConf, L"IsFirstTime", nullptr, &Config::IsFirstTime},
    CORVINA_KEY(kConf, HomePageLink),
    CORVINA_KEY(kConf, UrlVireoVersion),
    CORVINA_KEY(kConf, UrlVireoDll),
    CORVINA_KEY(kConf, AppPath),
    CORVINA_KEY(kConf, HideAllText),
    CORVINA_KEY(kConf, HideDistListOnServer),
};

const ConfigKey kViewKeys[] = {
    CORVINA_KEY(kThumb, ZoomLeft),
    CORVINA_KEY(kThumb, ZoomTop),
    CORVINA_KEY(kThumb, ZoomWidth),
    CORVINA_KEY(kThumb, ZoomHeight),
    CORVINA_KEY(kThumb, ZoomMaximized),
    CORVINA_KEY(kThumb, ThumbListView),
    CORVINA_KEY(kThumb, ColorExistingFiles),
    CORVINA_KEY(kThumb, ZoomZoom),
    CORVINA_KEY(kThumb, ZoomGrid),
    CORVINA_KEY(kThumb, ZoomOnTop),
    CORVINA_KEY(kThumb, ThumbnailLeft),
    CORVINA_KEY(kThumb, ThumbnailTop),
    CORVINA_KEY(kThumb, ThumbnailWidth),
    CORVINA_KEY(kThumb, ThumbnailHeight),
    CORVINA_KEY(kThumb, ThumbnailMaximized),
    CORVINA_KEY(kThumb, ThumbnailSorted),
    CORVINA_KEY(kThumb, ThumbnailSortIndex),
    CORVINA_KEY(kThumb, ThumbnailSortOrder),
    CORVINA_KEY(kPicker, PickerLeft),
    CORVINA_KEY(kPicker, PickerTop),
    CORVINA_KEY(kPicker, PickerWidth),
    CORVINA_KEY(kPicker, PickerHeight),
    CORVINA_KEY(kPicker, PickerMaximized),
    CORVINA_KEY(kConf, Statistic1),
    CORVINA_KEY(kConf, Statistic2),
    CORVINA_KEY(kConf, Statistic3),
    CORVINA_KEY(kConf, Statistic4),
    CORVINA_KEY(kConf, Statistic5),
    CORVINA_KEY(kConf, Statistic7),
    CORVINA_KEY(kConf, Statistic8),
    CORVINA_KEY(kConf, Statistic9),
    CORVINA_KEY(kConf, Statistic10),
    CORVINA_KEY(kConf, Statistic11),
    CORVINA_KEY(kConf, Statistic12),
    CORVINA_KEY(kConf, Statistic13),
    CORVINA_KEY(kConf, Statistic14),
    CORVINA_KEY(kConf, FitImage),
    CORVINA_KEY(kConf, FullScanOnStartUpDone),
    CORVINA_KEY(kConf, FullScanOnStartDontShowAgain),
    CORVINA_KEY(kConf, TrayShow),
    CORVINA_KEY(kConf, TrayMonitor),
    CORVINA_KEY(kConf, TrayAnimateIcon),
    CORVINA_KEY(kConf, DontShowAgainForVersion),
    CORVINA_KEY(kUploader, UploaderID),
    CORVINA_KEY(kUploader, UploaderPwd),
    CORVINA_KEY(kConf, DangerousExtentions),
    CORVINA_KEY(kConf, ShellExtentions),
};

const ConfigKey kChatKeys[] = {
    CORVINA_KEY(kChat, ChatEmail),
    // Read without, written with a trailing blank (the saved value is not read back).
    ConfigKey{kChat, L"ChatImags", L"ChatImags ", &Config::ChatImags},
    CORVINA_KEY(kChat, ChatTime),
    CORVINA_KEY(kChat, ChatLong),
    CORVINA_KEY(kChat, ChatBlockAll),
    // The chat user list writes these itself.
    ConfigKey{kChat, L"ChatUserEmail", nullptr, &Config::ChatUserEmail},
    ConfigKey{kChat, L"ChatUserNickName", nullptr, &Config::ChatUserNickName},
    ConfigKey{kChat, L"ChatUserIcon", nullptr, &Config::ChatUserIcon},
    ConfigKey{kChat, L"ChatUserStatus", nullptr, &Config::ChatUserStatus},
    ConfigKey{kChat, L"ChatUserColorChatMessage", nullptr, &Config::ChatUserColorChatMessage},
    ConfigKey{kChat, L"ChatUserColorChatUser", nullptr, &Config::ChatUserColorChatUser},
    CORVINA_KEY(kChat, ChatFormTop),
    CORVINA_KEY(kChat, ChatFormLeft),
    CORVINA_KEY(kChat, ChatFormWidth),
    CORVINA_KEY(kChat, ChatFormHeight),
    CORVINA_KEY(kChat, ChatDeleteMsg),
    CORVINA_KEY(kChat, ChatAutoInsertUser),
    CORVINA_KEY(kChat, ChatAutoSendReceive),
    CORVINA_KEY(kChat, ChatBeepOnMsg),
    CORVINA_KEY(kChat, ChatClearBoardOnClose),
    CORVINA_KEY(kChat, ChatRTL),
    CORVINA_KEY(kConf, SmartSenderSubject),
};

#undef CORVINA_KEY

}  // namespace

std::span<const ConfigKey> ThumbnailConfigKeys() { return kThumbnailKeys; }
std::span<const ConfigKey> GeneralConfigKeys() { return kGeneralKeys; }
std::span<const ConfigKey> ViewConfigKeys() { return kViewKeys; }
std::span<const ConfigKey> ChatConfigKeys() { return kChatKeys; }

std::wstring StoredText(const Config& config, const ConfigMember& member) {
  struct Visitor {
    const Config& c;
    std::wstring operator()(std::wstring Config::*m) const { return c.*m; }
    std::wstring operator()(int32_t Config::*m) const { return std::to_wstring(c.*m); }
    std::wstring operator()(int16_t Config::*m) const { return std::to_wstring(c.*m); }
    std::wstring operator()(bool Config::*m) const { return BoolText(c.*m); }
  };
  return std::visit(Visitor{config}, member);
}

void AssignStoredText(Config& config, const ConfigMember& member, const std::wstring& text) {
  struct Visitor {
    Config& c;
    const std::wstring& t;
    void operator()(std::wstring Config::*m) const { c.*m = t; }
    void operator()(int32_t Config::*m) const { c.*m = ToLong(t); }
    void operator()(int16_t Config::*m) const { c.*m = ToInteger(t); }
    void operator()(bool Config::*m) const { c.*m = ToBoolean(t); }
  };
  std::visit(Visitor{config, text}, member);
}

}  // namespace corvina
