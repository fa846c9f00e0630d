#pragma once
// The command bars of one Outlook window as the sim stores them. They live in the store, not
// in the add-in's objects, so bars and controls the add-in created survive its restart as
// non-temporary bars survive in Outlook: a reconnecting add-in that adds them again shows up
// as duplicates. Test-side helpers find bars and controls and play the user's clicks.
//
// Office also raises Click on every button sharing the clicked button's Tag; the sim raises it
// on the clicked control only.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/outlook_event.h"

namespace corvina::sim {

struct SimCommandBarData;
struct SimCommandBarsData;

struct SimControlData {
  int32_t type = 1;  // msoControlButton
  std::wstring tag;
  std::wstring caption;
  int32_t face_id = 0;
  std::wstring tooltip_text;
  int32_t style = 0;
  bool visible = true;
  std::wstring text;  // a combo box's current text
  bool temporary = false;
  bool deleted = false;
  std::weak_ptr<SimCommandBarData> bar;
  SimEvent click;
  SimEvent change;

  // What the user does. A hidden control can still be clicked here (the test asks for it).
  void Click() { click.Raise(); }
  void Change(std::wstring new_text);
};

struct SimCommandBarData : std::enable_shared_from_this<SimCommandBarData> {
  std::wstring name;
  int32_t position = 1;  // msoBarTop
  bool visible = false;  // a new custom bar is hidden until made visible, as in Office
  bool temporary = false;
  bool built_in = false;  // Outlook's own bars cannot be deleted
  bool deleted = false;
  std::weak_ptr<SimCommandBarsData> owner;
  std::vector<std::shared_ptr<SimControlData>> controls;

  std::shared_ptr<SimControlData> AddControl(int32_t type, bool temporary);
  // The first control with this tag, or null.
  std::shared_ptr<SimControlData> FindControl(std::wstring_view tag) const;
  void RemoveControl(const SimControlData& control);
};

struct SimCommandBarsData : std::enable_shared_from_this<SimCommandBarsData> {
  std::vector<std::shared_ptr<SimCommandBarData>> bars;

  // The bars a main window / mail window starts with: a couple of Outlook's own, so code
  // has to look its bar up by name.
  static std::shared_ptr<SimCommandBarsData> ExplorerDefaults();
  static std::shared_ptr<SimCommandBarsData> InspectorDefaults();

  std::shared_ptr<SimCommandBarData> AddBar(std::wstring name, int32_t position, bool temporary);
  // The first bar of that name (any case), or null.
  std::shared_ptr<SimCommandBarData> Find(std::wstring_view name) const;
  void RemoveBar(const SimCommandBarData& bar);
  // What closing Outlook does: temporary bars and temporary controls are gone afterwards.
  void DropTemporary();
};

}  // namespace corvina::sim
