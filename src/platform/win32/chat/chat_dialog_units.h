#pragma once
// Dialog units of a font: the chat dialogs are laid out in them, as dialog templates are, so
// margins and field sizes follow the user's message font instead of fixed pixels.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::win32 {

struct DialogUnits {
  int base_x = 6;   // average character width, pixels
  int base_y = 13;  // character height, pixels
  int text_height = 13;  // one line of the font, pixels

  int X(int units) const noexcept { return MulDiv(units, base_x, 4); }
  int Y(int units) const noexcept { return MulDiv(units, base_y, 8); }
};

// The units of `font` (the stock GUI font when null), measured as Windows measures a dialog's.
DialogUnits MeasureDialogUnits(HFONT font) noexcept;

// Width in pixels of one line of `text` in `font`, ignoring "&" mnemonic markers.
int TextWidth(HFONT font, const std::wstring& text) noexcept;

}  // namespace corvina::win32
