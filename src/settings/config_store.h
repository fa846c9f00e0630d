#pragma once
// LoadConfig and SaveConfig: every setting between the settings tree and memory.
#include <string>

#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/settings_tree.h"
#include "settings/config.h"
#include "settings/log.h"

namespace corvina {

struct ConfigStore {
  SettingsTree& tree;
  FileSystem& files;
  Clock& clock;
  Log& log;
  std::wstring addin_folder;
  // Class name logged for errors here ("DesVireo" while connected, "Nothing" otherwise).
  std::wstring context;
};

// Reads every setting (starting the log first). Returns true when it ran to the end; an error
// stops it at that key, keeps what was read, logs one line and returns false.
bool LoadConfig(Config& config, ConfigStore& store);
void SaveConfig(const Config& config, ConfigStore& store);

// The two fixed file-type lists set by loading.
inline constexpr wchar_t kPreviewFileTypes[] = L",gif,jpg,jpe,jpeg,bmp,zip,doc,ppt,msg,avi,mpe,mpeg,rm,";
inline constexpr wchar_t kPictureFileTypes[] = L",gif,jpg,jpe,jpeg,bmp,ico,";

}  // namespace corvina
