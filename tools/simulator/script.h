#pragma once
// The simulator's script: one action per line, what a person does with Outlook and the add-in
// in the order it happens. `#` at the start of a line makes a comment; blank lines are
// ignored; verbs are case-insensitive; the arguments are the rest of the line, so a tag may
// contain blanks ("click Vireo_Save attachments"). Only `combo` takes two texts: its tag is
// the first word, or a "quoted" text when the tag has blanks, and the choice is the rest.
//
//   start [explorers N]     deliver <file.eml>        select <n>[,<n>...]     open <n>
//   click <tag>             click-inspector <tag>     answer yes|no|ok|cancel [dont-show]
//   choose-folder <n>       browse-folder <path>      cancel-after <n>        advance <minutes>
//   combo <tag> <text>      stop                      remove                  print <text>
//   user <name>=<profile>   as <name>                 send <to> <subject>     show inbox|deleted
//   hold-mail               deliver-held              attach <C:\path>       delete <n>
//   chat <command> [...]    the chat window: select, type, format, color, attach, send,
//                           click <n>, add-user <n>, properties <address> [field=value ...],
//                           new-user, own-address, remove-user, clear, save, close,
//                           activate, flash [n]
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/user_interface.h"

namespace corvina::simulator {

enum class Verb {
  kStart, kDeliver, kSelect, kOpen, kClick, kClickInspector, kAnswer, kChooseFolder,
  kBrowseFolder, kCancelAfter, kAdvance, kCombo, kStop, kRemove, kPrint,
  // Several users: declaring one, choosing whose actions follow, the mail between them.
  kUser, kAs, kSend, kHoldMail, kDeliverHeld, kShow,
  // What features that send or delete mail will do, done through the object model by hand.
  kAttach, kDelete,
  // The chat window: the command and its arguments in `text`.
  kChat,
  // The virus-alert window, likewise.
  kVirus
};

struct Action {
  Verb verb = Verb::kPrint;
  // deliver: the file; click, click-inspector, combo: the tag; browse-folder: the path;
  // print: the line; user: "name=profile"; as: the user; send: the address; show: "deleted";
  // attach: the file for the next send.
  std::wstring text;
  std::wstring choice;  // combo: the entry to choose; send: the subject
  // start: the number of explorers (default 1); select: the 1-based positions; open,
  // choose-folder, cancel-after, advance, delete: the one value.
  std::vector<int32_t> numbers;
  MsgBoxAnswer answer;  // answer: the button and the "don't show again" box
  int line = 0;         // 1-based line in the script
};

// The words that may follow `chat`.
bool IsChatCommand(std::wstring_view word);
bool IsVirusCommand(std::wstring_view word);
// Splits at blanks; a "quoted text" (after a `name=` too) stays one word, without its quotes.
std::vector<std::wstring> ScriptWords(const std::wstring& text);

// The verb as written in scripts ("click-inspector").
std::string_view VerbName(Verb verb);

// The action as a script line ("start explorers 1", "answer ok dont-show", "select 2,3",
// `combo "a tag" text`) that ParseScript reads back as the same action, so a line copied from
// a transcript can be pasted into a script. Texts with blanks at either end, or a combo tag
// with both a blank and a quote, have no such line: they come out as close as the syntax allows.
std::wstring FormatAction(const Action& action);

struct Script {
  std::vector<Action> actions;
  std::vector<std::string> errors;  // "source:line: message", in line order
  bool ok() const { return errors.empty(); }
};

// Parses every line and reports every faulty one; `source` names the script in messages.
Script ParseScript(std::string_view text, std::string_view source);
Script LoadScript(const std::string& path);

}  // namespace corvina::simulator
