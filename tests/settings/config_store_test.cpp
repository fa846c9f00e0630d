#include "settings/config_store.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::kAddinFolder;
using testing::SimWorld;

class ConfigStoreTest : public ::testing::Test {
 protected:
  ConfigStore MakeStore(std::wstring context = L"Nothing") {
    return ConfigStore{world.settings, world.files, world.clock, log, kAddinFolder, context};
  }
  bool Load() {
    ConfigStore store = MakeStore();
    return LoadConfig(config, store);
  }
  void Save() {
    ConfigStore store = MakeStore();
    SaveConfig(config, store);
  }
  std::wstring Folder(const wchar_t* sub) { return std::wstring(kAddinFolder) + sub; }

  SimWorld world;
  Log log{world.files, world.clock};
  Config config{kAddinFolder};
};

TEST_F(ConfigStoreTest, AnEmptyStoreCreatesTheDefaultFoldersAndSetsTheFixedTypeLists) {
  ASSERT_TRUE(Load());
  for (const wchar_t* sub : {L"\\My Favorites", L"\\My Stuff", L"\\My Junk", L"\\Temp"})
    EXPECT_TRUE(world.files.DirectoryExists(Folder(sub))) << ToUtf8(sub);
  EXPECT_EQ(config.PictureTypes, L",gif,jpg,jpe,jpeg,bmp,zip,doc,ppt,msg,avi,mpe,mpeg,rm,");
  EXPECT_EQ(config.ImageTypes, L",gif,jpg,jpe,jpeg,bmp,ico,");
}

TEST_F(ConfigStoreTest, ReadAndWriteSpellingsDifferForTempFolderAndChatPictures) {
  world.Store(L"Configuration", L"TempFolder", L"D:\\Chosen");  // what a save wrote
  world.Store(L"Chat", L"ChatImags ", L"1");
  ASSERT_TRUE(Load());
  EXPECT_EQ(config.TempFolder, Folder(L"\\Temp"));
  EXPECT_EQ(config.ChatImags, L"0");

  world.Store(L"Configuration", L"TempFolder ", L"D:\\Old");  // the spelling that is read
  world.Store(L"Chat", L"ChatImags", L"1");
  world.Store(L"Configuration", L"DefaultFolder", L"   ");
  Config again(kAddinFolder);
  ConfigStore store = MakeStore();
  ASSERT_TRUE(LoadConfig(again, store));
  EXPECT_EQ(again.TempFolder, L"D:\\Old");
  EXPECT_EQ(again.ChatImags, L"1");
  EXPECT_EQ(again.DefaultFolder, L"1");
}

TEST_F(ConfigStoreTest, NonNumericNumberStopsLoadingAtThatKey) {
  world.Store(L"Configuration", L"glbThumbColor", L"255");
  world.Store(L"Configuration", L"glbThumbWidth", L"wide");
  world.Store(L"Configuration", L"AutoReplace", L"0");
  EXPECT_FALSE(Load());
  EXPECT_EQ(config.glbThumbColor, 255);      // read before the bad key
  EXPECT_EQ(config.glbThumbWidth, 92);       // the bad key keeps its default
  EXPECT_EQ(config.AutoReplace, L"1");       // never reached
  EXPECT_EQ(config.glbFoldersMax, -1);
  const std::vector<std::wstring> errors = world.LogLinesWith(L"Error Source=");
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_TRUE(ContainsText(errors[0],
                           L"Error Source=NothingLoadConfig\\Vireo; Error Description=Type mismatch"))
      << ToUtf8(errors[0]);
}

