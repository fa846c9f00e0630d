#include "simulator/simulation.h"

#include <fstream>

#include "base/text.h"
#include "simulator/eml_writer.h"

namespace corvina::simulator {
namespace {

std::wstring JoinNames(const std::vector<std::wstring>& names) {
  std::wstring out;
  for (const std::wstring& n : names) out += (out.empty() ? L"" : L", ") + n;
  return out;
}

}  // namespace

Simulation::Simulation(const std::vector<SimulatedUser>& users, std::ostream& out)
    : out_(out), server_([this] { return runs_.front()->Now(); }) {
  const bool several = users.size() > 1;
  for (const SimulatedUser& user : users) {
    names_.push_back(user.name);
    runs_.push_back(std::make_unique<ProfileRun>(
        ProfilePaths{user.folder / "mailbox", user.folder / "settings.ini", user.folder / "drive"},
        out, several ? L"[" + user.name + L"] " : L""));
    ProfileRun& run = *runs_.back();
    // A user without a chat address of their own is written to at a made-up one.
    addresses_.push_back(run.Address(user.name + L"@example.com"));
    folders_.push_back(user.folder);
    sent_files_.push_back(0);
    server_.Join(user.name, addresses_.back(), run.store());
  }
  server_.on_delivery = [this](const sim::MailServer::Delivery& d) { Report(d); };
}

void Simulation::Say(const std::wstring& line) { out_ << ToUtf8(line) << '\n'; }

std::optional<size_t> Simulation::IndexOf(const std::wstring& name) const {
  for (size_t i = 0; i < names_.size(); ++i)
    if (EqualsIgnoreCase(names_[i], name)) return i;
  return std::nullopt;
}

ProfileRun* Simulation::Find(const std::wstring& name) {
  const std::optional<size_t> i = IndexOf(name);
  return i ? runs_[*i].get() : nullptr;
}

void Simulation::Report(const sim::MailServer::Delivery& d) {
  ProfileRun* sender = Find(d.from);
  if (const std::optional<size_t> from = IndexOf(d.from); from && !d.released)
    WriteSentFile(*from, *d.mail);
  const std::wstring subject = L"\"" + d.mail->subject + L"\"";
  if (sender && d.held) {
    sender->Say(L"  [mail server] holds " + subject +
                (d.to_users.empty() ? L"" : L" for " + JoinNames(d.to_users)));
  } else if (sender) {
    sender->Say(L"  [mail server] " + subject +
                (d.to_users.empty() ? L" reaches no simulated user" : L" to " + JoinNames(d.to_users)));
  }
  if (sender && !d.outside.empty()) sender->Say(L"  [mail server] sent outside: " + JoinNames(d.outside));
  if (d.held) return;
  for (const std::wstring& user : d.to_users)
    if (ProfileRun* reader = Find(user)) reader->Say(L"  new mail " + subject + L" from " + d.from);
}

void Simulation::WriteSentFile(size_t sender, const sim::SimItemData& mail) {
  // Recipients as typed, one per entry of each field.
  auto entries = [](const std::wstring& field) {
    std::vector<std::wstring> out;
    size_t from = 0;
    for (size_t i = 0; i <= field.size(); ++i) {
      if (i < field.size() && field[i] != L';') continue;
      std::wstring entry = Trim(std::wstring_view(field).substr(from, i - from));
      if (!entry.empty()) out.push_back(std::move(entry));
      from = i + 1;
    }
    return out;
  };
  OutgoingMail out{names_[sender], addresses_[sender], entries(mail.to), entries(mail.cc),
                   entries(mail.bcc), mail.subject, mail.body, mail.sent_on, {}, mail.entry_id};
  for (const std::wstring& r : mail.recipients) out.to.push_back(r);
  for (const sim::SimAttachmentData& a : mail.attachments) out.attachments.emplace_back(a.file_name, a.bytes);
  const std::filesystem::path folder = folders_[sender] / "sent";
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  const std::filesystem::path file = folder / HostPath(SentFileName(sent_files_[sender]++, mail.subject));
  std::ofstream(file, std::ios::binary) << WriteEml(out);
  runs_[sender]->Say(L"  [sent file] " + TextOf(std::filesystem::relative(file, folders_[sender])));
}

bool Simulation::LoadMailboxes() {
  for (auto& run : runs_)
    if (!run->LoadMailbox()) return false;
  return true;
}

int Simulation::Run(const Script& script) {
  int failures = 0;
  for (const Action& action : script.actions) {
    switch (action.verb) {
      case Verb::kUser:  // declared before the run began
        continue;
      case Verb::kPrint:
        Say(L"");
        Say(action.text);
        continue;
      case Verb::kAs:
        Say(L"> " + FormatAction(action));
        if (const std::optional<size_t> user = IndexOf(action.text)) {
          current_ = *user;
        } else {
          ++failures;
          Say(L"  ! line " + std::to_wstring(action.line) + L": there is no user \"" + action.text +
              L"\"");
        }
        continue;
      case Verb::kAdvance:
        Say(L"> " + FormatAction(action));
        for (auto& run : runs_) run->AdvanceClock(60.0 * action.numbers.at(0));  // the parser saw it
        Say(L"  now " + FormatGeneralDate(runs_.front()->Now()));
        break;
      case Verb::kHoldMail:
        Say(L"> " + FormatAction(action));
        server_.set_holding(true);
        Say(L"  the mail server holds what is sent until deliver-held");
        break;
      case Verb::kDeliverHeld: {
        Say(L"> " + FormatAction(action));
        server_.set_holding(false);
        Say(L"  the mail server delivers " + std::to_wstring(server_.DeliverHeld()) + L" held mail(s)");
        break;
      }
      default:
        if (!runs_[current_]->Perform(action)) ++failures;
    }
    // What an action of one user wrote on another's drive (a mail that arrived) shows too.
    for (auto& run : runs_) run->PrintFileChanges();
  }
  for (auto& run : runs_) run->Finish();
  return failures;
}

}  // namespace corvina::simulator
