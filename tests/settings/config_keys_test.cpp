// Every stored setting, checked against the store both ways: where it is read and written
// (section and spelling), its type and its default, and the order loading reads them in.
#include <gtest/gtest.h>

#include <map>

#include "base/text.h"
#include "settings/config_store.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::kAddinFolder;
using testing::SimWorld;

constexpr wchar_t C[] = L"Configuration";
constexpr wchar_t T[] = L"Thumbnail";
constexpr wchar_t P[] = L"Picker";
constexpr wchar_t U[] = L"Uploader";
constexpr wchar_t H[] = L"Chat";

// S text kept as read, L 32-bit and I 16-bit numbers, B "True"/"False". `read` or `write` is
// null where the key is only written or only read by the general load and save.
struct Key {
  const wchar_t* section;
  const wchar_t* read;
  const wchar_t* write;
  char type;
  std::wstring fallback;
};

std::wstring In(const wchar_t* sub) { return std::wstring(kAddinFolder) + sub; }

// In the order loading reads them. The folder list and LastMailMonitorTime are read by code
// of their own between the groups; they are checked by their own tests.
const std::vector<Key>& Keys() {
  static const std::vector<Key> keys = {
      {C, L"glbThumbColor", L"glbThumbColor", 'L', L"16777215"},
      {C, L"glbThumbWidth", L"glbThumbWidth", 'L', L"92"},
      {C, L"glbThumbHeight", L"glbThumbHeight", 'L', L"92"},
      {C, L"glbThumbZoomFit", L"glbThumbZoomFit", 'S', L"1"},
      {C, L"ExtName ", L"ExtName ", 'S', L""},
      {C, L"ExtDest ", L"ExtDest ", 'S', L""},
      {C, L"ExtChecked ", L"ExtChecked ", 'S', L""},
      {C, L"AutoReplace", L"AutoReplace", 'S', L"1"},
      {C, L"SmartSenderAs", L"SmartSenderAs", 'S', L"0"},
      {C, L"SmartSenderAttachments", L"SmartSenderAttachments", 'S', L"1"},
      {C, L"DefaultFolder", L"DefaultFolder", 'S', L"1"},
      {C, L"TempFolder ", L"TempFolder", 'S', In(L"\\Temp")},
      {C, nullptr, L"Interfacelanguage", 'S', L"English"},
      {C, L"VirusSubject", L"VirusSubject", 'S', L""},
      {C, L"VirusBody", L"VirusBody", 'S', L""},
      {C, L"VirusFrom", L"VirusFrom", 'S', L""},
      {C, L"VirusAttachments", L"VirusAttachments", 'S', L""},
      {C, L"VirusDescription", L"VirusDescription", 'S', L""},
      {C, L"VirusActive", L"VirusActive", 'S', L""},
      {C, L"VirusRuleOrigins", L"VirusRuleOrigins", 'S', L""},
      {C, L"PromtForIncomingVirus", L"PromtForIncomingVirus", 'S', L"1"},
      {C, L"BeepForIncomingVirus", L"BeepForIncomingVirus", 'S', L"1"},
      {C, L"AutoDeleteInfectedMessage", L"AutoDeleteInfectedMessage", 'S', L""},
      {C, L"HidePreviewPanel", L"HidePreviewPanel", 'S', L"1"},
      {C, L"PromtForIncomingVirusAutoUpdate", L"PromtForIncomingVirusAutoUpdate", 'S', L""},
      {C, L"AllowAutoUpdateVirusList", L"AllowAutoUpdateVirusList", 'S', L"1"},
      {C, L"BackGroundColorAll", L"BackGroundColorAll", 'S', L"16744576"},
      {C, L"IsdAddressBookAvailable", L"IsdAddressBookAvailable", 'S', L"1"},
      {C, L"ScanForVirusAtStartup", L"ScanForVirusAtStartup", 'S', L""},
      {C, L"ScanForVirusAlertAtStartup", L"ScanForVirusAlertAtStartup", 'S', L""},
      {C, L"IncludeHtmlEmbeded", L"IncludeHtmlEmbeded", 'S', L"1"},
      {C, L"InformNewVersion", L"InformNewVersion", 'S', L"1"},
      {C, L"VersionMajor", nullptr, 'S', L"0"},
      {C, L"VersionMinor", nullptr, 'S', L"0"},
      {C, L"VersionRevision", nullptr, 'S', L"0"},
      {C, L"IsFirstTime", nullptr, 'S', L"0"},
      {C, L"HomePageLink", L"HomePageLink", 'S', kHomePage},
      {C, L"UrlVireoVersion", L"UrlVireoVersion", 'S', std::wstring(kHomePage) + L"\\Vireo.asp"},
      {C, L"UrlVireoDll", L"UrlVireoDll", 'S', std::wstring(kHomePage) + L"\\Vireo.txt"},
      {C, L"AppPath", L"AppPath", 'S', kAddinFolder},
      {C, L"HideAllText", L"HideAllText", 'S', L"0"},
      {C, L"HideDistListOnServer", L"HideDistListOnServer", 'S', L"1"},
      {T, L"ZoomLeft", L"ZoomLeft", 'S', L"0"},
      {T, L"ZoomTop", L"ZoomTop", 'S', L"0"},
      {T, L"ZoomWidth", L"ZoomWidth", 'S', L"2000"},
      {T, L"ZoomHeight", L"ZoomHeight", 'S', L"2500"},
      {T, L"ZoomMaximized", L"ZoomMaximized", 'S', L"False"},
      {T, L"ThumbListView", L"ThumbListView", 'L', L"0"},
      {T, L"ColorExistingFiles", L"ColorExistingFiles", 'S', L"1"},
      {T, L"ZoomZoom", L"ZoomZoom", 'S', L"200"},
      {T, L"ZoomGrid", L"ZoomGrid", 'S', L"False"},
      {T, L"ZoomOnTop", L"ZoomOnTop", 'S', L"True"},
      {T, L"ThumbnailLeft", L"ThumbnailLeft", 'S', L"100"},
      {T, L"ThumbnailTop", L"ThumbnailTop", 'S', L"100"},
      {T, L"ThumbnailWidth", L"ThumbnailWidth", 'S', L"9105"},
      {T, L"ThumbnailHeight", L"ThumbnailHeight", 'S', L"7455"},
      {T, L"ThumbnailMaximized", L"ThumbnailMaximized", 'S', L"False"},
      {T, L"ThumbnailSorted", L"ThumbnailSorted", 'B', L"False"},
      {T, L"ThumbnailSortIndex", L"ThumbnailSortIndex", 'I', L"0"},
      {T, L"ThumbnailSortOrder", L"ThumbnailSortOrder", 'L', L"0"},
      {P, L"PickerLeft", L"PickerLeft", 'S', L"2925"},
      {P, L"PickerTop", L"PickerTop", 'S', L"1770"},
      {P, L"PickerWidth", L"PickerWidth", 'S', L"8385"},
      {P, L"PickerHeight", L"PickerHeight", 'S', L"7035"},
      {P, L"PickerMaximized", L"PickerMaximized", 'S', L"False"},
      {C, L"Statistic1", L"Statistic1", 'S', L"0"},
      {C, L"Statistic2", L"Statistic2", 'S', L"0"},
      {C, L"Statistic3", L"Statistic3", 'S', L"0"},
      {C, L"Statistic4", L"Statistic4", 'S', L"0"},
      {C, L"Statistic5", L"Statistic5", 'S', L"0"},
      {C, L"Statistic7", L"Statistic7", 'S', L"0"},
      {C, L"Statistic8", L"Statistic8", 'S', L"0"},
      {C, L"Statistic9", L"Statistic9", 'S', L"0"},
      {C, L"Statistic10", L"Statistic10", 'S', L"0"},
      {C, L"Statistic11", L"Statistic11", 'S', L"0"},
      {C, L"Statistic12", L"Statistic12", 'S', L"0"},
      {C, L"Statistic13", L"Statistic13", 'S', L"0"},
      {C, L"Statistic14", L"Statistic14", 'S', L"0"},
      {C, L"FitImage", L"FitImage", 'S', L"0"},
      {C, L"FullScanOnStartUpDone", L"FullScanOnStartUpDone", 'S', L"0"},
      {C, L"FullScanOnStartDontShowAgain", L"FullScanOnStartDontShowAgain", 'S', L"0"},
      {C, L"TrayShow", L"TrayShow", 'S', L"0"},
      {C, L"TrayMonitor", L"TrayMonitor", 'S', L"0"},
      {C, L"TrayAnimateIcon", L"TrayAnimateIcon", 'S', L"1"},
      {C, L"DontShowAgainForVersion", L"DontShowAgainForVersion", 'S', L"28"},
      {U, L"UploaderID", L"UploaderID", 'S', L""},
      {U, L"UploaderPwd", L"UploaderPwd", 'S', L""},
      {C, L"DangerousExtentions", L"DangerousExtentions", 'S', L"vbs;bat;com;eml;nws;hta;sys;inf"},
      {C, L"ShellExtentions", L"ShellExtentions", 'S', L""},
      {H, L"ChatEmail", L"ChatEmail", 'S', L""},
      {H, L"ChatImags", L"ChatImags ", 'S', L"0"},
      {H, L"ChatTime", L"ChatTime", 'S', L"1"},
      {H, L"ChatLong", L"ChatLong", 'L', L"0"},
      {H, L"ChatBlockAll", L"ChatBlockAll", 'S', L"0"},
      {H, L"ChatUserEmail", nullptr, 'S', L""},
      {H, L"ChatUserNickName", nullptr, 'S', L""},
      {H, L"ChatUserIcon", nullptr, 'S', L""},
      {H, L"ChatUserStatus", nullptr, 'S', L""},
      {H, L"ChatUserColorChatMessage", nullptr, 'S', L""},
      {H, L"ChatUserColorChatUser", nullptr, 'S', L""},
      {H, L"ChatFormTop", L"ChatFormTop", 'S', L""},
      {H, L"ChatFormLeft", L"ChatFormLeft", 'S', L""},
      {H, L"ChatFormWidth", L"ChatFormWidth", 'S', L""},
      {H, L"ChatFormHeight", L"ChatFormHeight", 'S', L""},
      {H, L"ChatDeleteMsg", L"ChatDeleteMsg", 'S', L"1"},
      {H, L"ChatAutoInsertUser", L"ChatAutoInsertUser", 'S', L"1"},
      {H, L"ChatAutoSendReceive", L"ChatAutoSendReceive", 'S', L"0"},
      {H, L"ChatBeepOnMsg", L"ChatBeepOnMsg", 'S', L"1"},
      {H, L"ChatClearBoardOnClose", L"ChatClearBoardOnClose", 'S', L"1"},
      {H, L"ChatRTL", L"ChatRTL", 'S', L"0"},
      {C, L"SmartSenderSubject", L"SmartSenderSubject", 'S', L"You've got Mail"},
  };
  return keys;
}

