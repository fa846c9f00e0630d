#include "platform/win32/system_message.h"

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

std::wstring SystemMessage(uint32_t code) {
  wchar_t buffer[512];
  const DWORD n = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                 nullptr, code, 0, buffer, 512, nullptr);
  std::wstring text(buffer, n);
  while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r' || text.back() == L' '))
    text.pop_back();
  return text.empty() ? L"Error " + std::to_wstring(code) : text;
}

}  // namespace corvina::win32
