#pragma once
// What every object of one stand-in Outlook shares: the members a test has taken away and the
// counters a test reads to see how the add-in used the object model through COM (name
// lookups, calls, advised sinks, objects still referenced).
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/text.h"
#include "platform/win32/windows_api.h"

namespace corvina::standin {

struct Counters {
  uint64_t name_lookups = 0;  // GetIDsOfNames calls
  uint64_t invokes = 0;       // Invoke calls, failed ones included
  uint64_t advises = 0;       // successful IConnectionPoint::Advise
  uint64_t unadvises = 0;     // successful IConnectionPoint::Unadvise
  uint64_t events_raised = 0;  // sink Invoke calls made for a sim event
  uint64_t events_failed = 0;  // ... that did not return S_OK
  int64_t live_objects = 0;    // stand-in COM objects not yet released

  uint64_t connected() const { return advises - unadvises; }
};

// How a member answers Nothing: a VT_DISPATCH holding null, as Office does, or VT_EMPTY, as a
// property never set does.
enum class Nothing { kNullObject, kEmpty };

class Context {
 public:
  Context() = default;
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  Counters& counters() { return counters_; }
  const Counters& counters() const { return counters_; }

  // `kind` as the object is named here ("NameSpace"), `member` as a caller spells it.
  void Hide(std::wstring_view kind, std::wstring_view member) { hidden_.insert(Key(kind, member)); }
  bool IsHidden(std::wstring_view kind, std::wstring_view member) const {
    return !hidden_.empty() && hidden_.contains(Key(kind, member));
  }

  // The member answers Nothing (without running) to every get or call from now on.
  void ReturnNothing(std::wstring_view kind, std::wstring_view member, Nothing how) {
    nothing_[Key(kind, member)] = how;
  }
  std::optional<Nothing> NothingFrom(std::wstring_view kind, std::wstring_view member) const {
    if (nothing_.empty()) return std::nullopt;
    const auto found = nothing_.find(Key(kind, member));
    return found == nothing_.end() ? std::nullopt : std::optional<Nothing>(found->second);
  }

  // Objects of `kind` offer no connection points from now on, as a host without events.
  void TakeEvents(std::wstring_view kind) { no_events_.insert(LCase(kind)); }
  bool EventsTaken(std::wstring_view kind) const {
    return !no_events_.empty() && no_events_.contains(LCase(kind));
  }

  // Every advised sink is kept with one reference of the stand-in's own, so that a test can
  // tell afterwards whether its owner let go of all of its references.
  void KeepSink(IUnknown* sink) { kept_sinks_.try_emplace(sink, sink); }
  // Drops the kept references; returns how many sinks someone else still holds.
  size_t ReleaseKeptSinks() {
    size_t held = 0;
    for (auto& [raw, sink] : kept_sinks_)
      if (sink.Detach()->Release() > 0) ++held;
    kept_sinks_.clear();
    return held;
  }

 private:
  static std::wstring Key(std::wstring_view kind, std::wstring_view member) {
    return LCase(kind) + L"." + LCase(member);
  }

  Counters counters_;
  std::set<std::wstring> hidden_;
  std::map<std::wstring, Nothing> nothing_;
  std::set<std::wstring> no_events_;
  std::map<IUnknown*, Microsoft::WRL::ComPtr<IUnknown>> kept_sinks_;
};

}  // namespace corvina::standin
