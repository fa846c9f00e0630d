#pragma once
// What the saving features keep between calls for one running add-in: the destination of the
// save job under way, its cancel flag, where the folder browser opens next, and the automatic-
// copy table. The add-in context owns one; nothing here is shared between add-ins.
#include <string>
#include <vector>

namespace corvina {

// The automatic-copy table in memory: rows numbered from 1 (row 0 stays empty).
struct ExtensionList {
  std::vector<std::wstring> names{L""};
  std::vector<std::wstring> destinations{L""};
  std::vector<std::wstring> checked{L""};
};

struct SavingState {
  std::wstring SaveDestination;     // folder chosen for the current save job
  std::wstring DefaultDestination;  // set by the new-mail handler from DefaultFolder
  bool CancelRequested = false;
  // A save job is under way. The job lets window messages run between attachments; a click
  // of Save arriving then must not start a second job inside the first.
  bool JobRunning = false;
  std::wstring LastBrowsedFolder;   // where the folder browser opens next time
  ExtensionList extension_list;
};

}  // namespace corvina