// Remembers every key read, in order, on its way to the sim's tree.
class RecordingTree : public SettingsTree {
 public:
  explicit RecordingTree(SettingsTree& inner) : inner_(inner) {}
  std::optional<std::wstring> Read(const std::wstring& application, const std::wstring& section,
                                   const std::wstring& key) override {
    reads.push_back(section + L"\\" + key);
    return inner_.Read(application, section, key);
  }
  void Write(const std::wstring& application, const std::wstring& section, const std::wstring& key,
             const std::wstring& value) override {
    writes[section + L"\\" + key] = value;
    inner_.Write(application, section, key, value);
  }
  std::vector<Error> TakeProblems() override { return inner_.TakeProblems(); }

  std::vector<std::wstring> reads;
  std::map<std::wstring, std::wstring> writes;

 private:
  SettingsTree& inner_;
};

class ConfigKeysTest : public ::testing::Test {
 protected:
  bool Load(Config& config) {
    ConfigStore store{tree, world.files, world.clock, log, kAddinFolder, L"Nothing"};
    return LoadConfig(config, store);
  }
  void Save(const Config& config) {
    ConfigStore store{tree, world.files, world.clock, log, kAddinFolder, L"Nothing"};
    SaveConfig(config, store);
  }

  SimWorld world;
  RecordingTree tree{world.settings};
  Log log{world.files, world.clock};
};

