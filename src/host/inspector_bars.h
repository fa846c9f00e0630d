#pragma once
// The "VireoInspector" bar on every mail window Outlook opens, with its buttons wired to the
// window they sit on. A window's bar and subscriptions are let go when the window closes.
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "addin/addin.h"
#include "platform/event_connection.h"
#include "platform/outlook.h"

namespace corvina {

class InspectorBars {
 public:
  InspectorBars(AddIn& addin, std::wstring context) : addin_(addin), context_(std::move(context)) {}
  InspectorBars(const InspectorBars&) = delete;
  InspectorBars& operator=(const InspectorBars&) = delete;

  // Starts listening for new mail windows and equips those already open.
  void Connect(outlook::Application& application);
  // Outlook's NewInspector event.
  void oInspectors_NewInspector(const outlook::Ref<outlook::Inspector>& inspector) noexcept;
  void Release() noexcept;
  size_t open_windows() const;

 private:
  struct Window {
    outlook::Ref<outlook::Inspector> inspector;
    std::vector<outlook::Ref<outlook::CommandBarControl>> controls;
    std::vector<EventConnection> events;
    EventConnection close;
    bool closed = false;
  };
  void Equip(const outlook::Ref<outlook::Inspector>& inspector);
  void DropClosed() noexcept;

  AddIn& addin_;
  std::wstring context_;
  EventConnection new_inspector_;
  std::list<Window> windows_;
};

}  // namespace corvina
