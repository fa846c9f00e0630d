// corvina-sim: runs the add-in over the simulated Outlook against a profile folder and prints
// what a user would see, what was written and the log.
//
//   corvina-sim --profile DIR --script FILE [--work DIR]
//   corvina-sim --mailbox DIR --script FILE [--work DIR]
//
// A profile holds mailbox/ (.eml files), optionally settings.ini, and drive/ (mapped to C:). It
// is copied to the work folder first (default ./corvina-sim-run), so the sample stays as it is
// and a person can open every file the run wrote. --mailbox takes a folder of .eml files alone:
// the work folder becomes a profile with that mailbox, an empty drive and no settings file
// until the add-in writes one.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>

#include "simulator/profile_run.h"
#include "simulator/script.h"

namespace fs = std::filesystem;
using corvina::simulator::HostPath;
using corvina::simulator::ProfilePaths;
using corvina::simulator::ProfileRun;
using corvina::simulator::Utf8Of;

namespace {

// Exit codes: 0 the script ran to its end, 1 an action or the mailbox failed, 2 the command
// line, the script or the work folder was wrong.
constexpr int kUsageError = 2;

int Refuse(const std::string& reason) {
  std::string line = reason;
  std::replace(line.begin(), line.end(), '\n', ' ');  // CLI11 splits some messages in two
  std::cerr << "corvina-sim: " << line << " (see corvina-sim --help)\n";
  return kUsageError;
}

// True when one folder is the other or lies inside it: emptying the work folder would then
// delete the source, or copying the source would copy into itself.
bool Overlaps(const fs::path& a, const fs::path& b) {
  auto normal = [](const fs::path& p) {
    std::error_code ec;
    fs::path canonical = fs::weakly_canonical(p, ec);
    return ec ? fs::absolute(p, ec).lexically_normal() : canonical;
  };
  const fs::path x = normal(a), y = normal(b);
  auto inside = [](const fs::path& inner, const fs::path& outer) {
    auto [o, i] = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
    return o == outer.end() || (std::next(o) == outer.end() && o->empty());  // "dir/" ends in ""
  };
  return inside(x, y) || inside(y, x);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Runs the Corvina add-in in a simulated Outlook, driven by a script, and prints "
               "a transcript of what a user would see and what was written.",
               "corvina-sim"};
  std::string profile, mailbox, script_file, work = "corvina-sim-run";
  // Which of --profile and --mailbox, and --script, are required is checked after parsing:
  // CLI11 checks requirements before it looks for unknown arguments, and a misspelt option
  // is the better thing to report.
  const CLI::Validator folder = CLI::Validator(CLI::ExistingDirectory).description("");
  auto* profile_option =
      app.add_option("--profile", profile,
                     "profile folder: mailbox/ (.eml files), settings.ini, drive/ (drive C:)")
          ->type_name("DIR")
          ->check(folder);
  auto* mailbox_option =
      app.add_option("--mailbox", mailbox,
                     "instead of --profile: a folder of .eml files, run with an empty drive C: "
                     "and no settings")
          ->type_name("DIR")
          ->check(folder);
  auto* script_option = app.add_option("--script", script_file, "the script of actions (required)")
                            ->type_name("FILE")
                            ->check(CLI::Validator(CLI::ExistingFile).description(""));
  app.add_option("--work", work, "the folder the run works in, emptied first")
      ->type_name("DIR")
      ->capture_default_str();
  app.set_version_flag("--version", "corvina-sim " CORVINA_SIM_VERSION);
  app.footer("Exit status: 0 the script ran to its end, 1 an action or the mailbox folder failed, "
             "2 a wrong command line or script.\n");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {  // --help, --version
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    return Refuse(e.what());
  }
  if (profile_option->count() + mailbox_option->count() == 0)
    return Refuse("one of --profile or --mailbox is required");
  if (profile_option->count() + mailbox_option->count() > 1)
    return Refuse("give --profile or --mailbox, not both");
  if (script_option->count() == 0) return Refuse("--script is required");
  if (work.empty()) return Refuse("--work needs a folder");
  const fs::path source = HostPath(profile.empty() ? mailbox : profile);
  const fs::path work_folder = HostPath(work);
  if (Overlaps(source, work_folder))
    return Refuse("the work folder " + work + " overlaps " + Utf8Of(source));

  auto script = corvina::simulator::LoadScript(script_file);
  for (const auto& error : script.errors) std::cerr << error << '\n';
  if (!script.ok()) return kUsageError;

  std::error_code ec;
  fs::remove_all(work_folder, ec);
  fs::create_directories(work_folder, ec);
  const fs::path copy_to = profile.empty() ? work_folder / "mailbox" : work_folder;
  fs::copy(source, copy_to, fs::copy_options::recursive, ec);
  if (ec) {
    std::cerr << "corvina-sim: cannot copy " << Utf8Of(source) << " to " << Utf8Of(copy_to) << ": "
              << ec.message() << '\n';
    return 1;  // the sources could not be read, as a mailbox that cannot be listed
  }

  std::cout << "Corvina simulator: " << (profile.empty() ? "mailbox " : "profile ") << Utf8Of(source)
            << ", script " << script_file << ", drive C: = " << Utf8Of(work_folder / "drive")
            << "\n\n";
  ProfileRun run(ProfilePaths{work_folder / "mailbox", work_folder / "settings.ini", work_folder / "drive"},
                 std::cout);
  if (!run.LoadMailbox()) return 1;
  std::cout << '\n';
  const int failures = run.Run(script);
  std::cout << '\n' << (failures == 0 ? "script completed" : std::to_string(failures) + " actions failed") << '\n';
  return failures == 0 ? 0 : 1;
}
