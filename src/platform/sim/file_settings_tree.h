#pragma once
// A SettingsTree kept in a text file of the simulator's profile (the format is described in
// settings_file_format.h). The file is read once, when the tree is made; Writes change the
// tree in memory and Flush (or the destructor) saves it through a temporary file and a
// rename, so a crash never leaves half a file. A save edits the file as the user wrote it
// (comments, blank lines, damaged lines and order stay) instead of rewriting it. Names are
// found in any case, as in the registry. Read and Write count themselves through Faults
// first; TakeProblems does not.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/settings_tree.h"
#include "platform/sim/faults.h"
#include "platform/sim/settings_file_format.h"
#include "platform/sim/settings_table.h"

namespace corvina::sim {

class FileSettingsTree : public SettingsTree {
 public:
  // A missing or empty file is an empty tree. Lines that cannot be read are skipped and wait
  // in TakeProblems, one problem each, naming the file by its name without the host folder.
  FileSettingsTree(Faults& faults, std::filesystem::path file);
  // Saves unsaved writes; a failure is printed to stderr, never thrown.
  ~FileSettingsTree() override;
  FileSettingsTree(const FileSettingsTree&) = delete;
  FileSettingsTree& operator=(const FileSettingsTree&) = delete;

  std::optional<std::wstring> Read(const std::wstring& application, const std::wstring& section,
                                   const std::wstring& key) override;
  // A name the file cannot hold (a key with '=', say) is error 5, source "Settings".
  void Write(const std::wstring& application, const std::wstring& section, const std::wstring& key,
             const std::wstring& value) override;
  std::vector<Error> TakeProblems() override;

  // Saves the tree if a Write changed it since the last save. Throws Error (number 75,
  // source "Settings") when the file cannot be written.
  void Flush();
  const std::filesystem::path& file() const { return file_; }

 private:
  Faults& faults_;
  std::filesystem::path file_;
  std::wstring label_;  // the whole host path, for the simulator's own messages
  // The file name alone, for problems that reach the add-in's log: the host folder is the
  // simulator's, not a place the add-in knows (it sees only the mapped C: drive).
  std::wstring name_;
  SettingsTable table_;
  // The file as read. Every save starts from it again: the table holds every write, so the
  // result is the same as editing the previous save.
  SettingsLayout layout_;
  std::vector<Error> problems_;
  bool dirty_ = false;
};

}  // namespace corvina::sim
