#include "platform/win32/chat/board_site.h"

#include <utility>

#include "base/error.h"
#include "platform/win32/chat/board_dom.h"

#include <mshtmdid.h>

namespace corvina::win32 {

DWORD BoardDownloadControl() noexcept {
  return DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA | DLCTL_NO_RUNACTIVEXCTLS | DLCTL_NO_DLACTIVEXCTLS;
}

BoardSite::BoardSite(HWND parent, const RECT& area, ContextMenu context_menu)
    : parent_(parent), area_(area), context_menu_(std::move(context_menu)) {}

HRESULT BoardSite::QueryInterface(REFIID iid, void** out) {
  if (!out) return E_POINTER;
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IOleClientSite)) {
    *out = static_cast<IOleClientSite*>(this);
  } else if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceSite)) {
    *out = static_cast<IOleInPlaceSite*>(this);
  } else if (IsEqualIID(iid, IID_IOleInPlaceUIWindow) || IsEqualIID(iid, IID_IOleInPlaceFrame)) {
    *out = static_cast<IOleInPlaceFrame*>(this);
  } else if (IsEqualIID(iid, IID_IDocHostUIHandler)) {
    *out = static_cast<IDocHostUIHandler*>(this);
  } else if (IsEqualIID(iid, IID_IDispatch)) {
    *out = static_cast<IDispatch*>(this);
  } else {
    *out = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG BoardSite::AddRef() { return ++refs_; }

ULONG BoardSite::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

// IOleClientSite: the page is never saved, and there is no document container to walk.
HRESULT BoardSite::SaveObject() { return E_NOTIMPL; }
HRESULT BoardSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (moniker) *moniker = nullptr;
  return E_NOTIMPL;
}
HRESULT BoardSite::GetContainer(IOleContainer** container) {
  if (container) *container = nullptr;
  return E_NOINTERFACE;
}
HRESULT BoardSite::ShowObject() { return S_OK; }
HRESULT BoardSite::OnShowWindow(WINBOOL) { return S_OK; }
HRESULT BoardSite::RequestNewObjectLayout() { return E_NOTIMPL; }

HRESULT BoardSite::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = parent_;
  return S_OK;
}
HRESULT BoardSite::ContextSensitiveHelp(WINBOOL) { return E_NOTIMPL; }

// IOleInPlaceSite: the control lives over `area_` of the parent, clipped to the same.
HRESULT BoardSite::CanInPlaceActivate() { return S_OK; }
HRESULT BoardSite::OnInPlaceActivate() { return S_OK; }
HRESULT BoardSite::OnUIActivate() { return S_OK; }
HRESULT BoardSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc,
                                    LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  if (!frame || !doc || !position || !clip || !info) return E_POINTER;
  *frame = static_cast<IOleInPlaceFrame*>(this);
  AddRef();
  *doc = nullptr;  // the frame is the only user-interface window
  *position = area_;
  *clip = area_;
  info->fMDIApp = FALSE;
  info->hwndFrame = parent_;
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}
HRESULT BoardSite::Scroll(SIZE) { return E_NOTIMPL; }
HRESULT BoardSite::OnUIDeactivate(WINBOOL) { return S_OK; }
HRESULT BoardSite::OnInPlaceDeactivate() { return S_OK; }
HRESULT BoardSite::DiscardUndoState() { return S_OK; }
HRESULT BoardSite::DeactivateAndUndo() { return E_NOTIMPL; }
// The window decides the board's size (Move); the page does not resize its host.
HRESULT BoardSite::OnPosRectChange(LPCRECT) { return S_OK; }

// IOleInPlaceFrame: no toolbars, menus or status bar to share with the page.
HRESULT BoardSite::GetBorder(LPRECT) { return INPLACE_E_NOTOOLSPACE; }
HRESULT BoardSite::RequestBorderSpace(LPCBORDERWIDTHS) { return INPLACE_E_NOTOOLSPACE; }
HRESULT BoardSite::SetBorderSpace(LPCBORDERWIDTHS) { return INPLACE_E_NOTOOLSPACE; }
HRESULT BoardSite::SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) { return S_OK; }
HRESULT BoardSite::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) { return E_NOTIMPL; }
HRESULT BoardSite::SetMenu(HMENU, HOLEMENU, HWND) { return S_OK; }
HRESULT BoardSite::RemoveMenus(HMENU) { return E_NOTIMPL; }
HRESULT BoardSite::SetStatusText(LPCOLESTR) { return S_OK; }
HRESULT BoardSite::EnableModeless(WINBOOL) { return S_OK; }
HRESULT BoardSite::TranslateAccelerator(LPMSG, WORD) { return S_FALSE; }

