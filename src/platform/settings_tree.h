#pragma once
// The per-user settings tree: application -> section -> key -> text. On Windows it is the
// registry; in the sim it lives in memory or in a file.
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"

namespace corvina {

class SettingsTree {
 public:
  virtual ~SettingsTree() = default;
  // Nothing when the key is missing or unreadable. Throws only when the store itself fails.
  virtual std::optional<std::wstring> Read(const std::wstring& application,
                                           const std::wstring& section,
                                           const std::wstring& key) = 0;
  virtual void Write(const std::wstring& application, const std::wstring& section,
                     const std::wstring& key, const std::wstring& value) = 0;
  // Damage the store met while reading (a corrupt file, a value of the wrong type) that it
  // turned into "missing". Each problem is handed out once, so it is logged once, as a
  // warning whose text is the problem's description.
  virtual std::vector<Error> TakeProblems() = 0;
};

// GetSetting: the stored text, or `fallback` when the key is missing.
std::wstring GetSetting(SettingsTree& tree, const std::wstring& application,
                        const std::wstring& section, const std::wstring& key,
                        const std::wstring& fallback);

}  // namespace corvina
