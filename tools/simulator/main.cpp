// corvina-sim: runs the add-in over the simulated Outlook against a profile folder and prints
// what a user would see, what was written and the log.
//
//   corvina-sim --profile DIR --script FILE [--work DIR]
//
// The profile holds mailbox/ (.eml files), optionally settings.ini, and drive/ (mapped to C:).
// The profile is copied to the work folder first (default ./corvina-sim-run), so the sample
// stays as it is and a person can open every file the run wrote.
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

#include "base/text.h"
#include "simulator/profile_run.h"
#include "simulator/script.h"

namespace fs = std::filesystem;
using corvina::simulator::ProfilePaths;
using corvina::simulator::ProfileRun;

namespace {

int Usage() {
  std::cerr << "usage: corvina-sim --profile DIR --script FILE [--work DIR]\n";
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  fs::path profile, script_file, work = "corvina-sim-run";
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string flag = argv[i];
    if (flag == "--profile") profile = argv[i + 1];
    else if (flag == "--script") script_file = argv[i + 1];
    else if (flag == "--work") work = argv[i + 1];
    else return Usage();
  }
  if (profile.empty() || script_file.empty() || argc % 2 == 0) return Usage();

  auto script = corvina::simulator::LoadScript(script_file.string());
  for (const auto& error : script.errors) std::cerr << error << '\n';
  if (!script.ok()) return 2;

  std::error_code ec;
  fs::remove_all(work, ec);
  fs::create_directories(work, ec);
  fs::copy(profile, work, fs::copy_options::recursive, ec);
  if (ec) {
    std::cerr << "cannot copy the profile " << profile << " to " << work << ": " << ec.message() << '\n';
    return 2;
  }
  fs::create_directories(work / "drive", ec);

  std::cout << "Corvina simulator: profile " << profile.string() << ", script "
            << script_file.string() << ", drive C: = " << (work / "drive").string() << "\n\n";
  ProfileRun run(ProfilePaths{work / "mailbox", work / "settings.ini", work / "drive"}, std::cout);
  if (!run.LoadMailbox()) return 1;
  std::cout << '\n';
  const int failures = run.Run(script);
  std::cout << '\n' << (failures == 0 ? "script completed" : std::to_string(failures) + " actions failed") << '\n';
  return failures == 0 ? 0 : 1;
}
