// The Wine suite's program: one COM apartment (Outlook's main thread is an STA) for the whole
// run. `wine_suite --bench` prints the stand-in's timings instead of running the tests.
#include <gtest/gtest.h>

#include <cstring>

#include "platform/win32/windows_api.h"

namespace corvina::standin {
int RunBenchmarks();  // suite_bench.cpp
}

int main(int argc, char** argv) {
  // Nobody is at the screen to press a button: the add-in's boxes answer themselves.
  if (GetEnvironmentVariableW(L"CORVINA_AUTOANSWER", nullptr, 0) == 0)
    SetEnvironmentVariableW(L"CORVINA_AUTOANSWER", L"ok");
  // Outlook starts OLE on its main thread, which in-place controls (the chat board) need.
  if (FAILED(OleInitialize(nullptr))) return 2;
  bool bench = false;
  for (int i = 1; i < argc; ++i) bench |= std::strcmp(argv[i], "--bench") == 0;
  int result = 0;
  if (bench) {
    result = corvina::standin::RunBenchmarks();
  } else {
    ::testing::InitGoogleTest(&argc, argv);
    result = RUN_ALL_TESTS();
  }
  OleUninitialize();
  return result;
}
