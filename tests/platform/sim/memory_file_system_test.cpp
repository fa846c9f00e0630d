#include "platform/sim/memory_file_system.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <stdexcept>

#include "base/text.h"
#include "platform/sim/file_errors.h"

namespace corvina::sim {
namespace {

class MemoryFileSystemTest : public ::testing::Test {
 protected:
  MemoryFileSystemTest() {
    fs.AddDrive(L'C', 1 << 20);
    fs.AddDriveWithoutDisk(L'a');
    fs.Put(L"C:\\Mail\\Report.PDF", "pdf");
    fs.Put(L"C:\\Mail\\locked.txt", "keep");
    fs.SetReadOnly(L"C:\\mail\\LOCKED.TXT");
  }
  // The error number the call throws, 0 when it does not throw.
  static int32_t ErrorOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const Error& e) {
      EXPECT_EQ(e.source(), L"Files");
      return e.number();
    }
    return 0;
  }

  Faults faults;
  MemoryFileSystem fs{faults};
};

TEST_F(MemoryFileSystemTest, NamesAreFoundInAnyCaseAndKeepTheirOwn) {
  EXPECT_TRUE(fs.FileExists(L"c:/MAIL/report.pdf"));
  EXPECT_TRUE(fs.DirectoryExists(L"C:\\mail\\"));
  EXPECT_FALSE(fs.DirectoryExists(L"C:\\Mail\\Report.pdf"));
  EXPECT_FALSE(fs.FileExists(L"C:\\Mail"));
  fs.WriteFile(L"C:\\MAIL\\REPORT.pdf", "new");
  fs.CreateDirectory(L"c:\\mail\\Sub");
  EXPECT_EQ(fs.ReadFile(L"C:\\Mail\\.\\Sub\\..\\report.PDF"), "new");
  EXPECT_EQ(fs.ListFiles(L"c:\\MAIL").size(), 2u);
  EXPECT_EQ(fs.ListAll(), (std::vector<std::wstring>{L"C:\\Mail\\", L"C:\\Mail\\locked.txt",
                                                     L"C:\\Mail\\Report.PDF", L"C:\\Mail\\Sub\\"}));
  // Every letter is a drive in either case, the first and the last included, however written.
  for (const wchar_t* drive : {L"A:", L"a:", L"Z:", L"z:"}) {
    MemoryFileSystem drives{faults};
    drives.AddDrive(drive[0], 1 << 10);
    drives.WriteFile(std::wstring(L"\\\\?\\") + drive + L"\\x", "1");
    EXPECT_TRUE(drives.FileExists(std::wstring(drive) + L"\\x")) << ToUtf8(drive);
  }
}

TEST_F(MemoryFileSystemTest, FailuresCarryTheClassicNumbers) {
  const struct {
    const char* what;
    std::function<void(MemoryFileSystem&)> call;
    int32_t number;
  } kCases[] = {
      {"mkdir existing", [](auto& f) { f.CreateDirectory(L"C:\\MAIL"); }, 75},
      {"mkdir over file", [](auto& f) { f.CreateDirectory(L"C:\\Mail\\Report.pdf"); }, 75},
      {"mkdir root", [](auto& f) { f.CreateDirectory(L"C:\\"); }, 75},
      {"mkdir two levels", [](auto& f) { f.CreateDirectory(L"C:\\New\\Sub"); }, 76},
      {"delete missing", [](auto& f) { f.DeleteFile(L"C:\\Mail\\x"); }, 53},
      {"delete folder", [](auto& f) { f.DeleteFile(L"C:\\Mail"); }, 53},
      {"delete read-only", [](auto& f) { f.DeleteFile(L"C:\\Mail\\locked.txt"); }, 70},
      {"write read-only", [](auto& f) { f.WriteFile(L"C:\\Mail\\locked.txt", "x"); }, 70},
      {"append read-only", [](auto& f) { f.AppendFile(L"C:\\Mail\\locked.txt", "x"); }, 70},
      {"write folder", [](auto& f) { f.WriteFile(L"C:\\Mail", "x"); }, 75},
      {"write no folder", [](auto& f) { f.WriteFile(L"C:\\No\\a", "x"); }, 76},
      {"write bad name", [](auto& f) { f.WriteFile(L"C:\\Mail\\a?b", "x"); }, 52},
      {"write unknown drive", [](auto& f) { f.WriteFile(L"Q:\\a", "x"); }, 76},
      {"write relative", [](auto& f) { f.WriteFile(L"a.txt", "x"); }, 76},
      {"read folder", [](auto& f) { f.ReadFile(L"C:\\Mail"); }, 75},
      {"read missing", [](auto& f) { f.ReadFile(L"C:\\Mail\\x"); }, 53},
      {"length missing", [](auto& f) { f.FileLength(L"C:\\x"); }, 53},
      {"list missing", [](auto& f) { f.ListFiles(L"C:\\No"); }, 76},
      {"list no disk", [](auto& f) { f.ListFiles(L"A:\\"); }, 71},
      {"copy missing", [](auto& f) { f.CopyFile(L"C:\\x", L"C:\\y", false); }, 53},
      {"copy onto existing",
       [](auto& f) { f.CopyFile(L"C:\\Mail\\Report.PDF", L"C:\\Mail\\LOCKED.txt", true); }, 58},
      {"copy onto read-only",
       [](auto& f) { f.CopyFile(L"C:\\Mail\\Report.PDF", L"C:\\Mail\\locked.txt", false); }, 70},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ErrorOf([&] { c.call(fs); }), c.number) << c.what;
  }
  EXPECT_EQ(fs.Get(L"C:\\Mail\\locked.txt"), "keep");
  EXPECT_EQ(fs.ListAll().size(), 3u);  // no failure left anything behind
}

