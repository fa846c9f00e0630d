#pragma once
// Mailboxes and stored settings at benchmark scale.
#include <string>

#include "support/sim_world.h"

namespace corvina::bench {

// Fills the Inbox with `count` mails (every 50th a delivery report), oldest first, one minute
// apart, ending just before the world's "now".
void FillInbox(testing::SimWorld& world, int count);

// The stored lists a long-time user has: the automatic-copy table, `rules` virus-alert
// patterns and `chat_users` chat correspondents.
void StoreUserLists(testing::SimWorld& world, int rules, int chat_users);

}  // namespace corvina::bench
