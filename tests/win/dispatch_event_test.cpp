// Event sinks over a connection point: advise, dispatch by DISPID, unadvise on destruction.
#include <gtest/gtest.h>

#include <stdexcept>

#include "base/error.h"
#include "dispatch_fake.h"
#include "platform/win32/event_sink.h"
#include "platform/win32/outlook_events.h"
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {
namespace {

using testing::FakeObject;

TEST(DispatchEvents, SinkRunsItsHandlerUntilDisconnected) {
  auto button = FakeObject::Make(GUID_NULL, kCommandBarButtonEvents);
  int clicks = 0;
  EventConnection connection = AdviseEvent(button.Get(), kCommandBarButtonEvents, kDispIdClick,
                                           [&] { ++clicks; }, L"CommandBarControl.OnClick");
  ASSERT_TRUE(button->sink);
  Microsoft::WRL::ComPtr<IDispatch> sink = button->sink;  // a source may call a sink late

  EXPECT_EQ(button->Raise(sink.Get(), kDispIdClick), S_OK);
  EXPECT_EQ(button->Raise(sink.Get(), 2), S_OK);  // another event of the interface: ignored
  EXPECT_EQ(clicks, 1);

  connection.Reset();
  EXPECT_EQ(button->unadvised, std::vector<DWORD>{42});
  EXPECT_FALSE(button->sink);
  EXPECT_EQ(button->Raise(sink.Get(), kDispIdClick), S_OK);
  EXPECT_EQ(clicks, 1);
}

TEST(DispatchEvents, HandlerFailuresStayInTheSink) {
  auto explorer = FakeObject::Make(GUID_NULL, kExplorerEvents10);
  EventConnection close;
  close = AdviseEvent(explorer.Get(), kExplorerEvents10, kDispIdExplorerClose,
                      [&] {
                        close.Reset();  // the handler ends its own subscription
                        throw std::runtime_error("handler failed");
                      },
                      L"Explorer.OnClose");
  EXPECT_EQ(explorer->Raise(explorer->sink.Get(), kDispIdExplorerClose), S_OK);
  EXPECT_EQ(explorer->unadvised.size(), 1u);
}

TEST(DispatchEvents, SinkAnswersForItsInterfaceOnly) {
  auto app = FakeObject::Make(GUID_NULL, kApplicationEvents11);
  EventConnection c = AdviseEvent(app.Get(), kApplicationEvents11, kDispIdNewMail, [] {}, L"x");
  Microsoft::WRL::ComPtr<IUnknown> unknown;
  EXPECT_EQ(app->sink.As(&unknown), S_OK);
  Microsoft::WRL::ComPtr<IConnectionPoint> wrong;
  EXPECT_EQ(app->sink.As(&wrong), E_NOINTERFACE);
}

// Whatever stops an event from being hooked, the error says which event and why.
TEST(DispatchEvents, AnEventThatCannotBeHookedIsNamedWithTheReason) {
  auto no_events = FakeObject::Make();  // no connection points at all
  auto application = FakeObject::Make(GUID_NULL, kApplicationEvents11);
  auto busy = FakeObject::Make(GUID_NULL, kExplorerEvents10);
  EventConnection taken = AdviseEvent(busy.Get(), kExplorerEvents10, kDispIdExplorerClose, [] {},
                                      L"Explorer.Close");  // the fake takes one sink only
  const struct {
    IDispatch* source;
    IID events;
    const wchar_t* event;
    int32_t number;
    const wchar_t* why;
  } rows[] = {
      {no_events.Get(), kApplicationEvents11, L"Application.NewMail",
       static_cast<int32_t>(E_NOINTERFACE), L"offers no events"},
      {application.Get(), kExplorerEvents10, L"Explorer.Close",
       static_cast<int32_t>(CONNECT_E_NOCONNECTION),
       L"no connection point for the events interface {0006300F-0000-0000-C000-000000000046}"},
      {busy.Get(), kExplorerEvents10, L"Explorer.Deactivate",
       static_cast<int32_t>(CONNECT_E_ADVISELIMIT), L"refused the add-in's event sink"},
      {nullptr, kApplicationEvents11, L"Application.Startup", kErrObjectVariableNotSet,
       L"Object variable or With block variable not set"},
  };
  for (const auto& row : rows) {
    const std::string event(row.event, row.event + wcslen(row.event));
    try {
      (void)AdviseEvent(row.source, row.events, 1, [] {}, row.event);
      ADD_FAILURE() << event << " was hooked";
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), row.number) << event;
      const std::wstring start = L"Cannot hook the event " + std::wstring(row.event) + L": ";
      EXPECT_EQ(e.description().substr(0, start.size()), start) << event;
      EXPECT_NE(e.description().find(row.why), std::wstring::npos) << event;
    }
  }
}

// A VB-style source passes its variable by reference, possibly a reference to a reference.
TEST(DispatchEvents, NewInspectorTakesTheWindowHoweverItIsPassed) {
  auto inspectors = FakeObject::Make(GUID_NULL, kInspectorsEvents);
  auto window = FakeObject::Make();
  window->members[L"CurrentItem"] = 7;  // answers Nothing: enough to see which object arrived
  IDispatch* raw = window.Get();
  VARIANT by_value, object_ref, to_value, to_ref, to_to_ref, empty, to_empty, null_ref;
  by_value.vt = VT_DISPATCH;
  by_value.pdispVal = raw;
  object_ref.vt = VT_DISPATCH | VT_BYREF;
  object_ref.ppdispVal = &raw;
  to_value.vt = VT_VARIANT | VT_BYREF;
  to_value.pvarVal = &by_value;
  to_ref.vt = VT_VARIANT | VT_BYREF;
  to_ref.pvarVal = &object_ref;
  to_to_ref.vt = VT_VARIANT | VT_BYREF;
  to_to_ref.pvarVal = &to_ref;
  VariantInit(&empty);
  to_empty.vt = VT_VARIANT | VT_BYREF;
  to_empty.pvarVal = &empty;
  null_ref.vt = VT_VARIANT | VT_BYREF;
  null_ref.pvarVal = nullptr;
  const struct {
    const char* passed;
    VARIANT* argument;
    bool window;  // whether the handler gets the window (else the event is ignored)
  } rows[] = {
      {"the object", &by_value, true},
      {"a reference to the object", &object_ref, true},
      {"a variant by reference", &to_value, true},
      {"a variant by reference to an object reference", &to_ref, true},
      {"a reference to a reference", &to_to_ref, true},
      {"a reference to an empty variant", &to_empty, false},
      {"a null reference", &null_ref, false},
  };
  for (const auto& row : rows) {
    int calls = 0;
    bool got_window = false;
    EventConnection connection = WrapInspectors(Dispatch(inspectors, nullptr))
                                     ->OnNewInspector([&](outlook::Ref<outlook::Inspector> opened) {
                                       ++calls;
                                       got_window = opened && !opened->CurrentItem();
                                     });
    const int asked = window->lookups[L"CurrentItem"];
    DISPPARAMS params{row.argument, nullptr, 1, 0};
    EXPECT_EQ(inspectors->sink->Invoke(kDispIdNewInspector, IID_NULL, 0, DISPATCH_METHOD, &params,
                                       nullptr, nullptr, nullptr),
              S_OK)
        << row.passed;
    EXPECT_EQ(calls, row.window ? 1 : 0) << row.passed;
    EXPECT_EQ(got_window, row.window) << row.passed;
    EXPECT_EQ(window->lookups[L"CurrentItem"], asked + (row.window ? 1 : 0)) << row.passed;
  }
}

}  // namespace
}  // namespace corvina::win32
