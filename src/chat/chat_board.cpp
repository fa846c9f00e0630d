#include "chat/chat_board.h"

#include <cwchar>

#include "base/text.h"
#include "corvina/version.h"
#include "settings/guard.h"

// How mail text reaches the page. The text is escaped first (EscapeBoardText, the whole text
// at once), then the link table runs over the escaped text (RepalceSpecialChars). Linking last
// keeps ordinary text exactly as the two tables give it, and its input then holds no markup of
// the mail's own: every "<", ">", "&" and double quote of the mail is an entity already, so
// nothing inside a word can open a tag or end the attribute a link copies the word into. What
// the link table adds on top of that:
//  - words end at blanks, tabs and line breaks (in escaped text: " ", "&nbsp;", "<BR>" and raw
//    CR/LF), so a link never runs into the next line;
//  - a link's target and text also get the single quote and the backtick escaped, which the
//    text table leaves alone, so both are escaped as every attribute is;
//  - the scheme of every target is fixed by the word's start ("mailto:" for an address, then
//    "http://", "ftp://", "http:\\", "ftp:\\"), so no javascript:, vbscript:, data: or file:
//    link can be made; a "www." word gets "http://", as a bare "www.x" would resolve against
//    the board file itself.
// Attribute values (the pictures' ids, alt texts, tags) go through EscapeAttribute; the
// caption's nick name through EscapeBoardText.

