#include "fake_web_browser.h"

#include <functional>
#include <map>

#include <exdispid.h>
#include <mshtmdid.h>
#include <olectl.h>
#include <mshtmhst.h>

namespace corvina::win32::testing {

namespace {

using Microsoft::WRL::ComPtr;

// Written out here rather than shared with the hosting, so a wrong digit there shows.
constexpr IID kHtmlDocumentEvents2 = {
    0x3050f613, 0x98b5, 0x11cf, {0xbb, 0x82, 0x00, 0xaa, 0x00, 0xbd, 0xce, 0x0b}};

// Takes over the one reference a fake is born with.
template <class T>
ComPtr<T> Adopt(T* object) {
  ComPtr<T> owned;
  *owned.ReleaseAndGetAddressOf() = object;
  return owned;
}

ULONG Count(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

#define FAKE_REFERENCES                                           \
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }   \
  ULONG STDMETHODCALLTYPE Release() override {                    \
    const ULONG left = --refs_;                                   \
    if (left == 0) delete this;                                   \
    return left;                                                  \
  }                                                               \
  ULONG refs_ = 1;

#define STUB(name, ...) \
  HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override { return E_NOTIMPL; }

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// One connection point: its sinks by cookie, and firing an event at each of them.
class FakePoint final : public IConnectionPoint {
 public:
  explicit FakePoint(const IID& events) : events_(events) {}
  FAKE_REFERENCES
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IConnectionPoint)) {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    *out = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    *iid = events_;
    return S_OK;
  }
  STUB(GetConnectionPointContainer, IConnectionPointContainer**)
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    ComPtr<IDispatch> events;
    if (FAILED(sink->QueryInterface(events_, reinterpret_cast<void**>(events.GetAddressOf())))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = ++last_cookie_;
    sinks_[*cookie] = events;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return sinks_.erase(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
  }
  STUB(EnumConnections, IEnumConnections**)

  // `args` in IDispatch's order: the last argument first.
  void Fire(DISPID event, std::vector<VARIANT> args) {
    DISPPARAMS params{args.data(), nullptr, static_cast<UINT>(args.size()), 0};
    const auto sinks = sinks_;  // a sink may unadvise while it runs
    for (const auto& [cookie, sink] : sinks) {
      sink->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
    }
  }
  size_t sinks() const { return sinks_.size(); }

 private:
  ~FakePoint() = default;
  IID events_;
  DWORD last_cookie_ = 0;
  std::map<DWORD, ComPtr<IDispatch>> sinks_;
};

// A page object reached by name: the document, the body, an element, an event object.
class FakeObject final : public IDispatch, public IConnectionPointContainer {
 public:
  using Member = std::function<HRESULT(const DISPPARAMS&, VARIANT* result)>;
  FakeObject(std::vector<std::pair<std::wstring, Member>> members, ComPtr<FakePoint> events)
      : members_(std::move(members)), events_(std::move(events)) {}
  FAKE_REFERENCES
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch)) {
      *out = static_cast<IDispatch*>(this);
    } else if (events_ && IsEqualIID(iid, IID_IConnectionPointContainer)) {
      *out = static_cast<IConnectionPointContainer*>(this);
    } else {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STUB(GetTypeInfo, UINT, LCID, ITypeInfo**)
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    for (size_t i = 0; i < members_.size(); ++i) {
      if (_wcsicmp(members_[i].first.c_str(), names[0]) != 0) continue;
      *ids = static_cast<DISPID>(i + 1);
      return S_OK;
    }
    *ids = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id < 1 || static_cast<size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
    return members_[static_cast<size_t>(id) - 1].second(*params, result);
  }
  STUB(EnumConnectionPoints, IEnumConnectionPoints**)
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    if (!IsEqualIID(iid, kHtmlDocumentEvents2)) return CONNECT_E_NOCONNECTION;
    return events_.CopyTo(point);
  }

 private:
  ~FakeObject() = default;
  std::vector<std::pair<std::wstring, Member>> members_;
  ComPtr<FakePoint> events_;
};

