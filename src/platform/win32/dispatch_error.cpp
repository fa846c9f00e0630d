#include "platform/win32/dispatch_error.h"

#include <cstdio>
#include <utility>

#include "platform/win32/unique_handle.h"

namespace corvina::win32 {

namespace {

// The codes a late-bound call meets most, named the way a reader of the log expects. Others
// take the system's message text.
const wchar_t* KnownMeaning(HRESULT hr) {
  switch (hr) {
    case DISP_E_UNKNOWNNAME: return L"unknown name";
    case DISP_E_MEMBERNOTFOUND: return L"member not found";
    case DISP_E_TYPEMISMATCH: return L"type mismatch";
    case DISP_E_BADPARAMCOUNT: return L"wrong number of arguments";
    case DISP_E_PARAMNOTFOUND: return L"parameter not found";
    case DISP_E_PARAMNOTOPTIONAL: return L"parameter not optional";
    case DISP_E_BADINDEX: return L"bad index";
    case DISP_E_OVERFLOW: return L"overflow";
    case DISP_E_EXCEPTION: return L"exception";
    case RPC_E_DISCONNECTED: return L"object disconnected from its clients";
    case RPC_E_SERVERCALL_RETRYLATER: return L"application busy";
    case RPC_E_CALL_REJECTED: return L"call rejected";
    case E_NOINTERFACE: return L"no such interface";
    case E_INVALIDARG: return L"invalid argument";
    case E_OUTOFMEMORY: return L"out of memory";
    case E_FAIL: return L"unspecified failure";
    default: return nullptr;
  }
}

std::wstring SystemMeaning(HRESULT hr) {
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(hr), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::wstring meaning(text ? text : L"", length);
  if (text) LocalFree(text);
  while (!meaning.empty() && (meaning.back() == L'\n' || meaning.back() == L'\r' ||
                              meaning.back() == L' ' || meaning.back() == L'.')) {
    meaning.pop_back();
  }
  return meaning;
}

std::wstring TakeString(BSTR& s) {
  UniqueBstr owned(std::exchange(s, nullptr));
  return owned ? std::wstring(owned.get(), SysStringLen(owned.get())) : std::wstring();
}

}  // namespace

ExcepInfo::~ExcepInfo() {
  SysFreeString(info_.bstrSource);
  SysFreeString(info_.bstrDescription);
  SysFreeString(info_.bstrHelpFile);
}

std::wstring DescribeHResult(HRESULT hr) {
  wchar_t code[16];
  std::swprintf(code, 16, L"0x%08lX", static_cast<unsigned long>(hr));
  std::wstring meaning;
  if (const wchar_t* known = KnownMeaning(hr)) {
    meaning = known;
  } else {
    meaning = SystemMeaning(hr);
  }
  return meaning.empty() ? std::wstring(code) : std::wstring(code) + L" (" + meaning + L")";
}

namespace {

// The number the add-in sees for a failed call: the HRESULT itself, except for the codes that
// mean Outlook's object has gone away, which are the classic error 462 the core recognises
// (it then asks the running Outlook again).
int32_t ErrorNumber(HRESULT hr) {
  switch (hr) {
    case HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE):
    case HRESULT_FROM_WIN32(RPC_S_CALL_FAILED):
    case RPC_E_DISCONNECTED:
    case CO_E_OBJNOTCONNECTED:
      return kErrServerUnavailable;
    default:
      return static_cast<int32_t>(hr);
  }
}

}  // namespace

Error CallError(HRESULT hr, std::wstring_view member) {
  return Error(ErrorNumber(hr), kOutlookSource,
               std::wstring(member) + L" failed: " + DescribeHResult(hr));
}

Error ExceptionError(ExcepInfo& info, std::wstring_view member) {
  EXCEPINFO& e = *info.get();
  if (e.pfnDeferredFillIn) {
    e.pfnDeferredFillIn(&e);
    e.pfnDeferredFillIn = nullptr;
  }
  int32_t number = e.wCode != 0 ? e.wCode : ErrorNumber(e.scode);
  if (number == 0) number = static_cast<int32_t>(DISP_E_EXCEPTION);
  std::wstring source = TakeString(e.bstrSource);
  std::wstring description = TakeString(e.bstrDescription);
  if (source.empty()) source = kOutlookSource;
  if (description.empty()) description = CallError(number, member).description();
  return Error(number, std::move(source), std::move(description));
}

}  // namespace corvina::win32
