#include "platform/sim/mapped_file_system.h"
#include "support/error_number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace corvina::sim {
namespace {

namespace fs = std::filesystem;

class MappedFileSystemTest : public ::testing::Test {
 protected:
  MappedFileSystemTest()
      : root(fs::temp_directory_path() /
             ("corvina-mapped-" + std::to_string(std::random_device{}()))) {
    fs::create_directories(root / "Mail");
    std::ofstream(root / "Mail" / "Report.PDF") << "pdf";
    files.Map(L'c', root);
  }
  ~MappedFileSystemTest() override {
    // Windows will not delete a read-only file: give every file its write permission back.
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(root, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec))
      fs::permissions(it->path(), fs::perms::owner_write, fs::perm_options::add, ec);
    fs::remove_all(root, ec);
  }

  std::vector<std::string> HostNames(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(folder))
      names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
  static int32_t ErrorOf(const std::function<void()>& call) { return testing::ErrorNumberOf(call); }

  fs::path root;
  Faults faults;
  MappedFileSystem files{faults};
};

TEST_F(MappedFileSystemTest, ExistingNamesAreFoundInAnyCaseOnTheHost) {
  EXPECT_TRUE(files.FileExists(L"C:\\MAIL\\report.pdf"));
  EXPECT_EQ(files.ReadFile(L"c:/mail/REPORT.PDF"), "pdf");
  // On a host that ignores case itself (Windows) the name as asked already finds the file.
  const auto host = files.HostPath(L"C:\\mail\\report.pdf");
  ASSERT_TRUE(host);
  EXPECT_TRUE(fs::equivalent(*host, root / "Mail" / "Report.PDF"));
  files.WriteFile(L"C:\\mail\\REPORT.pdf", "new");  // replaces, keeping the host's name
  files.WriteFile(L"C:\\MAIL\\R\u00e9sum\u00e9.txt", "cv");
  EXPECT_EQ(HostNames(root / "Mail"),
            (std::vector<std::string>{"Report.PDF", "R\u00e9sum\u00e9.txt"}));
  EXPECT_EQ(files.ReadFile(L"C:\\Mail\\Report.PDF"), "new");
  auto listed = files.ListFiles(L"C:\\mail");
  EXPECT_NE(std::find(listed.begin(), listed.end(), L"R\u00e9sum\u00e9.txt"), listed.end());
}

TEST_F(MappedFileSystemTest, WritesLeaveOnlyTheTargetAndKeepTheClassicErrors) {
  files.CreateDirectory(L"C:\\mail\\Out");
  files.WriteFile(L"C:\\Mail\\Out\\a.txt", "one");
  files.AppendFile(L"C:\\Mail\\OUT\\A.TXT", "+two");
  files.CopyFile(L"C:\\Mail\\Out\\a.txt", L"C:\\Mail\\Out\\b.txt", true);
  EXPECT_EQ(HostNames(root / "Mail" / "Out"), (std::vector<std::string>{"a.txt", "b.txt"}));
  EXPECT_EQ(files.FileLength(L"C:\\Mail\\Out\\b.txt"), 7);
  fs::permissions(root / "Mail" / "Out" / "a.txt", fs::perms::owner_write,
                  fs::perm_options::remove);
  const struct {
    std::function<void()> call;
    int32_t number;
  } kCases[] = {
      {[&] { files.WriteFile(L"C:\\Mail\\Out\\a.txt", "x"); }, 70},
      {[&] { files.DeleteFile(L"C:\\Mail\\Out\\a.txt"); }, 70},
      {[&] { files.WriteFile(L"C:\\Mail\\Out", "x"); }, 75},
      {[&] { files.CreateDirectory(L"C:\\MAIL"); }, 75},
      {[&] { files.CreateDirectory(L"C:\\No\\Sub"); }, 76},
      {[&] { files.CopyFile(L"C:\\Mail\\Out\\a.txt", L"C:\\Mail\\Out\\B.TXT", true); }, 58},
      {[&] { files.ReadFile(L"C:\\Mail\\none"); }, 53},
      {[&] { files.ListFiles(L"C:\\No"); }, 76},
      {[&] { files.WriteFile(L"D:\\a.txt", "x"); }, 76},  // unmapped drive
  };
  for (size_t i = 0; i < std::size(kCases); ++i)
    EXPECT_EQ(ErrorOf(kCases[i].call), kCases[i].number) << "case " << i;
  EXPECT_EQ(files.ReadFile(L"C:\\Mail\\Out\\a.txt"), "one+two");
  EXPECT_EQ(HostNames(root / "Mail" / "Out"), (std::vector<std::string>{"a.txt", "b.txt"}));
}

TEST_F(MappedFileSystemTest, FreeSpaceComesFromTheHost) {
  auto space = files.GetDiskFreeSpace(L"C:\\");
  ASSERT_TRUE(space);
  EXPECT_EQ(space->sectors_per_cluster * space->bytes_per_sector, 4096u);
  EXPECT_GT(space->total_clusters, 0u);
  EXPECT_LE(space->free_clusters, space->total_clusters);
  EXPECT_FALSE(files.GetDiskFreeSpace(L"D:\\"));
  EXPECT_EQ(faults.Calls(Service::kFiles), 2u);
}

}  // namespace
}  // namespace corvina::sim
