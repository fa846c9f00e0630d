#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "platform/sim/file_settings_tree.h"
#include "platform/sim/memory_settings_tree.h"

namespace corvina::sim {
namespace {

namespace fs = std::filesystem;

class FileSettingsTreeTest : public ::testing::Test {
 protected:
  FileSettingsTreeTest()
      : dir(fs::temp_directory_path() /
            ("corvina-settings-" + std::to_string(std::random_device{}()))),
        file(dir / "settings.ini") {
    fs::create_directories(dir);
  }
  ~FileSettingsTreeTest() override { fs::remove_all(dir); }

  void WriteText(const std::string& text) { std::ofstream(file, std::ios::binary) << text; }
  std::string ReadText() {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  fs::path dir;
  fs::path file;
  Faults faults;
};

TEST_F(FileSettingsTreeTest, RoundTripKeepsBlanksEscapesAndFirstWrittenOrder) {
  const std::wstring kFooter = L"C:\\Mail\\x\nline two\r\ttabbed 100% \\n not a break";
  {
    FileSettingsTree tree(faults, file);
    tree.Write(L"Corvina", L"Settings", L"ExtName ", L"pdf;doc");
    tree.Write(L"Corvina", L"Chat\\Board", L"Footer", kFooter);
    tree.Write(L"Corvina", L"Settings", L"Greeting", L"Gr\u00fc\u00dfe = hi ");
    tree.Write(L"CORVINA", L"settings", L"EXTNAME ",
               L"pdf");  // same key: value changes, place stays
    tree.Flush();
    EXPECT_EQ(ReadText().substr(ReadText().find("\n[") + 1),
              "[Corvina\\Settings]\nExtName =pdf\nGreeting=Gr\xC3\xBC\xC3\x9F"
              "e = hi \n\n"
              "[Corvina\\Chat\\Board]\nFooter=C:\\Mail\\x%0Aline two%0D%09tabbed 100%25 \\n not a "
              "break\n");
  }
  FileSettingsTree again(faults, file);
  EXPECT_EQ(again.Read(L"corvina", L"SETTINGS", L"extname "), L"pdf");
  EXPECT_EQ(again.Read(L"Corvina", L"Settings", L"ExtName"), std::nullopt);  // the blank counts
  EXPECT_EQ(again.Read(L"Corvina", L"Chat\\Board", L"Footer"), kFooter);
  EXPECT_EQ(again.Read(L"Corvina", L"Settings", L"Greeting"), L"Gr\u00fc\u00dfe = hi ");
  EXPECT_TRUE(again.TakeProblems().empty());
}

TEST_F(FileSettingsTreeTest, DamagedLinesAreSkippedAndReportedOnceByFileName) {
  WriteText(
      "\xEF\xBB\xBF"  // a BOM is not damage
      "orphan=1\n"    // 1: a key before any header
      "orphan2=2\n"   // 2: skipped with it
      "[Corvina\\Settings]\r\n"
      "; comment\n"
      "\n"
      "Good=yes\r\n"
      "glbFolder\n"          // 7
      "Path=C:\\new\\%zz\n"  // 8: backslashes and a lone "%" are ordinary characters
      "Bytes=\xC3(\n"        // 9
      "[NoSection]\n"        // 10: a header without section; its keys go with it
      "Lost=1\n"
      "[Corvina\\Other]\n"
      "Fine= ok\n"
      "C:\\a folder name long enough to be cut short in the log\n");  // 14
  FileSettingsTree tree(faults, file);
  // The file is named without the host folder: the log is the add-in's, which knows only C:.
  const std::wstring kLines[] = {
      L"line 1: skipped up to the next header (\"orphan=1\" comes before any "
      L"[Application\\Section] header)",
      L"line 7: skipped (\"glbFolder\" has no \"=\")",
      L"line 9: skipped (not UTF-8 text)",
      L"line 10: skipped up to the next header (\"[NoSection]\" does not read "
      L"[Application\\Section])",
      L"line 14: skipped (\"C:\\a folder name long enough to be cut s...\" has no \"=\")",
  };
  std::vector<Error> problems = tree.TakeProblems();
  ASSERT_EQ(problems.size(), std::size(kLines));
  for (size_t i = 0; i < problems.size(); ++i) {
    EXPECT_EQ(problems[i].number(), 0);
    EXPECT_EQ(problems[i].source(), L"Settings");
    EXPECT_EQ(problems[i].description(), L"Settings file settings.ini, " + kLines[i]);
  }
  EXPECT_TRUE(tree.TakeProblems().empty());
  EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Good"), L"yes");
  EXPECT_EQ(tree.Read(L"Corvina", L"Other", L"Fine"), L" ok");
  EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Path"), L"C:\\new\\%zz");
  EXPECT_EQ(tree.Read(L"NoSection", L"", L"Lost"), std::nullopt);
}

// A save edits the user's file: only changed values and new keys differ from what was read.
TEST_F(FileSettingsTreeTest, SaveKeepsTheUsersFileAsWritten) {
  struct Case {
    const char* what;
    std::string before;
    std::vector<std::array<const wchar_t*, 3>> writes;  // section of "Vireo", key, value
    std::string after;
  };
  const Case cases[] = {
      {"comments, blank lines and order stay; a changed value changes in place",
       "; mine\n[Vireo\\Configuration]\n; folders\nglbFolder0=C:\\A\n\nAutoReplace=1\n",
       {{L"Configuration", L"AutoReplace", L"0"}, {L"Configuration", L"glbFolder0", L"C:\\A"}},
       "; mine\n[Vireo\\Configuration]\n; folders\nglbFolder0=C:\\A\n\nAutoReplace=0\n"},
      {"a name written in another case keeps the user's spelling",
       "[vireo\\CONFIGURATION]\nAUTOREPLACE=1\n", {{L"Configuration", L"AutoReplace", L"0"}},
       "[vireo\\CONFIGURATION]\nAUTOREPLACE=0\n"},
      {"new keys end their section, above the comment that opens the next",
       "[Vireo\\Configuration]\nA=1\n\n; chat\n[Vireo\\Chat]\nC=1\n",
       {{L"Configuration", L"B", L"2"}, {L"Chat", L"D", L"4"}, {L"Configuration", L"E", L"5"}},
       "[Vireo\\Configuration]\nA=1\nB=2\nE=5\n\n; chat\n[Vireo\\Chat]\nC=1\nD=4\n"},
      {"new sections end the file",
       "; only a comment\n", {{L"Chat", L"C", L"3%"}, {L"Picker", L"P", L"1"}},
       "; only a comment\n\n[Vireo\\Chat]\nC=3%25\n\n[Vireo\\Picker]\nP=1\n"},
      {"damaged lines stay as written; new keys go below those of their section",
       "[Vireo\\Configuration]\nglbFolder\nBytes=\xC3(\n[NoSection]\nLost=1\n",
       {{L"Configuration", L"A", L"1"}},
       "[Vireo\\Configuration]\nglbFolder\nBytes=\xC3(\nA=1\n[NoSection]\nLost=1\n"},
      {"a BOM, Windows line breaks and a missing last break are the file's own",
       "\xEF\xBB\xBF[Vireo\\Configuration]\r\nA=1",
       {{L"Configuration", L"A", L"2"}, {L"Configuration", L"B", L"3"}},
       "\xEF\xBB\xBF[Vireo\\Configuration]\r\nA=2\r\nB=3\r\n"},
      {"of a key written twice the line that is read changes; an unchanged value is untouched",
       "[Vireo\\Configuration]\nA=1\nA=2\nPath=C:\\new\\%zz\n",
       {{L"Configuration", L"A", L"3"}, {L"Configuration", L"Path", L"C:\\new\\%zz"}},
       "[Vireo\\Configuration]\nA=1\nA=3\nPath=C:\\new\\%zz\n"},
      {"a section written twice takes new keys in its last block",
       "[Vireo\\Chat]\nC=1\n[Vireo\\Picker]\nP=1\n[Vireo\\Chat]\n",
       {{L"Chat", L"D", L"2"}},
       "[Vireo\\Chat]\nC=1\n[Vireo\\Picker]\nP=1\n[Vireo\\Chat]\nD=2\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteText(c.before);
    FileSettingsTree tree(faults, file);
    for (const auto& [section, key, value] : c.writes) tree.Write(L"Vireo", section, key, value);
    tree.Flush();
    EXPECT_EQ(ReadText(), c.after);
  }
}

TEST_F(FileSettingsTreeTest, MissingOrEmptyFileIsAnEmptyTreeAndWritesWaitForFlush) {
  for (bool empty_file : {false, true}) {
    if (empty_file) WriteText("");
    FileSettingsTree tree(faults, file);
    EXPECT_TRUE(tree.TakeProblems().empty());
    EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Good"), std::nullopt);
    tree.Flush();  // nothing written: the file is left as it was
    EXPECT_EQ(fs::exists(file), empty_file);
    tree.Write(L"Corvina", L"Settings", L"Good", L"1");
    EXPECT_EQ(fs::exists(file) ? ReadText() : "", "");  // not saved on each Write
  }
  EXPECT_NE(ReadText().find("Good=1\n"), std::string::npos);  // the destructor saved
  EXPECT_FALSE(fs::exists(dir / "settings.ini.tmp"));
}

TEST_F(FileSettingsTreeTest, NamesTheFileCannotHoldAreRefused) {
  FileSettingsTree tree(faults, file);
  for (const wchar_t* key : {L"a=b", L"[x", L";x", L"line\nbreak"}) {
    try {
      tree.Write(L"Corvina", L"Settings", key, L"v");
      ADD_FAILURE() << "accepted a key the file cannot hold";
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), 5);
    }
  }
}

TEST(MemorySettingsTreeTest, ReadAndWriteAreCountedAndProblemsHandedOutOnce) {
  Faults faults;
  MemorySettingsTree tree(faults);
  tree.Write(L"Corvina", L"Settings", L"Key ", L"v");
  EXPECT_EQ(tree.Read(L"corvina", L"settings", L"KEY "), L"v");
  tree.AddProblem(Error(0, L"Settings", L"damaged"));
  EXPECT_EQ(tree.TakeProblems().size(), 1u);
  EXPECT_TRUE(tree.TakeProblems().empty());
  EXPECT_EQ(faults.Calls(Service::kSettings), 2u);
  faults.FailNthCall(Service::kSettings, 1, Error(462, L"Settings", L"gone"));
  EXPECT_THROW(tree.Write(L"Corvina", L"Settings", L"Key ", L"w"), Error);
  EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Key "), L"v");
}

}  // namespace
}  // namespace corvina::sim
