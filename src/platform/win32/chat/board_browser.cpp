#include "platform/win32/chat/board_browser.h"

#include <utility>

#include "base/error.h"
#include "base/text.h"
#include "platform/event_connection.h"
#include "platform/win32/chat/board_dom.h"
#include "platform/win32/chat/board_site.h"
#include "platform/win32/chat/browser_window.h"
#include "platform/win32/dispatch_error.h"
#include "platform/win32/dispatch_variant.h"
#include "platform/win32/event_sink.h"

#include <exdispid.h>
#include <mshtmdid.h>
#include <olectl.h>  // DISPID_CLICK, which the click event is

namespace corvina::win32 {

namespace {

using Microsoft::WRL::ComPtr;

// HTMLDocumentEvents2: mingw-w64's uuid library does not carry it.
constexpr IID kHtmlDocumentEvents2 = {
    0x3050f613, 0x98b5, 0x11cf, {0xbb, 0x82, 0x00, 0xaa, 0x00, 0xbd, 0xce, 0x0b}};

bool SameObject(IUnknown* a, IUnknown* b) {
  if (!a || !b) return false;
  ComPtr<IUnknown> ia;
  ComPtr<IUnknown> ib;
  a->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(ia.GetAddressOf()));
  b->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(ib.GetAddressOf()));
  return ia && ia.Get() == ib.Get();  // (mingw-w64's ComPtr == compares only emptiness)
}

// A public member is called from the chat window's procedure: nothing may unwind into it.
template <class F>
void Guarded(const wchar_t* what, F&& body) noexcept {
  try {
    body();
  } catch (const Error& e) {
    LogBoardBrowser(std::wstring(what) + L": " + e.description());
  } catch (...) {
    LogBoardBrowser(std::wstring(what) + L": unexpected failure");
  }
}

}  // namespace

struct BoardBrowser::State {
  HWND parent;
  Factory factory;
  Events events;
  RECT area{};
  ComPtr<BoardSite> site;
  ComPtr<IOleObject> control;
  ComPtr<IOleInPlaceObject> in_place;
  ComPtr<IWebBrowser2> browser;
  EventConnection browser_events;
  EventConnection document_events;
  std::wstring path;
  bool complete = false;
  // Blocks came while the page loaded: they are in the file, perhaps after the part the
  // page has read, so the page is shown once more from the file when it has loaded.
  bool blocks_while_loading = false;

  void Release() noexcept;
  void Show();  // Navigate2 to `path`
  void OnDocumentComplete(const DISPPARAMS& params);
  void OnClick(const DISPPARAMS& params);
  void HookClicks();
};

// The site is told first (the control may call it while closing, and may keep it after),
// then the sinks go (no event reaches a half-closed board), then the control is closed and
// lets go of the site.
void BoardBrowser::State::Release() noexcept {
  if (site) site->Disconnect();
  document_events.Reset();
  browser_events.Reset();
  if (control) {
    const HRESULT hr = control->Close(OLECLOSE_NOSAVE);
    if (FAILED(hr)) LogBoardBrowser(L"the control refused to close", hr);
    control->SetClientSite(nullptr);
  }
  browser.Reset();
  in_place.Reset();
  control.Reset();
  site.Reset();
  complete = false;
}

void BoardBrowser::State::Show() {
  complete = false;
  blocks_while_loading = false;
  document_events.Reset();  // the old document goes
  UniqueVariant url = ToVariant(path);
  UniqueVariant none;
  const HRESULT hr = browser->Navigate2(url.get(), none.get(), none.get(), none.get(), none.get());
  if (FAILED(hr)) LogBoardBrowser(L"the board's page " + path + L" cannot be shown", hr);
}

void BoardBrowser::State::OnDocumentComplete(const DISPPARAMS& params) {
  // Arguments in reverse: the completed window (the control itself for the page, a frame's
  // otherwise), then the URL.
  if (params.cArgs < 2 || !browser) return;
  const ComPtr<IDispatch> window = ObjectArgument(params.rgvarg[1]);
  if (!SameObject(window.Get(), browser.Get())) return;
  if (blocks_while_loading && !path.empty()) {
    Show();
    return;
  }
  complete = true;
  Guarded(L"the page's clicks cannot be hooked", [this] { HookClicks(); });
  const auto done = events.document_complete;  // it may end the board
  if (done) done();
}

void BoardBrowser::State::HookClicks() {
  ComPtr<IDispatch> document;
  const HRESULT hr = browser->get_Document(document.GetAddressOf());
  if (FAILED(hr) || !document) {
    LogBoardBrowser(L"the loaded page has no document", FAILED(hr) ? hr : E_POINTER);
    return;
  }
  document_events = AdviseEventWithArguments(
      document.Get(), kHtmlDocumentEvents2, DISPID_HTMLDOCUMENTEVENTS2_ONCLICK,
      [this](const DISPPARAMS& params) { OnClick(params); }, L"Document.onclick");
}

void BoardBrowser::State::OnClick(const DISPPARAMS& params) {
  std::wstring html;
  Guarded(L"the clicked element cannot be read", [&] {
    if (params.cArgs >= 1) html = SourceElementHtml(ObjectArgument(params.rgvarg[0]).Get());
  });
  const auto click = events.click;  // it may end the board
  if (!click) return;
  Guarded(L"the board's click failed", [&] { click(html); });
}

