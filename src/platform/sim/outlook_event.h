#pragma once
// One event source of the sim Outlook (NewMail, an explorer's Close, a button's Click): the
// list of connected handlers. Connecting returns an EventConnection whose destruction removes
// the handler, even after the source itself is gone.
//
// Raise() calls the handlers in connection order. A handler may connect or disconnect others
// while the event runs; one disconnected during the raise is not called. A handler that throws
// stops the raise and the exception reaches whoever raised the event (the test), so a test can
// see an error the add-in let escape; the sim's own state is already final at that point.
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/event_connection.h"

namespace corvina::sim {

class SimEvent {
 public:
  SimEvent();
  SimEvent(const SimEvent&) = delete;
  SimEvent& operator=(const SimEvent&) = delete;

  [[nodiscard]] EventConnection Connect(std::function<void()> handler);
  void Raise();
  size_t connected_count() const { return handlers_->list.size(); }

 private:
  using Handler = std::shared_ptr<std::function<void()>>;
  struct Handlers {
    uint64_t next_id = 1;
    std::vector<std::pair<uint64_t, Handler>> list;
  };
  std::shared_ptr<Handlers> handlers_;
};

}  // namespace corvina::sim
