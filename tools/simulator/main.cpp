// corvina-sim: runs the add-in over the simulated Outlook against a profile folder and prints
// what a user would see, what was written and the log.
//
//   corvina-sim --profile DIR --script FILE [--work DIR]
//   corvina-sim --mailbox DIR --script FILE [--work DIR]
//   corvina-sim --user anna=DIR --user ben=DIR ... --script FILE [--work DIR]
//
// A profile holds mailbox/ (.eml files), optionally settings.ini, and drive/ (mapped to C:). It
// is copied to the work folder first (default ./corvina-sim-run), so the sample stays as it is
// and a person can open every file the run wrote. --mailbox takes a folder of .eml files alone:
// the work folder becomes a profile with that mailbox, an empty drive and no settings file
// until the add-in writes one. Several users (--user, or `user name=DIR` lines of the script,
// DIR relative to the script) each get work/<name>/, a copy of their profile.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "simulator/profile_run.h"
#include "simulator/script.h"
#include "simulator/simulation.h"

namespace fs = std::filesystem;
using corvina::simulator::HostPath;
using corvina::simulator::Simulation;
using corvina::simulator::SimulatedUser;
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
  std::vector<std::string> user_options;
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
  app.add_option("--user", user_options,
                     "instead of --profile: a user NAME with a profile folder DIR; give it once per "
                     "user (the script chooses whose actions follow with `as NAME`)")
          ->type_name("NAME=DIR");
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
  if (script_option->count() == 0) return Refuse("--script is required");
  if (work.empty()) return Refuse("--work needs a folder");
  auto script = corvina::simulator::LoadScript(script_file);
  for (const auto& error : script.errors) std::cerr << error << '\n';
  if (!script.ok()) return kUsageError;

  // Users from the command line or from the script's `user` lines (folders relative to it).
  std::vector<std::pair<std::string, fs::path>> users;
  for (const std::string& option : user_options) {
    const size_t equals = option.find('=');
    if (equals == 0 || equals == std::string::npos || equals + 1 == option.size())
      return Refuse("--user expects NAME=DIR, not " + option);
    users.emplace_back(option.substr(0, equals), HostPath(option.substr(equals + 1)));
  }
  for (const auto& action : script.actions) {
    if (action.verb != corvina::simulator::Verb::kUser) continue;
    if (!user_options.empty()) return Refuse("give the users on the command line or in the script, not both");
    const std::string text = corvina::ToUtf8(action.text);
    const size_t equals = text.find('=');
    users.emplace_back(text.substr(0, equals),
                       HostPath(Utf8Of(fs::path(script_file).parent_path())) /
                           HostPath(text.substr(equals + 1)));
  }
  const size_t sources = profile_option->count() + mailbox_option->count() + (users.empty() ? 0 : 1);
  if (sources == 0) return Refuse("one of --profile, --mailbox or --user is required");
  if (sources > 1) return Refuse("give --profile, --mailbox or users, not two of them");
  for (size_t i = 0; i < users.size(); ++i) {
    for (size_t k = 0; k < i; ++k)
      if (corvina::EqualsIgnoreCase(corvina::FromUtf8(users[k].first), corvina::FromUtf8(users[i].first)))
        return Refuse("the user " + users[i].first + " is given twice");
    std::error_code ec;
    if (!fs::is_directory(users[i].second, ec))
      return Refuse("the profile folder of " + users[i].first + " does not exist: " + Utf8Of(users[i].second));
  }

  const fs::path work_folder = HostPath(work);
  // What is copied where: one profile (or mailbox) is the work folder itself; each of several
  // users gets a folder of their own in it.
  std::vector<std::pair<fs::path, fs::path>> copies;
  std::vector<SimulatedUser> simulated;
  if (users.empty()) {
    const fs::path source = HostPath(profile.empty() ? mailbox : profile);
    copies.emplace_back(source, profile.empty() ? work_folder / "mailbox" : work_folder);
    simulated.push_back({L"user", work_folder});
  } else {
    for (const auto& [name, profile_folder] : users) {
      copies.emplace_back(profile_folder, work_folder / HostPath(name));
      simulated.push_back({corvina::FromUtf8(name), work_folder / HostPath(name)});
    }
  }
  for (const auto& [source, target] : copies)
    if (Overlaps(source, work_folder))
      return Refuse("the work folder " + work + " overlaps " + Utf8Of(source));

  std::error_code ec;
  fs::remove_all(work_folder, ec);
  fs::create_directories(work_folder, ec);
  for (const auto& [source, target] : copies) {
    fs::create_directories(target, ec);
    fs::copy(source, target, fs::copy_options::recursive, ec);
    if (ec) {
      std::cerr << "corvina-sim: cannot copy " << Utf8Of(source) << " to " << Utf8Of(target) << ": "
                << ec.message() << '\n';
      return 1;  // the sources could not be read, as a mailbox that cannot be listed
    }
  }

  std::cout << "Corvina simulator: ";
  if (users.empty()) {
    std::cout << (profile.empty() ? "mailbox " : "profile ") << Utf8Of(copies[0].first) << ", script "
              << script_file << ", drive C: = " << Utf8Of(work_folder / "drive") << "\n\n";
  } else {
    std::cout << users.size() << " users, script " << script_file << "\n";
    for (const auto& [name, profile_folder] : users)
      std::cout << "  " << name << ": profile " << Utf8Of(profile_folder) << ", drive C: = "
                << Utf8Of(work_folder / HostPath(name) / "drive") << '\n';
    std::cout << '\n';
  }
  Simulation simulation(simulated, std::cout);
  if (!simulation.LoadMailboxes()) return 1;
  std::cout << '\n';
  const int failures = simulation.Run(script);
  std::cout << '\n' << (failures == 0 ? "script completed" : std::to_string(failures) + " actions failed") << '\n';
  return failures == 0 ? 0 : 1;
}
