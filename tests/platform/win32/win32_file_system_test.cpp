#include "platform/win32/win32_file_system.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/error.h"
#include "platform/win32/long_path.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

class Win32FileSystemTest : public ::testing::Test {
 protected:
  void SetUp() override {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    dir = std::wstring(temp) + L"corvina-fs-" + std::to_wstring(GetCurrentProcessId());
    RemoveTree(L"\\\\?\\" + dir);  // left by a run that crashed
    files.CreateDirectory(dir);
  }
  void TearDown() override { RemoveTree(L"\\\\?\\" + dir); }
  // Everything below `folder`, however long its paths, then the folder itself.
  static void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
      do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        const std::wstring at = folder + L"\\" + name;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
          RemoveTree(at);
        } else {
          SetFileAttributesW(at.c_str(), FILE_ATTRIBUTE_NORMAL);
          DeleteFileW(at.c_str());
        }
      } while (FindNextFileW(find, &found));
      FindClose(find);
    }
    RemoveDirectoryW(folder.c_str());
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

TEST(LongPathTest, NormalisesAsWindowsDoesThenPrefixes) {
  wchar_t here[MAX_PATH];
  GetCurrentDirectoryW(MAX_PATH, here);
  const std::wstring current = std::wstring(L"\\\\?\\") + here + (std::wstring(here).back() == L'\\' ? L"" : L"\\");
  const struct {
    std::wstring path, long_path, root;
  } rows[] = {
      {L"C:\\a\\b.txt", L"\\\\?\\C:\\a\\b.txt", L"\\\\?\\C:\\"},
      {L"C:/a/b/", L"\\\\?\\C:\\a\\b", L"\\\\?\\C:\\"},
      {L"C:\\a. \\b..\\c. . ", L"\\\\?\\C:\\a\\b\\c", L"\\\\?\\C:\\"},
      {L"C:\\a\\.\\x\\..\\b", L"\\\\?\\C:\\a\\b", L"\\\\?\\C:\\"},
      {L"C:\\", L"\\\\?\\C:\\", L"\\\\?\\C:\\"},
      {L"\\\\server\\share\\dir. \\f.txt ", L"\\\\?\\UNC\\server\\share\\dir\\f.txt",
       L"\\\\?\\UNC\\server\\share\\"},
      {L"//server/share", L"\\\\?\\UNC\\server\\share", L"\\\\?\\UNC\\server\\share\\"},
      {L"rel. \\f", current + L"rel\\f", current.substr(0, 7)},
      // Already long, or a device: taken literally.
      {L"\\\\?\\C:\\x. ", L"\\\\?\\C:\\x. ", L"\\\\?\\C:\\"},
      {L"\\\\.\\COM1", L"\\\\.\\COM1", L""},
  };
  for (const auto& row : rows) {
    const std::string label(row.path.begin(), row.path.end());
    EXPECT_EQ(LongPath(row.path), row.long_path) << label;
    EXPECT_EQ(LongPathRoot(LongPath(row.path)), row.root) << label;
  }
}

// A folder and a file whose full paths are about 300 characters: every member works there.
TEST_F(Win32FileSystemTest, EveryMemberWorksBeyondMaxPath) {
  std::wstring deep = dir;
  for (wchar_t c : {L'a', L'b', L'c'}) {
    deep += L"\\" + std::wstring(90, c);
    files.CreateDirectory(deep);
  }
  const std::wstring file = deep + L"\\file.txt";
  ASSERT_GT(file.size(), 300u);
  EXPECT_TRUE(files.DirectoryExists(deep));
  files.WriteFile(file, "first, longer");
  files.WriteFile(file, "second");  // over an existing file, through the temporary one
  files.AppendFile(file, "+more");
  EXPECT_TRUE(files.FileExists(file));
  EXPECT_EQ(files.FileLength(file), 11);
  EXPECT_EQ(files.ReadFile(file), "second+more");
  files.CopyFile(file, deep + L"\\copy.txt", true);
  files.MoveFile(deep + L"\\copy.txt", deep + L"\\moved.txt", false);
  auto names = files.ListFiles(deep);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"file.txt", L"moved.txt"}));  // no temporary left
  EXPECT_EQ(files.ReadFile(deep + L"\\moved.txt"), "second+more");
  files.DeleteFile(deep + L"\\moved.txt");
  EXPECT_FALSE(files.FileExists(deep + L"\\moved.txt"));
  EXPECT_TRUE(files.GetDiskFreeSpace(deep).has_value());
}

// Trailing dots and blanks are dropped from every name, as Windows drops them: no name is
// created that other programs could not open, and the same folder is found either way.
TEST_F(Win32FileSystemTest, NamesLoseTheirTrailingDotsAndBlanks) {
  files.CreateDirectory(At(L"sub. "));
  files.WriteFile(At(L"sub. /x. "), "x");
  files.AppendFile(At(L"sub/y .."), "y");
  EXPECT_TRUE(files.DirectoryExists(At(L"sub")));
  auto names = files.ListFiles(At(L"sub"));
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"x", L"y"}));
  WIN32_FIND_DATAW found;
  HANDLE find = FindFirstFileW(At(L"s*").c_str(), &found);  // what any other program sees
  ASSERT_NE(find, INVALID_HANDLE_VALUE);
  EXPECT_STREQ(found.cFileName, L"sub");
  FindClose(find);
  EXPECT_EQ(files.ReadFile(At(L"sub\\x")), "x");
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