namespace corvina {
namespace {

const std::wstring kContext = L"ChatControl";
constexpr wchar_t kReplacement = 0xFFFD;

bool IsSurrogate(uint32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

// `text` with every character no page can hold as text replaced by U+FFFD: NUL (the HTML
// parser drops it from text silently), surrogates that are not a pair, and values past
// U+10FFFF (no UTF-8 exists for them). `replaced` counts them.
std::wstring ForPage(std::wstring_view text, int& replaced) {
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const uint32_t c = static_cast<uint32_t>(text[i]);
    if constexpr (sizeof(wchar_t) == 2) {
      if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() &&
          static_cast<uint32_t>(text[i + 1]) >= 0xDC00 &&
          static_cast<uint32_t>(text[i + 1]) <= 0xDFFF) {
        out += text[i];
        out += text[++i];
        continue;
      }
    }
    if (c == 0 || IsSurrogate(c) || c > 0x10FFFF) {
      out += kReplacement;
      ++replaced;
    } else {
      out += text[i];
    }
  }
  return out;
}

// Length of the word separator at `i` of escaped text, 0 when a word character is there.
size_t SeparatorAt(std::wstring_view text, size_t i) {
  switch (text[i]) {
    case L' ':
    case L'\t':
    case L'\r':
    case L'\n':
      return 1;
    case L'&':
      return text.substr(i).starts_with(L"&nbsp;") ? 6 : 0;
    case L'<':
      return text.substr(i).starts_with(L"<BR>") ? 4 : 0;
    default:
      return 0;
  }
}

// Every character that could end or break out of a double-quoted attribute, as an entity.
// A link's word is escaped text already: its "&" are the text table's and stay as they are.
std::wstring AttributeEntities(std::wstring_view value, bool ampersand) {
  std::wstring out;
  out.reserve(value.size() + 8);
  for (wchar_t c : value) {
    switch (c) {
      case L'&': out += ampersand ? L"&amp;" : L"&"; break;
      case L'"': out += L"&quot;"; break;
      case L'\'': out += L"&#39;"; break;
      case L'`': out += L"&#96;"; break;
      case L'<': out += L"&lt;"; break;
      case L'>': out += L"&gt;"; break;
      default: out += c;
    }
  }
  return out;
}

std::wstring LinkValue(std::wstring_view word) { return AttributeEntities(word, false); }

void AppendLink(std::wstring& out, std::wstring_view target_prefix, const std::wstring& word) {
  out += L"<a target=\"_blank\" href=\"";
  out += target_prefix;
  out += word;
  out += L"\">";
  out += word;
  out += L"</a>";
}

void AppendWord(std::wstring& out, std::wstring_view word) {
  static constexpr std::wstring_view kWebStarts[] = {L"http://", L"ftp://", L"http:\\",
                                                     L"ftp:\\"};
  if (word.find(L'@') != std::wstring_view::npos) {
    AppendLink(out, L"mailto:", LinkValue(word));
    return;
  }
  if (word.starts_with(L"www.")) {
    AppendLink(out, L"http://", LinkValue(word));
    return;
  }
  for (std::wstring_view start : kWebStarts) {
    if (word.starts_with(start)) {
      AppendLink(out, L"", LinkValue(word));
      return;
    }
  }
  out += word;
}

std::wstring Picture(const std::wstring& addin_folder, const std::wstring& resource,
                     const std::wstring& id, const std::wstring& alt, const wchar_t* tag,
                     const std::wstring& tag_value) {
  return L"<IMG width=32 height=32 src=\"" +
         EscapeAttribute(L"res://" + addin_folder + L"\\Vireo.dll/" + resource) + L"\" id=\"" +
         EscapeAttribute(id) + L"\" alt=\"" + EscapeAttribute(alt) + L"\" " + tag + L"=\"" +
         EscapeAttribute(tag_value) + L"\">";
}

std::string Head(bool rtl, Date now) {
  std::wstring head = rtl ? L"<HTML Dir=RTL>\r\n" : L"<HTML>\r\n";
  head += L"<HEAD>\r\n";
  head += L"<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n";
  head += L"<meta http-equiv=\"Description\" content=\"Created By Corvina Chat\">\r\n";
  head += L"<TITLE>Corvina Chat Version " + std::to_wstring(kVersionMajor) + L"." +
          std::to_wstring(kVersionMinor) + L" At " + FormatGeneralDate(now) + L"</TITLE>\r\n";
  head += L"</HEAD>\r\n";
  head += L"<BODY topmargin=2 bottommargin=2 leftmargin=2 rightmargin=2 BGCOLOR=\"#FFFFFF\">\r\n";
  return ToUtf8(head);
}

void WriteHead(FileSystem& files, const std::wstring& addin_folder, bool rtl, Date now) {
  const std::wstring folder = addin_folder + L"\\Chat";
  if (!files.DirectoryExists(folder)) files.CreateDirectory(folder);
  files.WriteFile(folder + L"\\Chat.Html", Head(rtl, now));
}

std::string BlockHtml(const ChatBlock& block, const std::wstring& addin_folder, Log& log) {
  int replaced = 0;
  std::wstring html;
  if (block.header) {
    const bool unknown = block.email.empty();
    const std::wstring nick = ForPage(block.nick_name, replaced);
    const std::wstring who = unknown ? kUnknownUser : ForPage(block.email, replaced);
    const std::wstring name = unknown ? kUnknownUser : nick;
    const std::wstring icon = unknown ? L"0" : ForPage(block.icon, replaced);
    html += L"<TABLE><TR><TD>" +
            Picture(addin_folder, L"a" + icon + L".ico", who, name, L"CorvinaTag1", who) +
            L"</TD>";
    if (block.attachment_count > 0) {
      html += L"<TD>" +
              Picture(addin_folder, L"ATTACH.ICO", ForPage(block.entry_id, replaced),
                      std::to_wstring(block.attachment_count) + L" Attachments From " + name,
                      L"CorvinaTag2", L"1") +
              L"</TD>";
    }
    const std::wstring caption = block.own ? L"You have said"
                                 : unknown ? L"Unknown User Said :"
                                           : EscapeBoardText(nick) + L" Said :";
    html += L"<TD valign=bottom>" + caption + L"</TD></TR></TABLE>";
  }
  std::wstring body = RepalceSpecialChars(EscapeBoardText(ForPage(block.text, replaced)));
  const std::wstring color = HtmlColor(block.color);
  if (color != L"000000") body = L"<FONT color=" + color + L">" + body + L"</FONT>";
  if (block.underline) body = L"<U>" + body + L"</U>";
  if (block.italic) body = L"<I>" + body + L"</I>";
  if (block.bold) body = L"<B>" + body + L"</B>";
  html += body;
  if (block.new_line) html += L"<BR>\r\n";
  if (replaced > 0) {
    log.LogEvent(L"AddText: a message held " + std::to_wstring(replaced) +
                     L" character(s) no page can hold (NUL, an unpaired surrogate or a value "
                     L"past U+10FFFF); each is shown as U+FFFD",
                 kLogWarning);
  }
  return ToUtf8(html);
}

}  // namespace

