// Late binding over a hand-made IDispatch: DISPID caching, argument order, error mapping and
// value conversions.
#include "platform/win32/dispatch.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "dispatch_fake.h"
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {
namespace {

using testing::FakeObject;
using Microsoft::WRL::ComPtr;

constexpr GUID kMailType = {0x1111, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}};
constexpr GUID kReportType = {0x2222, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}};

void SetRaw(UniqueVariant& slot, VARTYPE type, auto set) {
  VARIANT* v = slot.put();
  v->vt = type;
  set(*v);
}

TEST(DispatchIds, DescribedTypesShareIdsPerGuidAndConnection) {
  auto ids = std::make_shared<DispatchIdCache>();
  auto mail = FakeObject::Make(kMailType);
  auto other_mail = FakeObject::Make(kMailType);
  auto report = FakeObject::Make(kReportType);
  for (int i = 0; i < 3; ++i) {
    Dispatch(mail, ids, L"Item").Get(L"Name");
    Dispatch(other_mail, ids, L"Item").Get(L"Name");
  }
  Dispatch(report, ids, L"Item").Get(L"Name");
  EXPECT_EQ(mail->lookups[L"Name"], 1);
  EXPECT_EQ(other_mail->lookups[L"Name"], 0);  // the type's id serves every object of it
  EXPECT_EQ(report->lookups[L"Name"], 1);      // same vtable, different type: asked again

  // A described type's unknown name is remembered as unknown.
  Dispatch item(mail, ids, L"Item");
  for (int i = 0; i < 2; ++i) EXPECT_THROW(item.Get(L"SenderName"), Error);
  EXPECT_EQ(mail->lookups[L"SenderName"], 1);

  // Another connection has its own cache.
  Dispatch(other_mail, nullptr, L"Item").Get(L"Name");
  EXPECT_EQ(other_mail->lookups[L"Name"], 1);
}

// A script host serves its objects from one implementation (here: one C++ class, one vtable)
// and numbers each object's members its own way. An id one of them gave must never be used on
// another: Visible would land on FaceId, silently.
TEST(DispatchIds, ObjectsWithoutTypeInformationAreAskedEachForItself) {
  auto ids = std::make_shared<DispatchIdCache>();
  auto button = FakeObject::Make();
  auto combo = FakeObject::Make();
  button->members = {{L"Visible", 1}, {L"FaceId", 2}};
  combo->members = {{L"FaceId", 1}, {L"Visible", 2}};
  Dispatch on_button(button, ids, L"CommandBarControl");
  Dispatch on_combo(combo, ids, L"CommandBarControl");
  on_button.Put(L"Visible", true);
  on_combo.Put(L"Visible", false);
  EXPECT_EQ(button->values.count(1), 1u);
  EXPECT_EQ(combo->values.count(2), 1u);
  EXPECT_EQ(combo->values.count(1), 0u) << "Visible was written to FaceId";
  EXPECT_EQ(ids->size(), 0u);

  // Each wrapper keeps what its own object answered; an unknown name is asked again.
  for (int i = 0; i < 2; ++i) {
    on_button.Get(L"Visible");
    on_combo.Get(L"Visible");
    EXPECT_THROW(on_combo.Get(L"Caption"), Error);
  }
  EXPECT_EQ(button->lookups[L"Visible"], 1);
  EXPECT_EQ(combo->lookups[L"Visible"], 1);
  EXPECT_EQ(combo->lookups[L"Caption"], 2);
  // Asking an object what it is costs a call into Outlook too: each wrapper asks once.
  EXPECT_EQ(button->type_questions, 1);
  EXPECT_EQ(combo->type_questions, 1);
}

// A reference chain that leads back to itself ends in an error value, not in a hang.
TEST(DispatchValues, ReferencesThatLoopEndInAnError) {
  VARIANT self, first, second;
  self.vt = VT_VARIANT | VT_BYREF;
  self.pvarVal = &self;
  first.vt = VT_VARIANT | VT_BYREF;
  second.vt = VT_VARIANT | VT_BYREF;
  first.pvarVal = &second;
  second.pvarVal = &first;
  for (const VARIANT* loop : {&self, &first}) {
    const UniqueVariant value = ArgumentValue(*loop);
    EXPECT_EQ(value.get()->vt, VT_ERROR);
    EXPECT_EQ(value.get()->scode, E_INVALIDARG);
  }
}

