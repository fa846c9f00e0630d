#pragma once
// The whole simulated world of a script: one or more users, each a ProfileRun (an Outlook with
// its add-in over a profile folder), on one clock, with a mail server between them. The
// script's actions go to the user chosen last (`as`); the clock, the mail server and `print`
// belong to the simulation. With several users every line of a user starts with "[name] ".
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/sim/mail_server.h"
#include "simulator/profile_run.h"
#include "simulator/script.h"

namespace corvina::simulator {

struct SimulatedUser {
  std::wstring name;
  std::filesystem::path folder;  // the user's working profile: mailbox/, settings.ini, drive/
};

class Simulation {
 public:
  Simulation(const std::vector<SimulatedUser>& users, std::ostream& out);
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;

  // Lists every user's Inbox; false when a mailbox folder cannot be read.
  bool LoadMailboxes();
  // Runs the script; returns the number of actions that could not be carried out.
  int Run(const Script& script);

 private:
  void Say(const std::wstring& line);
  std::optional<size_t> IndexOf(const std::wstring& name) const;
  ProfileRun* Find(const std::wstring& name);
  // The mail server's report of one mail: on the sender's side, then on each reader's.
  void Report(const sim::MailServer::Delivery& delivery);
  // Every sent mail is also a real mail file in the sender's sent/ folder, for any mail program.
  void WriteSentFile(size_t sender, const sim::SimItemData& mail);

  std::ostream& out_;
  std::vector<std::wstring> names_, addresses_;
  std::vector<std::filesystem::path> folders_;
  std::vector<int> sent_files_;  // per user, for the files' numbers
  std::vector<std::unique_ptr<ProfileRun>> runs_;
  size_t current_ = 0;
  sim::MailServer server_;
};

}  // namespace corvina::simulator
