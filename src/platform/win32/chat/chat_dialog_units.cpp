#include "platform/win32/chat/chat_dialog_units.h"

namespace corvina::win32 {
namespace {

// The screen's DC with a font selected, both given back when it goes.
class ScreenDc {
 public:
  explicit ScreenDc(HFONT font) noexcept : dc_(GetDC(nullptr)) {
    if (dc_)
      old_ = SelectObject(dc_, font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT));
  }
  ~ScreenDc() {
    if (!dc_) return;
    if (old_) SelectObject(dc_, old_);
    ReleaseDC(nullptr, dc_);
  }
  ScreenDc(const ScreenDc&) = delete;
  ScreenDc& operator=(const ScreenDc&) = delete;
  HDC get() const noexcept { return dc_; }

 private:
  HDC dc_;
  HGDIOBJ old_ = nullptr;
};

}  // namespace

DialogUnits MeasureDialogUnits(HFONT font) noexcept {
  DialogUnits units;
  ScreenDc dc(font);
  if (!dc.get()) return units;
  TEXTMETRICW metrics{};
  SIZE size{};
  static constexpr wchar_t kAlphabet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  if (GetTextMetricsW(dc.get(), &metrics) &&
      GetTextExtentPoint32W(dc.get(), kAlphabet, 52, &size) && size.cx > 0) {
    units.base_x = (size.cx / 26 + 1) / 2;  // the rounding dialog templates use
    units.base_y = metrics.tmHeight;
    units.text_height = metrics.tmHeight;
  }
  return units;
}

int TextWidth(HFONT font, const std::wstring& text) noexcept {
  ScreenDc dc(font);
  if (!dc.get()) return 0;
  RECT r{0, 0, 0, 0};
  DrawTextW(dc.get(), text.c_str(), static_cast<int>(text.size()), &r, DT_CALCRECT | DT_SINGLELINE);
  return r.right - r.left;
}

}  // namespace corvina::win32
