#pragma once
// The board's page reached through late binding (IDispatch by name), the way a script would:
// the typed document and element interfaces are huge, and the page needs only a handful of
// names. Failures come back as corvina::Error naming the member, for the caller to log.
#include <functional>
#include <string>
#include <string_view>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// An element's outer HTML; "" for no element (a click beside every element).
std::wstring OuterHtml(IDispatch* element);

// The element an event object (onclick's argument) names as its source, as outer HTML.
std::wstring SourceElementHtml(IDispatch* event);

// document.body.insertAdjacentHTML("beforeEnd", html).
void AppendToBody(IDispatch* document, const std::wstring& html);

// One line in the debugger's output: the board has no add-in log to write to, and a failing
// browser must still leave a trace of what it refused.
void LogBoardBrowser(std::wstring_view what) noexcept;
void LogBoardBrowser(std::wstring_view what, HRESULT hr) noexcept;
// Tests read the lines here instead (an empty function restores the debugger's output).
void SetBoardLogForTesting(std::function<void(const std::wstring& line)> sink);

}  // namespace corvina::win32
