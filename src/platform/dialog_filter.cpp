#include "platform/dialog_filter.h"

namespace corvina {

std::wstring DialogFilter(std::wstring_view typed) {
  std::wstring filter(typed);
  for (wchar_t& c : filter)
    if (c == L'|') c = L'\0';
  filter.append(2, L'\0');
  return filter;
}

}  // namespace corvina
