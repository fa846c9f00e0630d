#include "host/inspector_bars.h"

#include "host/button_clicks.h"
#include "host/command_bars.h"
#include "host/control_table.h"
#include "settings/guard.h"

namespace corvina {

void InspectorBars::Connect(outlook::Application& application) {
  Guard(addin_.log, context_, L"oInspectors_NewInspector", [&] {
    auto inspectors = application.Inspectors();
    new_inspector_ = HookEvent(L"Inspectors.NewInspector", [&] {
      return inspectors->OnNewInspector(
          [this](outlook::Ref<outlook::Inspector> inspector) { oInspectors_NewInspector(inspector); });
    });
    const int32_t open = inspectors->Count();
    for (int32_t i = 1; i <= open; ++i) Equip(inspectors->Item(i));
  });
}

void InspectorBars::oInspectors_NewInspector(
    const outlook::Ref<outlook::Inspector>& inspector) noexcept {
  Guard(addin_.log, context_, L"oInspectors_NewInspector", [&] {
    DropClosed();
    Equip(inspector);
  });
}

void InspectorBars::Equip(const outlook::Ref<outlook::Inspector>& inspector) {
  if (!inspector) return;
  auto item = inspector->CurrentItem();
  if (!item || item->Class() != outlook::olMail) return;  // the bar belongs to mail windows
  auto bar = CreateAddInCommandBarInspector(addin_, *inspector);
  if (!bar) return;
  Window& window = windows_.emplace_back();
  window.inspector = inspector;
  Window* self = &window;  // list nodes stay put until DropClosed, which never runs inside
  for (int index : InspectorCreationOrder()) {
    auto control = CreateAddInButtonInspector(addin_, *inspector, index);
    if (!control) continue;
    window.controls.push_back(control);
    window.events.push_back(control->OnClick([this, self, index] {
      try {
        if (!self->closed)
          RouteControlEvent(addin_, context_, index, L"", self->inspector.get());
      } catch (...) {
      }
    }));
  }
  window.close = inspector->OnClose([self] { self->closed = true; });
}

void InspectorBars::DropClosed() noexcept {
  windows_.remove_if([](const Window& w) { return w.closed; });
}

void InspectorBars::Release() noexcept {
  new_inspector_.Reset();
  windows_.clear();
}

size_t InspectorBars::open_windows() const {
  size_t n = 0;
  for (const Window& w : windows_) n += !w.closed;
  return n;
}

}  // namespace corvina