BoardBrowser::Factory BoardBrowser::SystemBrowser() {
  return [](IOleObject** control) {
    return CoCreateInstance(CLSID_WebBrowser, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject,
                            reinterpret_cast<void**>(control));
  };
}

BoardBrowser::BoardBrowser(HWND parent, Factory factory, Events events)
    : state_(std::make_unique<State>()) {
  state_->parent = parent;
  state_->factory = std::move(factory);
  state_->events = std::move(events);
}

BoardBrowser::~BoardBrowser() { state_->Release(); }

bool BoardBrowser::Create(const RECT& area) {
  State& s = *state_;
  if (s.browser) return true;
  s.area = area;
  bool made = false;
  Guarded(L"the control cannot be made", [&] {
    HRESULT hr = s.factory ? s.factory(s.control.ReleaseAndGetAddressOf()) : E_POINTER;
    if (FAILED(hr) || !s.control) {
      LogBoardBrowser(L"the system's web browser cannot be made", FAILED(hr) ? hr : E_POINTER);
      return;
    }
    // Takes over the reference the site is born with (mingw-w64's ComPtr::Attach would add one).
    *s.site.ReleaseAndGetAddressOf() = new BoardSite(s.parent, area, s.events.context_menu);
    hr = s.control->SetClientSite(s.site.Get());
    if (FAILED(hr)) return LogBoardBrowser(L"the control refused its site", hr);
    OleSetContainedObject(s.control.Get(), TRUE);  // a hint only: the control may ignore it
    hr = s.control->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, s.site.Get(), 0, s.parent, &area);
    if (FAILED(hr)) return LogBoardBrowser(L"the control cannot be shown in the window", hr);
    s.control.As(&s.in_place);
    ComPtr<IWebBrowser2> browser;
    hr = s.control.As(&browser);
    if (FAILED(hr) || !browser) {
      return LogBoardBrowser(L"the control is no web browser", FAILED(hr) ? hr : E_POINTER);
    }
    // Without its completion events the page would never take a block.
    s.browser_events = AdviseEventWithArguments(
        browser.Get(), DIID_DWebBrowserEvents2, DISPID_DOCUMENTCOMPLETE,
        [&s](const DISPPARAMS& params) { s.OnDocumentComplete(params); },
        L"WebBrowser.DocumentComplete");
    s.browser = std::move(browser);
    made = true;
  });
  if (!made) s.Release();
  return made;
}

void BoardBrowser::Navigate(const std::wstring& path) {
  State& s = *state_;
  s.path = path;
  if (!s.browser) return;
  Guarded(L"the board's page cannot be shown", [&] { s.Show(); });
}

void BoardBrowser::Append(const std::string& html) {
  State& s = *state_;
  if (!s.browser) return;  // the window shows its fallback
  if (!s.complete) {
    s.blocks_while_loading = true;
    return;
  }
  Guarded(L"a block cannot be added to the board", [&] {
    std::wstring refusal;
    ComPtr<IDispatch> document;
    const HRESULT hr = s.browser->get_Document(document.GetAddressOf());
    if (FAILED(hr) || !document) {
      refusal = L"no document, " + DescribeHResult(FAILED(hr) ? hr : E_POINTER);
    } else {
      try {
        AppendToBody(document.Get(), FromUtf8(html));
      } catch (const Error& e) {
        refusal = e.description();
      }
    }
    if (refusal.empty()) return;
    // The file already holds the block: showing the page again from it loses nothing.
    LogBoardBrowser(L"the page refused a block (" + refusal + L"); it is shown again from " +
                    s.path);
    if (!s.path.empty()) s.Show();
  });
}

bool BoardBrowser::document_complete() const { return state_->complete; }

void BoardBrowser::Move(const RECT& area) {
  State& s = *state_;
  s.area = area;
  if (s.site) s.site->SetArea(area);
  if (!s.in_place) return;
  const HRESULT hr = s.in_place->SetObjectRects(&area, &area);
  if (FAILED(hr)) LogBoardBrowser(L"the board cannot be moved", hr);
}

IWebBrowser2* BoardBrowser::GetWebBrowser() const { return state_->browser.Get(); }

HWND BoardBrowser::getWebHwnd() const {
  const State& s = *state_;
  if (!s.in_place || !s.browser) return nullptr;
  HWND control = nullptr;
  if (FAILED(s.in_place->GetWindow(&control))) return nullptr;
  return FindPageWindow(control);
}

void BoardBrowser::SetFocusToBrowser() {
  State& s = *state_;
  if (!s.control || !s.browser) return;
  const HRESULT hr =
      s.control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, s.site.Get(), 0, s.parent, &s.area);
  if (FAILED(hr)) LogBoardBrowser(L"the board cannot take the focus", hr);
  if (HWND page = getWebHwnd()) SetFocus(page);
}

void BoardBrowser::MakeCtrlC() { SendCtrlC(getWebHwnd()); }

}  // namespace corvina::win32
