#include "simulator/profile_run.h"
#include "simulator/virus_script.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "platform/path.h"
#include "platform/sim/ui_event.h"
#include "simulator/eml_reader.h"

namespace corvina::simulator {
namespace fs = std::filesystem;

namespace {

// A fixed morning, so two runs of the same script print the same transcript.
Date StartOfRun() { return FromCivil({2026, 11, 22, 9, 0, 0}); }

// Folders are listed in the snapshot with this size.
constexpr uintmax_t kFolder = static_cast<uintmax_t>(-1);

sim::SimItemData ToItem(const MailFile& mail) {
  sim::SimItemData item = mail.is_delivery_report ? sim::MakeReport(mail.sent)
                                                  : sim::MakeMail(mail.subject, mail.sent);
  item.subject = mail.subject;
  item.body = mail.body;
  item.sender_name = mail.sender_name;
  item.to = mail.to;
  item.received_time = mail.sent;
  item.creation_time = mail.sent;
  item.sent_on = mail.sent;
  item.size = mail.size;
  int32_t position = 1;
  for (const MailAttachment& a : mail.attachments)
    item.attachments.push_back({a.file_name, a.inline_image ? 0 : position++, a.bytes});
  return item;
}

std::wstring WindowsPathOf(const fs::path& drive, const fs::path& host) {
  std::wstring rel = TextOf(fs::relative(host, drive));
  std::replace(rel.begin(), rel.end(), L'/', L'\\');
  return L"C:\\" + rel;
}

std::wstring MailLine(const MailFile& mail) {
  return (mail.is_delivery_report ? L"[report] \"" : L"\"") + mail.subject + L"\" from " +
         mail.sender_name;
}

// What tells a rewritten file from an untouched one: it is new, or its time or size changed.
std::optional<std::pair<fs::file_time_type, uintmax_t>> FileStamp(const fs::path& file) {
  std::error_code ec;
  const auto time = fs::last_write_time(file, ec);
  if (ec) return std::nullopt;
  const uintmax_t size = fs::file_size(file, ec);
  if (ec) return std::nullopt;
  return std::make_pair(time, size);
}

}  // namespace

fs::path HostPath(std::string_view utf8) { return fs::path(std::u8string(utf8.begin(), utf8.end())); }

std::string Utf8Of(const fs::path& path) {
  const std::u8string u = path.u8string();
  return std::string(u.begin(), u.end());
}

std::wstring TextOf(const fs::path& path) { return FromUtf8(Utf8Of(path)); }

ProfileRun::ProfileRun(ProfilePaths paths, std::ostream& out, std::wstring prefix)
    : paths_(std::move(paths)),
      out_(out),
      prefix_(std::move(prefix)),
      files_(faults_),
      settings_(faults_, paths_.settings),
      recorded_ui_(faults_),
      ui_(recorded_ui_),
      clock_(faults_, StartOfRun()),
      beeper_(faults_),
      clipboard_(faults_),
      store_(faults_, files_),
      application_(std::make_shared<sim::SimApplication>(store_)) {
  files_.Map(L'C', paths_.drive);
  fs::create_directories(paths_.drive / "Program Files" / "Corvina");
  store_.now = StartOfRun();
  recorded_ui_.set_echo([this](const std::wstring& line) { Echo(line); });
  // Every call of the add-in into the user interface comes after the work before it, so the
  // first one after a save is where the transcript can show the count it reached.
  ui_.set_before_each_call([this] { PrintSavedCount(); });
  files_before_ = TakeSnapshot();
}

ProfileRun::~ProfileRun() = default;

void ProfileRun::Say(const std::wstring& text) {
  // Every line of a text carries the prefix, so a reader can follow one user with grep.
  size_t from = 0;
  for (size_t end; (end = text.find(L'\n', from)) != std::wstring::npos; from = end + 1)
    out_ << ToUtf8(prefix_ + text.substr(from, end - from)) << '\n';
  out_ << ToUtf8(prefix_ + text.substr(from)) << '\n';
}

void ProfileRun::Echo(const std::wstring& line) {
  const sim::UiEvent& event = recorded_ui_.events().back();  // the event this line describes
  if (event.kind == sim::UiEventKind::kSavingForm) {
    saving_form_ = event;
    saved_at_form_ = saved_printed_ = store_.attachments_saved;
    // The add-in refreshes the form before each attachment, with the count printed after the
    // one before: the form did not change.
    if (line == last_saving_line_) return;
    last_saving_line_ = line;
  } else if (event.kind == sim::UiEventKind::kUnloadForm && EqualsIgnoreCase(event.text, L"frmSaving")) {
    saving_form_.reset();
    last_saving_line_.clear();
  }
  Say(L"  " + line);
}

void ProfileRun::PrintSavedCount() {
  if (!saving_form_ || store_.attachments_saved == saved_printed_) return;
  saved_printed_ = store_.attachments_saved;
  sim::UiEvent now = *saving_form_;
  now.saving.progress_value += static_cast<int32_t>(store_.attachments_saved - saved_at_form_);
  last_saving_line_ = sim::Describe(now);
  Say(L"  " + last_saving_line_);
}

bool ProfileRun::LoadMailbox() {
  std::vector<fs::path> emls;
  std::error_code ec;
  // increment(ec), not ++: a folder that fails half-way must not throw.
  for (fs::directory_iterator it(paths_.mailbox, ec), end; !ec && it != end; it.increment(ec)) {
    std::error_code type_ec;
    if (it->is_regular_file(type_ec) && it->path().extension() == ".eml") emls.push_back(it->path());
  }
  if (ec) {
    Say(L"cannot read the mailbox folder " + TextOf(paths_.mailbox) + L": " + FromUtf8(ec.message()));
    return false;
  }
  std::sort(emls.begin(), emls.end());
  Say(L"Inbox (" + TextOf(paths_.mailbox) + L"):");
  int position = 0;
  for (const fs::path& file : emls) {
    std::string error;
    auto mail = ReadEml(Utf8Of(file), &error);
    if (!mail) {
      Say(L"  skipped " + TextOf(file.filename()) + L": " + FromUtf8(error));
      continue;
    }
    store_.AddToInbox(ToItem(*mail));
    std::wstring line = L"  " + std::to_wstring(++position) + L". " + MailLine(*mail) + L", " +
                        FormatGeneralDate(mail->sent) +
                        (mail->dated_by_file ? L" (no readable Date:, the file's time)" : L"");
    for (const MailAttachment& a : mail->attachments)
      line += L"\n       " + a.file_name + L" (" + std::to_wstring(a.bytes.size()) + L" bytes" +
              (a.inline_image ? L", embedded" : L"") +
              (a.attached_message ? L", an attached mail" : L"") + L")";
    Say(line);
  }
  return true;
}

bool ProfileRun::Perform(const Action& action) {
  Say(L"> " + FormatAction(action));
  const size_t deleted_before = store_.Folder(outlook::olFolderDeletedItems).items.size();
  const bool done = Do(action);
  PrintSavedCount();
  if (!done) Say(L"  ! line " + std::to_wstring(action.line) + L" could not be carried out");
  // Whatever a feature deleted is kept in Deleted Items, as Outlook does: the transcript says so.
  const auto& deleted = store_.Folder(outlook::olFolderDeletedItems).items;
  for (size_t i = deleted_before; i < deleted.size(); ++i)
    Say(L"  [deleted] \"" + deleted[i]->subject + L"\" is in Deleted Items");
  return done;
}

void ProfileRun::Finish() {
  if (addin_) {
    Say(L"# the script ends while Outlook runs");
    Say(L"> stop");
    Stop(ext_dm_HostShutdown);
    PrintFileChanges();
  }
  if (ui_.pending() > 0)
    Say(L"  (" + std::to_wstring(ui_.pending()) + L" queued answers were never asked for)");
  PrintLog();
}

void ProfileRun::AdvanceClock(double seconds) {
  clock_.Advance(seconds);
  store_.now = clock_.Now();
}

std::wstring ProfileRun::Address(const std::wstring& fallback) {
  std::optional<std::wstring> chat = settings_.Read(kAppName, L"Chat", L"ChatEmail");
  return chat && !Trim(*chat).empty() ? Trim(*chat) : fallback;
}

bool ProfileRun::SendMail(const std::wstring& to, const std::wstring& subject) {
  try {
    auto mail = application_->CreateItem(outlook::olMailItem);
    mail->SetTo(to);
    mail->SetSubject(subject);
    mail->SetBody(L"Written by the simulator at " + FormatGeneralDate(store_.now) + L".");
    for (const std::wstring& file : std::exchange(attachments_to_send_, {}))
      mail->Attachments()->Add(file);
    mail->Send();
    return true;
  } catch (const Error& e) {
    Say(L"  the mail could not be sent: " + e.description());
    return false;
  }
}

bool ProfileRun::DeleteMail(int32_t position) {
  const auto& inbox = store_.Inbox().items;
  if (position < 1 || static_cast<size_t>(position) > inbox.size()) {
    Say(L"  there is no Inbox item " + std::to_wstring(position));
    return false;
  }
  try {
    application_->GetNamespace(L"MAPI")
        ->GetDefaultFolder(outlook::olFolderInbox)
        ->Items()
        ->Item(position)
        ->Delete();
    return true;
  } catch (const Error& e) {
    Say(L"  the mail could not be deleted: " + e.description());
    return false;
  }
}

void ProfileRun::ShowFolder(bool inbox) {
  const auto& items = store_.Folder(inbox ? outlook::olFolderInbox : outlook::olFolderDeletedItems).items;
  Say(std::wstring(inbox ? L"  Inbox (" : L"  Deleted Items (") + std::to_wstring(items.size()) + L"):");
  for (size_t i = 0; i < items.size(); ++i)
    Say(L"    " + std::to_wstring(i + 1) + L". \"" + items[i]->subject + L"\" from " +
        items[i]->sender_name + (items[i]->unread ? L", unread" : L", read"));
}

bool ProfileRun::Do(const Action& action) {
  switch (action.verb) {
    case Verb::kStart: return Start(action.numbers.empty() ? 1 : action.numbers[0]);
    case Verb::kStop: return Stop(ext_dm_HostShutdown);
    case Verb::kRemove: return Stop(ext_dm_UserClosed);
    case Verb::kDeliver: return Deliver(action.text);
    case Verb::kSelect: return Select(action.numbers);
    case Verb::kOpen: return !action.numbers.empty() && Open(action.numbers[0]);
    case Verb::kClick: return Click(L"Vireo", action.text, nullptr);
    case Verb::kClickInspector: return Click(L"VireoInspector", action.text, nullptr);
    case Verb::kCombo: return Click(L"Vireo", action.text, &action.choice);
    case Verb::kAnswer: ui_.Push(action.answer); return true;
    case Verb::kSend: return SendMail(action.text, action.choice);
    case Verb::kShow: ShowFolder(EqualsIgnoreCase(action.text, L"inbox")); return true;
    case Verb::kAttach: attachments_to_send_.push_back(action.text); return true;
    case Verb::kDelete: return !action.numbers.empty() && DeleteMail(action.numbers[0]);
    case Verb::kChat:
      if (!addin_) {
        Say(L"  Outlook is not running");
        return false;
      }
      return chat_.Perform(addin_->addin(), recorded_ui_, action.text,
                           [this](const std::wstring& line) { Say(line); });
    case Verb::kVirus:
      if (!addin_) {
        Say(L"  Outlook is not running");
        return false;
      }
      return PerformVirus(addin_->addin(), recorded_ui_, store_, action.text,
                          [this](const std::wstring& line) { Say(line); });
    case Verb::kChooseFolder:
      if (action.numbers.empty()) return false;
      recorded_ui_.QueueFolderMenuChoice(action.numbers[0]);
      return true;
    case Verb::kBrowseFolder:
      recorded_ui_.QueueFolderMenuChoice(kFolderMenuBrowse);
      recorded_ui_.QueueBrowseResult(action.text);
      return true;
    case Verb::kCancelAfter: {
      if (action.numbers.empty()) return false;
      const uint64_t base = store_.attachments_saved;
      const uint64_t n = static_cast<uint64_t>(action.numbers[0]);
      // Armed until it fires once (a hook must not replace itself while it runs).
      recorded_ui_.set_do_events_hook([this, base, n, fired = false]() mutable {
        if (fired || store_.attachments_saved - base < n) return;
        fired = true;
        Say(L"  [cancel] pressed after " + std::to_wstring(n) + L" attachment(s)");
        recorded_ui_.PressSavingCancel();
      });
      return true;
    }
    case Verb::kPrint:
    case Verb::kAdvance:
    case Verb::kUser:
    case Verb::kAs:
    case Verb::kHoldMail:
    case Verb::kDeliverHeld:
      return true;  // the simulation's own, not a user's
  }
  return false;
}

bool ProfileRun::Start(int explorers) {
  if (addin_) {
    Say(L"  Outlook is already running");
    return false;
  }
  while (static_cast<int>(store_.explorers().size()) > explorers)
    store_.CloseExplorer(store_.explorers().back());
  while (static_cast<int>(store_.explorers().size()) < explorers) store_.AddExplorer();
  Services services{files_, settings_, ui_, clock_, beeper_, clipboard_, kAddinFolder,
                    [app = application_] { return app; }};
  addin_ = std::make_unique<DesVireo>(std::move(services));
  addin_->AddinInstance_Initialize();
  addin_->IDTExtensibility2_OnConnection(application_, ext_cm_Startup);
  addin_->IDTExtensibility2_OnStartupComplete();
  if (addin_->addin().LoadedIndirectly) Say(L"  (no main window: the add-in stays inactive)");
  auto explorer = store_.ActiveExplorer();
  PrintToolbar(explorer ? explorer->command_bars : nullptr, L"Vireo");
  return true;
}

bool ProfileRun::Stop(int32_t mode) {
  if (!addin_) {
    Say(L"  Outlook is not running");
    return false;
  }
  // Only what happened is told: an inactive add-in (no main window) has no toolbar to remove
  // and may have no settings to save.
  const auto explorer = store_.ActiveExplorer();
  const bool had_toolbar = explorer && explorer->command_bars->Find(L"Vireo");
  const auto settings_before = FileStamp(paths_.settings);
  addin_->IDTExtensibility2_OnBeginShutdown();
  addin_->IDTExtensibility2_OnDisconnection(mode);
  addin_->AddinInstance_Terminate();
  addin_.reset();
  try {
    settings_.Flush();
  } catch (const Error& e) {
    Say(L"  the settings could not be saved: " + e.description());
  }
  const auto settings_after = FileStamp(paths_.settings);
  if (settings_after && settings_after != settings_before)
    Say(L"  settings saved to " + TextOf(paths_.settings));
  if (mode == ext_dm_UserClosed && had_toolbar)
    Say(std::wstring(L"  toolbar after removal: ") +
        (explorer->command_bars->Find(L"Vireo") ? L"still there" : L"gone"));
  return true;
}

bool ProfileRun::Deliver(const std::wstring& file) {
  std::string error;
  auto mail = ReadEml(Utf8Of(paths_.mailbox / HostPath(ToUtf8(file))), &error);
  if (!mail) {
    Say(L"  cannot read " + file + L": " + FromUtf8(error));
    return false;
  }
  mail->sent = clock_.Now();  // it arrives now
  Say(L"  new mail " + MailLine(*mail) + L" with " + std::to_wstring(mail->attachments.size()) +
      L" attachment(s)");
  store_.DeliverNewMail(ToItem(*mail));
  return true;
}

bool ProfileRun::Select(const std::vector<int32_t>& positions) {
  auto explorer = store_.ActiveExplorer();
  if (!explorer) return false;
  explorer->selection.clear();
  const auto& inbox = store_.Inbox().items;
  for (int32_t p : positions) {
    if (p < 1 || static_cast<size_t>(p) > inbox.size()) {
      Say(L"  there is no Inbox item " + std::to_wstring(p));
      return false;
    }
    explorer->selection.push_back(inbox[static_cast<size_t>(p - 1)]);
    Say(L"  selected \"" + inbox[static_cast<size_t>(p - 1)]->subject + L"\"");
  }
  return true;
}

bool ProfileRun::Open(int32_t position) {
  const auto& inbox = store_.Inbox().items;
  if (position < 1 || static_cast<size_t>(position) > inbox.size()) return false;
  auto inspector = store_.OpenInspector(inbox[static_cast<size_t>(position - 1)]);
  Say(L"  opened \"" + inbox[static_cast<size_t>(position - 1)]->subject + L"\" in a mail window");
  PrintToolbar(inspector->command_bars, L"VireoInspector");
  return true;
}

bool ProfileRun::Click(const std::wstring& bar_name, const std::wstring& tag,
                       const std::wstring* combo_text) {
  std::shared_ptr<sim::SimCommandBarsData> bars;
  if (bar_name == L"Vireo") {
    if (auto explorer = store_.ActiveExplorer()) bars = explorer->command_bars;
  } else if (auto inspector = store_.ActiveInspector()) {
    bars = inspector->command_bars;
  }
  auto bar = bars ? bars->Find(bar_name) : nullptr;
  auto control = bar ? bar->FindControl(tag) : nullptr;
  if (!control) {
    Say(L"  there is no control \"" + tag + L"\" on the \"" + bar_name + L"\" bar");
    return false;
  }
  if (combo_text) {
    control->Change(*combo_text);
  } else {
    control->Click();
  }
  return true;
}

void ProfileRun::PrintToolbar(const std::shared_ptr<sim::SimCommandBarsData>& bars,
                              const std::wstring& name) {
  auto bar = bars ? bars->Find(name) : nullptr;
  if (!bar) {
    Say(L"  toolbar \"" + name + L"\": none");
    return;
  }
  Say(L"  toolbar \"" + name + L"\"" + std::wstring(bar->visible ? L"" : L" (hidden)") + L":");
  for (const auto& c : bar->controls) {
    Say(L"    " + c->tag + L"  face " + std::to_wstring(c->face_id) + L"  \"" + c->caption +
        L"\"  " + (c->visible ? L"visible" : L"hidden") + L"  tip \"" + c->tooltip_text + L"\"");
  }
}

ProfileRun::Snapshot ProfileRun::TakeSnapshot() const {
  Snapshot snap;
  std::error_code ec;
  for (auto it = fs::recursive_directory_iterator(paths_.drive, ec);
       !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
    if (it->is_regular_file(ec)) {
      snap[it->path()] = {it->file_size(ec), it->last_write_time(ec)};
    } else if (it->is_directory(ec)) {
      snap[it->path()] = {kFolder, {}};
    }
  }
  return snap;
}

void ProfileRun::PrintFileChanges() {
  if (addin_ && addin_->addin().oApplication)
    chat_.PrintChanges(addin_->addin(), [this](const std::wstring& line) { Say(line); });
  else
    chat_.Forget();
  Snapshot now = TakeSnapshot();
  for (const auto& [file, info] : now) {
    auto before = files_before_.find(file);
    if (info.first == kFolder) {
      if (before == files_before_.end())
        Say(L"  [folder created] " + WindowsPathOf(paths_.drive, file));
      continue;
    }
    if (before == files_before_.end()) {
      Say(L"  [file written] " + WindowsPathOf(paths_.drive, file) + L" (" +
          std::to_wstring(info.first) + L" bytes)");
    } else if (before->second != info) {
      Say(L"  [file changed] " + WindowsPathOf(paths_.drive, file) + L" (" +
          std::to_wstring(info.first) + L" bytes)");
    }
  }
  for (const auto& [file, info] : files_before_)
    if (!now.count(file))
      Say((info.first == kFolder ? L"  [folder deleted] " : L"  [file deleted] ") +
          WindowsPathOf(paths_.drive, file));
  files_before_ = std::move(now);
}

void ProfileRun::PrintLog() {
  const std::wstring log = std::wstring(kAddinFolder) + L"\\Vireo.log";
  Say(L"");
  Say(L"Vireo.log:");
  try {
    std::wstring text = FromUtf8(files_.ReadFile(log));
    size_t at = 0;
    for (size_t pos; (pos = text.find(L"\r\n", at)) != std::wstring::npos; at = pos + 2)
      Say(L"  " + text.substr(at, pos - at));
  } catch (const Error& e) {
    Say(L"  (no log: " + e.description() + L")");
  }
}

}  // namespace corvina::simulator
