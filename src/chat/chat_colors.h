#pragma once
// The chat's named colours. A colour is 0x00BBGGRR: red in the lowest byte, as Windows keeps
// a COLORREF, so a stored value can be handed to the drawing calls unchanged.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace corvina {

using ChatColor = uint32_t;

// Upper-cases the name and looks it up among the sixteen names ("FUSCHIA" as it has always
// been spelled); an unknown name is black (0).
ChatColor GetColorFromString(const std::wstring& name);
// The name of a colour of the table, "BLACK" for any other value.
std::wstring GetStringFromColor(ChatColor color);

// The colours the user properties dialog offers: fifteen names, white left out so no text is
// ever painted invisible on the white board.
inline constexpr std::array<const wchar_t*, 15> kChatColorChoices = {
    L"Black", L"Maroon", L"Green", L"Olive",  L"Navy",    L"Purple", L"Teal", L"Gray",
    L"Silver", L"Red",   L"Lime",  L"Yellow", L"Blue",    L"Fuschia", L"Aqua"};

// One solid swatch of an image list, keyed by the upper-cased colour name.
struct ColorSwatch {
  std::wstring key;
  ChatColor color = 0;
};
// Adds the swatch of `name` to `image_list` (the window draws it as a filled square).
void CreateColorImage(std::vector<ColorSwatch>& image_list, const std::wstring& name);

}  // namespace corvina
