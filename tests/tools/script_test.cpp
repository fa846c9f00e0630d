#include "simulator/script.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"

namespace corvina::simulator {
namespace {

struct Case {
  std::string line;
  Verb verb;
  std::wstring text;
  std::vector<int32_t> numbers;
  std::wstring choice = L"";
  MsgBoxButton button = MsgBoxButton::kCancel;
  bool dont_show = false;
};

TEST(ParseScript, ReadsEveryVerb) {
  const Case cases[] = {
      {"start", Verb::kStart, L"", {1}},
      {"START Explorers 0", Verb::kStart, L"", {0}},
      {"deliver new/01-order.eml", Verb::kDeliver, L"new/01-order.eml", {}},
      {"select 1, 3,4", Verb::kSelect, L"", {1, 3, 4}},
      {"open 2", Verb::kOpen, L"", {2}},
      {"click  Vireo_Smart sender rules  ", Verb::kClick, L"Vireo_Smart sender rules", {}},
      {"Click-Inspector Vireo_Save...", Verb::kClickInspector, L"Vireo_Save...", {}},
      {"answer YES dont-show", Verb::kAnswer, L"", {}, L"", MsgBoxButton::kYes, true},
      {"answer ok", Verb::kAnswer, L"", {}, L"", MsgBoxButton::kOk},
      {"choose-folder 0", Verb::kChooseFolder, L"", {0}},
      {"browse-folder C:\\Mail files\\2026", Verb::kBrowseFolder, L"C:\\Mail files\\2026", {}},
      {"cancel-after 2", Verb::kCancelAfter, L"", {2}},
      {"advance 90", Verb::kAdvance, L"", {90}},
      {"combo Vireo_Sort by date, newest", Verb::kCombo, L"Vireo_Sort", {}, L"by date, newest"},
      {"combo \"Vireo_Smart sender\" every day", Verb::kCombo, L"Vireo_Smart sender", {},
       L"every day"},
      {"stop", Verb::kStop, L"", {}},
      {"remove", Verb::kRemove, L"", {}},
      {"print   # not a comment: \u00fcber", Verb::kPrint, L"# not a comment: \u00fcber", {}},
      {"print", Verb::kPrint, L"", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    Script script = ParseScript(c.line, "t");
    ASSERT_TRUE(script.ok()) << script.errors[0];
    ASSERT_EQ(script.actions.size(), 1u);
    const Action& a = script.actions[0];
    EXPECT_EQ(a.verb, c.verb);
    EXPECT_EQ(a.text, c.text);
    EXPECT_EQ(a.choice, c.choice);
    EXPECT_EQ(a.numbers, c.numbers);
    if (c.verb == Verb::kAnswer) {
      EXPECT_EQ(a.answer.button, c.button);
      EXPECT_EQ(a.answer.dont_show_checked, c.dont_show);
    }
  }
}

TEST(ParseScript, ReportsEveryFaultyLineWithItsNumber) {
  Script script = ParseScript(
      "# a comment\n"
      "\n"
      "clik Vireo_About\n"          // 3
      "start 2\n"                   // 4
      "start explorers -1\n"        // 5
      "select 1,,2\n"               // 6
      "open 0\n"                    // 7
      "open two\r\n"                // 8
      "deliver\n"                   // 9
      "answer maybe\n"              // 10
      "answer no later\n"           // 11
      "combo \"Vireo_Sort by date\n" // 12
      "combo Vireo_Sort\n"          // 13
      "stop now\n"                  // 14
      "advance 99999999999\n"       // 15
      "  print fine\n"              // 16
      "user anna=\n"                // 17
      "user =folder\n"              // 18
      "user anna\n"                 // 19
      "show sent\n"                 // 20
      "chat dance\n"                // 21
      "chat\n",                     // 22
      "demo.script");
  const std::string expected[] = {
      "demo.script:3: unknown action 'clik'",
      "demo.script:4: start expects 'explorers N'",
      "demo.script:5: start expects a whole number of at least 0, not '-1'",
      "demo.script:6: select expects a whole number of at least 1, not ''",
      "demo.script:7: open expects a whole number of at least 1, not '0'",
      "demo.script:8: open expects a whole number of at least 1, not 'two'",
      "demo.script:9: deliver needs an argument",
      "demo.script:10: answer expects yes, no, ok or cancel",
      "demo.script:11: answer expects 'dont-show' after the button",
      "demo.script:12: combo has an unclosed quote",
      "demo.script:13: combo needs a tag and a text",
      "demo.script:14: stop takes no arguments",
      "demo.script:15: advance expects a whole number of at least 0, not '99999999999'",
      "demo.script:17: user expects name=profile folder",
      "demo.script:18: user expects name=profile folder",
      "demo.script:19: user expects name=profile folder",
      "demo.script:20: show expects 'inbox' or 'deleted'",
      "demo.script:21: chat expects a chat command (select, type, format, color, attach, send, "
      "click, add-user, properties, new-user, own-address, remove-user, clear, save, close, "
      "activate, flash)",
      "demo.script:22: chat needs an argument",
  };
  EXPECT_EQ(script.errors, std::vector<std::string>(std::begin(expected), std::end(expected)));
  ASSERT_EQ(script.actions.size(), 1u);
  EXPECT_EQ(script.actions[0].line, 16);
}

// The transcript echoes each action as a line that means the same when pasted into a script.
TEST(FormatAction, ReadsBackAsTheSameAction) {
  const std::pair<const char*, const char*> cases[] = {
      {"start", "start explorers 1"},
      {"start explorers 0", "start explorers 0"},
      {"deliver new/01-Письмо.eml", "deliver new/01-Письмо.eml"},
      {"select 2, 3,4", "select 2,3,4"},
      {"open 2", "open 2"},
      {"click Vireo_Smart sender...", "click Vireo_Smart sender..."},
      {"CLICK-INSPECTOR Vireo_Save...", "click-inspector Vireo_Save..."},
      {"answer OK", "answer ok"},
      {"answer Yes DONT-SHOW", "answer yes dont-show"},
      {"answer cancel", "answer cancel"},
      {"answer no", "answer no"},
      {"choose-folder 0", "choose-folder 0"},
      {"browse-folder C:\\Mail files", "browse-folder C:\\Mail files"},
      {"cancel-after 2", "cancel-after 2"},
      {"advance 90", "advance 90"},
      {"combo Vireo_Sort by date", "combo Vireo_Sort by date"},
      {"combo \"Vireo_Smart sender\"   every day", "combo \"Vireo_Smart sender\" every day"},
      {"combo \"Vireo_Sort\" new", "combo Vireo_Sort new"},
      {"stop", "stop"},
      {"remove", "remove"},
      {"print  a line", "print a line"},
  };
  for (const auto& [line, echo] : cases) {
    SCOPED_TRACE(line);
    const Script first = ParseScript(line, "t");
    ASSERT_EQ(first.actions.size(), 1u);
    const std::wstring formatted = FormatAction(first.actions[0]);
    EXPECT_EQ(ToUtf8(formatted), echo);
    const Script again = ParseScript(ToUtf8(formatted), "t");
    ASSERT_TRUE(again.ok()) << again.errors[0];
    ASSERT_EQ(again.actions.size(), 1u);
    const Action &a = first.actions[0], &b = again.actions[0];
    EXPECT_EQ(b.verb, a.verb);
    EXPECT_EQ(b.text, a.text);
    EXPECT_EQ(b.choice, a.choice);
    EXPECT_EQ(b.numbers, a.numbers);
    EXPECT_EQ(b.answer.button, a.answer.button);
    EXPECT_EQ(b.answer.dont_show_checked, a.answer.dont_show_checked);
  }
}

// The shipped demo parses and only delivers mails that exist in the sample profile.
TEST(ParseScript, DemoScriptIsValid) {
  const std::string samples = CORVINA_SAMPLES_DIR;
  Script script = LoadScript(samples + "/demo.script");
  ASSERT_TRUE(script.ok()) << script.errors[0];
  int delivered = 0;
  for (const Action& a : script.actions) {
    if (a.verb != Verb::kDeliver) continue;
    ++delivered;
    EXPECT_TRUE(std::filesystem::is_regular_file(samples + "/profile/mailbox/" + ToUtf8(a.text)))
        << ToUtf8(a.text);
  }
  EXPECT_GT(delivered, 0);
  EXPECT_FALSE(LoadScript(samples + "/missing.script").ok());
}

}  // namespace
}  // namespace corvina::simulator
