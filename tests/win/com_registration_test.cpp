// Vireo.dll driven as Windows, regsvr32 and Outlook drive it: loaded by path, registered
// machine-wide and per user, created by ProgID, connected through both halves of its dual
// interface, and unregistered without a trace.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "corvina/version.h"
#include "platform/win32/windows_api.h"

// IDTExtensibility2 as Outlook sees it: its own declaration, not the add-in's header. Outside
// the anonymous namespace on purpose: an interface of internal linkage that nothing in this
// file implements lets the optimiser treat calls through it as unreachable.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
struct HostExtensibility : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch*, long, IDispatch*, SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(long, SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) = 0;
};
#pragma GCC diagnostic pop

namespace {

constexpr IID kIidExtensibility = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
constexpr wchar_t kClsid[] = L"{5E4A9087-DBFC-407A-B2A1-E069B019A6E5}";
constexpr wchar_t kProgId[] = L"Vireo.DesVireo";
const std::wstring kAddinKey = L"Software\\Microsoft\\Office\\Outlook\\Addins\\Vireo.DesVireo";
const std::wstring kClassKey = std::wstring(L"Software\\Classes\\CLSID\\") + kClsid;
const std::wstring kProgIdKey = std::wstring(L"Software\\Classes\\") + kProgId;

using Entry = HRESULT(STDAPICALLTYPE*)();
using InstallEntry = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);

std::wstring ReadText(HKEY hive, const std::wstring& key, const wchar_t* name) {
  wchar_t buffer[1024];
  DWORD bytes = sizeof buffer;
  if (RegGetValueW(hive, key.c_str(), name, RRF_RT_REG_SZ, nullptr, buffer, &bytes) != ERROR_SUCCESS)
    return L"<missing>";
  return buffer;
}

DWORD ReadNumber(HKEY hive, const std::wstring& key, const wchar_t* name) {
  DWORD value = 0, bytes = sizeof value;
  if (RegGetValueW(hive, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &bytes) != ERROR_SUCCESS)
    return 0xFFFFFFFF;
  return value;
}

// A VARIANT of a type without resources (numbers, errors, null objects).
VARIANT Variant(VARTYPE type, LONG value) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = type;
  if (type == VT_I2) V_I2(&v) = static_cast<SHORT>(value);
  else if (type == VT_I4) V_I4(&v) = value;
  else if (type == VT_ERROR) V_ERROR(&v) = value;
  else V_DISPATCH(&v) = nullptr;
  return v;
}

// A VARIANT by reference to `target`, as a VB-style caller passes a variable.
VARIANT ByReference(VARIANT* target) {
  VARIANT v;
  V_VT(&v) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&v) = target;
  return v;
}

std::string ReadBytes(const std::wstring& path) {
  std::string bytes;
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return bytes;
  char buffer[4096];
  DWORD got = 0;
  while (ReadFile(file, buffer, sizeof buffer, &got, nullptr) && got > 0) bytes.append(buffer, got);
  CloseHandle(file);
  return bytes;
}

bool KeyExists(HKEY hive, const std::wstring& key) {
  HKEY k = nullptr;
  if (RegOpenKeyExW(hive, key.c_str(), 0, KEY_READ, &k) != ERROR_SUCCESS) return false;
  RegCloseKey(k);
  return true;
}

