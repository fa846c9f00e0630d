#include "simulator/script.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>

#include "base/text.h"

namespace corvina::simulator {
namespace {

// What follows a verb.
enum class Args { kNone, kText, kOptionalText, kNumber, kNumbers, kExplorers, kAnswer, kCombo };

struct VerbInfo {
  std::string_view name;
  Verb verb;
  Args args;
  int32_t min = 0;  // smallest value a number argument may take
};

constexpr VerbInfo kVerbs[] = {
    {"start", Verb::kStart, Args::kExplorers},
    {"deliver", Verb::kDeliver, Args::kText},
    {"select", Verb::kSelect, Args::kNumbers, 1},
    {"open", Verb::kOpen, Args::kNumber, 1},
    {"click", Verb::kClick, Args::kText},
    {"click-inspector", Verb::kClickInspector, Args::kText},
    {"answer", Verb::kAnswer, Args::kAnswer},
    {"choose-folder", Verb::kChooseFolder, Args::kNumber},
    {"browse-folder", Verb::kBrowseFolder, Args::kText},
    {"cancel-after", Verb::kCancelAfter, Args::kNumber},
    {"advance", Verb::kAdvance, Args::kNumber},
    {"combo", Verb::kCombo, Args::kCombo},
    {"stop", Verb::kStop, Args::kNone},
    {"remove", Verb::kRemove, Args::kNone},
    {"print", Verb::kPrint, Args::kOptionalText},
    {"user", Verb::kUser, Args::kText},
    {"as", Verb::kAs, Args::kText},
    {"send", Verb::kSend, Args::kCombo},
    {"hold-mail", Verb::kHoldMail, Args::kNone},
    {"deliver-held", Verb::kDeliverHeld, Args::kNone},
    {"show", Verb::kShow, Args::kText},
    {"attach", Verb::kAttach, Args::kText},
    {"delete", Verb::kDelete, Args::kNumber, 1},
    {"chat", Verb::kChat, Args::kText},
    {"virus", Verb::kVirus, Args::kText},
};

constexpr std::wstring_view kChatCommands[] = {
    L"select", L"type",  L"format", L"color", L"attach", L"send", L"click", L"add-user",
    L"properties", L"new-user", L"own-address", L"remove-user", L"clear", L"save", L"close",
    L"activate", L"flash"};

constexpr std::wstring_view kVirusCommands[] = {
    L"new", L"cancel-new", L"edit", L"select", L"on", L"off", L"remove", L"sort", L"scan",
    L"scan-alerts", L"send", L"log", L"clear-log", L"close-log", L"apply", L"close"};

constexpr std::pair<std::string_view, MsgBoxButton> kButtons[] = {
    {"yes", MsgBoxButton::kYes}, {"no", MsgBoxButton::kNo},
    {"ok", MsgBoxButton::kOk}, {"cancel", MsgBoxButton::kCancel}};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view Strip(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

// Splits off the first blank-separated word; `rest` keeps the stripped remainder.
std::string_view FirstWord(std::string_view s, std::string_view* rest) {
  size_t end = 0;
  while (end < s.size() && !IsBlank(s[end])) ++end;
  *rest = Strip(s.substr(end));
  return s.substr(0, end);
}

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::optional<int32_t> Number(std::string_view s) {
  int32_t value = 0;
  auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
  if (s.empty() || ec != std::errc() || end != s.data() + s.size()) return std::nullopt;
  return value;
}

// Fills `action` from the arguments; returns an error message, empty when they are fine.
std::string ParseArgs(const VerbInfo& info, std::string_view args, Action& action) {
  auto number = [&](std::string_view word) -> std::string {
    std::optional<int32_t> n = Number(Strip(word));
    if (!n || *n < info.min) {
      return "expects a whole number of at least " + std::to_string(info.min) + ", not '" +
             std::string(Strip(word)) + "'";
    }
    action.numbers.push_back(*n);
    return {};
  };
  std::string_view rest;
  switch (info.args) {
    case Args::kNone:
      return args.empty() ? "" : "takes no arguments";
    case Args::kText:
      action.text = FromUtf8(args);
      return args.empty() ? "needs an argument" : "";
    case Args::kOptionalText:
      action.text = FromUtf8(args);
      return {};
    case Args::kNumber:
      return number(args);
    case Args::kNumbers:
      for (size_t from = 0;;) {
        size_t comma = args.find(',', from);
        if (std::string message = number(args.substr(from, comma - from)); !message.empty()) {
          return message;
        }
        if (comma == std::string_view::npos) return {};
        from = comma + 1;
      }
    case Args::kExplorers:
      if (args.empty()) {
        action.numbers.push_back(1);
        return {};
      }
      if (Lower(FirstWord(args, &rest)) != "explorers") return "expects 'explorers N'";
      return number(rest);
    case Args::kAnswer: {
      std::string button = Lower(FirstWord(args, &rest));
      auto it = std::find_if(std::begin(kButtons), std::end(kButtons),
                             [&](const auto& b) { return b.first == button; });
      if (it == std::end(kButtons)) return "expects yes, no, ok or cancel";
      action.answer.button = it->second;
      action.answer.dont_show_checked = !rest.empty();
      return rest.empty() || Lower(rest) == "dont-show" ? "" : "expects 'dont-show' after the button";
    }
    case Args::kCombo: {
      std::string_view tag;
      if (!args.empty() && args.front() == '"') {
        size_t close = args.find('"', 1);
        if (close == std::string_view::npos) return "has an unclosed quote";
        tag = args.substr(1, close - 1);
        rest = Strip(args.substr(close + 1));
      } else {
        tag = FirstWord(args, &rest);
      }
      action.text = FromUtf8(tag);
      action.choice = FromUtf8(rest);
      return tag.empty() || rest.empty() ? "needs a tag and a text" : "";
    }
  }
  return {};
}

}  // namespace

// Splits at blanks; a "quoted text" (after a `name=` too) stays one word, without its quotes.
std::vector<std::wstring> ScriptWords(const std::wstring& text) {
  std::vector<std::wstring> words;
  std::wstring word;
  bool quoted = false, any = false;
  for (wchar_t c : text) {
    if (c == L'"') {
      quoted = !quoted;
      any = true;
    } else if ((c == L' ' || c == L'\t') && !quoted) {
      if (any) words.push_back(word);
      word.clear();
      any = false;
    } else {
      word += c;
      any = true;
    }
  }
  if (any) words.push_back(word);
  return words;
}

bool IsVirusCommand(std::wstring_view word) {
  return std::any_of(std::begin(kVirusCommands), std::end(kVirusCommands),
                     [&](std::wstring_view c) { return EqualsIgnoreCase(word, c); });
}

bool IsChatCommand(std::wstring_view word) {
  return std::any_of(std::begin(kChatCommands), std::end(kChatCommands),
                     [&](std::wstring_view c) { return EqualsIgnoreCase(word, c); });
}

std::string_view VerbName(Verb verb) {
  for (const VerbInfo& info : kVerbs) {
    if (info.verb == verb) return info.name;
  }
  return "?";
}

std::wstring FormatAction(const Action& action) {
  std::wstring line = FromUtf8(VerbName(action.verb));
  switch (action.verb) {
    case Verb::kStart:
      line += L" explorers " + std::to_wstring(action.numbers.empty() ? 1 : action.numbers[0]);
      break;
    case Verb::kAnswer:
      for (const auto& [name, button] : kButtons) {
        if (button == action.answer.button) line += L" " + FromUtf8(name);
      }
      if (action.answer.dont_show_checked) line += L" dont-show";
      break;
    case Verb::kCombo:
    case Verb::kSend: {
      // The tag is the first word unless quoted, so one with a blank is quoted.
      const bool quote = action.text.find_first_of(L" \t\r") != std::wstring::npos;
      line += quote ? L" \"" + action.text + L"\" " : L" " + action.text + L" ";
      line += action.choice;
      break;
    }
    default:
      for (size_t i = 0; i < action.numbers.size(); ++i)
        line += (i == 0 ? L" " : L",") + std::to_wstring(action.numbers[i]);
      if (!action.text.empty()) line += L" " + action.text;
  }
  return line;
}

Script ParseScript(std::string_view text, std::string_view source) {
  Script script;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);  // a UTF-8 byte-order mark
  int line = 0;
  for (size_t from = 0; from <= text.size();) {
    size_t end = std::min(text.find('\n', from), text.size());
    std::string_view content = Strip(text.substr(from, end - from));
    from = end + 1;
    ++line;
    if (content.empty() || content.front() == '#') continue;
    std::string_view args;
    std::string verb = Lower(FirstWord(content, &args));
    auto fail = [&](const std::string& message) {
      script.errors.push_back(std::string(source) + ":" + std::to_string(line) + ": " + message);
    };
    auto info = std::find_if(std::begin(kVerbs), std::end(kVerbs),
                             [&](const VerbInfo& v) { return v.name == verb; });
    if (info == std::end(kVerbs)) {
      fail("unknown action '" + verb + "'");
      continue;
    }
    Action action;
    action.verb = info->verb;
    action.line = line;
    std::string message = ParseArgs(*info, args, action);
    const size_t equals = action.text.find(L'=');
    if (message.empty() && action.verb == Verb::kUser &&
        (equals == 0 || equals == std::wstring::npos || equals + 1 == action.text.size()))
      message = "expects name=profile folder";
    if (message.empty() && action.verb == Verb::kChat &&
        !IsChatCommand(action.text.substr(0, action.text.find(L' '))))
      message = "expects a chat command (select, type, format, color, attach, send, click, "
                "add-user, properties, new-user, own-address, remove-user, clear, save, close, "
                "activate, flash)";
    if (message.empty() && action.verb == Verb::kVirus &&
        !IsVirusCommand(action.text.substr(0, action.text.find(L' '))))
      message = "expects a virus command (new, cancel-new, edit, select, on, off, remove, sort, "
                "scan, scan-alerts, send, log, clear-log, close-log, apply, close)";
    if (message.empty() && action.verb == Verb::kShow && Lower(ToUtf8(action.text)) != "deleted" &&
        Lower(ToUtf8(action.text)) != "inbox")
      message = "expects 'inbox' or 'deleted'";
    if (!message.empty()) {
      fail(verb + " " + message);
      continue;
    }
    script.actions.push_back(std::move(action));
  }
  return script;
}

Script LoadScript(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Script{{}, {path + ": cannot open the script"}};
  std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  return ParseScript(text, path);
}

}  // namespace corvina::simulator
