#include "platform/win32/chat/chat_status_icons.h"

#include <cmath>
#include <cstdint>
#include <iterator>

#include "base/text.h"

namespace corvina::win32 {
namespace {

struct StatusDot {
  const wchar_t* key;
  COLORREF color;
};
// Green for someone to talk to, red for blocked, amber for waiting; the rest grey tones.
constexpr StatusDot kDots[] = {
    {L"KeyChatUserUnKnown", RGB(150, 150, 150)}, {L"KeyChatUserActive", RGB(40, 170, 60)},
    {L"KeyChatUserBlocked", RGB(210, 40, 40)},   {L"KeyChatUserWaiting", RGB(235, 170, 20)},
    {L"KeyChatUserRejected", RGB(120, 40, 40)},  {L"KeyChatUserDeleted", RGB(60, 60, 60)},
};
constexpr int kSize = 16;

// One dot with a soft edge, as premultiplied 32-bit pixels.
HBITMAP DotBitmap(COLORREF color) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = kSize;
  info.bmiHeader.biHeight = -kSize;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap || !bits) return bitmap;
  auto* pixels = static_cast<uint32_t*>(bits);
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const double d = std::hypot(x + 0.5 - kSize / 2.0, y + 0.5 - kSize / 2.0);
      const double cover = std::fmin(std::fmax(5.5 - d, 0.0), 1.0);
      const auto a = static_cast<uint32_t>(cover * 255 + 0.5);
      const uint32_t r = GetRValue(color) * a / 255, g = GetGValue(color) * a / 255,
                     b = GetBValue(color) * a / 255;
      pixels[y * kSize + x] = (a << 24) | (r << 16) | (g << 8) | b;
    }
  }
  return bitmap;
}

}  // namespace

HIMAGELIST MakeStatusIcons() {
  HIMAGELIST list = ImageList_Create(kSize, kSize, ILC_COLOR32, static_cast<int>(std::size(kDots)), 0);
  if (!list) return nullptr;
  for (const StatusDot& dot : kDots) {
    HBITMAP bitmap = DotBitmap(dot.color);
    ImageList_Add(list, bitmap, nullptr);
    if (bitmap) DeleteObject(bitmap);
  }
  return list;
}

int StatusIconIndex(const std::wstring& key) {
  for (size_t i = 0; i < std::size(kDots); ++i)
    if (EqualsIgnoreCase(kDots[i].key, key)) return static_cast<int>(i);
  return 0;
}

}  // namespace corvina::win32
