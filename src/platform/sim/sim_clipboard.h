#pragma once
// An in-memory clipboard: what was put on it, and whether another program holds it open.
#include <cstdint>
#include <optional>
#include <string>

#include "platform/clipboard.h"
#include "platform/sim/faults.h"

namespace corvina::sim {

class SimClipboard : public Clipboard {
 public:
  explicit SimClipboard(Faults& faults) : faults_(faults) {}

  bool Open() override;
  void Empty() override;
  bool SetData(uint32_t format, const std::string& bytes) override;
  void Close() override;
  // Latin-1: characters above 255 become "?", as a Western code page would show them.
  std::string ToCodePage(const std::wstring& text) override;

  // Test side.
  void set_held_by_other(bool held) { held_by_other_ = held; }
  bool is_open() const { return open_; }
  std::optional<uint32_t> format() const { return format_; }
  const std::string& data() const { return data_; }

 private:
  Faults& faults_;
  bool held_by_other_ = false;
  bool open_ = false;
  std::optional<uint32_t> format_;
  std::string data_;
};

}  // namespace corvina::sim
