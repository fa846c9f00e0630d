#include "platform/sim/outlook_sort.h"

#include <algorithm>
#include <utility>

#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_properties.h"

namespace corvina::sim {

namespace {

// Sorting pairs of (key, item) reads each item's property once instead of twice per
// comparison, which matters for text keys over a large folder.
template <typename Key, typename Less>
void SortBy(std::vector<SimItemPtr>& items, bool descending, Key key, Less less) {
  using K = decltype(key(*items.front()));
  std::vector<std::pair<K, SimItemPtr>> keyed;
  keyed.reserve(items.size());
  for (auto& item : items) keyed.emplace_back(key(*item), std::move(item));
  std::stable_sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
    return descending ? less(b.first, a.first) : less(a.first, b.first);
  });
  for (size_t i = 0; i < items.size(); ++i) items[i] = std::move(keyed[i].second);
}

}  // namespace

void SortItems(std::vector<SimItemPtr>& items, std::wstring_view property, bool descending) {
  std::wstring_view name = property;
  if (name.size() >= 2 && name.front() == L'[' && name.back() == L']') {
    name = name.substr(1, name.size() - 2);
  }
  const SimProperty* p = FindJetProperty(name);
  if (!p) throw UnknownPropertyError(name);
  if (items.empty()) return;
  if (p->type == PropertyType::kText) {
    SortBy(
        items, descending, [p](const SimItemData& d) { return FoldText(TextValue(*p, d)); },
        [](const std::wstring& a, const std::wstring& b) { return a < b; });
  } else {
    SortBy(
        items, descending, [p](const SimItemData& d) { return NumberValue(*p, d); },
        [](int64_t a, int64_t b) { return a < b; });
  }
}

}  // namespace corvina::sim