std::wstring EscapeBoardText(std::wstring_view text) {
  // One pass gives what the nine rows give one after another: no row makes or breaks what a
  // later row looks for, and the two-character rows (two blanks, CR LF) pair from the left.
  std::wstring out;
  out.reserve(text.size() + text.size() / 8);
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    switch (c) {
      case L'&': out += L"&amp;"; break;
      case 169: out += L"&copy;"; break;
      case 174: out += L"&reg;"; break;
      case L'<': out += L"&lt;"; break;
      case L'>': out += L"&gt;"; break;
      case L' ':
        if (i + 1 < text.size() && text[i + 1] == L' ') {
          out += L"&nbsp;&nbsp;";
          ++i;
        } else {
          out += L' ';
        }
        break;
      case L'"': out += L"&quot;"; break;
      case L'\t': out += L"&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;"; break;
      case L'\r':
        if (i + 1 < text.size() && text[i + 1] == L'\n') {
          out += L"<BR>\r\n";
          ++i;
        } else {
          out += c;
        }
        break;
      default: out += c;
    }
  }
  return out;
}

std::wstring EscapeAttribute(std::wstring_view value) { return AttributeEntities(value, true); }

std::wstring RepalceSpecialChars(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size() + text.size() / 4);
  size_t i = 0;
  while (i < text.size()) {
    if (size_t separator = SeparatorAt(text, i)) {
      out += text.substr(i, separator);
      i += separator;
      continue;
    }
    size_t end = i + 1;
    while (end < text.size() && SeparatorAt(text, end) == 0) ++end;
    AppendWord(out, text.substr(i, end - i));
    i = end;
  }
  return out;
}

std::wstring HtmlColor(ChatColor color) {
  const unsigned rgb = ((color & 0xFFu) << 16) | (color & 0xFF00u) | ((color >> 16) & 0xFFu);
  wchar_t hex[8];
  std::swprintf(hex, 8, L"%06X", rgb);
  return hex;
}

ChatControl::ChatControl(FileSystem& files, Log& log, std::wstring addin_folder)
    : files_(files), log_(log), addin_folder_(std::move(addin_folder)) {}

std::wstring ChatControl::BoardPath() const { return addin_folder_ + L"\\Chat\\Chat.Html"; }

void ChatControl::InitChat(bool rtl, Date now) {
  rtl_ = rtl;
  started_ = now;
  Guard(log_, kContext, L"InitChat", [&] { WriteHead(files_, addin_folder_, rtl, now); });
}

void ChatControl::AddText(const ChatBlock& block) {
  Guard(log_, kContext, L"AddText", [&] {
    last_block_ = BlockHtml(block, addin_folder_, log_);
    if (!files_.FileExists(BoardPath())) {
      // Taken away while Outlook ran, or never started: a page without its head would not
      // even be read as UTF-8, so the head goes first and the message is kept.
      log_.LogEvent(
          L"AddText: the chat board " + BoardPath() + L" was missing; a new one was started",
          kLogWarning);
      WriteHead(files_, addin_folder_, rtl_, started_);
    }
    files_.AppendFile(BoardPath(), last_block_);
  });
}

void ChatControl::ClearChatBoard(bool rtl, Date now) { InitChat(rtl, now); }

bool ChatControl::SaveChat(const std::wstring& path) { return SaveBrowserHtmlToFile(path); }

bool ChatControl::SaveBrowserHtmlToFile(const std::wstring& path) {
  return Guard(log_, kContext, L"SaveBrowserHtmlToFile", false, [&] {
    files_.WriteFile(path, files_.ReadFile(BoardPath()) + "</BOdy></HTML>");
    return true;
  });
}

}  // namespace corvina
