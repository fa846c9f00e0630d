#include "platform/settings_tree.h"

namespace corvina {

std::wstring GetSetting(SettingsTree& tree, const std::wstring& application,
                        const std::wstring& section, const std::wstring& key,
                        const std::wstring& fallback) {
  auto value = tree.Read(application, section, key);
  return value ? *value : fallback;
}

}  // namespace corvina
