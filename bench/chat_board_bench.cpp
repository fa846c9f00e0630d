// One chat message appended to a board of 10 and of 10,000 messages. The board is written
// once and then only appended to, so ChatControl's own work (the file calls it makes and the
// bytes it hands over) must not follow the board's size.
//
// BM_AppendMessage runs on the MemoryFileSystem. BM_AppendMessageOnDisk runs the same on a
// mapped drive (a real file, appended to as Windows appends), where the time per message shows
// what an append costs without the in-memory file's own handling of the bytes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "chat/chat_board.h"
#include "platform/sim/faults.h"
#include "platform/sim/mapped_file_system.h"
#include "platform/sim/memory_file_system.h"
#include "platform/sim/sim_clock.h"
#include "settings/log.h"

namespace corvina::bench {
namespace {

constexpr wchar_t kFolder[] = L"C:\\Corvina";
// The board goes back to its starting size this often, so a run of many iterations still
// measures a board of the size asked for.
constexpr int kRestoreEvery = 8;

ChatBlock Message(int n) {
  ChatBlock b;
  b.text = L"Message " + std::to_wstring(n) + L": the report is at www.example.com/r?n=1&m=2 "
           L"\u2014 <see> you at 10, mail ann@example.org";
  b.email = L"ann@example.org";
  b.nick_name = L"Ann";
  b.icon = L"3";
  b.color = 0x800000;
  b.bold = true;
  b.header = n % 5 == 0;
  return b;
}

// The head and `messages` blocks, written by ChatControl.
std::string Written(FileSystem& files, Log& log, int messages) {
  ChatControl board(files, log, kFolder);
  board.InitChat(false, FromCivil({2026, 11, 22, 9, 30, 0}));
  for (int i = 0; i < messages; ++i) board.AddText(Message(i));
  return files.ReadFile(board.BoardPath());
}

void Run(benchmark::State& state, sim::Faults& faults, FileSystem& files,
         void (*restore)(FileSystem&, const std::wstring&, const std::string&)) {
  const int messages = static_cast<int>(state.range(0));
  sim::SimClock clock(faults, FromCivil({2026, 11, 22, 9, 30, 0}));
  Log log(files, clock);
  // Five blocks as ChatControl writes them, repeated up to the board's size (a multiple of
  // five): a 10,000-message board needs no 10,000 appends to set up.
  const std::string five = Written(files, log, 5);
  const size_t head = five.find("<TABLE>");
  std::string seed = five.substr(0, head);
  for (int i = 0; i < messages; i += 5) seed += five.substr(head);
  ChatControl board(files, log, kFolder);
  restore(files, board.BoardPath(), seed);
  uint64_t calls = 0;
  uint64_t appended = 0;
  int n = 0;
  for (auto _ : state) {
    const uint64_t before = faults.Calls(sim::Service::kFiles);
    board.AddText(Message(n));
    calls += faults.Calls(sim::Service::kFiles) - before;
    ++appended;
    if (++n % kRestoreEvery == 0) {
      state.PauseTiming();
      restore(files, board.BoardPath(), seed);
      state.ResumeTiming();
    }
  }
  state.counters["board_bytes"] = static_cast<double>(seed.size());
  state.counters["file_calls_per_message"] =
      static_cast<double>(calls) / static_cast<double>(appended);
}

void BM_AppendMessage(benchmark::State& state) {
  sim::Faults faults;
  sim::MemoryFileSystem files(faults);
  files.AddDrive(L'C', uint64_t{1} << 34);
  files.PutDirectory(kFolder);
  Run(state, faults, files,
      [](FileSystem& memory, const std::wstring& path, const std::string& bytes) {
        static_cast<sim::MemoryFileSystem&>(memory).Put(path, bytes);
      });
}
BENCHMARK(BM_AppendMessage)->Arg(10)->Arg(10000)->Unit(benchmark::kMicrosecond);

void BM_AppendMessageOnDisk(benchmark::State& state) {
  namespace fs = std::filesystem;
  const fs::path root = fs::temp_directory_path() / "corvina-chat-board-bench";
  fs::remove_all(root);
  fs::create_directories(root / "Corvina");
  sim::Faults faults;
  sim::MappedFileSystem files(faults);
  files.Map(L'C', root);
  Run(state, faults, files,
      [](FileSystem& disk, const std::wstring& path, const std::string& bytes) {
        disk.WriteFile(path, bytes);
      });
  fs::remove_all(root);
}
BENCHMARK(BM_AppendMessageOnDisk)->Arg(10)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
