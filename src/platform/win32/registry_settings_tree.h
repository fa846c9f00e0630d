#pragma once
// The settings tree in the registry, where the classic GetSetting/SaveSetting keep it:
// HKCU\Software\VB and VBA Program Settings\<application>\<section>, one REG_SZ value per key.
// Settings written by earlier installations are therefore read as they are.
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/settings_tree.h"

namespace corvina::win32 {

class RegistrySettingsTree : public SettingsTree {
 public:
  // A value that is not text, or a section the user may not read, reads as missing: the
  // add-in then uses its default, as it would for a key never written. The damage is handed
  // out once per key through TakeProblems, so the log names it once.
  std::optional<std::wstring> Read(const std::wstring& application, const std::wstring& section,
                                   const std::wstring& key) override;
  // Creates the key path as needed; throws Error 5 (source "Settings") when Windows refuses.
  void Write(const std::wstring& application, const std::wstring& section, const std::wstring& key,
             const std::wstring& value) override;
  std::vector<Error> TakeProblems() override;

 private:
  void Report(const std::wstring& name, int32_t number, const std::wstring& description);

  std::vector<Error> problems_;
  std::set<std::wstring> reported_;  // upper-cased names, as the registry ignores case
};

// "Software\VB and VBA Program Settings\<application>\<section>", under HKEY_CURRENT_USER.
std::wstring SettingsKeyPath(const std::wstring& application, const std::wstring& section);

}  // namespace corvina::win32
