#include "platform/win32/virus/rule_icons.h"

#include "platform/rule_list_view.h"

namespace corvina::win32 {
namespace {

// Never drawn by the key itself: the image list makes it transparent.
constexpr COLORREF kTransparent = RGB(255, 0, 255);

struct KeyColours {
  COLORREF fill;
  COLORREF outline;
};
constexpr KeyColours kOn{RGB(48, 176, 48), RGB(0, 96, 0)};
constexpr KeyColours kOff{RGB(176, 176, 176), RGB(104, 104, 104)};

// A key lying on its side: the ring on the left, the shaft to the right, two teeth below.
void DrawKey(HDC dc, KeyColours colours) noexcept {
  const RECT all{0, 0, kRuleIconSize, kRuleIconSize};
  UniqueHBrush background(CreateSolidBrush(kTransparent));
  FillRect(dc, &all, background.get());
  UniqueHBrush fill(CreateSolidBrush(colours.fill));
  UniqueHPen outline(CreatePen(PS_SOLID, 1, colours.outline));
  ScopedSelect brush(dc, fill.get());
  ScopedSelect pen(dc, outline.get());
  Rectangle(dc, 7, 6, 16, 10);   // the shaft
  Rectangle(dc, 11, 9, 13, 13);  // the teeth
  Rectangle(dc, 14, 9, 16, 12);
  Ellipse(dc, 0, 3, 10, 13);     // the ring, over the shaft's end
  {
    ScopedSelect hole(dc, background.get());
    Ellipse(dc, 3, 6, 7, 10);
  }
}

UniqueHBitmap DrawBoth() noexcept {
  HDC screen = GetDC(nullptr);
  if (!screen) return {};
  UniqueHBitmap strip(CreateCompatibleBitmap(screen, 2 * kRuleIconSize, kRuleIconSize));
  UniqueMemoryDc dc(CreateCompatibleDC(screen));
  ReleaseDC(nullptr, screen);
  if (!strip || !dc) return {};
  ScopedSelect bitmap(dc.get(), strip.get());
  DrawKey(dc.get(), kOn);
  SetViewportOrgEx(dc.get(), kRuleIconSize, 0, nullptr);
  DrawKey(dc.get(), kOff);
  return strip;
}

}  // namespace

UniqueHImageList MakeRuleIcons() noexcept {
  UniqueHImageList icons(ImageList_Create(kRuleIconSize, kRuleIconSize, ILC_COLOR24 | ILC_MASK, 2, 0));
  UniqueHBitmap strip = DrawBoth();
  if (!icons || !strip) return {};
  // The list copies the pictures; the strip is ours to release.
  if (ImageList_AddMasked(icons.get(), strip.get(), kTransparent) < 0) return {};
  return icons;
}

int RuleIconIndex(const std::wstring& key) noexcept {
  if (key == kRuleOnIcon) return 0;
  if (key == kRuleOffIcon) return 1;
  return I_IMAGENONE;
}

}  // namespace corvina::win32
