#pragma once
// The system clipboard for the file transfer: opened for the active window, the block handed
// over as movable, zero-filled global memory.
#include "platform/clipboard.h"

namespace corvina::win32 {

class Win32Clipboard : public Clipboard {
 public:
  bool Open() override;
  void Empty() override;
  bool SetData(uint32_t format, const std::string& bytes) override;
  void Close() override;
  std::string ToCodePage(const std::wstring& text) override;
};

}  // namespace corvina::win32
