#include "platform/sim/outlook_properties.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

#include "base/text.h"

namespace corvina::sim {

namespace {

using Id = SimProperty::Id;

constexpr SimProperty kProperties[] = {
    {Id::kMessageClass, L"MessageClass", L"http://schemas.microsoft.com/mapi/proptag/0x001A001F",
     PropertyType::kText},
    {Id::kSubject, L"Subject", L"urn:schemas:httpmail:subject", PropertyType::kText},
    {Id::kReceivedTime, L"ReceivedTime", L"urn:schemas:httpmail:datereceived", PropertyType::kDate},
    {Id::kCreationTime, L"CreationTime", L"DAV:creationdate", PropertyType::kDate},
    {Id::kSentOn, L"SentOn", L"urn:schemas:httpmail:date", PropertyType::kDate},
    {Id::kUnRead, L"UnRead", nullptr, PropertyType::kBool},
    {Id::kRead, nullptr, L"urn:schemas:httpmail:read", PropertyType::kBool},
    {Id::kSize, L"Size", L"http://schemas.microsoft.com/mapi/proptag/0x0E080003",
     PropertyType::kNumber},
};

}  // namespace

const SimProperty* FindJetProperty(std::wstring_view name) {
  for (const auto& p : kProperties) {
    if (p.jet && EqualsIgnoreCase(name, p.jet)) return &p;
  }
  return nullptr;
}

const SimProperty* FindDaslProperty(std::wstring_view name) {
  for (const auto& p : kProperties) {
    if (p.dasl && EqualsIgnoreCase(name, p.dasl)) return &p;
  }
  return nullptr;
}

const std::wstring& TextValue(const SimProperty& p, const SimItemData& item) {
  return p.id == Id::kMessageClass ? item.message_class : item.subject;
}

int64_t DateSeconds(Date d) { return std::llround(d.serial * 86400.0); }

int64_t NumberValue(const SimProperty& p, const SimItemData& item) {
  switch (p.id) {
    case Id::kReceivedTime: return DateSeconds(item.received_time);
    case Id::kCreationTime: return DateSeconds(item.creation_time);
    case Id::kSentOn: return DateSeconds(item.sent_on);
    case Id::kUnRead: return item.unread ? 1 : 0;
    case Id::kRead: return item.unread ? 0 : 1;
    case Id::kSize: return EffectiveSize(item);
    case Id::kMessageClass:
    case Id::kSubject: break;
  }
  return 0;
}

wchar_t FoldWide(wchar_t c) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c))); }

std::wstring FoldText(std::wstring_view s) {
  std::wstring out(s);
  for (auto& c : out) c = FoldCase(c);
  return out;
}

int CompareText(std::wstring_view a, std::wstring_view b) {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    const wchar_t ca = FoldCase(a[i]);
    const wchar_t cb = FoldCase(b[i]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace corvina::sim
