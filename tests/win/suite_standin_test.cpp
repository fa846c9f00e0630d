// The stand-in on its own, called through IDispatch by the test: the conventions a late-bound
// caller relies on (names, arguments, errors), fault injection and the connection points.
#include <gtest/gtest.h>

#include "base/text.h"
#include "platform/sim/memory_file_system.h"
#include "platform/sim/outlook_errors.h"
#include "standin.h"
#include "standin_ids.h"
#include "standin_probe.h"

namespace corvina::standin {
namespace {

using Microsoft::WRL::ComPtr;

DISPID IdOf(IDispatch* object, const wchar_t* name, HRESULT* hr = nullptr) {
  DISPID id = 0;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  const HRESULT result = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (hr) *hr = result;
  return id;
}

class StandInTest : public ::testing::Test {
 protected:
  ComPtr<IDispatch> Inbox() {
    ArgList args;
    ComPtr<IDispatch> ns = Late(app.Get(), L"GetNamespace", DISPATCH_METHOD, {args.Text(L"MAPI")}).object();
    return Late(ns.Get(), L"GetDefaultFolder", DISPATCH_METHOD, {I4(6)}).object();
  }
  std::shared_ptr<sim::SimCommandBarsData> Bars() { return store.ActiveExplorer()->command_bars; }

