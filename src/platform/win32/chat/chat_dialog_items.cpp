#include "platform/win32/chat/chat_dialog_items.h"

#include <string>

#include "platform/win32/this_module.h"

namespace corvina::win32 {
namespace {

constexpr int kPadding = 3;
constexpr COLORREF kSwatchFrame = RGB(64, 64, 64);  // shows black, silver and lime alike

bool HasItem(const DRAWITEMSTRUCT& item) noexcept { return item.itemID != static_cast<UINT>(-1); }

// The item's clip, background and text colours for its state; the DC comes back as it was.
class ItemState {
 public:
  explicit ItemState(const DRAWITEMSTRUCT& item) noexcept
      : dc_(item.hDC), saved_(SaveDC(item.hDC)) {
    // Wine's combo box clips a mirrored (right-to-left) field to the item's mirror image, which
    // hides the swatch and the picture; clip to the item here instead, the same either way.
    SelectClipRgn(dc_, nullptr);
    IntersectClipRect(dc_, item.rcItem.left, item.rcItem.top, item.rcItem.right, item.rcItem.bottom);
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    const bool disabled = (item.itemState & ODS_DISABLED) != 0;
    FillRect(dc_, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetTextColor(dc_, GetSysColor(disabled   ? COLOR_GRAYTEXT
                                  : selected ? COLOR_HIGHLIGHTTEXT
                                             : COLOR_WINDOWTEXT));
    SetBkMode(dc_, TRANSPARENT);
  }
  ~ItemState() {
    if (saved_) RestoreDC(dc_, saved_);
  }
  ItemState(const ItemState&) = delete;
  ItemState& operator=(const ItemState&) = delete;

 private:
  HDC dc_;
  int saved_;
};

void DrawItemText(const DRAWITEMSTRUCT& item, int left) noexcept {
  const LRESULT length = SendMessageW(item.hwndItem, CB_GETLBTEXTLEN, item.itemID, 0);
  if (length <= 0) return;
  wchar_t text[256] = {};  // colour names and picture numbers; anything longer is not drawn
  if (length >= 256) return;
  SendMessageW(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(text));
  RECT r = item.rcItem;
  r.left = left;
  DrawTextW(item.hDC, text, -1, &r, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void DrawFocus(const DRAWITEMSTRUCT& item) noexcept {
  if ((item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT))
    DrawFocusRect(item.hDC, &item.rcItem);
}

}  // namespace

void DrawColorItem(const DRAWITEMSTRUCT& item) noexcept {
  ItemState state(item);
  if (HasItem(item)) {
    const int side = item.rcItem.bottom - item.rcItem.top - 2 * kPadding;
    const RECT swatch{item.rcItem.left + kPadding + 1, item.rcItem.top + kPadding,
                      item.rcItem.left + kPadding + 1 + side * 3 / 2, item.rcItem.bottom - kPadding};
    UniqueHBrush fill(CreateSolidBrush(static_cast<COLORREF>(item.itemData)));
    UniqueHBrush frame(CreateSolidBrush(kSwatchFrame));
    if (fill) FillRect(item.hDC, &swatch, fill.get());
    if (frame) FrameRect(item.hDC, &swatch, frame.get());
    DrawItemText(item, swatch.right + 2 * kPadding);
  }
  DrawFocus(item);
}

void DrawPictureItem(const DRAWITEMSTRUCT& item, int icon_size) noexcept {
  ItemState state(item);
  if (HasItem(item)) {
    const int left = item.rcItem.left + kPadding + 1;
    if (auto icon = reinterpret_cast<HICON>(item.itemData)) {
      const int top = (item.rcItem.top + item.rcItem.bottom - icon_size) / 2;
      // In a right-to-left window the DC is mirrored; the picture itself must not be.
      const DWORD layout = GetLayout(item.hDC);
      if (layout & LAYOUT_RTL) SetLayout(item.hDC, layout | LAYOUT_BITMAPORIENTATIONPRESERVED);
      DrawIconEx(item.hDC, left, top, icon, icon_size, icon_size, 0, nullptr, DI_NORMAL);
      if (layout & LAYOUT_RTL) SetLayout(item.hDC, layout);
    } else {
      DrawItemText(item, left + kPadding);
    }
  }
  DrawFocus(item);
}

std::vector<UniqueHIcon> LoadPictureIcons(int size) {
  std::vector<UniqueHIcon> icons;
  for (wchar_t digit = L'1'; digit <= L'9'; ++digit) {
    const wchar_t name[] = {L'A', digit, L'.', L'I', L'C', L'O', L'\0'};
    icons.emplace_back(static_cast<HICON>(
        LoadImageW(ThisModule(), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
  }
  return icons;
}

}  // namespace corvina::win32
