// One new-mail event at growing Inbox sizes. The object-model calls must stay flat: Outlook
// 2013 and later disable an add-in that makes 10,000 calls within a second, which reading two
// properties of every item of a 5,000-item Inbox already does.
#include <benchmark/benchmark.h>

#include "bench_world.h"

namespace corvina::bench {
namespace {

void BM_NewMail(benchmark::State& state) {
  const int inbox = static_cast<int>(state.range(0));
  testing::SimWorld world;
  FillInbox(world, inbox);
  auto addin = world.StartOutlook();
  uint64_t calls = 0;
  uint64_t events = 0;
  for (auto _ : state) {
    const uint64_t before = world.faults.Calls(sim::Service::kOutlook);
    world.store.new_mail().Raise();
    calls += world.faults.Calls(sim::Service::kOutlook) - before;
    ++events;
  }
  state.counters["inbox_items"] = inbox;
  state.counters["om_calls_per_event"] = static_cast<double>(calls) / static_cast<double>(events);
}
BENCHMARK(BM_NewMail)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