TEST_F(ConfigKeysTest, LoadingReadsEveryKeyOnceInItsSectionAndOrder) {
  Config config(kAddinFolder);
  ASSERT_TRUE(Load(config));
  std::vector<std::wstring> expected;
  for (const Key& k : Keys()) {
    if (!k.read) continue;
    expected.push_back(std::wstring(k.section) + L"\\" + k.read);
    if (std::wstring_view(k.read) == L"glbThumbZoomFit") {
      // The folder list comes next; an empty store takes the first-run path.
      expected.push_back(L"Configuration\\glbFoldersMax");
      expected.push_back(L"Configuration\\glbFolder1");
    }
    if (std::wstring_view(k.read) == L"ShellExtentions")
      expected.push_back(L"Configuration\\LastMailMonitorTime");
  }
  EXPECT_EQ(tree.reads, expected);
  EXPECT_TRUE(tree.writes.empty());  // loading writes nothing
}

TEST_F(ConfigKeysTest, AnEmptyStoreSavesEveryDefaultUnderItsWrittenSpelling) {
  Config config(kAddinFolder);
  ASSERT_TRUE(Load(config));
  Save(config);
  std::map<std::wstring, std::wstring> expected = {
      {L"Configuration\\glbFoldersMax", L"2"},
      {L"Configuration\\glbFolder0", In(L"\\My Favorites")},
      {L"Configuration\\glbFolder1", In(L"\\My Stuff")},
      {L"Configuration\\glbFolder2", In(L"\\My Junk")},
      {L"Configuration\\LastMailMonitorTime", L"202611220930"},
  };
  for (const Key& k : Keys())
    if (k.write) expected[std::wstring(k.section) + L"\\" + k.write] = k.fallback;
  EXPECT_EQ(tree.writes, expected);
}

