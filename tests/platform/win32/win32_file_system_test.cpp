#include "platform/win32/win32_file_system.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/error.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

class Win32FileSystemTest : public ::testing::Test {
 protected:
  void SetUp() override {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    dir = std::wstring(temp) + L"corvina-fs-" + std::to_wstring(GetCurrentProcessId());
    files.CreateDirectory(dir);
  }
  void TearDown() override {
    for (const std::wstring& name : files.ListFiles(dir)) {
      SetFileAttributesW(At(name).c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW(At(name).c_str());
    }
    RemoveDirectoryW(At(L"sub").c_str());
    RemoveDirectoryW(dir.c_str());
  }
  std::wstring At(const std::wstring& name) const { return dir + L"\\" + name; }

  Win32FileSystem files;
  std::wstring dir;
};

TEST_F(Win32FileSystemTest, WriteReplacesWholeAndLeavesNoTemporaryFile) {
  files.WriteFile(At(L"a.txt"), "first version, longer");
  files.WriteFile(At(L"A.TXT"), "second");
  files.AppendFile(At(L"a.txt"), "+more");
  files.AppendFile(At(L"log.txt"), "created by append");
  EXPECT_EQ(files.ReadFile(At(L"a.txt")), "second+more");
  EXPECT_EQ(files.FileLength(At(L"a.txt")), 11);
  EXPECT_EQ(files.ReadFile(At(L"log.txt")), "created by append");
  files.CreateDirectory(At(L"sub"));
  EXPECT_TRUE(files.DirectoryExists(At(L"sub")));
  EXPECT_FALSE(files.FileExists(At(L"sub")));
  files.CopyFile(At(L"a.txt"), At(L"b.txt"), true);
  auto names = files.ListFiles(dir);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"a.txt", L"b.txt", L"log.txt"}));
  files.DeleteFile(At(L"b.txt"));
  EXPECT_FALSE(files.FileExists(At(L"b.txt")));

  // A refused write keeps the old file whole and leaves nothing beside it.
  SetFileAttributesW(At(L"a.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  for (bool append : {false, true}) {
    try {
      if (append) files.AppendFile(At(L"a.txt"), "third");
      else files.WriteFile(At(L"a.txt"), "third");
      ADD_FAILURE() << "a read-only file was written, append " << append;
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), kErrPermissionDenied);
    }
  }
  EXPECT_EQ(files.ReadFile(At(L"a.txt")), "second+more");
  EXPECT_EQ(files.ListFiles(dir).size(), 2u);
}

TEST_F(Win32FileSystemTest, FailuresCarryTheClassicNumbersAndThePath) {
  files.WriteFile(At(L"a.txt"), "x");
  files.CreateDirectory(At(L"sub"));
  const std::wstring missing = At(L"missing.txt");
  const std::wstring no_folder = At(L"nofolder\\x.txt");
  struct Row {
    const char* what;
    std::function<void()> call;
    int32_t number;
    std::wstring path;
  } rows[] = {
      {"read missing", [&] { files.ReadFile(missing); }, kErrFileNotFound, missing},
      {"read in missing folder", [&] { files.ReadFile(no_folder); }, kErrPathNotFound, no_folder},
      {"read a folder", [&] { files.ReadFile(At(L"sub")); }, 75, At(L"sub")},
      {"length missing", [&] { files.FileLength(missing); }, kErrFileNotFound, missing},
      {"delete missing", [&] { files.DeleteFile(missing); }, kErrFileNotFound, missing},
      {"delete a folder", [&] { files.DeleteFile(At(L"sub")); }, kErrFileNotFound, At(L"sub")},
      {"mkdir existing", [&] { files.CreateDirectory(At(L"sub")); }, 75, At(L"sub")},
      {"mkdir two levels", [&] { files.CreateDirectory(At(L"x\\y")); }, kErrPathNotFound, At(L"x\\y")},
      {"list missing", [&] { files.ListFiles(At(L"nofolder")); }, kErrPathNotFound, At(L"nofolder")},
      {"write in missing folder", [&] { files.WriteFile(no_folder, "x"); }, kErrPathNotFound, no_folder},
      {"write over a folder", [&] { files.WriteFile(At(L"sub"), "x"); }, 75, At(L"sub")},
      {"copy onto existing", [&] { files.CopyFile(At(L"a.txt"), At(L"a2.txt"), false);
                                   files.CopyFile(At(L"a.txt"), At(L"a2.txt"), true); },
       kErrFileExists, At(L"a2.txt")},
      {"copy missing", [&] { files.CopyFile(missing, At(L"c.txt"), false); }, kErrFileNotFound, missing},
  };
  for (const Row& r : rows) {
    try {
      r.call();
      ADD_FAILURE() << r.what << ": no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), r.number) << r.what;
      EXPECT_EQ(e.source(), L"Files") << r.what;
      EXPECT_NE(e.description().find(r.path), std::wstring::npos) << r.what;
    }
  }
}

TEST_F(Win32FileSystemTest, DiskFreeSpaceOfKnownAndUnknownDrives) {
  const auto c = files.GetDiskFreeSpace(L"C:\\");
  ASSERT_TRUE(c.has_value());
  EXPECT_GT(c->bytes_per_sector, 0u);
  EXPECT_GT(c->total_clusters, 0u);
  EXPECT_FALSE(files.GetDiskFreeSpace(L"Q:\\").has_value());
}

}  // namespace
}  // namespace corvina::win32
