#pragma once
// Owners for the drawing handles the virus windows make: their image list, the bitmaps its
// icons are drawn on, and the pop-up menu. Release never throws.
#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

#include <commctrl.h>

namespace corvina::win32 {

struct HImageListTraits {
  using Handle = HIMAGELIST;
  static HIMAGELIST Invalid() noexcept { return nullptr; }
  static void Close(HIMAGELIST h) noexcept { ImageList_Destroy(h); }
};
using UniqueHImageList = UniqueHandle<HImageListTraits>;

// Any GDI object that DeleteObject releases: a bitmap, a brush, a pen.
template <class T>
struct GdiObjectTraits {
  using Handle = T;
  static T Invalid() noexcept { return nullptr; }
  static void Close(T h) noexcept { DeleteObject(h); }
};
using UniqueHBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueHBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniqueHPen = UniqueHandle<GdiObjectTraits<HPEN>>;

struct HMenuTraits {
  using Handle = HMENU;
  static HMENU Invalid() noexcept { return nullptr; }
  static void Close(HMENU h) noexcept { DestroyMenu(h); }
};
using UniqueHMenu = UniqueHandle<HMenuTraits>;

struct MemoryDcTraits {
  using Handle = HDC;
  static HDC Invalid() noexcept { return nullptr; }
  static void Close(HDC h) noexcept { DeleteDC(h); }
};
using UniqueMemoryDc = UniqueHandle<MemoryDcTraits>;

// Selects an object into a DC for the scope and puts the previous one back.
class ScopedSelect {
 public:
  ScopedSelect(HDC dc, HGDIOBJ object) noexcept : dc_(dc), old_(SelectObject(dc, object)) {}
  ~ScopedSelect() {
    if (old_ && old_ != HGDI_ERROR) SelectObject(dc_, old_);
  }
  ScopedSelect(const ScopedSelect&) = delete;
  ScopedSelect& operator=(const ScopedSelect&) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};

}  // namespace corvina::win32
