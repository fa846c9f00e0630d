#include "platform/sim/faults.h"

namespace corvina::sim {

const char* ServiceName(Service s) {
  switch (s) {
    case Service::kOutlook: return "Outlook";
    case Service::kSettings: return "Settings";
    case Service::kFiles: return "Files";
    case Service::kUserInterface: return "UserInterface";
    case Service::kClock: return "Clock";
    case Service::kBeep: return "Beep";
    case Service::kClipboard: return "Clipboard";
  }
  return "?";
}

void Faults::Enter(Service service, const char* member) {
  uint64_t& mine = per_service_[static_cast<size_t>(service)];
  ++mine;
  ++total_;
  nothing_due_ = false;
  if (record_) recorded_.push_back(std::string(ServiceName(service)) + "." + member);
  if (!plan_) return;
  bool hit = false;
  if (!plan_->member.empty()) {
    hit = plan_->member == member && ++member_calls_ == plan_->at;
  } else {
    hit = plan_->service ? (*plan_->service == service && mine == plan_->at) : total_ == plan_->at;
  }
  if (!hit) return;
  std::optional<Error> error = std::move(plan_->error);
  plan_.reset();
  last_failed_ = std::string(ServiceName(service)) + "." + member;
  if (!error) {
    nothing_due_ = true;  // injected only if the member can answer Nothing
    return;
  }
  injected_ = true;
  throw *error;
}

bool Faults::TakeNothing() {
  if (!nothing_due_) return false;
  nothing_due_ = false;
  injected_ = true;
  return true;
}

void Faults::ResetCounts() {
  per_service_.fill(0);
  total_ = 0;
  recorded_.clear();
}

void Faults::FailNthCall(uint64_t n, Error error) {
  plan_ = Plan{std::nullopt, {}, total_ + n, std::move(error)};
  injected_ = false;
}

void Faults::FailNthCall(Service service, uint64_t n, Error error) {
  plan_ = Plan{service, {}, per_service_[static_cast<size_t>(service)] + n, std::move(error)};
  injected_ = false;
}

void Faults::FailCall(std::string member, Error error, uint64_t n) {
  plan_ = Plan{std::nullopt, std::move(member), n, std::move(error)};
  member_calls_ = 0;
  injected_ = false;
}

void Faults::NothingAtNthCall(uint64_t n) {
  plan_ = Plan{std::nullopt, {}, total_ + n, std::nullopt};
  injected_ = false;
}

void Faults::ClearPlan() { plan_.reset(); }

}  // namespace corvina::sim
