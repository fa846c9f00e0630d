#pragma once
// The chat board's client site: what the browser control sees of the chat window. One COM
// object (written by hand: mingw-w64 has no ATL) answering as the control's client site, its
// in-place site and frame, its document host (no 3-D border, no script, our own context
// menu) and its ambient properties (download control: no script, no Java, no ActiveX).
//
// The site keeps copies of what it answers (the parent window, the area, the context-menu
// handler) and nothing of the BoardBrowser, so the control may call it at any time, even
// after the board has gone: Disconnect drops the handler and later calls are harmless.
#include <functional>
#include <string>

#include "platform/win32/windows_api.h"

#include <mshtmhst.h>

namespace corvina::win32 {

// What the site answers for the ambient download-control property: the page loads nothing
// that runs. Mail from anyone reaches this page, so this is the board's main safety line.
DWORD BoardDownloadControl() noexcept;

// A COM object is destroyed only by its own Release, never through a base pointer.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class BoardSite final : public IOleClientSite,
                        public IOleInPlaceSite,
                        public IOleInPlaceFrame,
                        public IDocHostUIHandler,
                        public IDispatch {
 public:
  using ContextMenu = std::function<void(const std::wstring& html, POINT screen)>;

  // Born with one reference, owned by the caller.
  BoardSite(HWND parent, const RECT& area, ContextMenu context_menu);

  void SetArea(const RECT& area) noexcept { area_ = area; }
  // The board is going: no more calls into it.
  void Disconnect() noexcept { context_menu_ = nullptr; }

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // IOleClientSite
  HRESULT STDMETHODCALLTYPE SaveObject() override;
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
  HRESULT STDMETHODCALLTYPE ShowObject() override;
  HRESULT STDMETHODCALLTYPE OnShowWindow(WINBOOL show) override;
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

  // IOleWindow (of both the in-place site and the frame)
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(WINBOOL enter) override;

  // IOleInPlaceSite
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnUIActivate() override;
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc,
                                             LPRECT position, LPRECT clip,
                                             LPOLEINPLACEFRAMEINFO info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE extent) override;
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(WINBOOL undoable) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
  HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT position) override;

  // IOleInPlaceUIWindow and IOleInPlaceFrame
  HRESULT STDMETHODCALLTYPE GetBorder(LPRECT border) override;
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS widths) override;
  HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override;
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object,
                                            LPCOLESTR name) override;
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU shared, LPOLEMENUGROUPWIDTHS widths) override;
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU shared, HOLEMENU ole_menu, HWND object) override;
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU shared) override;
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR text) override;
  // Also IDocHostUIHandler's.
  HRESULT STDMETHODCALLTYPE EnableModeless(WINBOOL enable) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message, WORD id) override;

  // IDocHostUIHandler
  HRESULT STDMETHODCALLTYPE ShowContextMenu(DWORD id, POINT* point, IUnknown* command_target,
                                            IDispatch* element) override;
  HRESULT STDMETHODCALLTYPE GetHostInfo(DOCHOSTUIINFO* info) override;
  HRESULT STDMETHODCALLTYPE ShowUI(DWORD id, IOleInPlaceActiveObject* object,
                                   IOleCommandTarget* target, IOleInPlaceFrame* frame,
                                   IOleInPlaceUIWindow* doc) override;
  HRESULT STDMETHODCALLTYPE HideUI() override;
  HRESULT STDMETHODCALLTYPE UpdateUI() override;
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(WINBOOL activate) override;
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(WINBOOL activate) override;
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window,
                                         WINBOOL frame_window) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message, const GUID* group,
                                                 DWORD command) override;
  HRESULT STDMETHODCALLTYPE GetOptionKeyPath(LPOLESTR* key, DWORD reserved) override;
  HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget* target, IDropTarget** replacement) override;
  HRESULT STDMETHODCALLTYPE GetExternal(IDispatch** external) override;
  HRESULT STDMETHODCALLTYPE TranslateUrl(DWORD translate, LPWSTR url, LPWSTR* translated) override;
  HRESULT STDMETHODCALLTYPE FilterDataObject(IDataObject* data, IDataObject** filtered) override;

  // IDispatch: the ambient properties.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                   UINT* bad_argument) override;

 private:
  ~BoardSite() = default;

  ULONG refs_ = 1;  // the control calls on the window's thread only
  HWND parent_;
  RECT area_;
  ContextMenu context_menu_;
};
#pragma GCC diagnostic pop

}  // namespace corvina::win32
