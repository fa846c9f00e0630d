// The whole start-up, connection to start-up complete, as Outlook times it (Outlook disables
// an add-in whose start-up takes over a second). Scale: a 100,000-item Inbox, the
// automatic-copy table set, 1,000 stored virus-alert rules and 500 chat users.
#include <benchmark/benchmark.h>

#include "bench_world.h"

namespace corvina::bench {
namespace {

void BM_Startup(benchmark::State& state) {
  const int inbox = static_cast<int>(state.range(0));
  testing::SimWorld world;
  FillInbox(world, inbox);
  StoreUserLists(world, 1000, 500);
  uint64_t calls = 0;
  uint64_t starts = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto addin = std::make_unique<DesVireo>(world.MakeServices());
    const uint64_t before = world.faults.Calls(sim::Service::kOutlook);
    state.ResumeTiming();
    addin->AddinInstance_Initialize();
    addin->IDTExtensibility2_OnConnection(world.application, ext_cm_Startup);
    addin->IDTExtensibility2_OnStartupComplete();
    state.PauseTiming();
    calls += world.faults.Calls(sim::Service::kOutlook) - before;
    ++starts;
    addin->IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
    state.ResumeTiming();
  }
  state.counters["inbox_items"] = inbox;
  state.counters["om_calls_per_start"] = static_cast<double>(calls) / static_cast<double>(starts);
}
BENCHMARK(BM_Startup)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
