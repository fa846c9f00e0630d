#include "platform/win32/chat/board_dom.h"

#include "platform/win32/dispatch.h"
#include "platform/win32/dispatch_error.h"

namespace corvina::win32 {

namespace {

Dispatch Page(IDispatch* object, const wchar_t* type) {
  // Ids are per object here: each page (and element) is asked for its own names.
  return Dispatch(Microsoft::WRL::ComPtr<IDispatch>(object), nullptr, type);
}

}  // namespace

std::wstring OuterHtml(IDispatch* element) {
  if (!element) return L"";
  return Page(element, L"Element").Get<std::wstring>(L"outerHTML");
}

std::wstring SourceElementHtml(IDispatch* event) {
  if (!event) return L"";
  const Dispatch element = Page(event, L"Event").Get<Dispatch>(L"srcElement");
  return OuterHtml(element.get());
}

void AppendToBody(IDispatch* document, const std::wstring& html) {
  Dispatch body = Page(document, L"Document").Get<Dispatch>(L"body");
  body.set_type(L"Body");
  body.Call(L"insertAdjacentHTML", L"beforeEnd", html);
}

namespace {
std::function<void(const std::wstring&)>& LogSink() {
  static std::function<void(const std::wstring&)> sink;
  return sink;
}
}  // namespace

void SetBoardLogForTesting(std::function<void(const std::wstring& line)> sink) {
  LogSink() = std::move(sink);
}

void LogBoardBrowser(std::wstring_view what) noexcept {
  try {
    const std::wstring line = L"Vireo: the chat board's browser: " + std::wstring(what) + L"\n";
    if (LogSink()) return LogSink()(line);
    OutputDebugStringW(line.c_str());
  } catch (...) {
    // Out of memory for a log line: there is nothing left to tell it with.
  }
}

void LogBoardBrowser(std::wstring_view what, HRESULT hr) noexcept {
  try {
    LogBoardBrowser(std::wstring(what) + L": " + DescribeHResult(hr));
  } catch (...) {
  }
}

}  // namespace corvina::win32
