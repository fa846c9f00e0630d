#pragma once
// The item properties the sim can filter and sort on, under their two Outlook names: the Jet
// name written "[Subject]" and the DASL name used after "@SQL=". Filters and sorts read the
// store's values, so a report's delivery time counts as its ReceivedTime here although its
// object model has no such member.
#include <cstdint>
#include <string_view>

#include "platform/sim/outlook_item_data.h"

namespace corvina::sim {

enum class PropertyType { kText, kDate, kBool, kNumber };

struct SimProperty {
  enum class Id {
    kMessageClass,
    kSubject,
    kReceivedTime,
    kCreationTime,
    kSentOn,
    kUnRead,
    kRead,
    kSize
  };
  Id id;
  const wchar_t* jet;   // nullptr when the property has no Jet name
  const wchar_t* dasl;  // nullptr when the property has no DASL name
  PropertyType type;
};

// Case-insensitive look-ups; nullptr when unknown.
const SimProperty* FindJetProperty(std::wstring_view name);
const SimProperty* FindDaslProperty(std::wstring_view name);

// The value of a text property.
const std::wstring& TextValue(const SimProperty& p, const SimItemData& item);
// The value of any other property as a number: dates in whole seconds (so equal civil times
// compare equal), booleans 0 or 1, sizes in bytes.
int64_t NumberValue(const SimProperty& p, const SimItemData& item);
int64_t DateSeconds(Date d);

// Ordering of text as Outlook compares it in filters and sorts: without regard to case.
int CompareText(std::wstring_view a, std::wstring_view b);
// One character folded to lower case (plain ASCII without a library call: filters and sorts
// fold every character of every item they look at).
wchar_t FoldWide(wchar_t c);
inline wchar_t FoldCase(wchar_t c) {
  if (c < 128) return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c;
  return FoldWide(c);
}
std::wstring FoldText(std::wstring_view s);

}  // namespace corvina::sim