TEST_F(ConfigStoreTest, FolderListFirstRunHonoursOldOneBasedKeysAndSavesFromZero) {
  world.Store(L"Configuration", L"glbFolder1", L"C:\\Work");
  world.Store(L"Configuration", L"glbFolder3", L"C:\\Deep\\Er\\Folder");
  ASSERT_TRUE(Load());
  ASSERT_EQ(config.glbFolder.size(), 3u);
  EXPECT_EQ(config.glbFolder[0], L"C:\\Work");
  EXPECT_EQ(config.glbFolder[1], Folder(L"\\My Stuff"));
  EXPECT_EQ(config.glbFolder[2], L"C:\\Deep\\Er\\Folder");
  EXPECT_TRUE(world.files.DirectoryExists(L"C:\\Deep\\Er\\Folder"));
  Save();
  EXPECT_EQ(world.Setting(L"Configuration", L"glbFolder0"), L"C:\\Work");
  EXPECT_EQ(world.Setting(L"Configuration", L"glbFolder2"), L"C:\\Deep\\Er\\Folder");

  // A later run reads the list numbered from 0; blank entries stay empty.
  world.Store(L"Configuration", L"glbFoldersMax", L"4");
  world.Store(L"Configuration", L"glbFolder1", L"   ");
  Config again(kAddinFolder);
  ConfigStore store = MakeStore();
  ASSERT_TRUE(LoadConfig(again, store));
  ASSERT_EQ(again.glbFolder.size(), 5u);
  EXPECT_EQ(again.glbFolder[0], L"C:\\Work");
  EXPECT_EQ(again.glbFolder[1], L"");
  EXPECT_EQ(again.glbFolder[3], L"C:\\Deep\\Er\\Folder");
  EXPECT_EQ(again.glbFolder[4], L"");
}

TEST_F(ConfigStoreTest, LastMailMonitorTimeOnlyMovesForward) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"202611220930"},
      {L"202611010000", L"202611220930"},
      {L"202611220930", L"202611220930"},
      {L"203001010000", L"203001010000"},  // a stored future time is kept
  };
  for (const auto& [stored, expected] : cases) {
    world.Store(L"Configuration", L"LastMailMonitorTime", stored);
    Config fresh(kAddinFolder);
    ConfigStore store = MakeStore();
    ASSERT_TRUE(LoadConfig(fresh, store));
    EXPECT_EQ(fresh.LastMailMonitorTime, expected) << ToUtf8(stored);
  }
}

// Damage the store worked around is a warning in its own words, whether or not loading then
// ran to the end; only a real failure of LoadConfig is an error line.
TEST_F(ConfigStoreTest, StoreDamageIsAWarningNotALoadConfigError) {
  const std::wstring kDamage =
      L"Settings file settings.ini, line 3: skipped (\"garbage\" has no \"=\")";
  struct Case {
    const wchar_t* thumb_width;
    bool loads;
    std::vector<std::wstring> lines;  // after the time stamp
  };
  const Case cases[] = {
      {L"92", true,
       {L"Warning | " + kDamage,
        L"Information | Corvina was initialized successfully at 11/22/2026 9:30:00 AM"}},
      {L"wide", false,
       {L"Error | Error Source=NothingLoadConfig\\Vireo; Error Description=Type mismatch",
        L"Warning | " + kDamage}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(ToUtf8(c.thumb_width));
    const std::wstring log_file = std::wstring(kAddinFolder) + L"\\Vireo.log";
    if (world.files.FileExists(log_file)) world.files.DeleteFile(log_file);  // one run each
    world.Store(L"Configuration", L"glbThumbWidth", c.thumb_width);
    world.settings.AddProblem(Error(0, L"Settings", kDamage));
    Config fresh(kAddinFolder);
    ConfigStore store = MakeStore();
    EXPECT_EQ(LoadConfig(fresh, store), c.loads);
    EXPECT_EQ(fresh.AutoReplace, L"1");
    std::vector<std::wstring> lines = world.LogLines();
    ASSERT_EQ(lines.size(), c.lines.size());
    for (size_t i = 0; i < lines.size(); ++i)
      EXPECT_EQ(lines[i], L"11/22/2026 9:30:00 AM | " + c.lines[i]);
  }
}

}  // namespace
}  // namespace corvina
