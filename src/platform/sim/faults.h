#pragma once
// Call counting and fault injection shared by every sim service. Each public member of a sim
// object calls Enter() first: the call is counted (per service and in total) and, when a
// failure was planned for exactly this call, the planned error is thrown instead of doing the
// work. A test first runs a scenario to count its calls, then re-runs it failing each in turn.
//
// A plan can also make a call answer Nothing instead of failing: every object-model member
// that hands out an object asks TakeNothing() right after Enter() and returns Nothing when told
// to, as a host may where an object is expected.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"

namespace corvina::sim {

enum class Service { kOutlook, kSettings, kFiles, kUserInterface, kClock, kBeep, kClipboard };
inline constexpr size_t kServiceCount = 7;
const char* ServiceName(Service s);

class Faults {
 public:
  // Counts the call and throws the planned error if this is the planned call.
  void Enter(Service service, const char* member);

  uint64_t Calls(Service service) const { return per_service_[static_cast<size_t>(service)]; }
  uint64_t TotalCalls() const { return total_; }
  void ResetCounts();

  // Fail the n-th call (1-based) counted from now over all services.
  void FailNthCall(uint64_t n, Error error);
  // Fail the n-th call (1-based) of one service, counted from now.
  void FailNthCall(Service service, uint64_t n, Error error);
  // Fail the n-th call (1-based, counted from now) of the member `member` ("CommandBars.Add").
  void FailCall(std::string member, Error error, uint64_t n = 1);
  // The n-th call over all services (1-based, counted from now) answers Nothing. Only a member
  // that hands out an object can; at any other member the plan is used up without effect
  // (injected() stays false).
  void NothingAtNthCall(uint64_t n);
  // Asked by object-returning members right after Enter(): true when this call must answer
  // Nothing.
  bool TakeNothing();
  void ClearPlan();

  // What the last injected failure hit ("Outlook.Items.Count"), for the test's message.
  const std::string& last_failed_call() const { return last_failed_; }
  bool injected() const { return injected_; }

  // Recording the member names is off by default (benchmarks count millions of calls).
  void set_record(bool on) { record_ = on; }
  const std::vector<std::string>& recorded() const { return recorded_; }

 private:
  struct Plan {
    std::optional<Service> service;
    std::string member;  // when set, only calls of this member count
    uint64_t at = 0;     // value of the matching counter at which to strike
    std::optional<Error> error;  // none: the call answers Nothing
  };
  std::array<uint64_t, kServiceCount> per_service_{};
  uint64_t total_ = 0;
  std::optional<Plan> plan_;
  uint64_t member_calls_ = 0;  // calls of plan_->member since the plan was made
  bool nothing_due_ = false;
  std::string last_failed_;
  bool injected_ = false;
  bool record_ = false;
  std::vector<std::string> recorded_;
};

}  // namespace corvina::sim
