#pragma once
// frmVirusReport on Windows: the scans' log (lstVirus), one line per deleted mail as the log
// file holds it, and the senders of the rules that alert mails brought. It draws the view the
// virus core hands it and passes its two buttons and its closing to the core's events.
#include <string>
#include <vector>

#include "platform/virus_windows.h"
#include "platform/win32/virus/frame_window.h"

namespace corvina::win32 {

// The controls, by id (tests find them with GetDlgItem).
enum VirusReportControl : int {
  kReportLogLabel = 501,
  kReportLog,  // lstVirus
  kReportOriginsLabel,
  kReportOrigins,
  kReportClear,
  kReportClose,
};

class VirusReportFrame final : public FrameWindow {
 public:
  VirusReportFrame() noexcept;
  ~VirusReportFrame() override;

  // Draws `view`; the first call makes the window. `events` are kept for the buttons.
  void Show(const VirusReportView& view, const VirusReportEvents& events);

 private:
  const std::function<void()>& CloseEvent() const noexcept override { return events_.close; }
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Create(const VirusReportView& view);
  void Layout();
  int ButtonWidth() const;
  void Fill(int id, const std::vector<std::wstring>& shown, const std::vector<std::wstring>& lines);

  VirusReportView view_;  // what the window shows
  VirusReportEvents events_;
};

}  // namespace corvina::win32
