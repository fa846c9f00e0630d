// The Windows naming rules, run against both sim file systems: what the memory one keeps and
// what the mapped one leaves on the real disk must be the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>

#include "base/text.h"
#include "platform/sim/mapped_file_system.h"
#include "platform/sim/memory_file_system.h"
#include "support/error_number.h"

namespace corvina::sim {
namespace {

namespace fs = std::filesystem;

enum class Kind { kMemory, kMapped };

std::wstring Repeat(std::wstring_view part, size_t times) {
  std::wstring r;
  for (size_t i = 0; i < times; ++i) r += part;
  return r;
}

class WindowsNamesTest : public ::testing::TestWithParam<Kind> {
 protected:
  WindowsNamesTest() {
    if (GetParam() == Kind::kMemory) {
      auto m = std::make_unique<MemoryFileSystem>(faults);
      m->AddDrive(L'C', 1 << 20);
      memory = m.get();
      files = std::move(m);
    } else {
      root =
          fs::temp_directory_path() / ("corvina-names-" + std::to_string(std::random_device{}()));
      fs::create_directories(root);
      auto m = std::make_unique<MappedFileSystem>(faults);
      m->Map(L'C', root);
      files = std::move(m);
    }
    files->CreateDirectory(L"C:\\Out");
    files->WriteFile(L"C:\\Out\\Report.PDF", "pdf");
  }
  ~WindowsNamesTest() override {
    std::error_code ec;
    if (!root.empty()) fs::remove_all(root, ec);
  }

  // Every folder (ending in "\") and file drive C: really holds, sorted: for the mapped file
  // system, what is on the host disk.
  std::vector<std::wstring> Stored() const {
    std::vector<std::wstring> all;
    if (memory) {
      all = memory->ListAll();
    } else {
      for (const auto& e : fs::recursive_directory_iterator(root)) {
        std::u8string rel = e.path().lexically_relative(root).u8string();
        std::wstring name = L"C:\\" + FromUtf8(std::string(rel.begin(), rel.end()));
        std::replace(name.begin(), name.end(), L'/', L'\\');
        all.push_back(e.is_directory() ? name + L"\\" : name);
      }
    }
    std::sort(all.begin(), all.end());
    return all;
  }
  // Whether the drive can hold what only a "\\\\?\\" path names ("v.pdf.", "nul.txt", paths
  // beyond MAX_PATH). A Windows host applies these very rules to the mapped folder itself, and
  // its std::filesystem cannot name such entries; the mapped drive serves the simulator, which
  // runs on Linux.
  bool HoldsLiteralNames() const {
#ifdef _WIN32
    return memory != nullptr;
#else
    return true;
#endif
  }
  static int32_t ErrorOf(const std::function<void()>& call) { return testing::ErrorNumberOf(call); }

