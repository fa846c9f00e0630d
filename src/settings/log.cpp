#include "settings/log.h"

#include "base/text.h"
#include "settings/guard.h"

namespace corvina {

std::wstring Log::ErrorLine(const std::wstring& context, const std::wstring& procedure,
                            const Error& error) {
  return L"Error Source=" + context + procedure + L"\\" + error.source() +
         L"; Error Description=" + error.description();
}

void Log::StartLog(const std::wstring& path) {
  path_ = path;
  started_ = true;
  WritePending();
}

void Log::LogEvent(const std::wstring& message, int32_t entry_type) noexcept {
  try {
    std::wstring stamp;
    try {
      stamp = clock_.GeneralDate(clock_.Now());
    } catch (...) {
      NoteOwnFailure();
      stamp = L"(time unknown)";  // the entry matters more than its time
    }
    const wchar_t* type = entry_type == kLogError     ? L"Error"
                          : entry_type == kLogWarning ? L"Warning"
                                                      : L"Information";
    pending_.push_back(ToUtf8(stamp + L" | " + type + L" | " + message + L"\r\n"));
  } catch (...) {
    return;
  }
  if (started_) WritePending();
}

void Log::LogError(const std::wstring& context, const std::wstring& procedure,
                   const Error& error) noexcept {
  try {
    LogEvent(ErrorLine(context, procedure, error), kLogError);
  } catch (...) {
  }
}

void Log::WritePending() noexcept {
  if (pending_.empty()) return;
  try {
    std::string block;
    for (const auto& line : pending_) block += line;
    files_.AppendFile(path_, block);
    pending_.clear();
  } catch (...) {
    // Kept for the next entry: errors inside the log are never reported anywhere else.
    NoteOwnFailure();
  }
}

void Log::NoteOwnFailure() noexcept {
  try {
    own_failures_.push_back(CurrentError());
  } catch (...) {
  }
}

void Log::Flush(const std::wstring& fallback_path) noexcept {
  if (!started_) {
    try {
      path_ = fallback_path;
    } catch (...) {
      return;
    }
  }
  WritePending();
}

}  // namespace corvina
