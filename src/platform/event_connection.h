#pragma once
// Ownership of one event subscription. Destroying (or resetting) the connection unsubscribes,
// the way releasing a connection-point cookie does, so a handler never outlives its owner.
#include <functional>
#include <string>
#include <utility>

#include "base/error.h"

namespace corvina {

class EventConnection {
 public:
  EventConnection() = default;
  explicit EventConnection(std::function<void()> disconnect) : disconnect_(std::move(disconnect)) {}
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;
  EventConnection(EventConnection&& other) noexcept : disconnect_(std::exchange(other.disconnect_, {})) {}
  EventConnection& operator=(EventConnection&& other) noexcept {
    if (this != &other) {
      Reset();
      disconnect_ = std::exchange(other.disconnect_, {});
    }
    return *this;
  }
  ~EventConnection() { Reset(); }

  // Unsubscribes now. Never throws: a failing unsubscribe is of no interest to the caller.
  void Reset() noexcept {
    if (auto d = std::exchange(disconnect_, {})) {
      try {
        d();
      } catch (...) {
      }
    }
  }
  bool connected() const { return static_cast<bool>(disconnect_); }

 private:
  std::function<void()> disconnect_;
};

// Subscribes through `advise`. A refusal (a host without connection points) is rethrown naming
// the event, so the log says which one could not be hooked; a platform that already named it
// keeps its own words.
template <class Advise>
EventConnection HookEvent(const wchar_t* event, Advise&& advise) {
  try {
    return advise();
  } catch (const Error& e) {
    if (e.description().find(event) != std::wstring::npos) throw;
    throw Error(e.number(), e.source(),
                std::wstring(L"The ") + event + L" event could not be hooked: " + e.description());
  }
}

}  // namespace corvina
