// LoadConfig plus SaveConfig of every key, as start-up and shut-down do them.
#include <benchmark/benchmark.h>

#include "bench_world.h"
#include "settings/config_store.h"

namespace corvina::bench {
namespace {

void BM_LoadAndSaveConfig(benchmark::State& state) {
  testing::SimWorld world;
  StoreUserLists(world, 1000, 500);
  Log log(world.files, world.clock);
  ConfigStore store{world.settings, world.files, world.clock, log, testing::kAddinFolder, L"Nothing"};
  for (auto _ : state) {
    Config config(testing::kAddinFolder);
    benchmark::DoNotOptimize(LoadConfig(config, store));
    SaveConfig(config, store);
  }
  state.counters["stored_keys"] = static_cast<double>(world.settings.table().size());
}
BENCHMARK(BM_LoadAndSaveConfig)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
