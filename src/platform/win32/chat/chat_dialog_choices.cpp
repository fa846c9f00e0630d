#include "platform/win32/chat/chat_dialog_choices.h"

#include "base/text.h"

namespace corvina::win32 {

std::vector<StatusChoice> StatusChoices(const std::vector<std::pair<int16_t, std::wstring>>& offered,
                                        int16_t current) {
  std::vector<StatusChoice> choices;
  for (const auto& [value, name] : offered) choices.push_back({name, value});
  bool known = false;
  for (const StatusChoice& choice : choices) known = known || choice.value == current;
  if (!known) choices.push_back({std::to_wstring(current), current});
  return choices;
}

std::vector<std::wstring> PictureChoices(const std::wstring& current) {
  std::vector<std::wstring> choices;
  for (wchar_t digit = L'1'; digit <= L'9'; ++digit) choices.emplace_back(1, digit);
  if (IndexOfPicture(choices, current) == 0 && current != choices[0]) choices.push_back(current);
  return choices;
}

size_t IndexOfStatus(const std::vector<StatusChoice>& choices, int16_t value) {
  for (size_t i = 0; i < choices.size(); ++i)
    if (choices[i].value == value) return i;
  return 0;
}

size_t IndexOfPicture(const std::vector<std::wstring>& choices, const std::wstring& value) {
  for (size_t i = 0; i < choices.size(); ++i)
    if (choices[i] == value) return i;
  return 0;
}

size_t IndexOfColor(const std::vector<std::wstring>& colors, const std::wstring& name) {
  const std::wstring wanted = UCase(name);
  for (size_t i = 0; i < colors.size(); ++i)
    if (UCase(colors[i]) == wanted) return i;
  return 0;
}

}  // namespace corvina::win32
