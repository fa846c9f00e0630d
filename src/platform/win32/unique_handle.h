#pragma once
// One owner for every Win32 resource that is not a COM pointer (those use
// Microsoft::WRL::ComPtr): a handle type plus a traits struct saying what "empty" is and how
// to release it. Release never throws.
#include <utility>

#include "platform/win32/windows_api.h"

#include <commctrl.h>

namespace corvina::win32 {

template <class Traits>
class UniqueHandle {
 public:
  using Handle = typename Traits::Handle;

  UniqueHandle() noexcept = default;
  explicit UniqueHandle(Handle h) noexcept : h_(h) {}
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  UniqueHandle(UniqueHandle&& o) noexcept : h_(o.release()) {}
  UniqueHandle& operator=(UniqueHandle&& o) noexcept {
    if (this != &o) reset(o.release());
    return *this;
  }
  ~UniqueHandle() { reset(); }

  Handle get() const noexcept { return h_; }
  explicit operator bool() const noexcept { return h_ != Traits::Invalid(); }
  Handle release() noexcept { return std::exchange(h_, Traits::Invalid()); }
  void reset(Handle h = Traits::Invalid()) noexcept {
    Handle old = std::exchange(h_, h);
    if (old != Traits::Invalid()) Traits::Close(old);
  }
  // For out-parameters: releases the current handle and hands out the slot.
  Handle* put() noexcept {
    reset();
    return &h_;
  }

 private:
  Handle h_ = Traits::Invalid();
};

struct HKeyTraits {
  using Handle = HKEY;
  static HKEY Invalid() noexcept { return nullptr; }
  static void Close(HKEY h) noexcept { RegCloseKey(h); }
};
using UniqueHKey = UniqueHandle<HKeyTraits>;

struct FileHandleTraits {
  using Handle = HANDLE;
  static HANDLE Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(HANDLE h) noexcept { CloseHandle(h); }
};
using UniqueFile = UniqueHandle<FileHandleTraits>;

struct FindHandleTraits {
  using Handle = HANDLE;
  static HANDLE Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(HANDLE h) noexcept { FindClose(h); }
};
using UniqueFind = UniqueHandle<FindHandleTraits>;

struct HGlobalTraits {
  using Handle = HGLOBAL;
  static HGLOBAL Invalid() noexcept { return nullptr; }
  static void Close(HGLOBAL h) noexcept { GlobalFree(h); }
};
using UniqueHGlobal = UniqueHandle<HGlobalTraits>;

struct BstrTraits {
  using Handle = BSTR;
  static BSTR Invalid() noexcept { return nullptr; }
  static void Close(BSTR b) noexcept { SysFreeString(b); }
};
using UniqueBstr = UniqueHandle<BstrTraits>;

struct HIconTraits {
  using Handle = HICON;
  static HICON Invalid() noexcept { return nullptr; }
  static void Close(HICON h) noexcept { DestroyIcon(h); }
};
using UniqueHIcon = UniqueHandle<HIconTraits>;

struct HWndTraits {
  using Handle = HWND;
  static HWND Invalid() noexcept { return nullptr; }
  static void Close(HWND h) noexcept { DestroyWindow(h); }
};
using UniqueHWnd = UniqueHandle<HWndTraits>;

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
using UniqueHFont = UniqueHandle<GdiObjectTraits<HFONT>>;
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


// A VARIANT that is cleared when it goes.
class UniqueVariant {
 public:
  UniqueVariant() noexcept { VariantInit(&v_); }
  UniqueVariant(const UniqueVariant&) = delete;
  UniqueVariant& operator=(const UniqueVariant&) = delete;
  UniqueVariant(UniqueVariant&& o) noexcept {
    v_ = o.v_;
    VariantInit(&o.v_);
  }
  ~UniqueVariant() { VariantClear(&v_); }
  VARIANT* get() noexcept { return &v_; }
  const VARIANT* get() const noexcept { return &v_; }
  VARIANT* put() noexcept {
    VariantClear(&v_);
    return &v_;
  }

 private:
  VARIANT v_;
};

// Locks an HGLOBAL for the scope; unlocks when it goes.
class GlobalLock {
 public:
  explicit GlobalLock(HGLOBAL h) noexcept : h_(h), p_(::GlobalLock(h)) {}
  GlobalLock(const GlobalLock&) = delete;
  GlobalLock& operator=(const GlobalLock&) = delete;
  ~GlobalLock() {
    if (p_) ::GlobalUnlock(h_);
  }
  void* get() const noexcept { return p_; }

 private:
  HGLOBAL h_;
  void* p_;
};

}  // namespace corvina::win32
