#pragma once
// The chat window's send-to list as it is drawn: one row per chat user. The chat core fills
// it; the window (or the sim) only draws it.
#include <cstdint>
#include <string>
#include <vector>

namespace corvina {

struct ChatListRow {
  std::wstring key;       // the address
  std::wstring text;      // the nick name
  std::wstring icon_key;  // the status picture ("KeyChatUserActive" ...)
  uint32_t fore_color = 0;  // 0x00BBGGRR
  std::wstring sub_item;  // the address again, in the second column
  bool selected = false;
};

struct ChatListView {
  std::wstring small_icons;  // the image list's name
  std::vector<ChatListRow> rows;
};

}  // namespace corvina
