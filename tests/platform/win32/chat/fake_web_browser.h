#pragma once
// A stand-in for the system's web browser control, for the board's hosting tests: Wine's
// control renders nothing and fires nothing. It asks the site what the real control asks
// (the download control, the host flags, the window context), records what the hosting asks
// of it, and fires what a page would fire: document completion, clicks and right clicks.
//
// The page is reached by name (IDispatch), as the hosting reaches it: a document with "body"
// and a click connection point, a body with "insertAdjacentHTML", elements with "outerHTML".
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/win32/chat/board_browser.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32::testing {

// What the hosting asked of the control, and how the control answers.
struct FakeBrowserRecord {
  std::optional<VARTYPE> download_control_type;  // the site's answer, when it gave one
  LONG download_control = 0;
  DWORD host_flags = 0;
  std::vector<LONG> verbs;  // DoVerb, in order
  RECT activation_area{};   // what the site's GetWindowContext gave
  std::vector<std::wstring> navigations;
  std::vector<std::pair<std::wstring, std::wstring>> appended;  // insertAdjacentHTML(where, html)
  std::vector<RECT> object_rects;
  int closes = 0;
  size_t sinks_at_close = 0;  // advised sinks when Close came: a closing control drops them
  // The page window's key messages: (message, key, Ctrl down as the thread saw it).
  std::vector<std::tuple<UINT, WPARAM, bool>> keys;

  bool refuse_in_place = false;  // DoVerb(OLEIVERB_INPLACEACTIVATE) fails
  bool refuse_append = false;    // insertAdjacentHTML fails
};

class FakeWebBrowser {
 public:
  FakeWebBrowser();
  ~FakeWebBrowser();  // lets go of the control (the hosting may still hold it)
  FakeWebBrowser(const FakeWebBrowser&) = delete;
  FakeWebBrowser& operator=(const FakeWebBrowser&) = delete;

  // A factory handing out this control.
  BoardBrowser::Factory Factory();
  FakeBrowserRecord& record() { return *record_; }

  // DocumentComplete, for the page itself or for one of its frames.
  void FireDocumentComplete(bool page = true);
  // A click on an element of the current page.
  void Click(const std::wstring& outer_html);
  // A right click through the document host of the site the control was given last (kept
  // even after the control let go of it); no element for nullopt.
  HRESULT RightClick(const std::optional<std::wstring>& outer_html, POINT screen);

  // References held on the control, and on the last site, by others than this double.
  ULONG control_references() const;
  ULONG site_references() const;
  bool has_site() const;
  // Sinks advised on the control and on every page it had, and not unadvised since.
  size_t sinks() const;
  // The window keys go to: a child "Internet Explorer_Server" of the control's own window.
  HWND page_window() const;

  class Control;

 private:
  std::shared_ptr<FakeBrowserRecord> record_;
  Control* control_;  // one reference, this double's
};

}  // namespace corvina::win32::testing
