// The corvina-sim program run as a person runs it, with LC_ALL=C: under the "C" locale a path
// converted through the locale cannot hold a Cyrillic or Japanese name, so these runs show
// that no name reaches such a conversion.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Result {
  int exit_code = -1;
  std::string output;  // stdout and stderr
};

std::string Quoted(const std::string& s) {
  std::string q = "'";
  for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return q + "'";
}

Result RunSim(const std::vector<std::string>& args) {
  std::string command = "LC_ALL=C " + Quoted(CORVINA_SIM);
  for (const std::string& a : args) command += " " + Quoted(a);
  Result result;
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return result;
  char buffer[4096];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) result.output.append(buffer, n);
  const int status = pclose(pipe);
  if (WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
  return result;
}

// An empty folder of the test's own (names are UTF-8 bytes, as the host keeps them).
fs::path Scratch(const std::string& name) {
  fs::path dir = fs::temp_directory_path() / ("corvina-sim-" + std::to_string(getpid()) + "-" + name);
  fs::remove_all(dir);
  fs::create_directories(dir);
  return dir;
}

void Write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

std::string Read(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A mail with one attachment named `attachment` (RFC 2231, UTF-8) whose content is its name;
// `type` "report" makes it a delivery report.
std::string Mail(const std::string& subject, const std::string& attachment,
                 const std::string& type = "mixed") {
  std::string encoded;
  for (unsigned char c : attachment) {
    static const char kHex[] = "0123456789ABCDEF";
    if (std::isalnum(c) || c == '.' || c == '-') encoded += static_cast<char>(c);
    else encoded += std::string("%") + kHex[c >> 4] + kHex[c & 15];
  }
  return "From: Tom <tom@example.com>\r\nTo: Anna <anna@example.com>\r\nSubject: " + subject +
         "\r\nDate: Mon, 2 Nov 2026 09:15:00 +0100\r\nMIME-Version: 1.0\r\n"
         "Content-Type: multipart/" + type + "; boundary=\"b\"" +
         (type == "report" ? "; report-type=delivery-status" : "") +
         "\r\n\r\n--b\r\nContent-Type: text/plain\r\n\r\nHello\r\n--b\r\n"
         "Content-Type: application/octet-stream\r\n"
         "Content-Disposition: attachment; filename*=UTF-8''" + encoded + "\r\n\r\n" +
         attachment + "\r\n--b--\r\n";
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(SimulatorRun, NonAsciiNamesOfFoldersMailsAndAttachments) {
  struct Name {
    std::string mail, attachment;
  };
  const Name names[] = {{"01-Письмо.eml", "счёт.pdf"},
                        {"02-メール.eml", "請求書.pdf"},
                        {"03-מכתב.eml", "חשבונית.pdf"},
                        {"04-Crème brûlée.eml", "reçu à Zürich.pdf"}};
  const fs::path root = Scratch("names");
  const fs::path profile = root / "профиль 日本 שלום Café", work = root / "работа 作業 עבודה été";
  for (const Name& n : names)
    Write(profile / "mailbox" / n.mail, Mail("Mail " + n.mail.substr(0, 2), n.attachment));
  Write(profile / "mailbox/new/05-Новое.eml", Mail("Late", "ファイル.txt"));
  fs::create_directories(profile / "drive/Документы");
  Write(root / "s.script", "start\nselect 1,2,3,4\nbrowse-folder C:\\Документы\nclick Vireo_Save...\n"
                           "deliver new/05-Новое.eml\nstop\n");

  const Result r = RunSim({"--profile", profile.string(), "--script", (root / "s.script").string(),
                           "--work", work.string()});
  EXPECT_EQ(r.exit_code, 0) << r.output;
  EXPECT_TRUE(Has(r.output, "Inbox (" + (work / "mailbox").string() + "):\n")) << r.output;
  EXPECT_TRUE(Has(r.output, "new mail \"Late\"")) << r.output;
  EXPECT_TRUE(Has(r.output, "settings saved to " + (work / "settings.ini").string())) << r.output;
  for (const Name& n : names) {
    SCOPED_TRACE(n.attachment);
    EXPECT_TRUE(Has(r.output, "\n       " + n.attachment + " (")) << r.output;
    EXPECT_TRUE(Has(r.output, "[file written] C:\\Документы\\" + n.attachment)) << r.output;
    EXPECT_EQ(Read(work / "drive/Документы" / n.attachment), n.attachment);
  }
}

// A settings.ini that is a folder can be neither read nor written: the log warns once, the
// add-in runs on its defaults, and the transcript says the settings were not saved.
TEST(SimulatorRun, SettingsFileThatIsAFolder) {
  const fs::path root = Scratch("settings folder");
  Write(root / "profile/mailbox/01.eml", Mail("One", "one.txt"));
  fs::create_directories(root / "profile/settings.ini");
  fs::create_directories(root / "profile/drive");
  Write(root / "s.script", "start\nstop\n");
  const Result r = RunSim({"--profile", (root / "profile").string(), "--script",
                           (root / "s.script").string(), "--work", (root / "work").string()});
  EXPECT_EQ(r.exit_code, 0) << r.output;
  EXPECT_TRUE(Has(r.output, "\n  the settings could not be saved: ")) << r.output;
  EXPECT_TRUE(Has(r.output, "| Warning | Settings file settings.ini cannot be read; every setting "
                            "takes its default\n")) << r.output;
  EXPECT_FALSE(Has(r.output, "settings saved to")) << r.output;
}

// What the transcript says: every action echoed as a script line, and only what happened. A
// mail that cannot be read is named and skipped, and the Inbox counts only the others.
TEST(SimulatorRun, TranscriptTellsWhatHappened) {
  struct Case {
    std::string script;
    std::vector<std::string> present, absent;
    bool settings_written;
    int exit_code = 0;
  };
  const Case cases[] = {
      {"print nothing runs\n",
       {"nothing runs", "\n  skipped 02-Брак.eml: an empty file, not a mail\n", "\n  2. \"Two\"", "(no readable Date:, the file's time)\n",
        "\n       Fwd.eml (", "bytes, an attached mail)"},
       {"settings saved", "\n  4. "}, false},
      {"start explorers 0\nremove\n",
       {"> start explorers 0\n", "  toolbar \"Vireo\": none\n", "> remove\n"},
       {"settings saved", "toolbar after removal"},
       false},
      {"START\nanswer OK dont-show\nselect 1, 2\nremove\n",
       {"> start explorers 1\n", "> answer ok dont-show\n", "> select 1,2\n", "settings saved to",
        "toolbar after removal: gone"},
       {},
       true},
      {"start\nopen 2\n", {"opened \"Two\"", "toolbar \"VireoInspector\":\n    Vireo_"}, {}, true},
      {"start\nselect 9\n", {"\n  there is no Inbox item 9\n  ! line 2 could not be carried out\n"}, {}, true, 1},
      {"start\nchat send\n", {"\n  the chat window is not open (click Vireo_Chat)\n  ! line 2"}, {}, true, 1},
      {"as nobody\n", {"\n  ! line 1: there is no user \"nobody\"\n"}, {}, false, 1},
      // Without a chat address of one's own, the first send asks for it.
      {"start\nclick Vireo_Chat\nchat new-user ben@x.example\nchat select ben@x.example\n"
       "chat type hi\nchat own-address me@x.example\nchat send\nchat add-user 1\nchat click 9\n",
       {"[address] \"Your chat address (others see your messages as from it)\" -> \"me@x.example\"",
        "[chat] Last message sent successfully to: ben@x.example",
        "[board] [picture 1: me@x.example] You have said",
        "\n  there is no picture 9 on the board\n  ! line 9 could not be carried out\n"},
       {"! line 8"}, true, 1},
      {"start\ndelete 9\n", {"\n  there is no Inbox item 9\n  ! line 2 could not be carried out\n"}, {}, true, 1},
      {"start\ndeliver new/report.eml\n", {"new mail [report] \"Returned\""}, {}, true},
      {"start\nselect 1,2\nchoose-folder 0\nclick Vireo_Save...\n",
       {"\" 1 of 2 saved\n", "\" 2 of 2 saved\n  [form] unload frmSaving"},
       {"\" 1 of 2 saved\n  [saving] \"Corvina - Saving files ...\" 1 of 2 saved"},
       true},
  };
  const fs::path root = Scratch("transcript");
  Write(root / "mailbox/01.eml", Mail("One", "one.txt"));
  Write(root / "mailbox/02-Брак.eml", "");  // no mail at all
  Write(root / "mailbox/03.eml", Mail("Two", "two.txt"));
  Write(root / "mailbox/04.eml",
        "From: x@example.com\nContent-Type: message/rfc822\n\nSubject: Fwd\n\nforwarded\n");
  Write(root / "mailbox/new/report.eml", Mail("Returned", "r.txt", "report"));
  for (const Case& c : cases) {
    SCOPED_TRACE(c.script);
    Write(root / "s.script", c.script);
    const Result r = RunSim({"--mailbox", (root / "mailbox").string(), "--script",
                             (root / "s.script").string(), "--work", (root / "work").string()});
    EXPECT_EQ(r.exit_code, c.exit_code) << r.output;
    for (const std::string& p : c.present) EXPECT_TRUE(Has(r.output, p)) << p << '\n' << r.output;
    for (const std::string& a : c.absent) EXPECT_FALSE(Has(r.output, a)) << a << '\n' << r.output;
    EXPECT_EQ(fs::exists(root / "work/settings.ini"), c.settings_written);
    EXPECT_EQ(Read(root / "work/mailbox/new/report.eml"), Read(root / "mailbox/new/report.eml"));
    EXPECT_TRUE(fs::is_directory(root / "work/drive"));
  }
}

// The transcripts of the sample scripts, line for line: they are what a newcomer reads first,
// so every word of them is pinned. After a deliberate change, regenerate the expected files by
// running this test with CORVINA_UPDATE_TRANSCRIPTS=1 and read the difference.
TEST(SimulatorRun, SampleTranscriptsAreAsExpected) {
  const std::string samples = CORVINA_SAMPLES_DIR;
  const fs::path expected_dir = fs::path(samples) / "../tests/data/transcripts";
  struct Case {
    std::string name;
    std::vector<std::string> args;
  } cases[] = {
      {"demo", {"--profile", samples + "/profile", "--script", samples + "/demo.script"}},
      {"two-users", {"--script", samples + "/two-users.script"}},
      {"chat", {"--script", samples + "/chat.script"}},
      {"virus", {"--script", samples + "/virus.script"}},
      {"help", {"--help"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const fs::path work = Scratch("golden-" + c.name);
    std::vector<std::string> args = c.args;
    args.insert(args.end(), {"--work", work.string()});
    Result r = RunSim(args);
    EXPECT_EQ(r.exit_code, 0);
    // The folders of this machine are not part of what the transcript says.
    for (const auto& [from, to] : {std::pair{work.string(), std::string("<work>")},
                                   std::pair{samples, std::string("samples")}}) {
      for (size_t at; (at = r.output.find(from)) != std::string::npos;) r.output.replace(at, from.size(), to);
    }
    const fs::path file = expected_dir / (c.name + ".txt");
    if (std::getenv("CORVINA_UPDATE_TRANSCRIPTS")) Write(file, r.output);
    std::ifstream in(file, std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    // Compared line by line, so a failure names the first line that differs.
    std::istringstream got_lines(r.output), want_lines(expected);
    std::string got, want;
    for (int line = 1; std::getline(want_lines, want); ++line) {
      ASSERT_TRUE(std::getline(got_lines, got)) << "the transcript ends before line " << line;
      ASSERT_EQ(got, want) << "line " << line;
    }
    EXPECT_FALSE(std::getline(got_lines, got)) << "the transcript goes on: " << got;
  }
}

TEST(SimulatorCommandLine, ArgumentsGiveExitCodeAndMessage) {
  const fs::path root = Scratch("cli");
  const std::string script = (root / "s.script").string(), mailbox = (root / "mailbox").string(),
                    work = (root / "work").string();
  Write(root / "s.script", "print hello\n");
  Write(root / "users.script", "user ann=mailbox\nprint hello\n");
  Write(root / "mailbox/01.eml", Mail("One", "one.txt"));
  fs::create_directories(root / "no mailbox/drive");
  fs::create_directories(root / "piped");
  ASSERT_EQ(::mkfifo((root / "piped/01.eml").c_str(), 0600), 0);
  struct Case {
    std::vector<std::string> args;
    int exit_code;
    std::string phrase;
  };
  const Case cases[] = {
      {{"--help"}, 0, "--mailbox"},
      {{"--help"}, 0, "2 a wrong command line or script.\n"},
      {{"--help"}, 0, "Runs the Corvina add-in in a simulated Outlook, driven by a script, and prints a"},
      {{"--help"}, 0, "the script of actions (required)"},
      {{"--help"}, 0, "and no settings"},
      {{"--version"}, 0, std::string("corvina-sim ") + CORVINA_VERSION + "\n"},
      {{"--mailbox", mailbox, "--script", script, "--work", work}, 0, "script completed"},
      {{"--profile", (root / "no mailbox").string(), "--script", script, "--work", work}, 1,
       "cannot read the mailbox folder"},
      {{}, 2, "--script is required"},
      {{"--mailbox", mailbox}, 2, "--script is required (see corvina-sim --help)"},
      {{"--script", script}, 2, "one of --profile, --mailbox or --user is required"},
      {{"--mailbox", mailbox, "--profile", mailbox, "--script", script}, 2, "not two of them"},
      {{"--user", "ann=" + mailbox, "--profile", mailbox, "--script", script}, 2, "not two of them"},
      {{"--user", "ann", "--script", script}, 2, "--user expects NAME=DIR, not ann"},
      {{"--user", "ann=", "--script", script}, 2, "--user expects NAME=DIR, not ann="},
      {{"--user", "=" + mailbox, "--script", script}, 2, "--user expects NAME=DIR, not ="},
      {{"--user", "ann=" + mailbox, "--user", "ANN=" + mailbox, "--script", script}, 2,
       "the user ANN is given twice"},
      {{"--user", "ann=" + (root / "none").string(), "--script", script}, 2,
       "the profile folder of ann does not exist"},
      {{"--user", "ann=" + mailbox, "--script", (root / "users.script").string()}, 2,
       "give the users on the command line or in the script, not both"},
      {{"--colour"}, 2, "not expected: --colour"},
      {{"--mailbox", mailbox, "--script"}, 2, "--script: 1 required"},
      {{"--mailbox", mailbox, "--script", script, "extra"}, 2, "not expected: extra"},
      {{"--mailbox", (root / "none").string(), "--script", script}, 2, "does not exist"},
      {{"--mailbox", mailbox, "--script", script, "--work", mailbox}, 2, "overlaps"},
      // A pipe among the mails cannot be copied: the run stops before it starts.
      {{"--mailbox", (root / "piped").string(), "--script", script, "--work", work}, 1,
       "cannot copy " + (root / "piped").string() + " to " + work + "/mailbox: "},
      {{"--mailbox", mailbox, "--script", script, "--work", work}, 0,
       ", script " + script + ", drive C: = " + work + "/drive\n"},
  };
  for (const Case& c : cases) {
    const Result r = RunSim(c.args);
    SCOPED_TRACE(r.output);
    EXPECT_EQ(r.exit_code, c.exit_code);
    EXPECT_TRUE(Has(r.output, c.phrase)) << c.phrase;
    if (c.exit_code == 2) {
      EXPECT_TRUE(Has(r.output, "--help"));
      EXPECT_EQ(r.output.find('\n'), r.output.size() - 1);  // one line
    }
  }
  EXPECT_TRUE(fs::exists(root / "mailbox/01.eml"));  // a refused work folder is left alone
}

}  // namespace
