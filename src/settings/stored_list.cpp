#include "settings/stored_list.h"

#include <string>

#include "base/text.h"

namespace corvina {

void WalkStoredList(std::wstring_view list,
                    const std::function<void(std::wstring_view element, int32_t position)>& apply) {
  const std::wstring trimmed = Trim(list);
  if (trimmed.empty()) return;
  std::wstring_view rest = trimmed;
  while (!rest.empty() && rest.front() == L';') rest.remove_prefix(1);
  while (!rest.empty() && rest.back() == L';') rest.remove_suffix(1);
  int32_t position = 1;
  for (size_t cut; (cut = rest.find(L';')) != std::wstring_view::npos; ++position) {
    apply(rest.substr(0, cut), position);
    rest.remove_prefix(cut + 1);
  }
  apply(Trim(rest), position);
}

}  // namespace corvina
