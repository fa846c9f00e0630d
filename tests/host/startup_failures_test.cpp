// Start-up against an Outlook that fails or answers Nothing: each failure is logged under the
// procedure it hit, and the steps that do not depend on it still run.
#include <gtest/gtest.h>

#include "base/text.h"
#include "host/control_table.h"
#include "support/sim_world.h"

namespace corvina {
namespace {

using testing::SimWorld;

std::vector<std::wstring> ErrorLines(SimWorld& world) {
  std::vector<std::wstring> out;
  for (const auto& line : world.LogLines())
    if (ContainsText(line, L"Error Source=") && !ContainsText(line, L"CreateAddInComboBox"))
      out.push_back(line);
  return out;
}

// A start-up with the automatic copy set up, so the late steps show whether they ran.
void PrepareCopy(SimWorld& world) {
  world.Store(L"Configuration", L"ExtName ", L"pdf");
  world.Store(L"Configuration", L"ExtDest ", L"C:\\Copies");
  world.Store(L"Configuration", L"ExtChecked ", L"1");
  world.files.PutDirectory(L"C:\\Copies");
  auto mail = sim::MakeMail(L"m", FromCivil({2026, 11, 22, 9, 30, 0}));
  mail.attachments.push_back({L"a.pdf", 1, "pdf"});
  world.store.AddToInbox(mail);
}

TEST(StartupFailuresTest, AFailingBarCallIsLoggedByItsCreatorAndStartUpGoesOn) {
  struct Case {
    const char* member;
    uint64_t occurrence;
    const wchar_t* procedure;   // where the failure is logged
    size_t missing_controls;    // controls of the start-up order not on the bar afterwards
  };
  const Case cases[] = {
      {"CommandBars.Add", 1, L"DesVireoCreateAddInCommandBar\\Sweep", 12},
      {"CommandBarControls.Add", 3, L"DesVireoCreateAddInButton\\Sweep", 2},  // + the combo box
      {"CommandBar.FindControl", 5, L"DesVireoCreateAddInButton\\Sweep", 2},
      {"CommandBars.ItemByName", 2, L"DesVireoCreateAddInButton\\Sweep", 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.member);
    SimWorld world;
    PrepareCopy(world);
    world.faults.FailCall(c.member, Error(-1, L"Sweep", L"refused"), c.occurrence);
    auto addin = world.StartOutlook();
    const auto errors = ErrorLines(world);
    ASSERT_EQ(errors.size(), c.missing_controls == 12 ? 12u : 1u);  // then every button says 91
    EXPECT_TRUE(ContainsText(errors[0], std::wstring(c.procedure) + L"; Error Description=refused"))
        << ToUtf8(errors[0]);
    size_t present = 0;
    if (auto bar = world.Bar())
      for (int index : StartupCreationOrder()) present += bar->FindControl(FindControl(index)->tag) != nullptr;
    EXPECT_EQ(present, StartupCreationOrder().size() - c.missing_controls);
    // The steps after the toolbar still ran: the start-up copy, and start-up complete.
    EXPECT_EQ(world.files.Get(L"C:\\Copies\\a.pdf").value_or("-"), "pdf");
    EXPECT_EQ(world.ProgressTexts().back(), L"Applying New Chat Messages ...");
    EXPECT_FALSE(addin->addin().IsFormLoaded(L"frmInit"));
  }
}

TEST(StartupFailuresTest, AnEventThatCannotBeHookedIsNamedAndFrmInitStillGoes) {
  for (const char* member : {"Application.OnNewMail", "Application.OnStartup",
                             "Inspectors.OnNewInspector", "Explorer.OnClose"}) {
    SCOPED_TRACE(member);
    SimWorld world;
    world.faults.FailCall(member, Error(-2147467262, L"Outlook", L"No such interface supported"));
    auto addin = world.StartOutlook();
    EXPECT_FALSE(addin->addin().IsFormLoaded(L"frmInit"));
    const std::wstring event = FromUtf8(member).replace(std::string_view(member).find(".On"), 3, L".");
    const auto errors = ErrorLines(world);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_TRUE(ContainsText(errors[0], L"; Error Description=The " + event +
                                            L" event could not be hooked: No such interface supported"))
        << ToUtf8(errors[0]);
  }
}

TEST(StartupFailuresTest, AnOutlookThatCannotBeUsedLeavesTheAddInInertWithALogLine) {
  struct Case {
    const char* what;
    bool nothing_given;     // Outlook hands over Nothing and none can be found
    const char* failing;    // or this call fails
  };
  const Case cases[] = {{"Nothing for an application", true, nullptr},
                        {"Explorers fails", false, "Application.Explorers"},
                        {"Count fails", false, "Explorers.Count"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SimWorld world;
    Services services = world.MakeServices();
    if (c.nothing_given) services.create_application = [] { return outlook::Ref<outlook::Application>(); };
    DesVireo addin(services);
    addin.AddinInstance_Initialize();
    if (c.failing) world.faults.FailCall(c.failing, Error(-2147417848, L"Outlook", L"disconnected"));
    addin.IDTExtensibility2_OnConnection(c.nothing_given ? nullptr : world.application, ext_cm_Startup);
    addin.IDTExtensibility2_OnStartupComplete();
    EXPECT_TRUE(addin.addin().LoadedIndirectly);
    EXPECT_TRUE(world.ui.events().empty());
    const auto lines = world.LogLines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(ContainsText(lines[0], L"Error Source=DesVireoIDTExtensibility2_OnConnection\\"))
        << ToUtf8(lines[0]);
    EXPECT_TRUE(ContainsText(lines[0], L"Outlook's Application object cannot be used, the add-in "
                                       L"stays inactive: "))
        << ToUtf8(lines[0]);
    addin.IDTExtensibility2_OnDisconnection(ext_dm_HostShutdown);
    EXPECT_EQ(world.settings.table().size(), 0u);  // an inert add-in saves nothing
  }
}

}  // namespace
}  // namespace corvina