HRESULT ReturnObject(IDispatch* object, VARIANT* result) {
  if (!result) return E_POINTER;
  VariantInit(result);
  result->vt = VT_DISPATCH;
  result->pdispVal = object;
  object->AddRef();
  return S_OK;
}

ComPtr<FakeObject> MakeElement(const std::wstring& outer_html) {
  return Adopt(new FakeObject(
      {{L"outerHTML",
        [outer_html](const DISPPARAMS&, VARIANT* result) {
          if (!result) return E_POINTER;
          VariantInit(result);
          result->vt = VT_BSTR;
          result->bstrVal = SysAllocString(outer_html.c_str());
          return S_OK;
        }}},
      nullptr));
}

std::wstring Text(const VARIANT& v) { return v.vt == VT_BSTR && v.bstrVal ? v.bstrVal : L"?"; }

// The control's window and, inside it, the page's: keys sent to either are recorded.
LRESULT CALLBACK FakeWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_KEYDOWN || message == WM_KEYUP) {
    auto* record =
        reinterpret_cast<FakeBrowserRecord*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (record) record->keys.emplace_back(message, wparam, GetKeyState(VK_CONTROL) < 0);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

HWND MakeWindow(const wchar_t* type, HWND parent, const RECT& area) {
  static const bool registered = [] {
    for (const wchar_t* name : {L"CorvinaFakeShellEmbedding", L"Internet Explorer_Server"}) {
      WNDCLASSW window_class{};
      window_class.lpfnWndProc = FakeWindowProc;
      window_class.hInstance = GetModuleHandleW(nullptr);
      window_class.lpszClassName = name;
      RegisterClassW(&window_class);
    }
    return true;
  }();
  (void)registered;
  return CreateWindowExW(0, type, L"", WS_CHILD | WS_VISIBLE, area.left, area.top,
                         area.right - area.left, area.bottom - area.top, parent, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

class FakeWebBrowser::Control final : public IOleObject,
                                      public IOleInPlaceObject,
                                      public IWebBrowser2,
                                      public IConnectionPointContainer {
 public:
  explicit Control(std::shared_ptr<FakeBrowserRecord> record) : record_(std::move(record)) {}
  FAKE_REFERENCES

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IOleObject)) {
      *out = static_cast<IOleObject*>(this);
    } else if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceObject)) {
      *out = static_cast<IOleInPlaceObject*>(this);
    } else if (IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, IID_IWebBrowser) ||
               IsEqualIID(iid, IID_IWebBrowserApp) || IsEqualIID(iid, IID_IWebBrowser2)) {
      *out = static_cast<IWebBrowser2*>(this);
    } else if (IsEqualIID(iid, IID_IConnectionPointContainer)) {
      *out = static_cast<IConnectionPointContainer*>(this);
    } else {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  // IOleObject. Given a site, the control reads its ambient download control and its host
  // flags, as the real one does before it loads anything.
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
    site_ = site;
    if (!site) return S_OK;
    last_site_ = site;
    ComPtr<IDispatch> ambient;
    if (SUCCEEDED(site->QueryInterface(IID_IDispatch,
                                       reinterpret_cast<void**>(ambient.GetAddressOf())))) {
      DISPPARAMS none{nullptr, nullptr, 0, 0};
      VARIANT answer;
      VariantInit(&answer);
      if (SUCCEEDED(ambient->Invoke(DISPID_AMBIENT_DLCONTROL, IID_NULL, 0, DISPATCH_PROPERTYGET,
                                    &none, &answer, nullptr, nullptr))) {
        record_->download_control_type = answer.vt;
        record_->download_control = answer.vt == VT_I4 ? answer.lVal : 0;
      }
      VariantClear(&answer);
    }
    ComPtr<IDocHostUIHandler> host;
    if (SUCCEEDED(site->QueryInterface(IID_IDocHostUIHandler,
                                       reinterpret_cast<void**>(host.GetAddressOf())))) {
      DOCHOSTUIINFO info{};
      info.cbSize = sizeof info;
      if (SUCCEEDED(host->GetHostInfo(&info))) record_->host_flags = info.dwFlags;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
    return site_.CopyTo(site);
  }
  STUB(SetHostNames, LPCOLESTR, LPCOLESTR)
  HRESULT STDMETHODCALLTYPE Close(DWORD) override {
    ++record_->closes;
    record_->sinks_at_close = sinks();
    InPlaceDeactivate();
    return S_OK;
  }
  STUB(SetMoniker, DWORD, IMoniker*)
  STUB(GetMoniker, DWORD, DWORD, IMoniker**)
  STUB(InitFromData, IDataObject*, WINBOOL, DWORD)
  STUB(GetClipboardData, DWORD, IDataObject**)
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent,
                                   LPCRECT area) override {
    record_->verbs.push_back(verb);
    if (verb != OLEIVERB_INPLACEACTIVATE || window_) return S_OK;
    if (record_->refuse_in_place) return E_FAIL;
    ComPtr<IOleInPlaceSite> site;
    if (!site_ || FAILED(site_.As(&site)) || site->CanInPlaceActivate() != S_OK) return E_FAIL;
    site->OnInPlaceActivate();
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    if (FAILED(site->GetWindowContext(frame.GetAddressOf(), document.GetAddressOf(),
                                      &record_->activation_area, &clip, &info))) {
      return E_FAIL;
    }
    window_ = MakeWindow(L"CorvinaFakeShellEmbedding", parent, *area);
    page_ = MakeWindow(L"Internet Explorer_Server", window_, RECT{0, 0, 10, 10});
    SetWindowLongPtrW(page_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(record_.get()));
    return S_OK;
  }
  STUB(EnumVerbs, IEnumOLEVERB**)
  STUB(Update)
  STUB(IsUpToDate)
  STUB(GetUserClassID, CLSID*)
  STUB(GetUserType, DWORD, LPOLESTR*)
  STUB(SetExtent, DWORD, SIZEL*)
  STUB(GetExtent, DWORD, SIZEL*)
  STUB(Advise, IAdviseSink*, DWORD*)
  STUB(Unadvise, DWORD)
  STUB(EnumAdvise, IEnumSTATDATA**)
  STUB(GetMiscStatus, DWORD, DWORD*)
  STUB(SetColorScheme, LOGPALETTE*)

  // IOleInPlaceObject. Deactivating tells the site, as the real control does while closing.
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    *window = window_;
    return window_ ? S_OK : E_FAIL;
  }
  STUB(ContextSensitiveHelp, WINBOOL)
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
    if (!window_) return S_OK;
    DestroyWindow(window_);
    window_ = page_ = nullptr;
    ComPtr<IOleInPlaceSite> site;
    if (site_ && SUCCEEDED(site_.As(&site))) site->OnInPlaceDeactivate();
    return S_OK;
  }
  STUB(UIDeactivate)
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT position, LPCRECT) override {
    record_->object_rects.push_back(*position);
    return S_OK;
  }
  STUB(ReactivateAndUndo)

  // IDispatch of IWebBrowser2: the hosting uses the typed interface.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STUB(GetTypeInfo, UINT, LCID, ITypeInfo**)
  STUB(GetIDsOfNames, REFIID, LPOLESTR*, UINT, LCID, DISPID*)
  STUB(Invoke, DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)

  // IWebBrowser2: every navigation makes a new, empty page.
  HRESULT STDMETHODCALLTYPE Navigate2(VARIANT* url, VARIANT*, VARIANT*, VARIANT*,
                                      VARIANT*) override {
    record_->navigations.push_back(url ? Text(*url) : L"?");
    auto events = Adopt(new FakePoint(kHtmlDocumentEvents2));
    page_points_.push_back(events);
    std::shared_ptr<FakeBrowserRecord> record = record_;
    auto body = Adopt(new FakeObject(
        {{L"insertAdjacentHTML",
          [record](const DISPPARAMS& args, VARIANT*) {
            if (record->refuse_append) return E_FAIL;
            if (args.cArgs != 2) return DISP_E_BADPARAMCOUNT;
            record->appended.emplace_back(Text(args.rgvarg[1]), Text(args.rgvarg[0]));
            return S_OK;
          }}},
        nullptr));
    document_ = Adopt(new FakeObject(
        {{L"body", [body](const DISPPARAMS&, VARIANT* result) {
            return ReturnObject(body.Get(), result);
          }}},
        events));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override {
    *document = nullptr;
    if (document_) document_.CopyTo(document);
    return S_OK;
  }
  STUB(GoBack)
  STUB(GoForward)
  STUB(GoHome)
  STUB(GoSearch)
  STUB(Navigate, BSTR, VARIANT*, VARIANT*, VARIANT*, VARIANT*)
  STUB(Refresh)
  STUB(Refresh2, VARIANT*)
  STUB(Stop)
  STUB(get_Application, IDispatch**)
  STUB(get_Parent, IDispatch**)
  STUB(get_Container, IDispatch**)
  STUB(get_TopLevelContainer, VARIANT_BOOL*)
  STUB(get_Type, BSTR*)
  STUB(get_Left, LONG*)
  STUB(put_Left, LONG)
  STUB(get_Top, LONG*)
  STUB(put_Top, LONG)
  STUB(get_Width, LONG*)
  STUB(put_Width, LONG)
  STUB(get_Height, LONG*)
  STUB(put_Height, LONG)
  STUB(get_LocationName, BSTR*)
  STUB(get_LocationURL, BSTR*)
  STUB(get_Busy, VARIANT_BOOL*)
  STUB(Quit)
  STUB(ClientToWindow, int*, int*)
  STUB(PutProperty, BSTR, VARIANT)
  STUB(GetProperty, BSTR, VARIANT*)
  STUB(get_Name, BSTR*)
  STUB(get_HWND, SHANDLE_PTR*)
  STUB(get_FullName, BSTR*)
  STUB(get_Path, BSTR*)
  STUB(get_Visible, VARIANT_BOOL*)
  STUB(put_Visible, VARIANT_BOOL)
  STUB(get_StatusBar, VARIANT_BOOL*)
  STUB(put_StatusBar, VARIANT_BOOL)
  STUB(get_StatusText, BSTR*)
  STUB(put_StatusText, BSTR)
  STUB(get_ToolBar, int*)
  STUB(put_ToolBar, int)
  STUB(get_MenuBar, VARIANT_BOOL*)
  STUB(put_MenuBar, VARIANT_BOOL)
  STUB(get_FullScreen, VARIANT_BOOL*)
  STUB(put_FullScreen, VARIANT_BOOL)
  STUB(QueryStatusWB, OLECMDID, OLECMDF*)
  STUB(ExecWB, OLECMDID, OLECMDEXECOPT, VARIANT*, VARIANT*)
  STUB(ShowBrowserBar, VARIANT*, VARIANT*, VARIANT*)
  STUB(get_ReadyState, READYSTATE*)
  STUB(get_Offline, VARIANT_BOOL*)
  STUB(put_Offline, VARIANT_BOOL)
  STUB(get_Silent, VARIANT_BOOL*)
  STUB(put_Silent, VARIANT_BOOL)
  STUB(get_RegisterAsBrowser, VARIANT_BOOL*)
  STUB(put_RegisterAsBrowser, VARIANT_BOOL)
  STUB(get_RegisterAsDropTarget, VARIANT_BOOL*)
  STUB(put_RegisterAsDropTarget, VARIANT_BOOL)
  STUB(get_TheaterMode, VARIANT_BOOL*)
  STUB(put_TheaterMode, VARIANT_BOOL)
  STUB(get_AddressBar, VARIANT_BOOL*)
  STUB(put_AddressBar, VARIANT_BOOL)
  STUB(get_Resizable, VARIANT_BOOL*)
  STUB(put_Resizable, VARIANT_BOOL)

  // IConnectionPointContainer: DWebBrowserEvents2 only.
  STUB(EnumConnectionPoints, IEnumConnectionPoints**)
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    if (!IsEqualIID(iid, DIID_DWebBrowserEvents2)) return CONNECT_E_NOCONNECTION;
    return browser_point_.CopyTo(point);
  }

  void FireDocumentComplete(bool page) {
    ComPtr<IDispatch> window = page ? ComPtr<IDispatch>(static_cast<IWebBrowser2*>(this))
                                    : ComPtr<IDispatch>(MakeElement(L"<iframe>"));
    VARIANT url;
    VariantInit(&url);
    url.vt = VT_BSTR;
    url.bstrVal = SysAllocString(record_->navigations.empty() ? L""
                                                              : record_->navigations.back().c_str());
    std::vector<VARIANT> args(2);
    args[0].vt = VT_VARIANT | VT_BYREF;
    args[0].pvarVal = &url;
    args[1].vt = VT_DISPATCH;
    args[1].pdispVal = window.Get();
    browser_point_->Fire(DISPID_DOCUMENTCOMPLETE, args);
    VariantClear(&url);
  }
  void Click(const std::wstring& outer_html) {
    if (page_points_.empty()) return;
    const ComPtr<FakeObject> element = MakeElement(outer_html);
    const auto event = Adopt(new FakeObject(
        {{L"srcElement", [element](const DISPPARAMS&, VARIANT* result) {
            return ReturnObject(element.Get(), result);
          }}},
        nullptr));
    std::vector<VARIANT> args(1);
    args[0].vt = VT_DISPATCH;
    args[0].pdispVal = event.Get();
    page_points_.back()->Fire(DISPID_HTMLDOCUMENTEVENTS2_ONCLICK, args);
  }
  HRESULT RightClick(const std::optional<std::wstring>& outer_html, POINT screen) {
    ComPtr<IDocHostUIHandler> host;
    if (!last_site_ || FAILED(last_site_.As(&host))) return E_NOINTERFACE;
    const ComPtr<FakeObject> element = outer_html ? MakeElement(*outer_html) : nullptr;
    return host->ShowContextMenu(CONTEXT_MENU_DEFAULT, &screen, nullptr, element.Get());
  }

  ULONG references() { return Count(static_cast<IOleObject*>(this)); }
  ULONG site_references() const { return last_site_ ? Count(last_site_.Get()) - 1 : 0; }
  bool has_site() const { return site_ != nullptr; }
  size_t sinks() const {
    size_t count = browser_point_->sinks();
    for (const auto& point : page_points_) count += point->sinks();
    return count;
  }
  HWND page_window() const { return page_; }

 private:
  ~Control() {
    if (window_) DestroyWindow(window_);
  }

  std::shared_ptr<FakeBrowserRecord> record_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleClientSite> last_site_;
  ComPtr<FakePoint> browser_point_ = Adopt(new FakePoint(DIID_DWebBrowserEvents2));
  std::vector<ComPtr<FakePoint>> page_points_;
  ComPtr<FakeObject> document_;
  HWND window_ = nullptr;
  HWND page_ = nullptr;
};

