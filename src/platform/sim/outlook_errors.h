#pragma once
// The errors the sim Outlook raises, with the numbers and texts real Outlook reports through
// IDispatch, so the core's error handling (and its log lines) see what they would see live.
#include <cstdint>
#include <string_view>

#include "base/error.h"

namespace corvina::sim {

inline constexpr wchar_t kOutlookSource[] = L"Outlook";

inline constexpr int32_t kDispUnknownName = static_cast<int32_t>(0x80020006u);
inline constexpr int32_t kDispException = static_cast<int32_t>(0x80020009u);
inline constexpr int32_t kDispBadIndex = static_cast<int32_t>(0x8002000Bu);
inline constexpr int32_t kMapiNotFound = static_cast<int32_t>(0x8004010Fu);
inline constexpr int32_t kInvalidArgument = static_cast<int32_t>(0x80070057u);
inline constexpr int32_t kObjectDisconnected = static_cast<int32_t>(0x80010108u);
inline constexpr int32_t kFail = static_cast<int32_t>(0x80004005u);

// A late-bound call of a member the object does not have ("ReportItem", "ReceivedTime").
Error UnknownMemberError(std::wstring_view object, std::wstring_view member);
// Item(i) with i outside 1..Count.
Error BadIndexError();
// GetItemFromID with an unknown entry id.
Error ObjectNotFoundError();
Error InvalidArgumentError();
// A filter Outlook cannot read; `rest` is the text from the point where reading failed.
Error ConditionError(std::wstring_view rest);
// A filter or sort naming a property Outlook does not know.
Error UnknownPropertyError(std::wstring_view name);
// A call on a command bar or control that was deleted.
Error DisconnectedError();
// A general failure with Outlook's own message text.
Error OutlookError(int32_t number, std::wstring_view description);

}  // namespace corvina::sim
