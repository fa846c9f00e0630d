#include "platform/sim/settings_table.h"

#include "base/text.h"

namespace corvina::sim {

namespace {
// U+0001 cannot occur in a registry name, so the joined key is unambiguous.
constexpr wchar_t kJoin = L'\x1';

std::wstring SectionKey(const std::wstring& application, const std::wstring& section) {
  std::wstring k = UCase(application);
  k.push_back(kJoin);
  k += UCase(section);
  return k;
}

std::wstring ValueKey(std::wstring section_key, const std::wstring& key) {
  section_key.push_back(kJoin);
  section_key += UCase(key);
  return section_key;
}
}  // namespace

const std::wstring* SettingsTable::Find(const std::wstring& application,
                                        const std::wstring& section,
                                        const std::wstring& key) const {
  auto it = values_.find(ValueKey(SectionKey(application, section), key));
  return it == values_.end() ? nullptr : &it->second;
}

bool SettingsTable::Set(const std::wstring& application, const std::wstring& section,
                        const std::wstring& key, const std::wstring& value) {
  std::wstring sk = SectionKey(application, section);
  auto [it, inserted] = values_.try_emplace(ValueKey(sk, key), value);
  if (!inserted) {
    if (it->second == value) return false;
    it->second = value;
    return true;
  }
  auto [sec, new_section] = section_index_.try_emplace(std::move(sk), sections_.size());
  if (new_section) sections_.push_back(Section{application, section, {}});
  sections_[sec->second].keys.push_back(key);
  return true;
}

}  // namespace corvina::sim
