#include "platform/sim/sim_clipboard.h"

#include "base/error.h"

namespace corvina::sim {

bool SimClipboard::Open() {
  faults_.Enter(Service::kClipboard, "Open");
  if (held_by_other_ || open_) return false;
  open_ = true;
  return true;
}

void SimClipboard::Empty() {
  faults_.Enter(Service::kClipboard, "Empty");
  if (!open_) Raise(1418, L"Thread does not have a clipboard open.");
  format_.reset();
  data_.clear();
}

bool SimClipboard::SetData(uint32_t format, const std::string& bytes) {
  faults_.Enter(Service::kClipboard, "SetData");
  if (!open_) return false;
  format_ = format;
  data_ = bytes;
  return true;
}

void SimClipboard::Close() {
  faults_.Enter(Service::kClipboard, "Close");
  open_ = false;
}

std::string SimClipboard::ToCodePage(const std::wstring& text) {
  std::string out;
  for (wchar_t c : text) out.push_back(static_cast<uint32_t>(c) < 256 ? static_cast<char>(c) : '?');
  return out;
}

}  // namespace corvina::sim
