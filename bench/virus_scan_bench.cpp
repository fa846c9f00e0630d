// The virus-alert scans and the rule list behind them.
//
// BM_DeleteInfected_*: DeleteInfectedItems over a 100,000-item Inbox of which the newest N
// (0, 100, 10,000) are newer than LastMailMonitorTime, with 1,000 rules; one new mail in ten
// holds a rule's value and is deleted, so the deletions and their log lines are in the time.
// The calls must follow N, not the Inbox, and no mail may have its sender, body, subject or
// attachments read more than once. "SubjectRules": the active rules hold subjects only (the
// inactive ones hold every field), so neither Body nor Attachments may be read at all.
// "AllFieldRules": every rule holds all four fields.
//
// BM_IsMatchRuleAndActive: one match at 10, 1,000 and 100,000 rules, hit and miss; the time
// per call must stay flat.
//
// BM_LoopForVirusAlerts: the alert-mail sweep over a 100,000-item Inbox with 10,000 new mails,
// 10 of them alert mails; only mails whose trimmed subject is the alert subject may have their
// body read.
//
// BM_LoadRules: the start-up load of the six stored lists, all fields filled (target under
// 1 ms for 1,000 rules, linear in the rules). BM_LoadRulesWithOrigins adds the senders' list
// for one rule in ten, as a user who takes in alert mails has.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "base/text.h"
#include "bench_world.h"
#include "rules/rule_storage.h"
#include "virus/alert_mail.h"
#include "virus/virus_log.h"
#include "virus/virus_scan.h"

namespace corvina::bench {
namespace {

constexpr int kInboxItems = 100000;
constexpr int kScanRules = 1000;

// ---- counting calls by member ------------------------------------------------------------

// What one recorded run called: the object-model members by name, and the most times any of
// `watched` was called for one mail. Each mail's turn begins with its Items.Item, so the calls
// between two Items.Item belong to one mail.
struct MemberCounts {
  std::map<std::string, uint64_t> calls;
  uint64_t max_per_mail = 0;
  std::string max_member;  // the member that reached max_per_mail
  uint64_t Of(const std::string& member) const {
    auto it = calls.find(member);
    return it == calls.end() ? 0 : it->second;
  }
};

// Recording keeps a string per call, which costs time: it runs in a pass of its own, never in
// the timed runs.
template <class F>
MemberCounts CountMembers(sim::Faults& faults, const std::vector<std::string>& watched, F run) {
  faults.ResetCounts();
  faults.set_record(true);
  run();
  faults.set_record(false);
  MemberCounts counts;
  std::map<std::string, uint64_t> this_mail;
  auto close_mail = [&] {
    for (const auto& [member, n] : this_mail) {
      if (n > counts.max_per_mail) {
        counts.max_per_mail = n;
        counts.max_member = member;
      }
    }
    this_mail.clear();
  };
  const std::string prefix = "Outlook.";
  for (const std::string& name : faults.recorded()) {
    if (name.rfind(prefix, 0) != 0) continue;
    const std::string member = name.substr(prefix.size());
    ++counts.calls[member];
    if (member == "Items.Item") close_mail();
    if (std::find(watched.begin(), watched.end(), member) != watched.end()) ++this_mail[member];
  }
  close_mail();
  faults.ResetCounts();
  return counts;
}

// ---- a big Inbox whose newest mails come back after every run ----------------------------

// A started add-in over an Inbox of old mails (older than LastMailMonitorTime) and the new
// mails on top. Renew() puts the Inbox back as it was built: the runs delete mails.
class ScanScene {
 public:
  explicit ScanScene(int new_mails) {
    FillInbox(world, kInboxItems - new_mails);
    addin_ = world.StartOutlook();
    old_items_ = world.store.Inbox().items.size();
    now_ = world.clock.Now();
  }
  AddIn& addin() { return addin_->addin(); }
  // The i-th new mail (0 is the oldest): a second apart, from the current minute on.
  sim::SimItemData NewMail(int i, std::wstring subject) const {
    return sim::MakeMail(std::move(subject), AddSeconds(now_, i));
  }
  void Renew() {
    sim::SimStore& store = world.store;
    auto& inbox = store.Inbox().items;
    while (inbox.size() > old_items_) {
      const sim::SimItemPtr newest = inbox.back();
      store.Remove(newest);
    }
    const std::vector<sim::SimItemPtr> deleted = store.Folder(outlook::olFolderDeletedItems).items;
    for (auto it = deleted.rbegin(); it != deleted.rend(); ++it) store.Remove(*it);
    for (const sim::SimItemData& mail : fresh) store.AddToInbox(mail);
    const std::wstring log = VirusLogPath(addin());
    if (world.files.FileExists(log)) world.files.DeleteFile(log);
    addin().config.LastMailMonitorTime = FormatStamp(now_);
  }

