#pragma once
// The chat board read as plain text, for a window that cannot show the page itself (no
// browser, or one that never finishes loading): the speakers' captions, the messages with
// their line breaks, and a bracketed note for a message's attachments. Nothing on the board
// is lost; only the pictures and the formatting are.
#include <string>
#include <string_view>

namespace corvina {

// The text of a board page or of one of its blocks (UTF-8 HTML), lines ending in CR LF.
std::wstring BoardPlainText(std::string_view html);

}  // namespace corvina
