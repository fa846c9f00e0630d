// The start-up sweep of chat mails that came while Outlook was closed. Scale: a 100,000-item
// Inbox with 0, 50 or 500 new chat mails on top. The object-model calls must follow the new
// chat mails, not the Inbox: the walk stops at the first mail older than the last monitor time.
#include <benchmark/benchmark.h>

#include "base/text.h"
#include "bench_world.h"
#include "chat/chat_mail.h"
#include "chat/chat_receiver.h"

namespace corvina::bench {
namespace {

void BM_ChatStartUpSweep(benchmark::State& state) {
  const int chats = static_cast<int>(state.range(0));
  testing::SimWorld world;
  FillInbox(world, 100000);
  auto addin = world.StartOutlook();
  sim::SimItemData chat = sim::MakeMail(L"Chat message from: ben@example.com", world.clock.Now());
  chat.body = ComposeChatBody(L"See you at noon", L"http://home.example", L"ben@example.com", L"1.0");
  uint64_t calls = 0, sweeps = 0;
  for (auto _ : state) {
    state.PauseTiming();
    for (int i = 0; i < chats; ++i) world.store.AddToInbox(chat);
    addin->addin().config.LastMailMonitorTime = FormatStamp(world.clock.Now());
    const uint64_t before = world.faults.Calls(sim::Service::kOutlook);
    state.ResumeTiming();
    LoopForNewChatsAtEntry(addin->addin());
    state.PauseTiming();
    calls += world.faults.Calls(sim::Service::kOutlook) - before;
    ++sweeps;
    state.ResumeTiming();
  }
  state.counters["inbox_items"] = 100000;
  state.counters["new_chat_mails"] = chats;
  state.counters["om_calls_per_sweep"] = static_cast<double>(calls) / static_cast<double>(sweeps);
}
BENCHMARK(BM_ChatStartUpSweep)->Arg(0)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
