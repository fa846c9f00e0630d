#pragma once
// "Vireo.log": the add-in's error and information log. One line per entry; the file holds the
// current run of Outlook only (start-up deletes it before the log is started).
#include <cstdint>
#include <string>
#include <vector>

#include "base/error.h"
#include "platform/clock.h"
#include "platform/file_system.h"

namespace corvina {

// Entry types, numbered as the Windows event log numbers them.
inline constexpr int32_t kLogError = 1;
// Damage the add-in worked around (a settings line it skipped, a value it replaced by its
// default): the user should know, but nothing failed.
inline constexpr int32_t kLogWarning = 2;
inline constexpr int32_t kLogInformation = 4;

class Log {
 public:
  Log(FileSystem& files, Clock& clock) : files_(files), clock_(clock) {}

  // Opens `path` for appending; entries written before this are kept in memory and go first,
  // so a failure early in start-up is not lost when the old log is deleted.
  void StartLog(const std::wstring& path);
  bool started() const { return started_; }
  const std::wstring& path() const { return path_; }

  // Appends one entry. Never throws: a line that cannot be written is kept and retried with the
  // next entry.
  void LogEvent(const std::wstring& message, int32_t entry_type) noexcept;

  // "Error Source=" + context + procedure + "\" + source + "; Error Description=" + description.
  // `context` is the class name the procedure runs for ("DesVireo", or "Nothing" for a shared
  // module whose context reference is empty); it is joined to the procedure without separator.
  void LogError(const std::wstring& context, const std::wstring& procedure,
                const Error& error) noexcept;

  // Writes entries still held in memory to `fallback_path` when the log was never started.
  void Flush(const std::wstring& fallback_path) noexcept;

  // Failures inside the log itself (a clock or a write that failed); never reported
  // anywhere else, kept for diagnostics and tests.
  const std::vector<Error>& own_failures() const { return own_failures_; }

  static std::wstring ErrorLine(const std::wstring& context, const std::wstring& procedure,
                                const Error& error);

 private:
  void WritePending() noexcept;
  void NoteOwnFailure() noexcept;

  FileSystem& files_;
  Clock& clock_;
  std::wstring path_;
  bool started_ = false;
  std::vector<std::string> pending_;
  std::vector<Error> own_failures_;
};

}  // namespace corvina
