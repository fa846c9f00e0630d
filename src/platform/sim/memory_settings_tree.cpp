#include "platform/sim/memory_settings_tree.h"

#include <utility>

namespace corvina::sim {

MemorySettingsTree::MemorySettingsTree(Faults& faults) : faults_(faults) {}

std::optional<std::wstring> MemorySettingsTree::Read(const std::wstring& application,
                                                     const std::wstring& section,
                                                     const std::wstring& key) {
  faults_.Enter(Service::kSettings, "Read");
  const std::wstring* value = table_.Find(application, section, key);
  return value ? std::optional<std::wstring>(*value) : std::nullopt;
}

void MemorySettingsTree::Write(const std::wstring& application, const std::wstring& section,
                               const std::wstring& key, const std::wstring& value) {
  faults_.Enter(Service::kSettings, "Write");
  table_.Set(application, section, key, value);
}

std::vector<Error> MemorySettingsTree::TakeProblems() { return std::exchange(problems_, {}); }

void MemorySettingsTree::AddProblem(Error problem) { problems_.push_back(std::move(problem)); }

}  // namespace corvina::sim