class VireoDllTest : public ::testing::Test {
 protected:
  void SetUp() override {
    wchar_t exe[MAX_PATH];
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    dll_path = exe;
    dll_path = dll_path.substr(0, dll_path.rfind(L'\\')) + L"\\Vireo.dll";
    dll = LoadLibraryW(dll_path.c_str());
    ASSERT_NE(dll, nullptr) << "cannot load Vireo.dll beside the test";
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    // The Wine prefix outlives a test run: start from nothing registered.
    Export<Entry>("DllUnregisterServer")();
    Export<InstallEntry>("DllInstall")(FALSE, L"user");
  }
  void TearDown() override {
    CoUninitialize();
    if (dll) FreeLibrary(dll);
  }
  template <class F>
  F Export(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(dll, name)));
  }
  // Every entry registration writes, checked under one hive.
  void ExpectRegistered(HKEY hive) {
    EXPECT_EQ(ReadText(hive, kClassKey, nullptr), L"Corvina");
    EXPECT_EQ(ReadText(hive, kClassKey + L"\\InprocServer32", nullptr), dll_path);
    EXPECT_EQ(ReadText(hive, kClassKey + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(ReadText(hive, kClassKey + L"\\ProgID", nullptr), kProgId);
    EXPECT_EQ(ReadText(hive, kProgIdKey + L"\\CLSID", nullptr), kClsid);
    EXPECT_EQ(ReadText(hive, kAddinKey, L"FriendlyName"), L"Corvina");
    EXPECT_NE(ReadText(hive, kAddinKey, L"Description"), L"<missing>");
    EXPECT_EQ(ReadNumber(hive, kAddinKey, L"LoadBehavior"), 3u);
    EXPECT_EQ(ReadNumber(hive, kAddinKey, L"RequireShutdownNotification"), 1u);
  }
  void ExpectUnregistered(HKEY hive) {
    for (const std::wstring& key : {kClassKey, kProgIdKey, kAddinKey})
      EXPECT_FALSE(KeyExists(hive, key)) << std::string(key.begin(), key.end());
  }

  std::wstring dll_path;
  HMODULE dll = nullptr;
};

TEST_F(VireoDllTest, RegisteredMachineWideItIsCreatedByProgIdAndConnects) {
  ASSERT_EQ(Export<Entry>("DllRegisterServer")(), S_OK);
  ExpectRegistered(HKEY_LOCAL_MACHINE);

  CLSID clsid;
  ASSERT_EQ(CLSIDFromProgID(kProgId, &clsid), S_OK);
  wchar_t text[64];
  StringFromGUID2(clsid, text, 64);
  EXPECT_STREQ(text, kClsid);
  {
    Microsoft::WRL::ComPtr<IUnknown> object;
    ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                               reinterpret_cast<void**>(object.GetAddressOf())),
              S_OK);
    EXPECT_EQ(Export<Entry>("DllCanUnloadNow")(), S_FALSE);
    Microsoft::WRL::ComPtr<HostExtensibility> addin;
    ASSERT_EQ(object->QueryInterface(kIidExtensibility, reinterpret_cast<void**>(addin.GetAddressOf())), S_OK);
    // No Outlook: the add-in sees itself loaded indirectly and does nothing.
    EXPECT_EQ(addin->OnConnection(nullptr, 1, nullptr, nullptr), S_OK);
    EXPECT_EQ(addin->OnStartupComplete(nullptr), S_OK);
    EXPECT_EQ(addin->OnAddInsUpdate(nullptr), S_OK);
    EXPECT_EQ(addin->OnBeginShutdown(nullptr), S_OK);
    EXPECT_EQ(addin->OnDisconnection(0, nullptr), S_OK);

    // The same through IDispatch, arguments last first, as a late-binding host calls them.
    Microsoft::WRL::ComPtr<IDispatch> dispatch;
    ASSERT_EQ(object.As(&dispatch), S_OK);
    UINT type_infos = 9;
    EXPECT_EQ(dispatch->GetTypeInfoCount(&type_infos), S_OK);
    EXPECT_EQ(type_infos, 0u);
    const wchar_t* names[] = {L"OnConnection", L"ondisconnection", L"OnAddInsUpdate",
                              L"OnStartupComplete", L"OnBeginShutdown", L"Nonsense"};
    const DISPID expected[] = {1, 2, 3, 4, 5, DISPID_UNKNOWN};
    for (size_t i = 0; i < std::size(names); ++i) {
      DISPID id = 0;
      LPOLESTR name = const_cast<LPOLESTR>(names[i]);
      EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, &name, 1, 0, &id),
                expected[i] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK);
      EXPECT_EQ(id, expected[i]);
    }
    const VARIANT missing = Variant(VT_ERROR, DISP_E_PARAMNOTFOUND);  // custom: left out
    VARIANT nothing = Variant(VT_DISPATCH, 0);  // no Application, no AddInInst
    // Arguments by reference, a reference to a reference included.
    VARIANT mode = Variant(VT_I2, 0);
    VARIANT mode_ref = ByReference(&mode);
    VARIANT nothing_ref = ByReference(&nothing);
    const std::wstring log = dll_path.substr(0, dll_path.rfind(L'\\')) + L"\\Vireo.log";
    DeleteFileW(log.c_str());
    struct Call {
      DISPID id;
      std::vector<VARIANT> args;  // first parameter first
      HRESULT result;
    } calls[] = {
        {1, {nothing, Variant(VT_I2, 0), nothing, missing}, S_OK},
        {1, {ByReference(&nothing_ref), ByReference(&mode_ref), nothing_ref, missing}, S_OK},
        {1, {nothing, nothing, nothing, missing}, DISP_E_TYPEMISMATCH},
        {4, {missing}, S_OK},
        {3, {}, S_OK},
        {5, {missing}, S_OK},
        {2, {Variant(VT_I4, 1), missing}, S_OK},
        {2, {ByReference(&mode_ref), missing}, S_OK},
        {2, {Variant(VT_I4, 1), missing, missing}, DISP_E_BADPARAMCOUNT},
        {6, {}, DISP_E_MEMBERNOTFOUND},
    };
    for (Call& c : calls) {
      std::vector<VARIANT> reversed(c.args.rbegin(), c.args.rend());
      DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
      EXPECT_EQ(dispatch->Invoke(c.id, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr,
                                 nullptr),
                c.result)
          << "DISPID " << c.id << " with " << c.args.size() << " arguments";
    }
    // The refused call leaves its reason in the log.
    EXPECT_NE(ReadBytes(log).find("Type mismatch: OnConnection was called with a ConnectMode of "
                                  "variant type 9, which is no number"),
              std::string::npos)
        << ReadBytes(log);
  }
  EXPECT_EQ(Export<Entry>("DllCanUnloadNow")(), S_OK);

  ASSERT_EQ(Export<Entry>("DllUnregisterServer")(), S_OK);
  ExpectUnregistered(HKEY_LOCAL_MACHINE);
}

