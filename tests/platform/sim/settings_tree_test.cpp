#include <gtest/gtest.h>

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

TEST_F(FileSettingsTreeTest, DamagedLinesAreSkippedAndReportedOnce) {
  WriteText(
      "\xEF\xBB\xBF"  // a BOM is not damage
      "orphan=1\n"    // 1: a key before any header
      "orphan2=2\n"   // 2: skipped with it
      "[Corvina\\Settings]\r\n"
      "; comment\n"
      "\n"
      "Good=yes\r\n"
      "no equals sign\n"   // 7
      "Path=C:\\new\\%zz\n"  // 8: backslashes and a lone "%" are ordinary characters
      "Bytes=\xC3(\n"      // 9
      "[NoSection]\n"      // 10: a header without section; its keys go with it
      "Lost=1\n"
      "[Corvina\\Other]\n"
      "Fine= ok\n");
  FileSettingsTree tree(faults, file);
  std::vector<Error> problems = tree.TakeProblems();
  ASSERT_EQ(problems.size(), 4u);
  const int kLines[] = {1, 7, 9, 10};
  for (size_t i = 0; i < problems.size(); ++i) {
    EXPECT_EQ(problems[i].number(), 0);
    EXPECT_EQ(problems[i].source(), L"Settings");
    EXPECT_NE(
        problems[i].description().find(L"settings.ini, line " + std::to_wstring(kLines[i]) + L":"),
        std::wstring::npos)
        << problems[i].what();
  }
  EXPECT_TRUE(tree.TakeProblems().empty());
  EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Good"), L"yes");
  EXPECT_EQ(tree.Read(L"Corvina", L"Other", L"Fine"), L" ok");
  EXPECT_EQ(tree.Read(L"Corvina", L"Settings", L"Path"), L"C:\\new\\%zz");
  EXPECT_EQ(tree.Read(L"NoSection", L"", L"Lost"), std::nullopt);
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