// A value of the key's type that no default has, different for every key.
std::wstring Sample(const Key& k, size_t i) {
  switch (k.type) {
    case 'L': return std::to_wstring(-100000 - static_cast<int>(i));  // signed, as stored
    case 'I': return std::to_wstring(300 + static_cast<int>(i));
    case 'B': return L"True";
    default: return L"v" + std::to_wstring(i);
  }
}

TEST_F(ConfigKeysTest, AStoredValueIsReadIntoItsSettingAndSavedBackUnderTheWrittenSpelling) {
  const auto& keys = Keys();
  for (size_t i = 0; i < keys.size(); ++i)
    if (keys[i].read) world.Store(keys[i].section, keys[i].read, Sample(keys[i], i));
  Config config(kAddinFolder);
  ASSERT_TRUE(Load(config));
  tree.writes.clear();
  Save(config);
  for (size_t i = 0; i < keys.size(); ++i) {
    const Key& k = keys[i];
    if (!k.write) continue;
    const std::wstring written = std::wstring(k.section) + L"\\" + k.write;
    ASSERT_TRUE(tree.writes.contains(written)) << ToUtf8(written);
    EXPECT_EQ(tree.writes[written], k.read ? Sample(k, i) : k.fallback) << ToUtf8(written);
  }
}

TEST_F(ConfigKeysTest, ANumberKeyHoldingTextStopsLoadingThere) {
  for (const Key& k : Keys()) {
    if (k.type == 'S' || !k.read) continue;
    SimWorld fresh;
    fresh.Store(k.section, k.read, L"many");
    Log fresh_log{fresh.files, fresh.clock};
    ConfigStore store{fresh.settings, fresh.files, fresh.clock, fresh_log, kAddinFolder, L"Nothing"};
    Config config(kAddinFolder);
    EXPECT_FALSE(LoadConfig(config, store)) << ToUtf8(k.read);
  }
}

}  // namespace
}  // namespace corvina