TEST(Dispatch, PassesArgumentsLastFirst) {
  auto fake = FakeObject::Make();
  Dispatch(fake, nullptr).Call(L"Add", L"name", 7, true, Missing{});
  ASSERT_EQ(fake->args.size(), 4u);
  EXPECT_EQ(fake->args[0].get()->vt, VT_ERROR);
  EXPECT_EQ(fake->args[0].get()->scode, DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(fake->args[1].get()->vt, VT_BOOL);
  EXPECT_EQ(fake->args[1].get()->boolVal, VARIANT_TRUE);
  EXPECT_EQ(fake->args[2].get()->lVal, 7);
  EXPECT_EQ(std::wstring(fake->args[3].get()->bstrVal), L"name");
  EXPECT_EQ(fake->flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
  EXPECT_TRUE(fake->named.empty());
}

TEST(Dispatch, PutNamesThePropertyPutArgument) {
  auto fake = FakeObject::Make();
  Dispatch(fake, nullptr).Put(L"Name", L"Inbox");
  EXPECT_EQ(fake->flags, DISPATCH_PROPERTYPUT);
  EXPECT_EQ(fake->named, std::vector<DISPID>{DISPID_PROPERTYPUT});
  EXPECT_FALSE(fake->had_result);
  EXPECT_EQ(std::wstring(fake->values[1].get()->bstrVal), L"Inbox");
}

HRESULT STDMETHODCALLTYPE FillDeferred(EXCEPINFO* info) {
  info->bstrDescription = SysAllocString(L"filled late");
  return S_OK;
}

TEST(Dispatch, FailuresBecomeErrors) {
  struct Case {
    HRESULT hr;
    EXCEPINFO exception;
    const wchar_t* member;
    int32_t number;
    std::wstring source;
    std::wstring description;
  };
  const Case cases[] = {
      {DISP_E_EXCEPTION, {0, 0, nullptr, nullptr, nullptr, 0, nullptr, nullptr, static_cast<SCODE>(0x8004010F)},
       L"Item", static_cast<int32_t>(0x8004010F), L"Outlook", L"Fake.Item failed: 0x8004010F"},
      {DISP_E_EXCEPTION, {1004, 0, nullptr, nullptr, nullptr, 0, nullptr, &FillDeferred, 0},
       L"Item", 1004, L"Outlook", L"filled late"},
      {DISP_E_BADINDEX, {}, L"Item", static_cast<int32_t>(DISP_E_BADINDEX), L"Outlook",
       L"Fake.Item failed: 0x8002000B (bad index)"},
      {S_OK, {}, L"Restrict", static_cast<int32_t>(DISP_E_UNKNOWNNAME), L"Outlook",
       L"Fake.Restrict failed: 0x80020006 (unknown name)"},
      // Outlook's object has gone away: the classic 462, the code kept in the text.
      {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), {}, L"Item", kErrServerUnavailable, L"Outlook",
       L"Fake.Item failed: 0x800706BA"},
      {RPC_E_DISCONNECTED, {}, L"Item", kErrServerUnavailable, L"Outlook",
       L"Fake.Item failed: 0x80010108 (object disconnected from its clients)"},
      {CO_E_OBJNOTCONNECTED, {}, L"Item", kErrServerUnavailable, L"Outlook", L"Fake.Item failed: 0x800401FD"},
  };
  for (const Case& c : cases) {
    auto fake = FakeObject::Make();
    fake->invoke_result = c.hr;
    fake->exception = c.exception;
    try {
      Dispatch(fake, nullptr, L"Fake").Call(c.member, 1);
      ADD_FAILURE() << "no error for " << c.hr;
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), c.number);
      EXPECT_EQ(e.source(), c.source);
      // The system's wording of an HRESULT differs between systems: compare the start only.
      EXPECT_EQ(e.description().substr(0, c.description.size()), c.description);
    }
  }
}

