#pragma once
// The system clipboard, as the file transfer uses it. The block layout is the core's; an
// implementation only opens, empties, hands over and closes.
#include <cstdint>
#include <string>

namespace corvina {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // Opens the clipboard for the active window; false when another program holds it open.
  virtual bool Open() = 0;
  virtual void Empty() = 0;
  // Hands a copy of `bytes` over in a movable, zero-filled global block under `format`;
  // true when the clipboard took it (the block then belongs to the clipboard).
  virtual bool SetData(uint32_t format, const std::string& bytes) = 0;
  virtual void Close() = 0;
  // Text in the system's 8-bit code page (characters it lacks become "?").
  virtual std::string ToCodePage(const std::wstring& text) = 0;
};

}  // namespace corvina
