// The chat user list as start-up loads it and shut-down saves it: six stored lists of
// 500 users (a long-time user's address book) read in and written back. Target: under 1 ms.
// The load alone from 500 to 5000 users shows it is linear in the stored text.
#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <utility>

#include "bench_world.h"
#include "chat/chat_users.h"

namespace corvina::bench {
namespace {

// The six lists in the order start-up loads them, each with its field number.
std::array<std::pair<int, std::wstring>, 6> StoredLists(int users) {
  std::array<std::pair<int, std::wstring>, 6> lists = {
      std::pair<int, std::wstring>{kChatFieldEmail, L""}, {kChatFieldNickName, L""},
      {kChatFieldIcon, L""}, {kChatFieldStatus, L""}, {kChatFieldColorChatUser, L""},
      {kChatFieldColorChatMessage, L""}};
  for (int i = 0; i < users; ++i) {
    const std::wstring n = std::to_wstring(i);
    lists[0].second += L"user" + n + L"@example.com;";
    lists[1].second += L"User " + n + L";";
    lists[2].second += std::to_wstring(i % 12 + 1) + L";";
    lists[3].second += std::to_wstring(i % 5 - 1) + L";";
    lists[4].second += std::to_wstring(i * 4099 % 0x1000000) + L";";
    lists[5].second += std::to_wstring(i * 257 % 0x1000000) + L";";
  }
  return lists;
}

void Load(ChatUsers& users, const std::array<std::pair<int, std::wstring>, 6>& lists) {
  for (const auto& [field, data] : lists)
    benchmark::DoNotOptimize(users.InitializeData(data, field));
}

void BM_LoadAndSave500ChatUsers(benchmark::State& state) {
  testing::SimWorld world;
  Log log(world.files, world.clock);
  const auto lists = StoredLists(500);
  for (auto _ : state) {
    ChatUsers users(log);
    Load(users, lists);
    benchmark::DoNotOptimize(users.SaveConfig(world.settings));
  }
  if (world.Setting(L"Chat", L"ChatUserColorChatMessage") != lists[5].second)
    state.SkipWithError("the saved lists differ from the loaded ones");
}
BENCHMARK(BM_LoadAndSave500ChatUsers)->Unit(benchmark::kMicrosecond);

// Load only, 500 to 5000 users: the fitted complexity should come out as N.
void BM_LoadChatUsers(benchmark::State& state) {
  testing::SimWorld world;
  Log log(world.files, world.clock);
  const auto lists = StoredLists(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    ChatUsers users(log);
    Load(users, lists);
    if (users.Count() != state.range(0)) state.SkipWithError("users lost while loading");
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_LoadChatUsers)
    ->Arg(500)->Arg(1000)->Arg(2000)->Arg(5000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
