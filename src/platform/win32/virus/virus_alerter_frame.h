#pragma once
// frmVirusAlerter on Windows: the rule list (lsvRules) with a check box and a key per rule,
// the buttons that edit, switch and scan, and the stored preferences' check boxes. It draws
// the view the virus core hands it and passes every user action to the core's events; it
// keeps nothing of its own beyond what is on the screen.
#include <cstdint>
#include <functional>
#include <string>

#include "platform/virus_windows.h"
#include "platform/win32/virus/frame_window.h"
#include "platform/win32/unique_handle.h"

namespace corvina::win32 {

// The controls, by id (tests find them with GetDlgItem). The context menu's commands are the
// ids of the buttons that do the same.
enum VirusAlerterControl : int {
  kAlerterRulesLabel = 401,
  kAlerterRules,  // lsvRules
  kAlerterNew,
  kAlerterEdit,
  kAlerterRemove,
  kAlerterActivate,
  kAlerterDeactivate,
  kAlerterScanNow,
  kAlerterScanAlerts,
  kAlerterSendAlert,
  kAlerterShowLog,
  kAlerterHelp,
  kAlerterApply,
  kAlerterClose,
  kAlerterPreferences,  // the label over the settings' boxes
  kAlerterRule,         // the line over Help, Apply and Close
  kAlerterSettingFirst = 450,  // + the index of the setting
};

class VirusAlerterFrame final : public FrameWindow {
 public:
  VirusAlerterFrame() noexcept;
  ~VirusAlerterFrame() override;

  // Draws `view`; the first call makes the window. `events` are kept for the controls.
  void Show(const VirusAlerterView& view, const VirusAlerterEvents& events);

  // How the context menu is shown: TrackPopupMenu unless a test chooses instead (the menu,
  // where it opens; the chosen command, 0 for none).
  using MenuChooser = std::function<int(HMENU menu, POINT screen)>;
  void set_menu_chooser_for_testing(MenuChooser chooser) { choose_ = std::move(chooser); }

 private:
  const std::function<void()>& CloseEvent() const noexcept override { return events_.close; }
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Create(const VirusAlerterView& view);
  void MakeControls();
  void Layout();
  SIZE MinimumSize() const;
  int ButtonWidth() const;  // the right-hand column
  int BottomButtonWidth() const;
  void ApplyLabels(const VirusAlerterLabels& labels);
  void ApplyRows(const RuleListView& rules);
  void ApplySort(const RuleListView& rules);
  void ApplySettings(const std::vector<VirusSettingBox>& settings);
  void OnCommand(int id, int code);
  void OnNotify(const NMHDR& header);
  void ShowRuleMenu(POINT screen);
  bool HasSelection() const;

  MenuChooser choose_;
  UniqueHImageList icons_;
  VirusAlerterView view_;  // what the window shows
  VirusAlerterEvents events_;
  bool applying_ = false;  // drawing the view: the list's notifications are not the user's
  // Counts each refill of the list, so a row change posted before it is not taken for a row
  // of the new list.
  uint32_t fill_ = 0;
};

}  // namespace corvina::win32
