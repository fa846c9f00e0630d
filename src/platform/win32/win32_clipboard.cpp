#include "platform/win32/win32_clipboard.h"

#include <cstring>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

bool Win32Clipboard::Open() { return OpenClipboard(GetActiveWindow()) != FALSE; }

void Win32Clipboard::Empty() { EmptyClipboard(); }

bool Win32Clipboard::SetData(uint32_t format, const std::string& bytes) {
  UniqueHGlobal block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes.size()));
  if (!block) return false;
  {
    GlobalLock lock(block.get());
    if (!lock.get()) return false;
    std::memcpy(lock.get(), bytes.data(), bytes.size());
  }
  if (!SetClipboardData(format, block.get())) return false;  // still ours: freed by `block`
  block.release();  // the clipboard owns it now
  return true;
}

void Win32Clipboard::Close() { CloseClipboard(); }

std::string Win32Clipboard::ToCodePage(const std::wstring& text) {
  if (text.empty()) return {};
  const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(size > 0 ? size : 0), '\0');
  if (size > 0)
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), out.data(), size,
                        nullptr, nullptr);
  return out;
}

}  // namespace corvina::win32