  sim::Faults faults;
  sim::MemoryFileSystem files{faults};
  sim::SimStore store{faults, files};
  StandIn standin{store};
  ComPtr<IDispatch> app = standin.Application();
};

TEST_F(StandInTest, NamesAreFoundInAnyCaseAndHiddenOnesAreUnknown) {
  ComPtr<IDispatch> explorers = Path(app.Get(), {L"Explorers"});
  ComPtr<IDispatch> items = Path(Inbox().Get(), {L"Items"});
  ASSERT_TRUE(explorers && items);
  HRESULT hr = E_FAIL;
  const DISPID count = IdOf(explorers.Get(), L"Count", &hr);
  EXPECT_EQ(hr, S_OK);
  EXPECT_EQ(IdOf(explorers.Get(), L"COUNT"), count);
  EXPECT_EQ(IdOf(items.Get(), L"count"), count);  // one id per name, whatever the kind
  EXPECT_EQ(IdOf(explorers.Get(), L"Restrict", &hr), DISPID_UNKNOWN);  // an Items member only
  EXPECT_EQ(hr, DISP_E_UNKNOWNNAME);

  standin.Hide(L"Explorers", L"count");
  IdOf(explorers.Get(), L"Count", &hr);
  EXPECT_EQ(hr, DISP_E_UNKNOWNNAME);
  DISPPARAMS none{nullptr, nullptr, 0, 0};
  VARIANT result;
  VariantInit(&result);
  EXPECT_EQ(explorers->Invoke(count, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);  // a caller that kept the id
  EXPECT_EQ(Late(items.Get(), L"Count").hr, S_OK);  // other kinds keep the name
}

TEST_F(StandInTest, ArgumentsAreTakenAsOfficeTakesThem) {
  store.AddToInbox(sim::MakeMail(L"one", FromCivil({2024, 1, 2, 3, 4, 5})));
  ComPtr<IDispatch> explorers = Path(app.Get(), {L"Explorers"});
  ComPtr<IDispatch> bars = Path(app.Get(), {L"ActiveExplorer", L"CommandBars"});
  ComPtr<IDispatch> controls = Path(Late(bars.Get(), L"Item", DISPATCH_METHOD, {I4(2)}).object(), {L"Controls"});
  ComPtr<IDispatch> items = Path(Inbox().Get(), {L"Items"});
  ASSERT_TRUE(explorers && bars && controls && items);
  ArgList text;
  struct Row {
    const char* call;
    IDispatch* object;
    const wchar_t* member;
    std::vector<VARIANT> args;
    HRESULT hr;
    int32_t number = 0;  // of a DISP_E_EXCEPTION
  } rows[] = {
      {"Explorers.Item(VT_I2)", explorers.Get(), L"Item", {I2(1)}, S_OK},
      {"Explorers.Item(VT_I4)", explorers.Get(), L"Item", {I4(1)}, S_OK},
      {"Explorers.Item(7)", explorers.Get(), L"Item", {I4(7)}, DISP_E_EXCEPTION, sim::kDispBadIndex},
      {"Explorers.Item(\"x\")", explorers.Get(), L"Item", {text.Text(L"x")}, DISP_E_TYPEMISMATCH},
      {"Explorers.Item()", explorers.Get(), L"Item", {}, DISP_E_PARAMNOTOPTIONAL},
      {"Explorers.Item(1, 2)", explorers.Get(), L"Item", {I4(1), I4(2)}, DISP_E_BADPARAMCOUNT},
      {"CommandBars.Item(\"standard\")", bars.Get(), L"Item", {text.Text(L"standard")}, S_OK},
      {"CommandBars.Item(\"None\")", bars.Get(), L"Item", {text.Text(L"None")}, DISP_E_EXCEPTION,
       sim::kInvalidArgument},
      {"CommandBars.Add(all four)", bars.Get(), L"Add",
       {text.Text(L"Full"), I4(1), Bool(false), Bool(true)}, S_OK},
      {"CommandBars.Add(Name, , , )", bars.Get(), L"Add",
       {text.Text(L"Omitted"), Omitted(), Omitted(), Omitted()}, S_OK},
      {"CommandBars.Add(Name)", bars.Get(), L"Add", {text.Text(L"Short")}, S_OK},
      {"CommandBars.Add(MenuBar:=True)", bars.Get(), L"Add", {text.Text(L"Menu"), I4(1), Bool(true)},
       DISP_E_EXCEPTION, sim::kInvalidArgument},
      {"Controls.Add(1, , , , True)", controls.Get(), L"Add",
       {I4(1), Omitted(), Omitted(), Omitted(), Bool(true)}, S_OK},
      {"Controls.Add()", controls.Get(), L"Add", {}, S_OK},
      {"Controls.Add(1, 3)", controls.Get(), L"Add", {I4(1), I4(3)}, DISP_E_EXCEPTION,
       sim::kInvalidArgument},
      {"Items.Sort(\"[ReceivedTime]\", True)", items.Get(), L"Sort",
       {text.Text(L"[ReceivedTime]"), Bool(true)}, S_OK},
      {"Items.Sort(\"[Nonsense]\")", items.Get(), L"Sort", {text.Text(L"[Nonsense]")},
       DISP_E_EXCEPTION, sim::kDispException},
      {"Items.Restrict()", items.Get(), L"Restrict", {}, DISP_E_PARAMNOTOPTIONAL},
  };
  for (Row& row : rows) {
    const Outcome out = Late(row.object, row.member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, row.args);
    EXPECT_EQ(out.hr, row.hr) << row.call;
    if (row.hr == DISP_E_EXCEPTION) {
      EXPECT_EQ(out.number, row.number) << row.call;
      EXPECT_EQ(out.source, L"Outlook") << row.call;
      EXPECT_FALSE(out.description.empty()) << row.call;
    }
  }
  auto bar_data = Bars();
  ASSERT_TRUE(bar_data->Find(L"Full") && bar_data->Find(L"Omitted") && bar_data->Find(L"Short"));
  EXPECT_TRUE(bar_data->Find(L"Full")->temporary);
  EXPECT_EQ(bar_data->Find(L"Full")->position, 1);
  EXPECT_FALSE(bar_data->Find(L"Omitted")->temporary);
  EXPECT_FALSE(bar_data->Find(L"Menu"));
  const auto& added = bar_data->Find(L"Standard")->controls;
  ASSERT_EQ(added.size(), 4u);  // two built-in buttons and the two added ones
  EXPECT_TRUE(added[2]->temporary);
  EXPECT_FALSE(added[3]->temporary);
  EXPECT_EQ(added[3]->type, 1);
}

TEST_F(StandInTest, PropertiesArePutOnTheSimAndReadOnlyOnesRefuseIt) {
  ComPtr<IDispatch> bar = Late(Path(app.Get(), {L"ActiveExplorer", L"CommandBars"}).Get(), L"Add",
                               DISPATCH_METHOD, {}).object();
  ASSERT_TRUE(bar);
  EXPECT_EQ(Put(bar.Get(), L"Visible", Bool(true)).hr, S_OK);
  EXPECT_TRUE(Bars()->Find(L"Custom")->visible);
  EXPECT_EQ(Late(bar.Get(), L"Visible").text(), L"True");
  ArgList text;
  EXPECT_EQ(Put(bar.Get(), L"Name", text.Text(L"Renamed")).hr, DISP_E_MEMBERNOTFOUND);
  ComPtr<IDispatch> control = Late(Path(bar.Get(), {L"Controls"}).Get(), L"Add", DISPATCH_METHOD, {}).object();
  EXPECT_EQ(Put(control.Get(), L"tag", text.Text(L"T")).hr, S_OK);
  EXPECT_EQ(Put(control.Get(), L"FaceId", text.Text(L"59")).hr, S_OK);  // coerced as Office does
  EXPECT_EQ(Bars()->Find(L"Custom")->controls.at(0)->tag, L"T");
  EXPECT_EQ(Bars()->Find(L"Custom")->controls.at(0)->face_id, 59);
  EXPECT_EQ(Put(control.Get(), L"FaceId", text.Text(L"face")).hr, DISP_E_TYPEMISMATCH);
}

TEST_F(StandInTest, PlannedFaultsComeBackAsExceptionsWithTheirNumber) {
  ComPtr<IDispatch> explorers = Path(app.Get(), {L"Explorers"});
  const struct {
    Error error;
    int32_t number;  // what the caller reads from wCode or scode
  } rows[] = {
      {Error(static_cast<int32_t>(0x80004005u), L"Outlook", L"Planned failure"),
       static_cast<int32_t>(0x80004005u)},
      {Error(5, L"Outlook", L"Invalid procedure call or argument"), 5},
  };
  for (const auto& row : rows) {
    faults.FailNthCall(sim::Service::kOutlook, 1, row.error);
    const Outcome failed = Late(explorers.Get(), L"Count");
    EXPECT_EQ(failed.hr, DISP_E_EXCEPTION);
    EXPECT_EQ(failed.number, row.number);
    EXPECT_EQ(failed.source, row.error.source());
    EXPECT_EQ(failed.description, row.error.description());
    EXPECT_EQ(faults.last_failed_call(), "Outlook.Explorers.Count");
    EXPECT_EQ(Late(explorers.Get(), L"Count").text(), L"1");  // only the planned call fails
  }
}

TEST_F(StandInTest, EventsReachEveryAdvisedSinkUntilItIsUnadvised) {
  auto mail = store.AddToInbox(sim::MakeMail(L"m", FromCivil({2024, 1, 2, 3, 4, 5})));
  ComPtr<IDispatch> explorer = Path(app.Get(), {L"ActiveExplorer"});
  ComPtr<IDispatch> inspectors = Path(app.Get(), {L"Inspectors"});
  ComPtr<IDispatch> controls = Late(Path(explorer.Get(), {L"CommandBars"}).Get(), L"Item",
                                    DISPATCH_METHOD, {I4(1)}).object();
  controls = Path(controls.Get(), {L"Controls"});
  ComPtr<IDispatch> button = Late(controls.Get(), L"Add", DISPATCH_METHOD, {I4(1)}).object();
  ComPtr<IDispatch> combo = Late(controls.Get(), L"Add", DISPATCH_METHOD, {I4(4)}).object();
  ArgList text;
  ASSERT_EQ(Put(button.Get(), L"Tag", text.Text(L"Btn")).hr, S_OK);

  std::vector<Received> log;
  struct Advised {
    IDispatch* source;
    IID events;
    ComPtr<IConnectionPoint> point = {};
    DWORD cookie = 0;
  } advised[] = {{app.Get(), kApplicationEvents},   {app.Get(), kApplicationEvents},
                 {explorer.Get(), kExplorerEvents}, {button.Get(), kButtonEvents},
                 {combo.Get(), kComboBoxEvents},    {inspectors.Get(), kInspectorsEvents}};
  for (Advised& a : advised) {
    a.cookie = Advise(a.source, a.events, MakeRecordingSink(a.events, log).Get(), a.point);
    EXPECT_NE(a.cookie, 0u);
  }
  EXPECT_EQ(standin.counters().advises, std::size(advised));

  auto bar = Bars()->bars.at(0);
  const auto raise_all = [&] {
    store.new_mail().Raise();
    store.startup().Raise();
    bar->FindControl(L"Btn")->Click();
    bar->controls.back()->Change(L"Hebrew");
    store.DeactivateExplorer(store.ActiveExplorer());
    store.OpenInspector(mail);
  };
  raise_all();
  const std::vector<DISPID> ids = {kNewMail, kNewMail, kStartup, kStartup, kClick, kChange,
                                   kExplorerDeactivate, kNewInspector};
  std::string got;
  for (const Received& r : log) got += std::to_string(r.id) + " ";
  ASSERT_EQ(log.size(), ids.size()) << got;
  for (size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(log[i].id, ids[i]) << i;
  EXPECT_EQ(log[0].types.size(), 0u);
  EXPECT_EQ(log[4].types, (std::vector<VARTYPE>{VT_BOOL | VT_BYREF, VT_DISPATCH}));
  EXPECT_EQ(log[4].ctrl_tag, L"Btn");  // the button clicked is the Ctrl argument
  EXPECT_EQ(log[5].types, std::vector<VARTYPE>{VT_DISPATCH});
  EXPECT_EQ(log[7].types, std::vector<VARTYPE>{VT_DISPATCH});  // the window that opened
  EXPECT_EQ(standin.counters().events_failed, 0u);

  for (Advised& a : advised) EXPECT_EQ(a.point->Unadvise(a.cookie), S_OK);
  EXPECT_EQ(advised[0].point->Unadvise(advised[0].cookie), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(standin.counters().connected(), 0u);
  log.clear();
  raise_all();
  EXPECT_TRUE(log.empty());

  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(app.As(&container), S_OK);
  ComPtr<IConnectionPoint> point;
  EXPECT_EQ(container->FindConnectionPoint(kExplorerEvents, point.GetAddressOf()), CONNECT_E_NOCONNECTION);
  const HRESULT collection = controls.As(&container);
  EXPECT_EQ(collection, E_NOINTERFACE);  // a collection raises no events

  for (Advised& a : advised) a.point.Reset();
  explorer.Reset();
  inspectors.Reset();
  controls.Reset();
  button.Reset();
  combo.Reset();
  container.Reset();
  app.Reset();
  EXPECT_EQ(standin.counters().live_objects, 0);  // nothing of the stand-in is left referenced
  EXPECT_EQ(standin.ReleaseKeptSinks(), 0u);       // nor any sink by the stand-in
}

}  // namespace
}  // namespace corvina::standin
