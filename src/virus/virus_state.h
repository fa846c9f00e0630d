#pragma once
// What the virus alert keeps for one running add-in: its two windows' models while loaded.
#include <memory>

namespace corvina {

class VirusAlerter;
class VirusReport;

struct VirusState {
  VirusState();
  ~VirusState();
  VirusState(const VirusState&) = delete;
  VirusState& operator=(const VirusState&) = delete;

  std::unique_ptr<VirusAlerter> window;  // frmVirusAlerter while it is loaded
  std::unique_ptr<VirusReport> report;   // frmVirusReport while it is loaded
};

}  // namespace corvina
