#include "platform/win32/registry_settings_tree.h"

#include <gtest/gtest.h>

#include "platform/win32/unique_handle.h"

namespace corvina::win32 {
namespace {

class RegistrySettingsTreeTest : public ::testing::Test {
 protected:
  const std::wstring app = L"CorvinaTest" + std::to_wstring(GetCurrentProcessId());
  std::wstring Root() const { return L"Software\\VB and VBA Program Settings\\" + app; }
  void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, Root().c_str()); }

  void PutRaw(const std::wstring& key, DWORD type, const void* data, DWORD bytes) {
    UniqueHKey k;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, SettingsKeyPath(app, L"Raw").c_str(), 0, nullptr,
                              0, KEY_SET_VALUE, nullptr, k.put(), nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegSetValueExW(k.get(), key.c_str(), 0, type, static_cast<const BYTE*>(data), bytes),
              ERROR_SUCCESS);
  }

  RegistrySettingsTree tree;
};

TEST_F(RegistrySettingsTreeTest, WrittenTextReadsBackAndUnwrittenKeysAreMissing) {
  const std::wstring long_text(5000, L'x');
  const std::wstring values[] = {L"", L"1", L"C:\\My Stuff\\", L"\u00e9t\u00e9 \u4e2d", long_text};
  for (const std::wstring& v : values) {
    tree.Write(app, L"Configuration", L"Key", v);  // creates the key path the first time
    EXPECT_EQ(tree.Read(app, L"CONFIGURATION", L"key"), v) << v.size();
  }
  EXPECT_EQ(tree.Read(app, L"Configuration", L"Other"), std::nullopt);
  EXPECT_EQ(tree.Read(app, L"NoSuchSection", L"Key"), std::nullopt);
  EXPECT_EQ(tree.Read(app + L"Gone", L"Configuration", L"Key"), std::nullopt);
  EXPECT_TRUE(tree.TakeProblems().empty());
}

TEST_F(RegistrySettingsTreeTest, ValueOfWrongTypeReadsAsMissingAndIsReportedOnce) {
  const DWORD dword = 1;
  const uint64_t qword = 2;
  const BYTE binary[] = {1, 2, 3};
  const wchar_t multi[] = L"a\0b\0";
  const wchar_t expand[] = L"%TEMP%";
  struct Row {
    const wchar_t* key;
    DWORD type;
    const void* data;
    DWORD bytes;
    const wchar_t* type_name;
  } rows[] = {
      {L"Dword", REG_DWORD, &dword, sizeof dword, L"REG_DWORD"},
      {L"Qword", REG_QWORD, &qword, sizeof qword, L"REG_QWORD"},
      {L"Binary", REG_BINARY, binary, sizeof binary, L"REG_BINARY"},
      {L"Multi", REG_MULTI_SZ, multi, sizeof multi, L"REG_MULTI_SZ"},
      {L"Expand", REG_EXPAND_SZ, expand, sizeof expand, L"REG_EXPAND_SZ"},
  };
  for (const Row& r : rows) PutRaw(r.key, r.type, r.data, r.bytes);
  for (int pass = 0; pass < 2; ++pass)
    for (const Row& r : rows) EXPECT_EQ(tree.Read(app, L"Raw", r.key), std::nullopt) << r.key;

  const std::vector<Error> problems = tree.TakeProblems();
  ASSERT_EQ(problems.size(), std::size(rows));
  for (size_t i = 0; i < problems.size(); ++i) {
    EXPECT_EQ(problems[i].number(), kErrTypeMismatch);
    EXPECT_EQ(problems[i].source(), L"Settings");
    const std::wstring& d = problems[i].description();
    EXPECT_NE(d.find(app + L"\\Raw\\" + rows[i].key), std::wstring::npos) << d;
    EXPECT_NE(d.find(rows[i].type_name), std::wstring::npos) << d;
  }
  EXPECT_TRUE(tree.TakeProblems().empty());
  EXPECT_EQ(tree.Read(app, L"Raw", L"Dword"), std::nullopt);
  EXPECT_TRUE(tree.TakeProblems().empty());
}

}  // namespace
}  // namespace corvina::win32
