#pragma once
// The chat window driven from a script (`chat send`, `chat click 2` ...), and the board told
// in the transcript as it grows.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "addin/addin.h"
#include "platform/sim/scripted_user_interface.h"

namespace corvina::simulator {

using SayFn = std::function<void(const std::wstring&)>;

// What the transcript has told of one user's board and window so far.
class ChatWatch {
 public:
  // Carries out one `chat ...` line; false (after saying why) when it cannot be.
  bool Perform(AddIn& addin, sim::ScriptedUserInterface& ui, const std::wstring& command,
               const SayFn& say);
  // Tells what was added to the board since the last call, as text, each picture numbered
  // for `chat click N`; and whether the caption started or stopped flashing.
  void PrintChanges(AddIn& addin, const SayFn& say);
  // The add-in is gone (Outlook stopped): a new one starts with nothing told.
  void Forget() { *this = ChatWatch(); }

 private:
  std::wstring Picture(int32_t number, const SayFn& say) const;

  size_t board_bytes_ = 0;
  std::vector<std::wstring> pictures_;  // the <IMG> elements of the board, in order
  bool flashing_ = false;
  std::wstring status_;
  std::wstring selected_;  // the selected rows of the send-to list
  bool tell_selection_ = false;  // say the selection even when it did not change
};

}  // namespace corvina::simulator
