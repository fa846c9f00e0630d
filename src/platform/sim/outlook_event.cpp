#include "platform/sim/outlook_event.h"

#include <algorithm>

namespace corvina::sim {

SimEvent::SimEvent() : handlers_(std::make_shared<Handlers>()) {}

EventConnection SimEvent::Connect(std::function<void()> handler) {
  const uint64_t id = handlers_->next_id++;
  handlers_->list.emplace_back(id, std::make_shared<std::function<void()>>(std::move(handler)));
  std::weak_ptr<Handlers> weak = handlers_;
  return EventConnection([weak, id] {
    if (auto h = weak.lock()) {
      std::erase_if(h->list, [id](const auto& entry) { return entry.first == id; });
    }
  });
}

void SimEvent::Raise() {
  // A copy, so handlers may change the subscriptions while the event runs.
  const auto snapshot = handlers_->list;
  for (const auto& [id, handler] : snapshot) {
    const auto& live = handlers_->list;
    bool still_connected = std::any_of(live.begin(), live.end(),
                                       [id = id](const auto& entry) { return entry.first == id; });
    if (still_connected) (*handler)();
  }
}

}  // namespace corvina::sim