#pragma GCC diagnostic pop

FakeWebBrowser::FakeWebBrowser()
    : record_(std::make_shared<FakeBrowserRecord>()), control_(new Control(record_)) {}

FakeWebBrowser::~FakeWebBrowser() { static_cast<IOleObject*>(control_)->Release(); }

BoardBrowser::Factory FakeWebBrowser::Factory() {
  return [control = control_](IOleObject** out) {
    *out = static_cast<IOleObject*>(control);
    (*out)->AddRef();
    return S_OK;
  };
}

void FakeWebBrowser::FireDocumentComplete(bool page) { control_->FireDocumentComplete(page); }
void FakeWebBrowser::Click(const std::wstring& outer_html) { control_->Click(outer_html); }
HRESULT FakeWebBrowser::RightClick(const std::optional<std::wstring>& outer_html, POINT screen) {
  return control_->RightClick(outer_html, screen);
}
ULONG FakeWebBrowser::control_references() const { return control_->references() - 1; }
ULONG FakeWebBrowser::site_references() const { return control_->site_references(); }
bool FakeWebBrowser::has_site() const { return control_->has_site(); }
size_t FakeWebBrowser::sinks() const { return control_->sinks(); }
HWND FakeWebBrowser::page_window() const { return control_->page_window(); }

}  // namespace corvina::win32::testing
