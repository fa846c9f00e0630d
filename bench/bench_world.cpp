#include "bench_world.h"

namespace corvina::bench {

void FillInbox(testing::SimWorld& world, int count) {
  const Date start = AddSeconds(world.clock.Now(), -60.0 * (count + 1));
  for (int i = 0; i < count; ++i) {
    const Date t = AddSeconds(start, 60.0 * i);
    if (i % 50 == 49) {
      world.store.AddToInbox(sim::MakeReport(t));
    } else {
      auto mail = sim::MakeMail(L"Mail " + std::to_wstring(i), t);
      if (i % 10 == 0) mail.attachments.push_back({L"file" + std::to_wstring(i) + L".pdf", 1, "%PDF"});
      world.store.AddToInbox(std::move(mail));
    }
  }
}

void StoreUserLists(testing::SimWorld& world, int rules, int chat_users) {
  world.Store(L"Configuration", L"ExtName ", L"pdf;jpg;doc;zip");
  world.Store(L"Configuration", L"ExtDest ", L"C:\\Pdf;C:\\Pictures;C:\\Docs;C:\\Zips");
  world.Store(L"Configuration", L"ExtChecked ", L"1;1;0;1");
  std::wstring description, active, subject;
  for (int i = 0; i < rules; ++i) {
    description += L";Rule " + std::to_wstring(i);
    active += i % 2 ? L";True" : L";False";
    subject += L";Subject " + std::to_wstring(i);
  }
  world.Store(L"Configuration", L"VirusDescription", description);
  world.Store(L"Configuration", L"VirusActive", active);
  world.Store(L"Configuration", L"VirusSubject", subject);
  std::wstring emails, nicks, statuses;
  for (int i = 0; i < chat_users; ++i) {
    emails += L"user" + std::to_wstring(i) + L"@example.com;";
    nicks += L"User " + std::to_wstring(i) + L";";
    statuses += L"1;";
  }
  world.Store(L"Chat", L"ChatUserEmail", emails);
  world.Store(L"Chat", L"ChatUserNickName", nicks);
  world.Store(L"Chat", L"ChatUserStatus", statuses);
}

}  // namespace corvina::bench
