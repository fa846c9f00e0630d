// `wine_suite --bench`: what a late-bound call costs against the stand-in, and what the add-in's
// start-up and new-mail handling cost through COM over a large Inbox. Printed, never asserted.
// Outlook disables an add-in whose connection takes more than 1000 ms (median of five starts).
#include <cstdio>
#include <functional>
#include <memory>

#include "platform/sim/memory_file_system.h"
#include "standin.h"
#include "standin_host.h"
#include "standin_probe.h"

namespace corvina::standin {
namespace {

constexpr int kReads = 100000;
constexpr int kInboxItems = 10000;
constexpr int kStarts = 3;

double Milliseconds(const std::function<void()>& work) {
  LARGE_INTEGER frequency, start, end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  work();
  QueryPerformanceCounter(&end);
  return 1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) /
         static_cast<double>(frequency.QuadPart);
}

struct World {
  sim::Faults faults;
  sim::MemoryFileSystem files{faults};
  sim::SimStore store{faults, files};
  StandIn standin{store};

  World() {
    for (int i = 0; i < kInboxItems; ++i) {
      store.AddToInbox(sim::MakeMail(L"Mail " + std::to_wstring(i),
                                     FromCivil({2024, 1 + i % 12, 1 + i % 28, i % 24, i % 60, 0})));
    }
  }
};

Microsoft::WRL::ComPtr<IDispatch> InboxItems(IDispatch* application) {
  ArgList args;
  Microsoft::WRL::ComPtr<IDispatch> ns =
      Late(application, L"GetNamespace", DISPATCH_METHOD, {args.Text(L"MAPI")}).object();
  Microsoft::WRL::ComPtr<IDispatch> inbox = Late(ns.Get(), L"GetDefaultFolder", DISPATCH_METHOD, {I4(6)}).object();
  return Path(inbox.Get(), {L"Items"});
}

void PropertyReads() {
  World world;
  auto items = InboxItems(world.standin.Application().Get());
  DISPID count = DISPID_UNKNOWN;
  LPOLESTR name[] = {const_cast<LPOLESTR>(L"Count")};
  items->GetIDsOfNames(IID_NULL, name, 1, LOCALE_USER_DEFAULT, &count);
  DISPPARAMS none{nullptr, nullptr, 0, 0};
  world.faults.ResetCounts();
  const double cached = Milliseconds([&] {
    for (int i = 0; i < kReads; ++i) {
      VARIANT result;
      VariantInit(&result);
      items->Invoke(count, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result,
                    nullptr, nullptr);
    }
  });
  std::printf("Items.Count, DISPID cached:   %d reads in %8.1f ms (%.0f ns each), %llu sim calls\n",
              kReads, cached, cached * 1e6 / kReads,
              static_cast<unsigned long long>(world.faults.Calls(sim::Service::kOutlook)));
  const double looked_up = Milliseconds([&] {
    for (int i = 0; i < kReads; ++i) Late(items.Get(), L"Count");
  });
  std::printf("Items.Count, name each time:  %d reads in %8.1f ms (%.0f ns each)\n", kReads,
              looked_up, looked_up * 1e6 / kReads);
}

void StartUps() {
  AddinDll& dll = SuiteAddin();
  if (!dll.loaded() || FAILED(dll.Register())) {
    std::printf("Vireo.dll is not beside the suite: no start-up timings\n");
    return;
  }
  for (int run = 1; run <= kStarts; ++run) {
    DeleteSettings();
    EmptyFolder(dll.folder(), L"Vireo.dll");
    World world;
    world.faults.ResetCounts();
    auto application = world.standin.Application();
    Addin addin(CallStyle::kVtable);
    const double connect = Milliseconds([&] { addin.OnConnection(application.Get(), 1); });
    const uint64_t connect_calls = world.faults.Calls(sim::Service::kOutlook);
    const double complete = Milliseconds([&] { addin.OnStartupComplete(); });
    const uint64_t start_calls = world.faults.Calls(sim::Service::kOutlook);
    const Counters& c = world.standin.counters();
    std::printf("start-up %d (%d items in the Inbox): OnConnection %7.1f ms, %llu sim calls; "
                "OnStartupComplete %7.1f ms; in all %llu sim calls, %llu Invoke, %llu name look-ups\n",
                run, kInboxItems, connect, static_cast<unsigned long long>(connect_calls), complete,
                static_cast<unsigned long long>(start_calls), static_cast<unsigned long long>(c.invokes),
                static_cast<unsigned long long>(c.name_lookups));
    world.faults.ResetCounts();
    const double new_mail = Milliseconds(
        [&] { world.store.DeliverNewMail(sim::MakeMail(L"New", FromCivil({2025, 1, 1, 9, 0, 0}))); });
    std::printf("           NewMail over the same Inbox: %7.1f ms, %llu sim calls\n", new_mail,
                static_cast<unsigned long long>(world.faults.Calls(sim::Service::kOutlook)));
    addin.OnDisconnection(0);
    addin.Release();
  }
  std::printf("(Under Wine without a window manager, OnStartupComplete includes Wine's two-second\n"
              " wait for the progress window to be withdrawn; Outlook times OnConnection.)\n");
}

}  // namespace

int RunBenchmarks() {
  PropertyReads();
  StartUps();
  return 0;
}

}  // namespace corvina::standin
