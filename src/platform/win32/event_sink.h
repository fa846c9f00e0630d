#pragma once
// One event subscription over a connection point: a small COM object answering
// QueryInterface for IUnknown, IDispatch and the events dispinterface, advised on the source,
// and unadvised when the returned EventConnection goes.
//
// The sink holds the handler and nothing else: no pointer to the wrapper or the source, so
// Outlook's reference to the sink never keeps the add-in's objects alive. Disconnecting drops
// the handler at once, so a late event (Outlook may still hold the sink) calls nothing.
#include <functional>
#include <string_view>

#include "platform/event_connection.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// Calls `handler` whenever `source` raises event `dispid` of `events`. The event's arguments
// are not read. A handler's exception never reaches Outlook: the sink swallows it and answers
// S_OK. `event` names the event as Outlook's object model does ("Explorer.Close"). When the
// event cannot be hooked (the source offers no connection points, none for `events`, or
// refuses the sink) this throws corvina::Error whose description names that event and why:
// "Cannot hook the event Explorer.Close: the object offers no events (it has no connection
// points); 0x80004002 (no such interface)".
[[nodiscard]] EventConnection AdviseEvent(IDispatch* source, const IID& events, DISPID dispid,
                                          std::function<void()> handler, std::wstring_view event);

// The same for an event whose arguments matter: the handler sees Outlook's DISPPARAMS (the
// arguments in reverse order) for the duration of the call.
using EventHandler = std::function<void(const DISPPARAMS&)>;
[[nodiscard]] EventConnection AdviseEventWithArguments(IDispatch* source, const IID& events,
                                                       DISPID dispid, EventHandler handler,
                                                       std::wstring_view event);

}  // namespace corvina::win32
