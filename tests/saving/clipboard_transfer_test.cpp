#include "saving/clipboard_transfer.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

std::string Header() { return std::string("\x14\0\0\0", 4) + std::string(16, '\0'); }

TEST(ClipboardTransferTest, BlockHasTheTwentyByteHeaderAndADoubleNul) {
  EXPECT_EQ(DropBlock({"C:\\a.txt", "C:\\b.txt"}), Header() + std::string("C:\\a.txt\0C:\\b.txt\0\0", 19));
  EXPECT_EQ(DropBlock({}), Header() + std::string(1, '\0'));
  // An entry whose copy failed is empty: readers stop there.
  EXPECT_EQ(DropBlock({"C:\\a", "", "C:\\c"}), Header() + std::string("C:\\a\0\0C:\\c\0\0", 12));
}

class ClipboardFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    addin = world.StartOutlook();
    world.files.Put(L"C:\\Mail\\one.txt", "1");
    world.files.Put(L"C:\\Mail\\two.txt", "2");
  }
  std::wstring Folder() { return std::wstring(testing::kAddinFolder) + L"\\Temp\\ClipBoard\\"; }
  SimWorld world;
  std::unique_ptr<DesVireo> addin;
};

TEST_F(ClipboardFilesTest, SameNameTwiceGetsACounterAndOldCopiesGo) {
  world.files.Put(Folder() + L"stale.txt", "old copy");
  ASSERT_TRUE(CopyFilesToClipboard(addin->addin(), {{L"C:\\Mail\\one.txt", L"re:port?.txt"},
                                                    {L"C:\\Mail\\two.txt", L"re:port?.txt"}}));
  EXPECT_FALSE(world.files.Get(Folder() + L"stale.txt"));
  EXPECT_EQ(world.files.Get(Folder() + L"re_port_.txt").value_or("-"), "1");
  EXPECT_EQ(world.files.Get(Folder() + L"re_port_(1).txt").value_or("-"), "2");
  EXPECT_EQ(world.clipboard.format().value_or(0), 15u);
  EXPECT_EQ(world.clipboard.data(),
            DropBlock({ToUtf8(Folder() + L"re_port_.txt"), ToUtf8(Folder() + L"re_port_(1).txt")}));
  EXPECT_FALSE(world.clipboard.is_open());
}

TEST_F(ClipboardFilesTest, MissingSourceLeavesAnEmptyEntry) {
  ASSERT_TRUE(CopyFilesToClipboard(addin->addin(), {{L"C:\\Mail\\gone.txt", L"gone.txt"},
                                                    {L"C:\\Mail\\two.txt", L"two.txt"}}));
  EXPECT_EQ(world.clipboard.data(), DropBlock({"", ToUtf8(Folder() + L"two.txt")}));
}

TEST_F(ClipboardFilesTest, ClipboardHeldByAnotherProgramFailsButKeepsTheCopies) {
  world.clipboard.set_held_by_other(true);
  EXPECT_FALSE(CopyFilesToClipboard(addin->addin(), {{L"C:\\Mail\\one.txt", L"one.txt"}}));
  EXPECT_TRUE(world.files.Get(Folder() + L"one.txt"));
  EXPECT_FALSE(world.clipboard.format());
}

}  // namespace
}  // namespace corvina