// IDocHostUIHandler. The browser's own menu never shows: the window shows the chat menu for
// the element under the mouse.
HRESULT BoardSite::ShowContextMenu(DWORD, POINT* point, IUnknown*, IDispatch* element) {
  Microsoft::WRL::ComPtr<BoardSite> self(this);  // the handler may end the board
  const ContextMenu handler = context_menu_;
  if (!handler) return S_OK;
  std::wstring html;
  try {
    html = OuterHtml(element);
  } catch (const Error& e) {
    LogBoardBrowser(L"the right-clicked element's HTML cannot be read: " + e.description());
  } catch (...) {
    LogBoardBrowser(L"the right-clicked element's HTML cannot be read");
  }
  try {
    POINT screen{0, 0};
    if (point) {
      screen = *point;
    } else {
      GetCursorPos(&screen);
    }
    handler(html, screen);
  } catch (...) {
    LogBoardBrowser(L"the board's context menu failed");
  }
  return S_OK;
}

HRESULT BoardSite::GetHostInfo(DOCHOSTUIINFO* info) {
  if (!info) return E_POINTER;
  info->dwFlags = DOCHOSTUIFLAG_NO3DBORDER | DOCHOSTUIFLAG_DISABLE_SCRIPT_INACTIVE;
  info->dwDoubleClick = DOCHOSTUIDBLCLK_DEFAULT;
  info->pchHostCss = nullptr;
  info->pchHostNS = nullptr;
  return S_OK;
}
HRESULT BoardSite::ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*, IOleInPlaceFrame*,
                          IOleInPlaceUIWindow*) {
  return S_OK;  // the chat window has its own; the page adds no toolbars or menus
}
HRESULT BoardSite::HideUI() { return S_OK; }
HRESULT BoardSite::UpdateUI() { return S_OK; }
HRESULT BoardSite::OnDocWindowActivate(WINBOOL) { return S_OK; }
HRESULT BoardSite::OnFrameWindowActivate(WINBOOL) { return S_OK; }
HRESULT BoardSite::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, WINBOOL) { return S_OK; }
HRESULT BoardSite::TranslateAccelerator(LPMSG, const GUID*, DWORD) { return S_FALSE; }
HRESULT BoardSite::GetOptionKeyPath(LPOLESTR* key, DWORD) {
  if (key) *key = nullptr;
  return S_FALSE;
}
HRESULT BoardSite::GetDropTarget(IDropTarget*, IDropTarget** replacement) {
  if (replacement) *replacement = nullptr;
  return E_NOTIMPL;
}
HRESULT BoardSite::GetExternal(IDispatch** external) {
  if (external) *external = nullptr;
  return S_FALSE;
}
HRESULT BoardSite::TranslateUrl(DWORD, LPWSTR, LPWSTR* translated) {
  if (translated) *translated = nullptr;
  return S_FALSE;
}
HRESULT BoardSite::FilterDataObject(IDataObject*, IDataObject** filtered) {
  if (filtered) *filtered = nullptr;
  return S_FALSE;
}

// IDispatch: only the download control is answered; every other ambient property keeps the
// control's default.
HRESULT BoardSite::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}
HRESULT BoardSite::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}
HRESULT BoardSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
  if (ids) {
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  }
  return DISP_E_UNKNOWNNAME;
}
HRESULT BoardSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                          EXCEPINFO*, UINT*) {
  if (id != DISPID_AMBIENT_DLCONTROL) return DISP_E_MEMBERNOTFOUND;
  if (!result) return E_POINTER;
  result->vt = VT_I4;  // the whole answer: no other field of a VT_I4 is read
  result->lVal = static_cast<LONG>(BoardDownloadControl());
  return S_OK;
}

}  // namespace corvina::win32
