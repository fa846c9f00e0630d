// The virus alert inside Outlook: the stand-in's select-names dialog on its own, then the real
// frmVirusAlerter opened from its toolbar button, scanning the Inbox and mailing its rule to
// the names picked in the dialog.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "host/control_table.h"
#include "platform/sim/outlook_errors.h"
#include "platform/win32/virus/virus_alerter_frame.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/windows_api.h"
#include "standin.h"
#include "standin_host.h"
#include "standin_probe.h"
#include "window_pump.h"

#include <commctrl.h>  // after <windows.h>

namespace corvina::standin {
namespace {

using Microsoft::WRL::ComPtr;
using Texts = std::vector<std::wstring>;

// What Outlook's dialog answers through IDispatch for each answer the sim holds.
TEST(SelectNamesDialogTest, AnswersFromTheQueueAndKnowsOnlyItsMembers) {
  sim::Faults faults;
  win32::Win32FileSystem files;
  sim::SimStore store{faults, files};
  StandIn standin{store};
  store.select_names_answers = {{L"ben@example.com", L"Cleo"}};
  ArgList args;
  ComPtr<IDispatch> application = standin.Application();
  ComPtr<IDispatch> ns =
      Late(application.Get(), L"GetNamespace", DISPATCH_METHOD, {args.Text(L"MAPI")}).object();
  ASSERT_TRUE(ns);
  const struct {
    const char* what;
    Texts fields;  // Address, then Name, of each recipient; none: cancelled
  } rows[] = {
      {"picked, one name unresolved", {L"ben@example.com", L"ben@example.com", L"", L"Cleo"}},
      {"queue empty: cancelled", {}},
  };
  for (const auto& row : rows) {
    ComPtr<IDispatch> dialog = Late(ns.Get(), L"GetSelectNamesDialog", DISPATCH_METHOD).object();
    ASSERT_TRUE(dialog) << row.what;
    ASSERT_EQ(Put(dialog.Get(), L"Caption", args.Text(L"Pick")).hr, S_OK) << row.what;
    EXPECT_EQ(Late(dialog.Get(), L"Caption").text(), L"Pick") << row.what;
    const Outcome shown = Late(dialog.Get(), L"Display", DISPATCH_METHOD);
    ASSERT_EQ(shown.hr, S_OK) << row.what;
    ASSERT_EQ(shown.result.get()->vt, VT_BOOL) << row.what;
    EXPECT_EQ(shown.result.get()->boolVal != VARIANT_FALSE, !row.fields.empty()) << row.what;
    ComPtr<IDispatch> recipients = Path(dialog.Get(), {L"Recipients"});
    ASSERT_TRUE(recipients) << row.what;
    const int32_t count = static_cast<int32_t>(row.fields.size() / 2);
    EXPECT_EQ(Late(recipients.Get(), L"Count").text(), std::to_wstring(count)) << row.what;
    Texts read;
    for (int32_t i = 1; i <= count; ++i) {
      ComPtr<IDispatch> one = Late(recipients.Get(), L"Item", DISPATCH_METHOD, {I4(i)}).object();
      ASSERT_TRUE(one) << row.what;
      read.push_back(Late(one.Get(), L"Address").text());
      read.push_back(Late(one.Get(), L"Name").text());
    }
    EXPECT_EQ(read, row.fields) << row.what;
    const Outcome beyond = Late(recipients.Get(), L"Item", DISPATCH_METHOD, {I4(count + 1)});
    EXPECT_EQ(beyond.hr, DISP_E_EXCEPTION) << row.what;
    EXPECT_EQ(beyond.number, sim::kDispBadIndex) << row.what;
    EXPECT_EQ(Late(dialog.Get(), L"ShowOnlyInitialRecipients").hr, DISP_E_UNKNOWNNAME) << row.what;
  }
  EXPECT_EQ(store.select_names_captions, (Texts{L"Pick", L"Pick"}));
}

struct World {
  sim::Faults faults;
  win32::Win32FileSystem files;
  sim::SimStore store{faults, files};
  StandIn standin{store};
};

class VirusAlerterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dll.loaded()) << "no Vireo.dll in the suite's add-in folder";
    ASSERT_EQ(dll.Register(), S_OK);
    DeleteSettings();
    EmptyFolder(dll.folder(), L"Vireo.dll");
  }
  void TearDown() override {
    addin.reset();
    application.Reset();
  }

  void Start() {
    addin = std::make_unique<Addin>(CallStyle::kVtable);
    ASSERT_EQ(addin->created(), S_OK);
    application = world.standin.Application();
    EXPECT_EQ(addin->OnConnection(application.Get(), 1), S_OK);
    EXPECT_EQ(addin->OnStartupComplete(), S_OK);
  }
  void Stop() {
    EXPECT_EQ(addin->OnBeginShutdown(), S_OK);
    EXPECT_EQ(addin->OnDisconnection(0), S_OK);
    addin->Release();
    application.Reset();
  }
  Texts ErrorLines() const {
    Texts errors;
    for (const auto& line : ReadLines(dll.folder() + L"\\Vireo.log"))
      if (ContainsText(line, L"Error Source=")) errors.push_back(line);
    return errors;
  }
  static Texts Subjects(int32_t folder_kind, sim::SimStore& store) {
    Texts subjects;
    for (const auto& item : store.Folder(folder_kind).items) subjects.push_back(item->subject);
    return subjects;
  }
  static std::wstring Cell(HWND list, int row, int column) {
    wchar_t text[256] = {};
    ListView_GetItemText(list, row, column, text, 256);
    return text;
  }

  AddinDll& dll = SuiteAddin();
  World world;
  std::unique_ptr<Addin> addin;
  ComPtr<IDispatch> application;
};

