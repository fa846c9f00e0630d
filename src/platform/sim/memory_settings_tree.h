#pragma once
// A SettingsTree in memory, for tests and benchmarks. Names are found in any case, as in the
// registry. Read and Write count themselves through Faults first, so a test can fail the n-th
// settings call; TakeProblems does not (it is bookkeeping, not a store access).
#include <optional>
#include <string>
#include <vector>

#include "platform/settings_tree.h"
#include "platform/sim/faults.h"
#include "platform/sim/settings_table.h"

namespace corvina::sim {

class MemorySettingsTree : public SettingsTree {
 public:
  explicit MemorySettingsTree(Faults& faults);

  std::optional<std::wstring> Read(const std::wstring& application, const std::wstring& section,
                                   const std::wstring& key) override;
  void Write(const std::wstring& application, const std::wstring& section, const std::wstring& key,
             const std::wstring& value) override;
  std::vector<Error> TakeProblems() override;

  // Test helpers, neither counted nor failed by plan: what is stored, and damage for the core
  // to report (as a corrupt store would hand it out).
  const SettingsTable& table() const { return table_; }
  void AddProblem(Error problem);

 private:
  Faults& faults_;
  SettingsTable table_;
  std::vector<Error> problems_;
};

}  // namespace corvina::sim