TEST_F(VireoDllTest, PerUserInstallWritesAndRemovesTheSameEntriesUnderTheUser) {
  auto install = Export<InstallEntry>("DllInstall");
  ASSERT_EQ(install(TRUE, L"user"), S_OK);
  ExpectRegistered(HKEY_CURRENT_USER);
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, kAddinKey));
  ASSERT_EQ(install(FALSE, L"User"), S_OK);
  ExpectUnregistered(HKEY_CURRENT_USER);
  EXPECT_EQ(install(FALSE, L"user"), S_OK);  // nothing left to remove is no failure
  EXPECT_EQ(install(TRUE, L"everyone"), E_INVALIDARG);
  ExpectUnregistered(HKEY_CURRENT_USER);
}

// Parents registration creates along are removed again by unregistration; parents that were
// there before, or hold something else by then, stay.
const std::wstring kOffice = L"Software\\Microsoft\\Office";
const std::wstring kOutlook = kOffice + L"\\Outlook";
const std::wstring kAddins = kOutlook + L"\\Addins";
const std::wstring kSibling = kAddins + L"\\Corvina.TestSibling";

void PutKey(HKEY hive, const std::wstring& path, const wchar_t* value = nullptr) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  if (value) RegSetValueExW(key, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(L"x"), 2 * sizeof(wchar_t));
  RegCloseKey(key);
}