TEST(Dispatch, OutlooksOwnTextIsKept) {
  auto fake = FakeObject::Make();
  fake->invoke_result = DISP_E_EXCEPTION;
  fake->exception.scode = E_FAIL;
  fake->exception.bstrSource = SysAllocString(L"Microsoft Outlook");
  fake->exception.bstrDescription = SysAllocString(L"The operation failed.");
  try {
    Dispatch(fake, nullptr, L"Items").Call(L"Item", 1);
    ADD_FAILURE();
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), static_cast<int32_t>(E_FAIL));
    EXPECT_EQ(e.source(), L"Microsoft Outlook");
    EXPECT_EQ(e.description(), L"The operation failed.");
  }
}

TEST(DispatchValues, ConvertAsLateBindingDoes) {
  auto fake = FakeObject::Make();
  Dispatch d(fake, nullptr);
  const Date when{45123.75};
  d.Put(L"Name", when);
  EXPECT_EQ(fake->values[1].get()->vt, VT_DATE);
  EXPECT_EQ(d.Get<Date>(L"Name"), when);
  d.Put(L"Name", true);
  EXPECT_EQ(fake->values[1].get()->boolVal, VARIANT_TRUE);  // -1, not 1
  EXPECT_TRUE(d.Get<bool>(L"Name"));

  SetRaw(fake->values[1], VT_I2, [](VARIANT& v) { v.iVal = -12; });
  EXPECT_EQ(d.Get<int32_t>(L"Name"), -12);
  SetRaw(fake->values[1], VT_UI1, [](VARIANT& v) { v.bVal = 200; });
  EXPECT_EQ(d.Get<int32_t>(L"Name"), 200);
  SetRaw(fake->values[1], VT_BOOL, [](VARIANT& v) { v.boolVal = VARIANT_FALSE; });
  EXPECT_FALSE(d.Get<bool>(L"Name"));
  SetRaw(fake->values[1], VT_BSTR, [](VARIANT& v) { v.bstrVal = SysAllocStringLen(L"a\0b", 3); });
  EXPECT_EQ(d.Get<std::wstring>(L"Name"), std::wstring(L"a\0b", 3));
  SetRaw(fake->values[1], VT_BSTR, [](VARIANT& v) { v.bstrVal = SysAllocString(L"many"); });
  try {
    d.Get<int32_t>(L"Name");
    ADD_FAILURE();
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), kErrTypeMismatch);
  }

  // Nothing: an empty result, or a null object.
  fake->values[1].put();
  EXPECT_FALSE(d.Get<Dispatch>(L"Name"));
  SetRaw(fake->values[1], VT_DISPATCH, [](VARIANT& v) { v.pdispVal = nullptr; });
  EXPECT_EQ(WrapItems(d.Get<Dispatch>(L"Name")), nullptr);
  SetRaw(fake->values[1], VT_DISPATCH, [&](VARIANT& v) { (v.pdispVal = fake.Get())->AddRef(); });
  EXPECT_NE(WrapItems(d.Get<Dispatch>(L"Name")), nullptr);
}

// The Office Add methods with optional parameters in the middle.
TEST(DispatchWrappers, CommandBarAddsPassOfficesArgumentOrder) {
  auto fake = FakeObject::Make();
  WrapCommandBars(Dispatch(fake, nullptr))->Add(L"Corvina", 1, true);
  ASSERT_EQ(fake->args.size(), 4u);  // Name, Position, MenuBar, Temporary
  EXPECT_EQ(std::wstring(fake->args[3].get()->bstrVal), L"Corvina");
  EXPECT_EQ(fake->args[2].get()->lVal, 1);
  EXPECT_EQ(fake->args[1].get()->boolVal, VARIANT_FALSE);
  EXPECT_EQ(fake->args[0].get()->boolVal, VARIANT_TRUE);

  WrapCommandBarControls(Dispatch(fake, nullptr))->Add(4, true);
  ASSERT_EQ(fake->args.size(), 5u);  // Type, Id, Parameter, Before, Temporary
  EXPECT_EQ(fake->args[4].get()->lVal, 4);
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(fake->args[i].get()->vt, VT_ERROR);
  EXPECT_EQ(fake->args[0].get()->boolVal, VARIANT_TRUE);
}

}  // namespace
}  // namespace corvina::win32
