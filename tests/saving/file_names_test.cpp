#include "saving/file_names.h"

#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "platform/path.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

TEST(FileNamesTest, NextFreeNameKeepsTheQuirksOfTheCounter) {
  testing::SimWorld world;
  for (const wchar_t* taken : {L"C:\\Out\\Photo.JPG", L"C:\\Out\\readme", L"C:\\Out\\x.tar.gz",
                               L"C:\\old.dir\\file", L"C:\\Out\\two.txt", L"C:\\Out\\two(1).txt"})
    world.files.Put(taken, "x");
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"C:\\Out\\free.pdf", L"C:\\Out\\free.pdf"},
      {L"C:\\Out\\Photo.JPG", L"C:\\Out\\Photo(1).jpg"},
      {L"C:\\Out\\readme", L"C:\\Out\\readme(1).."},
      {L"C:\\Out\\x.tar.gz", L"C:\\Out\\x.tar(1).gz"},
      {L"C:\\old.dir\\file", L"C:\\old.dir\\file(1).."},
      {L"C:\\Out\\two.txt", L"C:\\Out\\two(2).txt"},
      {L"C:\\Out\\PHOTO.jpg", L"C:\\Out\\PHOTO(1).jpg"},  // names compare without case
  };
  for (const auto& [path, expected] : cases) EXPECT_EQ(GetNextFileName(world.files, path), expected);
}

TEST(FileNamesTest, CleaningReplacesEveryForbiddenCharacter) {
  EXPECT_EQ(CleanFileName(L"a\\b/c:d*e?f\"g<h>i|j.txt"), L"a_b_c_d_e_f_g_h_i_j.txt");
  EXPECT_EQ(CleanFileName(L"plain name.pdf"), L"plain name.pdf");
}

TEST(FileNamesTest, FileTypeTakesEverythingAfterTheFirstDot) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"invoice.pdf", L"pdf"}, {L"report.final.pdf", L"final.pdf"}, {L".hidden", L"hidden"},
      {L"end.", L""}};
  for (const auto& [name, type] : cases) EXPECT_EQ(FirstDotFileType(name).value_or(L"-"), type);
  EXPECT_FALSE(FirstDotFileType(L"archive"));
}

TEST(FileNamesTest, UnsafeNamesAreRecognised) {
  for (const wchar_t* bad : {L"", L"  ", L".", L"..", L"..\\x.pdf", L"a/b.pdf", L"C:x.pdf", L"\\\\s\\x"})
    EXPECT_FALSE(IsSafeAttachmentName(bad)) << ToUtf8(bad);
  for (const wchar_t* good : {L"x.pdf", L"..x.pdf", L"a..b", L"Setup.EXE.txt"})
    EXPECT_TRUE(IsSafeAttachmentName(good)) << ToUtf8(good);
}

// Arbitrary names: the helpers never crash, a cleaned name never holds a separator, and a
// free name always stays in the folder it was asked for.
TEST(FileNamesTest, DeviceNamesGetAnUnderscoreAfterTheirDevicePart) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"NUL", L"NUL_"},           {L"nul.txt", L"nul_.txt"},     {L"COM1", L"COM1_"},
      {L"CON.pdf", L"CON_.pdf"},   {L"LPT1", L"LPT1_"},           {L"Aux.tar.gz", L"Aux_.tar.gz"},
      {L"prn.", L"prn_"},          {L"NUL. .", L"NUL_"},          {L"con .txt", L"con_ .txt"},
      {L"lpt9.x.", L"lpt9_.x"},    {L"COM\u00B9.txt", L"COM\u00B9_.txt"}, {L"CONOUT$", L"CONOUT$_"},
      {L"conin$.log", L"conin$_.log"},
      // Not devices: kept as they are.
      {L"NULL.txt", L"NULL.txt"},  {L"COM10", L"COM10"},          {L"COM0.pdf", L"COM0.pdf"},
      {L"LPT", L"LPT"},            {L"CONSOLE", L"CONSOLE"},      {L"nul_.txt", L"nul_.txt"},
      {L"a.nul", L"a.nul"},        {L"xcon.pdf", L"xcon.pdf"},    {L"COM\u2074", L"COM\u2074"},
  };
  for (const auto& [name, safe] : cases) {
    EXPECT_EQ(DeviceSafeName(name), safe) << ToUtf8(name);
    EXPECT_EQ(IsDeviceName(name), std::wstring_view(name) != safe) << ToUtf8(name);
  }
}

TEST(FileNamesTest, RandomNamesStayInTheirFolder) {
  std::mt19937 random(42);
  const std::wstring alphabet = L"ab.\\/:*?\"<>| ..()\u00e9\u05e9";
  testing::SimWorld world;
  world.files.PutDirectory(L"C:\\Dest");
  for (int round = 0; round < 2000; ++round) {
    std::wstring name;
    const size_t length = random() % 12;
    for (size_t i = 0; i < length; ++i) name.push_back(alphabet[random() % alphabet.size()]);
    const std::wstring clean = CleanFileName(name);
    EXPECT_EQ(clean.find_first_of(L"\\/:*?\"<>|"), std::wstring::npos);
    (void)FirstDotFileType(name);
    if (!IsSafeAttachmentName(clean)) continue;
    const std::wstring path = L"C:\\Dest\\" + clean;
    if (round % 3 == 0) {
      try {
        world.files.Put(path, "x");
      } catch (const std::exception&) {
        continue;  // a name the file system itself refuses
      }
    }
    std::wstring next;
    try {
      next = GetNextFileName(world.files, path);
    } catch (const Error&) {
      continue;
    }
    EXPECT_TRUE(path::SamePath(path::Parent(next), L"C:\\Dest")) << ToUtf8(next);
  }
}

}  // namespace
}  // namespace corvina
