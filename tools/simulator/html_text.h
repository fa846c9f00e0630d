#pragma once
// The readable text of an HTML body, for a mail that has no text/plain part: what a mail
// client shows as the plain body. Deliberately simple: tags dropped, block ends become line
// breaks, the common entities decoded; no layout.
#include <string>
#include <string_view>

namespace corvina::simulator {

// UTF-8 in, UTF-8 out, lines separated by "\n".
std::string HtmlToText(std::string_view html);

}  // namespace corvina::simulator
