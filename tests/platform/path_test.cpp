#include "platform/path.h"

#include <gtest/gtest.h>

namespace corvina::path {
namespace {

TEST(PathTest, ParentAndFileName) {
  const struct {
    const wchar_t* path;
    const wchar_t* parent;
    const wchar_t* name;
  } kCases[] = {
      {L"C:\\a\\b\\c.txt", L"C:\\a\\b", L"c.txt"},
      {L"C:\\a", L"C:\\", L"a"},
      {L"C:\\a\\", L"C:\\", L"a"},
      {L"C:\\", L"", L""},  // a root has no parent, so walking up ends
      {L"c:/a/b", L"c:/a", L"b"},
      {L"C:\\a\\\\b", L"C:\\a", L"b"},
      {L"name.txt", L"", L"name.txt"},
      {L"C:name", L"", L"name"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Parent(c.path), c.parent) << c.path;
    EXPECT_EQ(FileName(c.path), c.name) << c.path;
  }
}

TEST(PathTest, JoinAndSeparators) {
  EXPECT_EQ(Join(L"C:\\a", L"b.txt"), L"C:\\a\\b.txt");
  EXPECT_EQ(Join(L"C:\\a\\", L"\\b"), L"C:\\a\\b");
  EXPECT_EQ(Join(L"C:\\", L"b"), L"C:\\b");
  EXPECT_EQ(Join(L"", L"b"), L"b");
  EXPECT_EQ(WithTrailingSeparator(L"C:\\a"), L"C:\\a\\");
  EXPECT_EQ(WithTrailingSeparator(L"C:\\a/"), L"C:\\a/");
  EXPECT_EQ(WithoutTrailingSeparator(L"C:\\a\\\\"), L"C:\\a");
  EXPECT_EQ(WithoutTrailingSeparator(L"C:\\\\"), L"C:\\");
  EXPECT_EQ(Components(L"C:\\\\a//b\\"), (std::vector<std::wstring>{L"C:", L"a", L"b"}));
}

TEST(PathTest, DriveAbsoluteAndSamePath) {
  EXPECT_EQ(Drive(L"c:\\x"), L"C:");
  EXPECT_EQ(Drive(L"\\\\server\\share"), L"");
  EXPECT_EQ(Drive(L"\u00e9:\\x"), L"");  // drive letters are A-Z only
  for (const wchar_t* p : {L"C:\\x", L"c:/", L"\\\\server\\share"}) EXPECT_TRUE(IsAbsolute(p)) << p;
  for (const wchar_t* p : {L"C:x", L"\\x", L"x", L"C:"}) EXPECT_FALSE(IsAbsolute(p)) << p;
  EXPECT_TRUE(SamePath(L"C:\\Mail\\A.txt", L"c:/mail//a.TXT\\"));
  EXPECT_FALSE(SamePath(L"C:\\Mail\\A.txt", L"C:\\Mail\\A.txt\\b"));
  EXPECT_FALSE(SamePath(L"C:\\Mail", L"D:\\Mail"));
}

}  // namespace
}  // namespace corvina::path
