#include "chat/chat_stage.h"

#include "base/text.h"

namespace corvina {

bool IsThisChatEmail(const std::wstring& subject) {
  return subject.size() >= 3 && ContainsText(subject, L"Chat message from:");
}

void ReceiveNewChatMail(AddIn& addin, outlook::Item& /*mail*/) {
  addin.Run(L"ReceiveNewChatMail", [] {});
}

void LoopForNewChatsAtEntry(AddIn& addin) { addin.Run(L"LoopForNewChatsAtEntry", [] {}); }

void LoadChatUsers(AddIn& addin) { addin.Run(L"InitializeData", [] {}); }

}  // namespace corvina