  testing::SimWorld world;
  std::vector<sim::SimItemData> fresh;  // the new mails, oldest first

 private:
  std::unique_ptr<DesVireo> addin_;
  size_t old_items_ = 0;
  Date now_;
};

// ---- what the rules hold, and their stored lists ------------------------------------------

std::wstring BadSubject(int r) { return L"Your parcel " + std::to_wstring(r) + L" is waiting"; }
std::wstring BadBody(int r) { return L"Open the tracking form " + std::to_wstring(r); }
std::wstring BadSender(int r) { return L"Parcel Service " + std::to_wstring(r); }
std::wstring BadAttachment(int r) { return L"tracking" + std::to_wstring(r) + L".exe"; }

// The six stored lists for `count` rules with every field filled, and the senders of one rule
// in `origin_every` (none when 0).
void FillStoredLists(Config& c, int count, int origin_every) {
  c.VirusDescription.clear();
  c.VirusActive.clear();
  c.VirusSubject.clear();
  c.VirusBody.clear();
  c.VirusFrom.clear();
  c.VirusAttachments.clear();
  c.VirusRuleOrigins.clear();
  for (int r = 0; r < count; ++r) {
    const std::wstring n = std::to_wstring(r);
    c.VirusDescription += L";Rule " + n;
    c.VirusActive += r % 3 ? L";True" : L";False";
    c.VirusSubject += L";" + BadSubject(r);
    c.VirusBody += L";" + BadBody(r);
    c.VirusFrom += L";" + BadSender(r);
    c.VirusAttachments += L";" + BadAttachment(r);
    if (origin_every > 0 && r % origin_every == 0) {
      if (!c.VirusRuleOrigins.empty()) c.VirusRuleOrigins += L'\t';
      c.VirusRuleOrigins += L"Rule " + n + L"\tsecurity" + n + L"@example.com";
    }
  }
}

// ---- DeleteInfectedItems ------------------------------------------------------------------

enum class RuleSet { kSubjectOnly, kAllFields };

void AddScanRules(Rules& rules, RuleSet set) {
  rules.Clear();
  for (int r = 0; r < kScanRules; ++r) {
    const std::wstring name = L"Rule " + std::to_wstring(r);
    if (set == RuleSet::kAllFields)
      rules.Add(name, true, BadSubject(r), BadBody(r), BadAttachment(r), BadSender(r));
    else if (r % 2 == 0)
      rules.Add(name, true, BadSubject(r), L"", L"", L"");
    else  // switched off: its body, sender and attachment must not make the scan read them
      rules.Add(name, false, BadSubject(r), BadBody(r), BadAttachment(r), BadSender(r));
  }
}

// The new mails; returns how many of them an active rule matches.
int AddScanMails(ScanScene& scene, int count, RuleSet set) {
  int matching = 0;
  for (int i = 0; i < count; ++i) {
    sim::SimItemData mail = scene.NewMail(i, L"Minutes of meeting " + std::to_wstring(i));
    mail.sender_name = L"Colleague " + std::to_wstring(i);
    mail.body = L"Notes from today, part " + std::to_wstring(i);
    if (i % 3 == 0) mail.attachments.push_back({L"notes" + std::to_wstring(i) + L".pdf", 1, "%PDF"});
    const int n = i / 10;
    if (i % 10 == 0) {  // one in ten holds what an active rule holds
      ++matching;
      const int field = set == RuleSet::kAllFields ? n % 4 : 2;
      const int r = set == RuleSet::kAllFields ? n % kScanRules : 2 * (n % (kScanRules / 2));
      switch (field) {
        case 0: mail.sender_name = BadSender(r); break;
        case 1: mail.body = BadBody(r); break;
        case 2: mail.subject = BadSubject(r); break;
        default: mail.attachments.push_back({BadAttachment(r), 2, "MZ"}); break;
      }
    } else if (i % 10 == 5 && set == RuleSet::kSubjectOnly) {
      const int r = 2 * (n % (kScanRules / 2)) + 1;  // a switched-off rule's values: kept
      mail.subject = BadSubject(r);
      mail.sender_name = BadSender(r);
    }
    scene.fresh.push_back(std::move(mail));
  }
  return matching;
}

void DeleteInfected(benchmark::State& state, RuleSet set) {
  const int new_mails = static_cast<int>(state.range(0));
  ScanScene scene(new_mails);
  AddIn& addin = scene.addin();
  AddScanRules(addin.rules.glbRules, set);
  const int matching = AddScanMails(scene, new_mails, set);

  scene.Renew();
  int32_t counted_deleted = 0;
  const MemberCounts counts =
      CountMembers(scene.world.faults,
                   {"Item.Body", "Item.SenderName", "Item.Subject", "Item.Attachments"},
                   [&] { counted_deleted = DeleteInfectedItems(addin); });

  uint64_t calls = 0, runs = 0;
  int32_t deleted = 0;
  for (auto _ : state) {
    state.PauseTiming();
    scene.Renew();
    const uint64_t before = scene.world.faults.Calls(sim::Service::kOutlook);
    state.ResumeTiming();
    deleted = DeleteInfectedItems(addin);
    state.PauseTiming();
    calls += scene.world.faults.Calls(sim::Service::kOutlook) - before;
    ++runs;
    state.ResumeTiming();
  }

  const double per_mail = new_mails > 0 ? 1.0 / new_mails : 0.0;
  const double om_calls = static_cast<double>(calls) / static_cast<double>(runs);
  state.counters["om_calls"] = om_calls;
  state.counters["om_calls_per_mail"] = om_calls * per_mail;
  state.counters["deleted"] = deleted;
  state.counters["body_reads"] = static_cast<double>(counts.Of("Item.Body"));
  state.counters["sender_reads"] = static_cast<double>(counts.Of("Item.SenderName"));
  state.counters["subject_reads"] = static_cast<double>(counts.Of("Item.Subject"));
  state.counters["attach_reads"] = static_cast<double>(counts.Of("Item.Attachments"));
  state.counters["max_reads_1_mail"] = static_cast<double>(counts.max_per_mail);

  std::string label;
  if (counts.max_per_mail > 1)
    label += "OVER: " + counts.max_member + " read " + std::to_string(counts.max_per_mail) +
             " times for one mail; ";
  if (set == RuleSet::kSubjectOnly && counts.Of("Item.Body") + counts.Of("Item.Attachments") > 0)
    label += "OVER: Body or Attachments read with no active rule holding one; ";
  if (deleted != matching || counted_deleted != matching)
    label += "WRONG: deleted " + std::to_string(deleted) + " of " + std::to_string(matching) + "; ";
  state.SetLabel(label.empty() ? "targets met" : label);
}

void BM_DeleteInfected_SubjectRules(benchmark::State& state) {
  DeleteInfected(state, RuleSet::kSubjectOnly);
}
void BM_DeleteInfected_AllFieldRules(benchmark::State& state) {
  DeleteInfected(state, RuleSet::kAllFields);
}
BENCHMARK(BM_DeleteInfected_SubjectRules)
    ->ArgName("new_mails")->Arg(0)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteInfected_AllFieldRules)
    ->ArgName("new_mails")->Arg(0)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

// ---- IsMatchRuleAndActive -----------------------------------------------------------------

// Fixed width, so every value hashes and compares at the same cost whatever the rule count.
std::wstring InvoiceSubject(int r, const wchar_t* state_word) {
  std::wstring digits = std::to_wstring(r);
  return L"Invoice " + std::wstring(7 - digits.size(), L'0') + digits + L" " + state_word;
}

void BM_IsMatchRuleAndActive(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  const bool hit = state.range(1) != 0;
  testing::SimWorld world;
  AddIn addin(world.MakeServices());
  Rules& rules = addin.rules.glbRules;
  for (int r = 0; r < count; ++r)
    rules.Add(L"Rule " + std::to_wstring(r), true, InvoiceSubject(r, L"overdue"), L"", L"", L"");
  // Spread over the whole list; a miss differs only in its last word.
  std::vector<std::wstring> queries;
  for (int q = 0; q < 256; ++q)
    queries.push_back(InvoiceSubject(static_cast<int>(int64_t{q} * count / 256),
                                     hit ? L"overdue" : L"settled"));
  const std::wstring none;
  rules.IsMatchRuleAndActive(queries[0], none, none, none);  // the first match builds the index
  size_t next = 0;
  int64_t matches = 0;
  for (auto _ : state) {
    const bool matched = rules.IsMatchRuleAndActive(queries[next], none, none, none);
    benchmark::DoNotOptimize(matched);
    matches += matched ? 1 : 0;
    next = (next + 1) % queries.size();
  }
  state.counters["rules"] = count;
  state.counters["match_rate"] =
      static_cast<double>(matches) / static_cast<double>(state.iterations());
  const bool right = matches == (hit ? static_cast<int64_t>(state.iterations()) : 0);
  state.SetLabel(std::string(hit ? "hit" : "miss") + (right ? "" : " WRONG answers"));
}
BENCHMARK(BM_IsMatchRuleAndActive)
    ->ArgNames({"rules", "hit"})
    ->ArgsProduct({{10, 1000, 100000}, {1, 0}})
    ->Unit(benchmark::kNanosecond);

// ---- LoopForVirusAlerts -------------------------------------------------------------------

void BM_LoopForVirusAlerts(benchmark::State& state) {
  const int new_mails = 10000;
  ScanScene scene(new_mails);
  AddIn& addin = scene.addin();
  FillStoredLists(addin.config, kScanRules, 0);  // the rules the user already has
  const std::wstring alert = kVirusAlertSubject;
  int alert_subjects = 0;
  for (int i = 0; i < new_mails; ++i) {
    const int k = i / 1000;
    sim::SimItemData mail = scene.NewMail(i, L"Weekly report " + std::to_wstring(i));
    mail.sender_name = L"Colleague " + std::to_wstring(i);
    mail.body = L"Figures for week " + std::to_wstring(i);
    if (i % 1000 == 500) {  // an alert mail; every other one with blanks a mail client added
      mail.subject = k % 2 ? L"  " + alert + L" " : alert;
      mail.body = L"Rule " + std::to_wstring(1000 + k) + L";True;Hello " + std::to_wstring(k) +
                  L";;;\r\n";
      mail.sender_name = L"Security desk";
    } else if (i % 1000 == 250) {  // a reply to one: not an alert mail
      mail.subject = L"RE: " + alert;
      mail.body = L"Rule " + std::to_wstring(2000 + k) + L";True;Hello;;;\r\n";
    }
    if (Trim(mail.subject) == alert) ++alert_subjects;
    scene.fresh.push_back(std::move(mail));
  }
  // Each run starts from the stored rules alone: the alert mails add theirs.
  const Config stored = addin.config;
  auto reset = [&] {
    scene.Renew();
    addin.config = stored;
    LoadRules(addin);
  };

  reset();
  int32_t counted_taken = 0;
  const MemberCounts counts = CountMembers(scene.world.faults, {"Item.Body", "Item.Subject"},
                                           [&] { counted_taken = LoopForVirusAlerts(addin); });
  const int32_t rules_after = addin.rules.glbRules.Count();

  uint64_t calls = 0, runs = 0;
  int32_t taken = 0;
  for (auto _ : state) {
    state.PauseTiming();
    reset();
    const uint64_t before = scene.world.faults.Calls(sim::Service::kOutlook);
    state.ResumeTiming();
    taken = LoopForVirusAlerts(addin);
    state.PauseTiming();
    calls += scene.world.faults.Calls(sim::Service::kOutlook) - before;
    ++runs;
    state.ResumeTiming();
  }

  const double om_calls = static_cast<double>(calls) / static_cast<double>(runs);
  state.counters["om_calls"] = om_calls;
  state.counters["om_calls_per_mail"] = om_calls / new_mails;
  state.counters["alert_subjects"] = alert_subjects;
  state.counters["body_reads"] = static_cast<double>(counts.Of("Item.Body"));
  state.counters["max_reads_1_mail"] = static_cast<double>(counts.max_per_mail);
  state.counters["taken"] = taken;
  state.counters["rules_after"] = rules_after;

  std::string label;
  if (counts.Of("Item.Body") != static_cast<uint64_t>(alert_subjects))
    label += "OVER: body reads differ from the alert subjects; ";
  if (counts.max_per_mail > 1)
    label += "OVER: " + counts.max_member + " read " + std::to_string(counts.max_per_mail) +
             " times for one mail; ";
  if (taken != alert_subjects || counted_taken != alert_subjects ||
      rules_after != kScanRules + alert_subjects)
    label += "WRONG: alert mails not all taken in; ";
  state.SetLabel(label.empty() ? "targets met" : label);
}
BENCHMARK(BM_LoopForVirusAlerts)->Unit(benchmark::kMillisecond);

// ---- LoadRules ----------------------------------------------------------------------------

void LoadStoredRules(benchmark::State& state, int origin_every) {
  const int count = static_cast<int>(state.range(0));
  testing::SimWorld world;
  AddIn addin(world.MakeServices());
  FillStoredLists(addin.config, count, origin_every);
  for (auto _ : state) LoadRules(addin);
  state.SetComplexityN(count);
  Rules& rules = addin.rules.glbRules;
  const int last = count - 1;
  const Rule& tail = rules.Item(count);
  const bool whole = rules.Count() == count && tail.Attachment == BadAttachment(last) &&
                     tail.From == BadSender(last) && tail.Active == (last % 3 != 0) &&
                     rules.Item(1).Origin == (origin_every > 0 ? L"security0@example.com" : L"");
  state.counters["rules"] = rules.Count();
  state.SetLabel(whole ? "" : "WRONG: the rules did not load whole");
}

void BM_LoadRules(benchmark::State& state) { LoadStoredRules(state, 0); }
void BM_LoadRulesWithOrigins(benchmark::State& state) { LoadStoredRules(state, 10); }
BENCHMARK(BM_LoadRules)
    ->Arg(1000)->DenseRange(2000, 10000, 2000)
    ->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LoadRulesWithOrigins)
    ->Arg(1000)->DenseRange(2000, 10000, 2000)
    ->Complexity(benchmark::oAuto)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvina::bench

BENCHMARK_MAIN();
