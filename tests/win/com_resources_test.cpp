// The pictures the chat board addresses as res://...\Vireo.dll/<name>: the res: protocol looks
// a name without a type up as type 23 (RT_HTML), so each must be there as a whole .ico file,
// besides the ICON the user properties dialog loads by the same name.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/win32/windows_api.h"

namespace {

std::string Narrow(const wchar_t* text) {
  std::string out;
  for (; *text; ++text) out += static_cast<char>(*text);
  return out;
}

uint16_t Word(const BYTE* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
uint32_t Dword(const BYTE* p) { return Word(p) | static_cast<uint32_t>(Word(p + 2)) << 16; }

// The type-23 copy of `name`, checked as a .ico file; a helper so that a failed ASSERT ends only
// this name's checks.
void ExpectIconFileOfTypeHtml(HMODULE dll, const wchar_t* name) {
  HRSRC found = FindResourceW(dll, name, MAKEINTRESOURCEW(23));
  ASSERT_NE(found, nullptr);
  const DWORD size = SizeofResource(dll, found);
  const auto* data = static_cast<const BYTE*>(LockResource(LoadResource(dll, found)));
  ASSERT_NE(data, nullptr);
  ASSERT_GE(size, 6u);
  EXPECT_EQ(Word(data), 0);      // reserved
  EXPECT_EQ(Word(data + 2), 1);  // an icon, not a cursor
  const uint16_t count = Word(data + 4);
  ASSERT_EQ(count, 2);
  ASSERT_GE(size, 6u + 16u * count);
  bool has_32 = false;
  for (uint16_t i = 0; i < count; ++i) {
    const BYTE* entry = data + 6 + 16 * i;
    const uint32_t bytes = Dword(entry + 8), offset = Dword(entry + 12);
    // Every image lies inside the resource and starts with its bitmap header (40 bytes) giving
    // the entry's width and twice its height (colour rows, then mask rows).
    ASSERT_LE(uint64_t{offset} + bytes, size) << "image " << i;
    ASSERT_GE(bytes, 40u) << "image " << i;
    EXPECT_EQ(Dword(data + offset), 40u) << "image " << i;
    EXPECT_EQ(Dword(data + offset + 4), uint32_t{entry[0]}) << "image " << i;
    EXPECT_EQ(Dword(data + offset + 8), 2u * entry[1]) << "image " << i;
    has_32 = has_32 || (entry[0] == 32 && entry[1] == 32);
  }
  EXPECT_TRUE(has_32) << "no 32 x 32 image for the board";
}

TEST(VireoResourcesTest, EveryPictureTheBoardAddressesIsAnIconFileOfTypeHtmlAndAnIcon) {
  wchar_t exe[MAX_PATH];
  GetModuleFileNameW(nullptr, exe, MAX_PATH);
  std::wstring path = exe;
  path = path.substr(0, path.rfind(L'\\')) + L"\\Vireo.dll";
  // As data: the resources are all this needs, and the DLL's start-up stays out of it.
  HMODULE dll = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_NE(dll, nullptr) << "cannot load Vireo.dll beside the test";

  // Spelled as the board writes them: "a" + the user's icon number + ".ico", and ATTACH.ICO.
  for (const wchar_t* name : {L"a0.ico", L"a1.ico", L"a2.ico", L"a3.ico", L"a4.ico", L"a5.ico",
                              L"a6.ico", L"a7.ico", L"a8.ico", L"a9.ico", L"ATTACH.ICO"}) {
    SCOPED_TRACE(Narrow(name));
    ExpectIconFileOfTypeHtml(dll, name);
    HICON icon = static_cast<HICON>(LoadImageW(dll, name, IMAGE_ICON, 32, 32, 0));
    EXPECT_NE(icon, nullptr) << "no ICON of that name";
    if (icon) DestroyIcon(icon);
  }
  FreeLibrary(dll);
}

}  // namespace
