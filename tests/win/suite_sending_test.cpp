// Writing and sending a mail through the late-bound object model, as the features that send
// mail will: the win32 client against the stand-in Outlook, which records what was sent.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/sim/memory_file_system.h"
#include "platform/win32/outlook_application.h"
#include "standin.h"

namespace corvina::standin {
namespace {

struct Sending : ::testing::Test {
  Sending() {
    files.AddDrive(L'C', 1 << 20);
    files.WriteFile(L"C:\\plan.pdf", std::string("%PDF\0\xFF", 6));
    store.on_send = [this](const sim::SimItemPtr& mail) { sent.push_back(mail); };
  }
  // Writes one mail through COM and sends it; the first Error a call raises comes back.
  std::optional<Error> WriteAndSend() {
    try {
      auto mail = application->CreateItem(outlook::olMailItem);
      mail->SetTo(L"ben@example.com");
      mail->SetSubject(L"Plan \u00e9t\u00e9");
      mail->SetBody(L"See the plan.");
      mail->Recipients()->Add(L"cleo@example.org");
      mail->Attachments()->Add(L"C:\\plan.pdf");
      mail->Send();
      return std::nullopt;
    } catch (const Error& e) {
      return e;
    }
  }

  sim::Faults faults;
  sim::MemoryFileSystem files{faults};
  sim::SimStore store{faults, files};
  StandIn standin{store};
  outlook::Ref<outlook::Application> application =
      win32::WrapApplication(standin.Application().Get());
  std::vector<sim::SimItemPtr> sent;
};

TEST_F(Sending, AMailWrittenThroughComIsSentWhole) {
  ASSERT_FALSE(WriteAndSend());
  ASSERT_EQ(sent.size(), 1u);
  const sim::SimItemData& mail = *sent[0];
  EXPECT_EQ(mail.subject, L"Plan \u00e9t\u00e9");
  EXPECT_EQ(mail.to, L"ben@example.com");
  EXPECT_EQ(mail.body, L"See the plan.");
  EXPECT_EQ(mail.recipients, (std::vector<std::wstring>{L"cleo@example.org"}));
  ASSERT_EQ(mail.attachments.size(), 1u);
  EXPECT_EQ(mail.attachments[0].file_name, L"plan.pdf");
  EXPECT_EQ(mail.attachments[0].bytes, std::string("%PDF\0\xFF", 6));
  EXPECT_EQ(mail.folder, outlook::olFolderSentMail);
}

TEST_F(Sending, EachFailingStepReachesTheCallerWithItsNumberAndNothingIsSent) {
  const struct {
    const char* member;
    int32_t number;
  } rows[] = {
      {"Application.CreateItem", 5},
      {"Recipients.Add", static_cast<int32_t>(0x80004005u)},  // a name Outlook cannot resolve
      {"Attachments.Add", 53},
      {"Item.Send", static_cast<int32_t>(0x80004005u)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.member);
    sent.clear();
    faults.FailCall(row.member, Error(row.number, L"Outlook", L"Planned failure"));
    std::optional<Error> error = WriteAndSend();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), row.number);
    EXPECT_TRUE(sent.empty());
  }
}

}  // namespace
}  // namespace corvina::standin
