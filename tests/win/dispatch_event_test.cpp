// Event sinks over a connection point: advise, dispatch by DISPID, unadvise on destruction.
#include <gtest/gtest.h>

#include <stdexcept>

#include "base/error.h"
#include "dispatch_fake.h"
#include "platform/win32/event_sink.h"
#include "platform/win32/outlook_events.h"

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

  // A source without the requested events interface.
  try {
    (void)AdviseEvent(app.Get(), kExplorerEvents10, kDispIdExplorerClose, [] {}, L"Explorer.OnClose");
    ADD_FAILURE();
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), static_cast<int32_t>(CONNECT_E_NOCONNECTION));
    EXPECT_NE(e.description().find(L"Explorer.OnClose"), std::wstring::npos);
  }
}

}  // namespace
}  // namespace corvina::win32
