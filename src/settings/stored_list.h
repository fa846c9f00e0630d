#pragma once
// The ";"-separated lists the settings keep one field of many entries in (the chat users, the
// virus-alert rules): how a stored list is walked, the same way for every list.
#include <cstdint>
#include <functional>
#include <string_view>

namespace corvina {

// Trims the list, drops every leading and trailing ";", and hands each element with its
// 1-based position to `apply`, the last one trimmed. A blank list hands out nothing. Each
// element is a view into the list: nothing is copied per step.
void WalkStoredList(std::wstring_view list,
                    const std::function<void(std::wstring_view element, int32_t position)>& apply);

}  // namespace corvina
