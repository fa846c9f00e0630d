#pragma once
// The context of one running add-in: the platform services, the settings, the log, the guard
// helpers and one state object per subsystem (each defined in its subsystem's folder). Every
// subsystem receives it by reference; two instances never share state. It sits below the
// subsystems: the top (host/) builds it and hands it down.
#include <memory>
#include <string>
#include <vector>

#include "addin/services.h"
#include "chat/chat_state.h"
#include "language/language.h"
#include "rules/rules_state.h"
#include "saving/saving_state.h"
#include "settings/config.h"
#include "settings/config_store.h"
#include "settings/guard.h"
#include "settings/log.h"
#include "virus/virus_state.h"

namespace corvina {

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
  outlook::Ref<outlook::Application> oApplication;

  SavingState saving;
  ChatState chat{log};
  RulesState rules{log};
  VirusState virus;

  std::wstring LogPath() const { return services.addin_folder + L"\\Vireo.log"; }
  ConfigStore Store();
  // A user-visible text in the current language, with %1, %2 ... filled from `args`.
  std::wstring Text(TextId id, std::initializer_list<std::wstring_view> args = {}) const {
    return FillText(LanguageText(config.glbLanguage, id), args);
  }
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
