#pragma once
// How a failed late-bound call becomes corvina::Error. Outlook reports its own failures as
// DISP_E_EXCEPTION with an EXCEPINFO, whose fields map onto Error one to one; every other
// failure (unknown name, bad index, a disconnected object...) is described with the member
// that failed, so the log line tells which call it was.
#include <string>
#include <string_view>

#include "base/error.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

inline constexpr wchar_t kOutlookSource[] = L"Outlook";

// Owns the strings an Invoke may leave in its EXCEPINFO.
class ExcepInfo {
 public:
  ExcepInfo() noexcept = default;
  ExcepInfo(const ExcepInfo&) = delete;
  ExcepInfo& operator=(const ExcepInfo&) = delete;
  ~ExcepInfo();
  EXCEPINFO* get() noexcept { return &info_; }

 private:
  EXCEPINFO info_{};
};

// "0x80020006 (unknown name)": the code in hexadecimal and, when known, what it means.
std::wstring DescribeHResult(HRESULT hr);

// Error for `hr` returned by a call of `member` ("Items.Restrict"): number hr, source Outlook,
// description "Items.Restrict failed: 0x80020006 (unknown name)".
Error CallError(HRESULT hr, std::wstring_view member);

// Error for DISP_E_EXCEPTION: number wCode (or scode), Outlook's source and description. Runs
// the deferred fill-in first when the object asked for it.
Error ExceptionError(ExcepInfo& info, std::wstring_view member);

}  // namespace corvina::win32
