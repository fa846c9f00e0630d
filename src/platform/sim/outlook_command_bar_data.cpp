#include "platform/sim/outlook_command_bar_data.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace corvina::sim {

void SimControlData::Change(std::wstring new_text) {
  text = std::move(new_text);
  change.Raise();
}

std::shared_ptr<SimControlData> SimCommandBarData::AddControl(int32_t control_type, bool temp) {
  auto c = std::make_shared<SimControlData>();
  c->type = control_type;
  c->temporary = temp;
  c->bar = weak_from_this();
  controls.push_back(c);
  return c;
}

std::shared_ptr<SimControlData> SimCommandBarData::FindControl(std::wstring_view wanted) const {
  for (const auto& c : controls) {
    if (c->tag == wanted) return c;
  }
  return nullptr;
}

void SimCommandBarData::RemoveControl(const SimControlData& control) {
  std::erase_if(controls, [&](const auto& c) { return c.get() == &control; });
}

namespace {

std::shared_ptr<SimCommandBarsData> WithBuiltIns(std::initializer_list<const wchar_t*> names) {
  auto bars = std::make_shared<SimCommandBarsData>();
  for (const wchar_t* name : names) {
    auto bar = bars->AddBar(name, 1, false);
    bar->built_in = true;
    bar->visible = true;
    // A couple of built-in buttons, so code walking the controls meets some it did not add.
    for (const wchar_t* caption : {L"&New", L"&Print"})
      bar->AddControl(1, false)->caption = caption;
  }
  return bars;
}

}  // namespace

std::shared_ptr<SimCommandBarsData> SimCommandBarsData::ExplorerDefaults() {
  return WithBuiltIns({L"Menu Bar", L"Standard", L"Advanced"});
}

std::shared_ptr<SimCommandBarsData> SimCommandBarsData::InspectorDefaults() {
  return WithBuiltIns({L"Menu Bar", L"Standard", L"Formatting"});
}

std::shared_ptr<SimCommandBarData> SimCommandBarsData::AddBar(std::wstring bar_name,
                                                              int32_t bar_position, bool temp) {
  auto bar = std::make_shared<SimCommandBarData>();
  bar->name = std::move(bar_name);
  bar->position = bar_position;
  bar->temporary = temp;
  bar->owner = weak_from_this();
  bars.push_back(bar);
  return bar;
}

std::shared_ptr<SimCommandBarData> SimCommandBarsData::Find(std::wstring_view wanted) const {
  for (const auto& b : bars) {
    if (EqualsIgnoreCase(b->name, wanted)) return b;
  }
  return nullptr;
}

void SimCommandBarsData::RemoveBar(const SimCommandBarData& bar) {
  std::erase_if(bars, [&](const auto& b) { return b.get() == &bar; });
}

void SimCommandBarsData::DropTemporary() {
  for (const auto& b : bars) {
    if (b->temporary) b->deleted = true;
    for (const auto& c : b->controls) {
      if (c->temporary) c->deleted = true;
    }
    std::erase_if(b->controls, [](const auto& c) { return c->deleted; });
  }
  std::erase_if(bars, [](const auto& b) { return b->deleted; });
}

}  // namespace corvina::sim
