#pragma once
// The settings of one sim tree in memory. Names are found in any case, as the registry finds
// them, and keep the spelling of their first write; sections and the keys of each section
// stay in first-written order, so a saved file reads in the order the add-in wrote it.
// One hash lookup per access: the start-up reads some 150 keys and must stay cheap.
#include <string>
#include <unordered_map>
#include <vector>

namespace corvina::sim {

class SettingsTable {
 public:
  struct Section {
    std::wstring application;
    std::wstring section;
    std::vector<std::wstring> keys;  // first-written order and spelling
  };

  // The stored value, or null.
  const std::wstring* Find(const std::wstring& application, const std::wstring& section,
                           const std::wstring& key) const;
  // Returns whether anything changed.
  bool Set(const std::wstring& application, const std::wstring& section, const std::wstring& key,
           const std::wstring& value);

  const std::vector<Section>& sections() const { return sections_; }
  size_t size() const { return values_.size(); }

 private:
  std::vector<Section> sections_;
  std::unordered_map<std::wstring, size_t> section_index_;  // folded application\section
  std::unordered_map<std::wstring, std::wstring> values_;   // folded application\section\key
};

}  // namespace corvina::sim
