#include "settings/config_store.h"

#include "base/text.h"
#include "platform/path.h"
#include "settings/bulid_path.h"
#include "settings/config_keys.h"
#include "settings/guard.h"

namespace corvina {
namespace {

void ReadKeys(Config& config, ConfigStore& store, std::span<const ConfigKey> keys) {
  for (const ConfigKey& key : keys) {
    if (!key.read_key) continue;
    const std::wstring fallback = StoredText(config, key.member);
    std::wstring text = GetSetting(store.tree, kAppName, key.section, key.read_key, fallback);
    if (key.fix_up == FixUp::kBlankIsDefault && Trim(text).empty()) text = fallback;
    AssignStoredText(config, key.member, text);
  }
}

void WriteKeys(const Config& config, ConfigStore& store, std::span<const ConfigKey> keys) {
  for (const ConfigKey& key : keys) {
    if (key.write_key)
      store.tree.Write(kAppName, key.section, key.write_key, StoredText(config, key.member));
  }
}

const wchar_t* const kDefaultFolders[] = {L"\\My Favorites", L"\\My Stuff", L"\\My Junk"};

void ReadFolderList(Config& config, ConfigStore& store) {
  const std::wstring max_text = GetSetting(store.tree, kAppName, L"Configuration",
                                           L"glbFoldersMax", L"-1");
  config.glbFoldersMax = ToInteger(max_text);
  if (config.glbFoldersMax != -1) {
    if (config.glbFoldersMax < -1) Raise(kErrSubscript, L"Subscript out of range");
    config.glbFolder.assign(static_cast<size_t>(config.glbFoldersMax + 1), L"");
    for (int i = 0; i <= config.glbFoldersMax; ++i) {
      std::wstring folder = GetSetting(store.tree, kAppName, L"Configuration",
                                       L"glbFolder" + std::to_wstring(i), L"");
      if (!Trim(folder).empty()) config.glbFolder[static_cast<size_t>(i)] = folder;
    }
  } else {
    // First run: three default folders. An older store numbered its folders from 1, so those
    // keys are honoured on this path only.
    config.glbFoldersMax = 2;
    config.glbFolder.assign(3, L"");
    const std::wstring first = GetSetting(store.tree, kAppName, L"Configuration",
                                          L"glbFolder1", L"");
    for (int i = 0; i < 3; ++i) {
      const std::wstring fallback = store.addin_folder + kDefaultFolders[i];
      config.glbFolder[static_cast<size_t>(i)] =
          first.empty() ? fallback
                        : GetSetting(store.tree, kAppName, L"Configuration",
                                     L"glbFolder" + std::to_wstring(i + 1), fallback);
    }
  }
  for (const std::wstring& folder : config.glbFolder) {
    // An unused slot names no folder; there is nothing to create for it.
    if (Trim(folder).empty()) continue;
    if (!store.files.DirectoryExists(folder))
      BulidPath(store.files, store.log, store.context, path::WithTrailingSeparator(folder));
  }
}

void UpdateLastMailMonitorTime(Config& config, ConfigStore& store) {
  const std::wstring now = FormatStamp(store.clock.Now());
  config.LastMailMonitorTime =
      GetSetting(store.tree, kAppName, L"Configuration", L"LastMailMonitorTime", now);
  // A stored time in the future is kept: only a later "now" moves it on.
  if (config.LastMailMonitorTime.empty() || now > config.LastMailMonitorTime)
    config.LastMailMonitorTime = now;
}

void CreateFirstRunFolders(ConfigStore& store) {
  if (store.files.DirectoryExists(store.addin_folder + L"\\Temp")) return;
  for (const wchar_t* sub : {L"\\My Favorites", L"\\My Stuff", L"\\My Junk", L"\\Temp"}) {
    const std::wstring folder = store.addin_folder + sub;
    if (!store.files.DirectoryExists(folder)) store.files.CreateDirectory(folder);
  }
}

// Damage the store turned into "missing" did not stop loading (the default applies), so it is
// a warning that speaks for itself, not an error of LoadConfig.
void LogStoreProblems(ConfigStore& store) noexcept {
  try {
    for (const Error& problem : store.tree.TakeProblems())
      store.log.LogEvent(problem.description(), kLogWarning);
  } catch (...) {
  }
}

}  // namespace

bool LoadConfig(Config& config, ConfigStore& store) {
  bool done = Guard(store.log, store.context, L"LoadConfig", false, [&] {
    store.log.StartLog(store.addin_folder + L"\\Vireo.log");
    ReadKeys(config, store, ThumbnailConfigKeys());
    config.PictureTypes = kPreviewFileTypes;
    config.ImageTypes = kPictureFileTypes;
    ReadFolderList(config, store);
    ReadKeys(config, store, GeneralConfigKeys());
    ReadKeys(config, store, ViewConfigKeys());
    UpdateLastMailMonitorTime(config, store);
    ReadKeys(config, store, ChatConfigKeys());
    config.glbLanguage = L"English";
    CreateFirstRunFolders(store);
    LogStoreProblems(store);
    store.log.LogEvent(std::wstring(kProductName) + L" was initialized successfully at " +
                           store.clock.GeneralDate(store.clock.Now()),
                       kLogInformation);
    return true;
  });
  if (!done) LogStoreProblems(store);
  return done;
}

void SaveConfig(const Config& config, ConfigStore& store) {
  Guard(store.log, store.context, L"SaveConfig", [&] {
    WriteKeys(config, store, ThumbnailConfigKeys());
    store.tree.Write(kAppName, L"Configuration", L"glbFoldersMax",
                     std::to_wstring(config.glbFoldersMax));
    for (int i = 0; i <= config.glbFoldersMax; ++i) {
      const size_t at = static_cast<size_t>(i);
      store.tree.Write(kAppName, L"Configuration", L"glbFolder" + std::to_wstring(i),
                       at < config.glbFolder.size() ? config.glbFolder[at] : L"");
    }
    WriteKeys(config, store, GeneralConfigKeys());
    WriteKeys(config, store, ViewConfigKeys());
    store.tree.Write(kAppName, L"Configuration", L"LastMailMonitorTime",
                     config.LastMailMonitorTime);
    WriteKeys(config, store, ChatConfigKeys());
  });
}

}  // namespace corvina