  Faults faults;
  fs::path root;
  MemoryFileSystem* memory = nullptr;
  std::unique_ptr<FileSystem> files;
};

TEST_P(WindowsNamesTest, ADeviceNameSwallowsWritesAndNeverExists) {
  using Call = std::function<void(FileSystem&, const std::wstring&)>;
  const struct {
    const char* what;
    Call call;
    int32_t number;
  } kCalls[] = {
      {"write", [](auto& f, auto& p) { f.WriteFile(p, "gone"); }, 0},
      {"append", [](auto& f, auto& p) { f.AppendFile(p, "gone"); }, 0},
      {"copy to", [](auto& f, auto& p) { f.CopyFile(L"C:\\Out\\Report.PDF", p, true); }, 0},
      {"read", [](auto& f, auto& p) { f.ReadFile(p); }, 53},
      {"length", [](auto& f, auto& p) { f.FileLength(p); }, 53},
      {"delete", [](auto& f, auto& p) { f.DeleteFile(p); }, 53},
      {"copy from", [](auto& f, auto& p) { f.CopyFile(p, L"C:\\Out\\copy", false); }, 53},
      {"move from", [](auto& f, auto& p) { f.MoveFile(p, L"C:\\Out\\moved", false); }, 53},
      {"move to", [](auto& f, auto& p) { f.MoveFile(L"C:\\Out\\Report.PDF", p, true); }, 75},
      {"mkdir", [](auto& f, auto& p) { f.CreateDirectory(p); }, 75},
      {"list", [](auto& f, auto& p) { f.ListFiles(p); }, 76},
  };
  const auto before = Stored();
  const uint64_t free_before = memory ? memory->FreeBytes(L'C') : 0;
  // The folder need not exist, nor the drive: Windows goes by the last name alone.
  for (const wchar_t* folder : {L"C:\\Out\\", L"c:/Out/Sub/", L"C:\\No\\Such\\", L"Q:\\"}) {
    for (const wchar_t* name : {L"NUL", L"nul.txt", L"CON.pdf", L"Com1.tar.gz", L"NUL.", L"nul ",
                                L"NUL .txt", L"lpt9", L"Aux.", L"prn.doc.", L"COM\u00B2"}) {
      const std::wstring path = std::wstring(folder) + name;
      SCOPED_TRACE(ToUtf8(path));
      for (const auto& c : kCalls)
        EXPECT_EQ(ErrorOf([&] { c.call(*files, path); }), c.number) << c.what;
      EXPECT_FALSE(files->FileExists(path));
      EXPECT_FALSE(files->DirectoryExists(path));
    }
  }
  EXPECT_EQ(Stored(), before);
  if (memory) {
    EXPECT_EQ(memory->FreeBytes(L'C'), free_before);
  }
}

TEST_P(WindowsNamesTest, NamesResolveAsWindowsNormalisesThem) {
  if (!HoldsLiteralNames()) GTEST_SKIP() << "the Windows host resolves literal names itself";
  const std::wstring kLong = L"\\\\?\\C:\\Out\\";
  const struct {
    std::wstring path;
    int32_t number;
  } kWrites[] = {
      {L"C:\\Out\\x.pdf.", 0},      // stored as x.pdf
      {L"C:\\Out\\y.pdf ", 0},      // y.pdf
      {L"C:\\Out.\\z.pdf. . ", 0},  // a folder name loses one dot: z.pdf in Out
      {L"C:\\Out \\w.pdf", 76},     // but keeps its blank: the folder "Out " is not there
      {L"C:\\Out\\...", 52},
      {L"C:\\Out\\ . ", 52},
      {L"C:\\Out\\.. .\\w.pdf", 52},
      {L"C:\\Out\\COM0", 0},  // near misses of device names are files
      {L"C:\\Out\\com10.txt", 0},
      {L"C:\\Out\\ NUL", 0},
      {L"C:\\Out\\x.nul", 0},
      {kLong + L"v.pdf.", 0},  // literal names: v.pdf. and nul.txt
      {kLong + L"nul.txt", 0},
      {kLong + L"Sub/u.pdf", 52},  // "/" is no separator there
      {kLong + L"..\\u.pdf", 52},
      {kLong + L".\\u.pdf", 52},
      {kLong + L"\\u.pdf", 52},
      {L"\\\\?\\Q:\\u.pdf", 76},
      {L"\\\\?\\UNC\\server\\share\\u.pdf", 76},
  };
  for (const auto& c : kWrites)
    EXPECT_EQ(ErrorOf([&] { files->WriteFile(c.path, "1"); }), c.number) << ToUtf8(c.path);
  EXPECT_EQ(Stored(),
            (std::vector<std::wstring>{L"C:\\Out\\", L"C:\\Out\\ NUL", L"C:\\Out\\COM0",
                                       L"C:\\Out\\Report.PDF", L"C:\\Out\\com10.txt",
                                       L"C:\\Out\\nul.txt", L"C:\\Out\\v.pdf.", L"C:\\Out\\x.nul",
                                       L"C:\\Out\\x.pdf", L"C:\\Out\\y.pdf", L"C:\\Out\\z.pdf"}));
  // A last name loses all its trailing dots, one followed by a separator only one.
  EXPECT_TRUE(files->DirectoryExists(L"C:\\Out.."));
  EXPECT_FALSE(files->DirectoryExists(L"C:\\Out..\\"));
  // Both spellings of an ordinary path reach one file, in any case.
  EXPECT_EQ(files->ReadFile(L"\\\\?\\c:\\OUT\\report.pdf"), "pdf");
  EXPECT_TRUE(files->FileExists(kLong + L"X.PDF"));
  EXPECT_FALSE(files->FileExists(kLong + L"x.pdf."));
  // What only the literal form can name stays out of reach of the ordinary one.
  EXPECT_FALSE(files->FileExists(L"C:\\Out\\v.pdf."));  // means v.pdf
  EXPECT_FALSE(files->FileExists(L"C:\\Out\\nul.txt"));
  EXPECT_EQ(files->ReadFile(kLong + L"NUL.TXT"), "1");
  EXPECT_EQ(files->ListFiles(L"C:\\Out").size(), 10u);
  EXPECT_TRUE(files->GetDiskFreeSpace(L"\\\\?\\C:\\"));
}

TEST_P(WindowsNamesTest, LongNamesAndPathsAreRefusedWithWindowsNumbers) {
  if (!HoldsLiteralNames()) GTEST_SKIP() << "the Windows host limits the mapped folder's paths";
  const std::wstring out = L"C:\\Out\\";  // 7 characters
  const std::wstring deep = L"\\\\?\\C:\\Out\\" + Repeat(std::wstring(200, L'd') + L"\\", 2);
  files->CreateDirectory(deep.substr(0, 212));
  files->CreateDirectory(deep);
  const struct {
    std::wstring path;
    int32_t number;
  } kCases[] = {
      {out + std::wstring(252, L'a'), 0},          // 259 characters
      {out + std::wstring(253, L'b'), 76},         // 260: MAX_PATH
      {out + std::wstring(252, L'c') + L".", 0},   // 259 once the dot is dropped
      {out + Repeat(L"..\\Out\\", 40) + L"e", 0},  // 288 as written, 9 resolved
      {L"C:\\" + std::wstring(256, L'f'), 75},     // 259, but the name is too long
      {out + std::wstring(256, L'g'), 76},         // the path is refused first
      {L"C:\\" + Repeat(L"\U0001F600", 128), 75},  // 256 UTF-16 units
      {deep + std::wstring(255, L'h'), 0},         // 668 characters with the prefix
      {deep + std::wstring(256, L'i'), 75},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.path.size());
    EXPECT_EQ(ErrorOf([&] { files->WriteFile(c.path, "1"); }), c.number);
    EXPECT_EQ(files->FileExists(c.path), c.number == 0);
    EXPECT_EQ(ErrorOf([&] { files->ReadFile(c.path); }), c.number);
  }
  // The file the prefix reached is beyond MAX_PATH for the ordinary spelling.
  EXPECT_FALSE(files->DirectoryExists(deep.substr(4)));
  EXPECT_EQ(ErrorOf([&] { files->CreateDirectory(deep.substr(4) + L"x"); }), 76);
  EXPECT_EQ(files->ListFiles(deep).size(), 1u);
}

TEST_P(WindowsNamesTest, RefusedAndDevicePathsStillCountAndFailByPlan) {
  const uint64_t calls = faults.Calls(Service::kFiles);
  faults.FailNthCall(Service::kFiles, 2, Error(7, L"Files", L"Out of memory"));
  files->WriteFile(L"C:\\Out\\nul", "x");
  EXPECT_EQ(ErrorOf([&] { files->AppendFile(L"C:\\Out\\con.txt", "x"); }), 7);
  EXPECT_FALSE(files->FileExists(L"C:\\" + std::wstring(300, L'x')));
  EXPECT_EQ(faults.Calls(Service::kFiles), calls + 3);
}

std::string KindName(const ::testing::TestParamInfo<Kind>& param) {
  return param.param == Kind::kMemory ? "Memory" : "Mapped";
}

INSTANTIATE_TEST_SUITE_P(BothFileSystems, WindowsNamesTest,
                         ::testing::Values(Kind::kMemory, Kind::kMapped), KindName);

}  // namespace
}  // namespace corvina::sim