TEST_F(MemoryFileSystemTest, AWriteThatDoesNotFitFailsWithDiskFullAndChangesNothing) {
  fs.SetFreeBytes(L'C', 4);
  EXPECT_EQ(ErrorOf([&] { fs.WriteFile(L"C:\\Mail\\big.txt", "12345"); }), kErrDiskFull);
  EXPECT_FALSE(fs.Get(L"C:\\Mail\\big.txt"));
  // Replacing needs room for the whole new content: the temporary file sits beside the old.
  EXPECT_EQ(ErrorOf([&] { fs.WriteFile(L"C:\\Mail\\Report.PDF", "12345"); }), kErrDiskFull);
  EXPECT_EQ(ErrorOf([&] { fs.AppendFile(L"C:\\Mail\\Report.PDF", "12345"); }), kErrDiskFull);
  EXPECT_EQ(ErrorOf([&] { fs.CopyFile(L"C:\\Mail\\locked.txt", L"C:\\c", false); }), 0);
  EXPECT_EQ(ErrorOf([&] { fs.CopyFile(L"C:\\Mail\\Report.PDF", L"C:\\d", false); }), kErrDiskFull);
  EXPECT_EQ(fs.Get(L"C:\\Mail\\Report.PDF"), "pdf");
  EXPECT_EQ(fs.FreeBytes(L'C'), 0u);
  fs.DeleteFile(L"C:\\Mail\\Report.PDF");
  EXPECT_EQ(fs.FreeBytes(L'C'), 3u);
}

TEST_F(MemoryFileSystemTest, FreeSpaceIsReportedInClustersOfFourKilobytes) {
  fs.SetFreeBytes(L'C', 5 * 4096 + 100);
  fs.WriteFile(L"C:\\a", std::string(4097, 'x'));
  auto space = fs.GetDiskFreeSpace(L"c:\\");
  ASSERT_TRUE(space);
  EXPECT_EQ(space->sectors_per_cluster * space->bytes_per_sector, 4096u);
  EXPECT_EQ(space->free_clusters, 4u);  // 16483 bytes left
  fs.SetFreeBytes(L'C', uint64_t{1} << 50);
  EXPECT_EQ(fs.GetDiskFreeSpace(L"C:\\")->free_clusters, std::numeric_limits<uint32_t>::max());
  EXPECT_FALSE(fs.GetDiskFreeSpace(L"A:\\"));  // no disk
  EXPECT_FALSE(fs.GetDiskFreeSpace(L"Q:\\"));
  EXPECT_FALSE(fs.FileExists(L"A:\\x"));
}

TEST_F(MemoryFileSystemTest, AFaultHitsExactlyThePlannedFilesCall) {
  fs.Put(L"C:\\seeded", "helpers are not counted");
  faults.FailNthCall(Service::kFiles, 3, Error(7, L"Files", L"Out of memory"));
  fs.FileExists(L"C:\\a");
  fs.CreateDirectory(L"C:\\Out");
  try {
    fs.WriteFile(L"C:\\Out\\a.txt", "x");
    FAIL() << "the third call should fail";
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), 7);
  }
  EXPECT_EQ(faults.last_failed_call(), "Files.WriteFile");
  EXPECT_FALSE(fs.Get(L"C:\\Out\\a.txt"));
  fs.WriteFile(L"C:\\Out\\a.txt", "x");  // the plan is spent
  EXPECT_EQ(faults.Calls(Service::kFiles), 4u);
}

TEST_F(MemoryFileSystemTest, SeedingRefusesWhatWindowsCouldNotHoldAsAFile) {
  for (const wchar_t* path : {L"C:\\Mail\\nul.txt", L"C:\\Mail\\CON", L"C:\\Mail\\com1 .eml",
                              L"Q:\\a", L"C:\\Mail\\Report.pdf\\a"}) {
    EXPECT_THROW(fs.Put(path, "x"), std::invalid_argument) << ToUtf8(path);
    EXPECT_THROW(fs.PutDirectory(path), std::invalid_argument) << ToUtf8(path);
  }
  // What Windows itself refuses gets its answer.
  EXPECT_EQ(ErrorOf([&] { fs.Put(L"C:\\Mail\\...", "x"); }), kErrBadFileName);
  EXPECT_EQ(ErrorOf([&] { fs.PutDirectory(L"C:\\" + std::wstring(256, L'n')); }), 75);
  fs.Put(L"\\\\?\\C:\\Mail\\NUL", "a file all the same");  // made by a program that used the prefix
  fs.Put(L"C:\\Mail\\trimmed. ", "t");
  EXPECT_EQ(fs.ListFiles(L"C:\\Mail").size(), 4u);
  EXPECT_EQ(fs.Get(L"C:\\Mail\\trimmed"), "t");
}

TEST_F(MemoryFileSystemTest, APrefixedPathMayBeThirtyTwoThousandCharactersLong) {
  // "\\?\C:\" and 128 folders of 254 characters: 32647 characters.
  std::wstring folder = L"\\\\?\\C:\\";
  for (int i = 0; i < 128; ++i) folder += std::wstring(254, L'a' + i % 26) + L"\\";
  fs.PutDirectory(folder);
  EXPECT_EQ(ErrorOf([&] { fs.WriteFile(folder + std::wstring(120, L'x'), "longest"); }), 0);
  EXPECT_EQ(ErrorOf([&] { fs.WriteFile(folder + std::wstring(121, L'y'), "x"); }), 75);
  EXPECT_EQ(fs.ListFiles(folder), (std::vector<std::wstring>{std::wstring(120, L'x')}));
}

}  // namespace
}  // namespace corvina::sim
