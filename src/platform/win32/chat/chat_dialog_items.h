#pragma once
// The owner-drawn items of the user properties dialog's lists: a colour as a filled swatch
// and its name, a picture as its icon (its number where the icon is missing).
#include <vector>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// An item of a colour list: its item data is the colour (0x00BBGGRR), its text the name.
void DrawColorItem(const DRAWITEMSTRUCT& item) noexcept;
// An item of the pictures list: its item data is the icon, or null to draw the item's text.
void DrawPictureItem(const DRAWITEMSTRUCT& item, int icon_size) noexcept;

// The pictures 1..9 from this module's icon resources "A1.ICO".."A9.ICO" at `size` pixels;
// an empty handle where a resource is missing (a test program has none).
std::vector<UniqueHIcon> LoadPictureIcons(int size);

}  // namespace corvina::win32
