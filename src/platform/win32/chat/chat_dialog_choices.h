#pragma once
// What the user properties dialog's lists offer, and which entry a stored value selects. A
// stored value the lists do not know is kept selectable as itself (a status as its number, a
// picture as its text), so opening and confirming the dialog never changes it unasked.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace corvina::win32 {

struct StatusChoice {
  std::wstring name;
  int16_t value;
};
// The statuses offered (value, name), then `current` as its number when it is none of them.
std::vector<StatusChoice> StatusChoices(const std::vector<std::pair<int16_t, std::wstring>>& offered,
                                        int16_t current);

// "1".."9", then `current` when it is none of them.
std::vector<std::wstring> PictureChoices(const std::wstring& current);

// Position of `value` in `choices`; 0 when absent. Colour names compare ignoring case.
size_t IndexOfStatus(const std::vector<StatusChoice>& choices, int16_t value);
size_t IndexOfPicture(const std::vector<std::wstring>& choices, const std::wstring& value);
size_t IndexOfColor(const std::vector<std::wstring>& colors, const std::wstring& name);

}  // namespace corvina::win32
