// Saving attachments to disk, and the start-up copy sweep.
//
// BM_SaveSelection: 1,000 attachments of 100 KB (100 selected mails with 10 each) from the
// simulated store to a real folder, through the whole job (questions, progress form, the
// save-then-rename of each file). BM_PlainCopy writes the same bytes to the same disk with
// plain stream writes: the job should stay within 1.5x of it.
//
// BM_StartupSweep: the start-up copy sweep over a 100,000-item Inbox of which the newest N are
// newer than LastMailMonitorTime; the object-model calls must follow N, not the Inbox.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench_world.h"
#include "platform/sim/mapped_file_system.h"
#include "saving/auto_copy.h"
#include "saving/save_job.h"

namespace corvina::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kMails = 100;
constexpr int kPerMail = 10;
constexpr size_t kAttachmentBytes = 100 * 1024;

fs::path ScratchFolder(const char* name) {
  fs::path dir = fs::temp_directory_path() / name;
  fs::remove_all(dir);
  fs::create_directories(dir / "Out");
  return dir;
}

void BM_SaveSelection(benchmark::State& state) {
  const fs::path root = ScratchFolder("corvina-save-bench");
  testing::SimWorld world;  // its own store and UI; files go through a mapped drive instead
  sim::MappedFileSystem disk(world.faults);
  disk.Map(L'C', root);
  sim::SimStore store(world.faults, disk);
  auto application = std::make_shared<sim::SimApplication>(store);
  Services services{disk, world.settings, world.ui, world.clock, world.beeper, world.clipboard,
                    L"C:\\", [application] { return application; }};
  AddIn addin(services);
  addin.oApplication = application;
  const std::string bytes(kAttachmentBytes, 'x');
  std::vector<sim::SimItemPtr> selection;
  for (int m = 0; m < kMails; ++m) {
    auto mail = sim::MakeMail(L"m", world.clock.Now());
    for (int a = 0; a < kPerMail; ++a)
      mail.attachments.push_back({L"file" + std::to_wstring(m * kPerMail + a) + L".bin", a + 1, bytes});
    mail.size = static_cast<int32_t>(kPerMail * kAttachmentBytes);
    selection.push_back(store.AddToInbox(std::move(mail)));
  }
  store.ActiveExplorer()->selection = selection;
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove_all(root / "Out");
    fs::create_directories(root / "Out");
    addin.saving.SaveDestination = L"C:\\Out";
    state.ResumeTiming();
    GetSelectedItems(addin);
  }
  const auto written = std::distance(fs::directory_iterator(root / "Out"), fs::directory_iterator());
  state.counters["files_written"] = static_cast<double>(written);
  state.SetBytesProcessed(state.iterations() * kMails * kPerMail * static_cast<int64_t>(kAttachmentBytes));
  fs::remove_all(root);
}
BENCHMARK(BM_SaveSelection)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_PlainCopy(benchmark::State& state) {
  const fs::path root = ScratchFolder("corvina-copy-bench");
  const std::string bytes(kAttachmentBytes, 'x');
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove_all(root / "Out");
    fs::create_directories(root / "Out");
    state.ResumeTiming();
    for (int i = 0; i < kMails * kPerMail; ++i) {
      std::ofstream out(root / "Out" / ("file" + std::to_string(i) + ".bin"), std::ios::binary);
      out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
  }
  state.SetBytesProcessed(state.iterations() * kMails * kPerMail * static_cast<int64_t>(kAttachmentBytes));
  fs::remove_all(root);
}
BENCHMARK(BM_PlainCopy)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StartupSweep(benchmark::State& state) {
  const int fresh = static_cast<int>(state.range(0));
  testing::SimWorld world;
  FillInbox(world, 100000 - fresh);
  world.Store(L"Configuration", L"ExtName ", L"pdf");
  world.Store(L"Configuration", L"ExtDest ", L"C:\\Pdf");
  world.Store(L"Configuration", L"ExtChecked ", L"1");
  world.files.PutDirectory(L"C:\\Pdf");
  for (int i = 0; i < fresh; ++i) {
    auto mail = sim::MakeMail(L"new", world.clock.Now());  // the current minute counts as new
    mail.attachments.push_back({L"n" + std::to_wstring(i) + L".pdf", 1, "%PDF"});
    world.store.AddToInbox(std::move(mail));
  }
  auto addin = world.StartOutlook();
  uint64_t calls = 0;
  for (auto _ : state) {
    const uint64_t before = world.faults.Calls(sim::Service::kOutlook);
    LoopForAotuCopyFileTypesAtEntry(addin->addin());
    calls = world.faults.Calls(sim::Service::kOutlook) - before;
  }
  state.counters["inbox_items"] = 100000;
  state.counters["new_mails"] = fresh;
  state.counters["om_calls_per_sweep"] = static_cast<double>(calls);
}
BENCHMARK(BM_StartupSweep)->Arg(50)->Arg(500)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
