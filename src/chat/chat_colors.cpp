#include "chat/chat_colors.h"

#include <utility>

#include "base/text.h"

namespace corvina {
namespace {

// Sixteen names in their order; a reverse lookup takes the first name of a value.
constexpr std::pair<const wchar_t*, ChatColor> kColors[] = {
    {L"BLACK", 0x000000},  {L"MAROON", 0x000080}, {L"GREEN", 0x008000}, {L"OLIVE", 0x008080},
    {L"NAVY", 0x800000},   {L"PURPLE", 0x800080}, {L"TEAL", 0x808000},  {L"GRAY", 0x808080},
    {L"SILVER", 0xC0C0C0}, {L"RED", 0x0000FF},    {L"LIME", 0x00FF00},  {L"YELLOW", 0x00FFFF},
    {L"BLUE", 0xFF0000},   {L"FUSCHIA", 0xFF00FF}, {L"AQUA", 0xFFFF00}, {L"WHITE", 0xFFFFFF},
};

}  // namespace

ChatColor GetColorFromString(const std::wstring& name) {
  const std::wstring upper = UCase(name);
  for (const auto& [known, color] : kColors) {
    if (upper == known) return color;
  }
  return 0;
}

std::wstring GetStringFromColor(ChatColor color) {
  for (const auto& [name, known] : kColors) {
    if (color == known) return name;
  }
  return L"BLACK";
}

void CreateColorImage(std::vector<ColorSwatch>& image_list, const std::wstring& name) {
  const std::wstring key = UCase(name);
  image_list.push_back({key, GetColorFromString(key)});
}

}  // namespace corvina