TEST_F(VirusAlerterTest, ScansTheInboxAndMailsTheRuleToThePickedNames) {
  // One rule, stored as the lists keep it: each starts with ";".
  const std::pair<const wchar_t*, const wchar_t*> lists[] = {
      {L"VirusDescription", L";Worm"}, {L"VirusActive", L";True"},
      {L"VirusSubject", L";You won a prize"}, {L"VirusBody", L";"},
      {L"VirusFrom", L";"}, {L"VirusAttachments", L";"}};
  for (const auto& [key, value] : lists) WriteSetting(L"Configuration", key, value);
  SYSTEMTIME now;
  GetLocalTime(&now);
  const Date today = FromCivil({now.wYear, now.wMonth, now.wDay, 9, 0, 0});
  // Yesterday's mails were scanned at an earlier start; tomorrow's are new to this one.
  world.store.AddToInbox(sim::MakeMail(L"You won a prize", AddSeconds(today, -86400)));
  world.store.AddToInbox(sim::MakeMail(L"Minutes", AddSeconds(today, 86400)));
  world.store.AddToInbox(sim::MakeMail(L"You won a prize", AddSeconds(today, 86400 + 60)));
  Start();
  const Texts errors = ErrorLines();

  auto explorer = world.store.ActiveExplorer();
  auto bar = explorer ? explorer->command_bars->Find(kBarName) : nullptr;
  ASSERT_TRUE(bar && bar->FindControl(kTagVirusAlert));
  bar->FindControl(kTagVirusAlert)->Click();
  HWND window = FindWindowW(L"Corvina.frmVirusAlerter", nullptr);
  ASSERT_TRUE(window) << "no frmVirusAlerter";
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  EXPECT_EQ(process, GetCurrentProcessId());
  EXPECT_TRUE(IsWindowVisible(window));
  HWND list = GetDlgItem(window, win32::kAlerterRules);
  ASSERT_EQ(ListView_GetItemCount(list), 1);
  EXPECT_EQ(Cell(list, 0, 0), L"Worm");
  EXPECT_EQ(Cell(list, 0, 1), L"You won a prize");
  EXPECT_TRUE(ListView_GetCheckState(list, 0));

  SendMessageW(GetDlgItem(window, win32::kAlerterScanNow), BM_CLICK, 0, 0);
  EXPECT_EQ(Subjects(outlook::olFolderDeletedItems, world.store), Texts{L"You won a prize"});
  EXPECT_EQ(Subjects(outlook::olFolderInbox, world.store), (Texts{L"You won a prize", L"Minutes"}));
  const Texts logged = ReadLines(dll.folder() + L"\\VireoVirus.Log");
  ASSERT_EQ(logged.size(), 1u);
  EXPECT_TRUE(ContainsText(logged[0], L"\tYou won a prize\tSubject\tDelete")) << ToUtf8(logged[0]);

  ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
  win32::PumpMessages(50);  // the row's selection reaches the add-in once the list is done
  const struct {
    const char* what;
    std::vector<Texts> answers;  // the dialog's answer; none: cancelled
    Texts recipients;            // of the mail sent; none: nothing sent
  } sends[] = {
      {"one address", {{L"carl@example.com"}}, {L"carl@example.com"}},
      {"cancelled", {}, {}},
      {"an address and a typed name", {{L"dora@example.com", L"Eve"}},
       {L"dora@example.com", L"Eve"}},
  };
  const auto& sent = world.store.Folder(outlook::olFolderSentMail).items;
  size_t expected_sent = 0;
  Texts captions;
  for (const auto& send : sends) {
    world.store.select_names_answers = send.answers;
    SendMessageW(GetDlgItem(window, win32::kAlerterSendAlert), BM_CLICK, 0, 0);
    captions.push_back(L"Select names - Corvina");
    EXPECT_EQ(world.store.select_names_captions, captions) << send.what;
    if (!send.recipients.empty()) ++expected_sent;
    ASSERT_EQ(sent.size(), expected_sent) << send.what;
    if (send.recipients.empty()) continue;
    EXPECT_EQ(sent.back()->subject, L"Automated Virus Alert generated by Corvina") << send.what;
    EXPECT_EQ(sent.back()->recipients, send.recipients) << send.what;
    EXPECT_TRUE(sent.back()->body.starts_with(L"Worm;True;You won a prize;;;\r\n")) << send.what;
  }

  Stop();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(ErrorLines(), errors);  // no step logged an error
}

}  // namespace
}  // namespace corvina::standin