bool HasValue(HKEY hive, const std::wstring& path, const wchar_t* value) {
  return RegGetValueW(hive, path.c_str(), value, RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

// The test's own traces go, then every empty key of the Office chain (earlier versions left
// them behind): each row starts from a hive without Office.
void ClearOffice(HKEY hive) {
  RegDeleteTreeW(hive, kSibling.c_str());
  RegDeleteKeyValueW(hive, kOutlook.c_str(), L"CorvinaTest");
  for (const std::wstring& key : {kAddins, kOutlook, kOffice}) RegDeleteKeyW(hive, key.c_str());
}

TEST_F(VireoDllTest, UnregistrationRemovesTheParentsRegistrationCreatedAndNoOthers) {
  auto install = Export<InstallEntry>("DllInstall");
  const struct {
    const char* hive_name;
    HKEY hive;
    std::function<HRESULT()> install, uninstall;
  } hives[] = {
      {"per user", HKEY_CURRENT_USER, [&] { return install(TRUE, L"user"); },
       [&] { return install(FALSE, L"user"); }},
      {"machine-wide", HKEY_LOCAL_MACHINE, Export<Entry>("DllRegisterServer"),
       Export<Entry>("DllUnregisterServer")},
  };
  const struct {
    const char* what;
    std::function<void(HKEY)> before, between;
    bool twice;  // registered a second time over the first
    std::vector<std::wstring> kept, gone;
  } rows[] = {
      {"no Office before", [](HKEY) {}, [](HKEY) {}, false, {}, {kOffice}},
      {"registered twice", [](HKEY) {}, [](HKEY) {}, true, {}, {kOffice}},
      {"an empty Addins key before", [](HKEY h) { PutKey(h, kAddins); }, [](HKEY) {}, false,
       {kAddins}, {}},
      {"another add-in before", [](HKEY h) { PutKey(h, kSibling, L"LoadBehavior"); }, [](HKEY) {},
       false, {kSibling}, {}},
      {"another add-in registered meanwhile", [](HKEY) {},
       [](HKEY h) { PutKey(h, kSibling, L"LoadBehavior"); }, false, {kSibling}, {}},
      {"a value put on Outlook meanwhile", [](HKEY) {},
       [](HKEY h) { PutKey(h, kOutlook, L"CorvinaTest"); }, false, {kOutlook}, {kAddins}},
  };
  for (const auto& h : hives) {
    for (const auto& row : rows) {
      const std::string label = std::string(h.hive_name) + ", " + row.what;
      ClearOffice(h.hive);
      ASSERT_FALSE(KeyExists(h.hive, kOffice)) << label << ": the prefix has Office keys of its own";
      // Parents of the class keys exist on any system; they must exist afterwards too.
      const bool had_clsid = KeyExists(h.hive, L"Software\\Classes\\CLSID");
      row.before(h.hive);
      ASSERT_EQ(h.install(), S_OK) << label;
      if (row.twice) {
        ASSERT_EQ(h.install(), S_OK) << label;
      }
      ExpectRegistered(h.hive);
      row.between(h.hive);
      ASSERT_EQ(h.uninstall(), S_OK) << label;
      ExpectUnregistered(h.hive);
      for (const std::wstring& key : row.kept)
        EXPECT_TRUE(KeyExists(h.hive, key)) << label << ": lost " << std::string(key.begin(), key.end());
      for (const std::wstring& key : row.gone)
        EXPECT_FALSE(KeyExists(h.hive, key)) << label << ": left " << std::string(key.begin(), key.end());
      if (KeyExists(h.hive, kSibling)) {
        EXPECT_TRUE(HasValue(h.hive, kSibling, L"LoadBehavior")) << label;
      }
      EXPECT_EQ(KeyExists(h.hive, L"Software\\Classes\\CLSID"), had_clsid) << label;
      ClearOffice(h.hive);
    }
  }
}

TEST_F(VireoDllTest, ResourcesHoldTheNamedIconsAndTheProjectVersion) {
  for (const wchar_t* name : {L"a0.ico", L"A5.ICO", L"a9.ico", L"ATTACH.ICO", L"attach.ico"}) {
    HICON icon = static_cast<HICON>(LoadImageW(dll, name, IMAGE_ICON, 16, 16, 0));
    EXPECT_NE(icon, nullptr) << std::string(name, name + wcslen(name));
    if (icon) DestroyIcon(icon);
  }
  EXPECT_EQ(FindResourceW(dll, L"A10.ICO", MAKEINTRESOURCEW(3)), nullptr);

  std::vector<BYTE> info(GetFileVersionInfoSizeW(dll_path.c_str(), nullptr));
  ASSERT_FALSE(info.empty());
  ASSERT_TRUE(GetFileVersionInfoW(dll_path.c_str(), 0, static_cast<DWORD>(info.size()), info.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), corvina::kVersionMajor);
  EXPECT_EQ(LOWORD(fixed->dwFileVersionMS), corvina::kVersionMinor);
  EXPECT_EQ(HIWORD(fixed->dwFileVersionLS), corvina::kVersionRevision);
}

}  // namespace
