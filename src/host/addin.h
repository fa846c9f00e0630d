#pragma once
// One running add-in: the platform services plus everything the add-in keeps while it runs
// (every setting, the log, the current save destination ...). Subsystems receive it by
// reference; two instances never share state.
#include <memory>
#include <string>
#include <vector>

#include "host/services.h"
#include "settings/config.h"
#include "settings/config_store.h"
#include "settings/guard.h"
#include "settings/log.h"

namespace corvina {

// The automatic-copy table in memory: rows numbered from 1 (row 0 stays empty).
struct ExtensionList {
  std::vector<std::wstring> names{L""};
  std::vector<std::wstring> destinations{L""};
  std::vector<std::wstring> checked{L""};
};

class AddIn {
 public:
  explicit AddIn(Services services);

  Services services;
  Config config;
  Log log;

  // The class name logged for errors of shared procedures: the connect class while connected,
  // empty ("Nothing") before and after.
  std::wstring error_context_object;
  std::wstring ErrorContext() const {
    return error_context_object.empty() ? L"Nothing" : error_context_object;
  }

  bool LoadedIndirectly = false;
  std::shared_ptr<outlook::Application> oApplication;

  std::wstring SaveDestination;        // folder chosen for the current save job
  std::wstring DefaultDestination;     // set by the new-mail handler from DefaultFolder
  bool CancelRequested = false;
  std::wstring LastBrowsedFolder;      // where the folder browser opens next time
  ExtensionList extension_list;

  std::wstring LogPath() const { return services.addin_folder + L"\\Vireo.log"; }
  ConfigStore Store();
  bool IsFormLoaded(const std::wstring& name);
  // Sets frmInit's status text when frmInit is loaded and lets it repaint.
  void ShowProgress(const std::wstring& text);
  // Runs a step whose errors are ignored by design (the indirect-load test, the old log's
  // deletion ...). The error is cleared without a log line; it is kept here only so tests can
  // tell a deliberately ignored failure from a lost one.
  template <class F>
  bool Ignore(F&& body) noexcept {
    try {
      body();
      return true;
    } catch (...) {
      try {
        ignored_errors.push_back(CurrentError());
      } catch (...) {
      }
      return false;
    }
  }
  std::vector<Error> ignored_errors;

  // Module procedures' guard: logs with ErrorContext().
  template <class R, class F>
  R Run(const wchar_t* procedure, R neutral, F&& body);
  template <class F>
  void Run(const wchar_t* procedure, F&& body);
};


template <class R, class F>
R AddIn::Run(const wchar_t* procedure, R neutral, F&& body) {
  return Guard(log, ErrorContext(), procedure, std::move(neutral), std::forward<F>(body));
}
template <class F>
void AddIn::Run(const wchar_t* procedure, F&& body) {
  Guard(log, ErrorContext(), procedure, std::forward<F>(body));
}
}  // namespace corvina
