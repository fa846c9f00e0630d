// The chat board's browser hosting, against a stand-in control (Wine's renders and fires
// nothing), and once against the system's own control.
#include "platform/win32/chat/board_browser.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "fake_web_browser.h"
#include "platform/win32/chat/board_dom.h"

#include <mshtmdid.h>
#include <mshtmhst.h>

namespace corvina::win32 {
namespace {

using testing::FakeWebBrowser;

constexpr RECT kArea{10, 20, 310, 220};
const std::wstring kBoard = L"C:\\Temp\\chat board.htm";

// A plain top-level window, with COM set up as the chat window's thread has it.
class BoardBrowserTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
    parent_ = CreateWindowExW(0, L"STATIC", L"board", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                              0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(parent_, nullptr);
  }
  void TearDown() override {
    if (parent_) DestroyWindow(parent_);
    OleUninitialize();
  }

  BoardBrowser::Events Recording() {
    return {[this](const std::wstring& html) { clicks_.push_back(html); },
            [this](const std::wstring& html, POINT at) { menus_.emplace_back(html, at.x, at.y); },
            [this] { ++completions_; }};
  }
  // A board made, activated and navigated to kBoard.
  std::unique_ptr<BoardBrowser> Shown() {
    auto board = std::make_unique<BoardBrowser>(parent_, fake_.Factory(), Recording());
    EXPECT_TRUE(board->Create(kArea));
    board->Navigate(kBoard);
    return board;
  }

  HWND parent_ = nullptr;
  FakeWebBrowser fake_;
  std::vector<std::wstring> clicks_;
  std::vector<std::tuple<std::wstring, LONG, LONG>> menus_;
  int completions_ = 0;
};

TEST_F(BoardBrowserTest, TheControlIsActivatedInTheAreaAndRunsNothing) {
  auto board = Shown();
  // Exactly these four: a missing flag lets the page run something, an extra one (say
  // DLCTL_NO_DLACTIVEXCTLS's neighbour DLCTL_NO_CLIENTPULL) changes what mail may show.
  EXPECT_EQ(fake_.record().download_control_type, VT_I4);
  EXPECT_EQ(fake_.record().download_control,
            DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA | DLCTL_NO_RUNACTIVEXCTLS | DLCTL_NO_DLACTIVEXCTLS);
  EXPECT_TRUE(fake_.record().host_flags & DOCHOSTUIFLAG_NO3DBORDER);
  EXPECT_TRUE(fake_.record().host_flags & DOCHOSTUIFLAG_DISABLE_SCRIPT_INACTIVE);
  EXPECT_EQ(fake_.record().verbs, std::vector<LONG>{OLEIVERB_INPLACEACTIVATE});
  EXPECT_TRUE(EqualRect(&fake_.record().activation_area, &kArea));
  EXPECT_NE(board->GetWebBrowser(), nullptr);
  // Keys go to the page's own window, not to the control's frame around it.
  EXPECT_EQ(board->getWebHwnd(), fake_.page_window());
  EXPECT_TRUE(IsChild(parent_, board->getWebHwnd()));
}

TEST_F(BoardBrowserTest, ThePageIsShownOnceAndCompletesWithItsOwnDocument) {
  auto board = Shown();
  fake_.FireDocumentComplete(/*page=*/false);  // a frame inside the page: not yet
  EXPECT_FALSE(board->document_complete());
  fake_.FireDocumentComplete();
  EXPECT_TRUE(board->document_complete());
  EXPECT_EQ(completions_, 1);
  EXPECT_EQ(fake_.record().navigations, std::vector<std::wstring>{kBoard});
}

TEST_F(BoardBrowserTest, BlocksAfterLoadingAreAppendedInOrderWithoutShowingThePageAgain) {
  const std::vector<std::pair<std::string, std::wstring>> blocks = {
      {"<p>plain</p>", L"<p>plain</p>"},
      {"<p>\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D</p>", L"<p>\u05E9\u05DC\u05D5\u05DD</p>"},
      {"<p>\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82</p>",
       L"<p>\u041F\u0440\u0438\u0432\u0435\u0442</p>"},
      {"<p>\xF0\x9F\x98\x80</p>", L"<p>\xD83D\xDE00</p>"},  // one emoji, two UTF-16 units
  };
  auto board = Shown();
  fake_.FireDocumentComplete();
  for (const auto& [utf8, text] : blocks) board->Append(utf8);
  ASSERT_EQ(fake_.record().appended.size(), blocks.size());
  for (size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_EQ(fake_.record().appended[i].first, L"beforeEnd") << i;
    EXPECT_EQ(fake_.record().appended[i].second, blocks[i].second) << i;
  }
  EXPECT_EQ(fake_.record().navigations.size(), 1u);
}

TEST_F(BoardBrowserTest, BlocksWhileLoadingShowThePageOnceMoreInsteadOfBeingAppended) {
  auto board = Shown();
  board->Append("<p>one</p>");
  board->Append("<p>two</p>");
  fake_.FireDocumentComplete();  // the page may have been read before the blocks were written
  EXPECT_EQ(fake_.record().navigations, (std::vector<std::wstring>{kBoard, kBoard}));
  EXPECT_FALSE(board->document_complete());
  EXPECT_EQ(completions_, 0);
  fake_.FireDocumentComplete();  // the file held both: nothing more to do
  EXPECT_TRUE(board->document_complete());
  EXPECT_EQ(completions_, 1);
  EXPECT_EQ(fake_.record().navigations.size(), 2u);
  EXPECT_TRUE(fake_.record().appended.empty());
}

TEST_F(BoardBrowserTest, ABlockThePageRefusesIsShownFromTheFile) {
  auto board = Shown();
  fake_.FireDocumentComplete();
  fake_.record().refuse_append = true;
  std::vector<std::wstring> lines;
  SetBoardLogForTesting([&](const std::wstring& line) { lines.push_back(line); });
  board->Append("<p>refused</p>");
  SetBoardLogForTesting(nullptr);
  EXPECT_EQ(fake_.record().navigations.size(), 2u);
  EXPECT_FALSE(board->document_complete());
  // The refusal leaves a line saying what was refused and why.
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with(L"Vireo: the chat board's browser: the page refused a block ("))
      << ToUtf8(lines[0]);
}

TEST_F(BoardBrowserTest, ClicksAndRightClicksReturnTheElementsHtml) {
  auto board = Shown();
  fake_.FireDocumentComplete();
  fake_.Click(L"<IMG id=\"0000AB\" src=\"clip.gif\">");
  EXPECT_EQ(clicks_, std::vector<std::wstring>{L"<IMG id=\"0000AB\" src=\"clip.gif\">"});

  // The browser's own menu stays shut (S_OK) whether or not an element is under the mouse.
  EXPECT_EQ(fake_.RightClick(L"<IMG CorvinaTag1=\"a@b.c\">", POINT{120, 240}), S_OK);
  EXPECT_EQ(fake_.RightClick(std::nullopt, POINT{5, 6}), S_OK);
  EXPECT_EQ(menus_, (std::vector<std::tuple<std::wstring, LONG, LONG>>{
                        {L"<IMG CorvinaTag1=\"a@b.c\">", 120, 240}, {L"", 5, 6}}));
}

TEST_F(BoardBrowserTest, AControlThatCannotBeHadLeavesNoBoardAndNoReference) {
  struct Case {
    const char* name;
    bool factory_fails;
    bool in_place_fails;
    const wchar_t* logged;  // the first line, up to the failure's description
  };
  for (const Case& c : {Case{"factory fails", true, false, L"the system's web browser cannot be made: "},
                        Case{"no in-place", false, true, L"the control cannot be shown in the window: "}}) {
    std::vector<std::wstring> lines;
    SetBoardLogForTesting([&](const std::wstring& line) { lines.push_back(line); });
    FakeWebBrowser fake;
    fake.record().refuse_in_place = c.in_place_fails;
    BoardBrowser::Factory factory = fake.Factory();
    if (c.factory_fails) factory = [](IOleObject** out) { *out = nullptr; return E_FAIL; };
    {
      BoardBrowser board(parent_, factory, Recording());
      EXPECT_FALSE(board.Create(kArea)) << c.name;
      EXPECT_EQ(board.GetWebBrowser(), nullptr) << c.name;
      EXPECT_EQ(board.getWebHwnd(), nullptr) << c.name;
      // The window goes on with its fallback and may still call everything.
      board.Navigate(kBoard);
      board.Append("<p>x</p>");
      board.Move(kArea);
      board.SetFocusToBrowser();
      board.MakeCtrlC();
      EXPECT_FALSE(board.document_complete()) << c.name;
    }
    SetBoardLogForTesting(nullptr);
    ASSERT_FALSE(lines.empty()) << c.name;
    EXPECT_TRUE(lines[0].starts_with(std::wstring(L"Vireo: the chat board's browser: ") + c.logged))
        << ToUtf8(lines[0]);
    EXPECT_TRUE(fake.record().navigations.empty()) << c.name;
    EXPECT_EQ(fake.control_references(), 0u) << c.name;
    EXPECT_FALSE(fake.has_site()) << c.name;
    EXPECT_EQ(fake.site_references(), 0u) << c.name;
  }
}

TEST_F(BoardBrowserTest, TheDestructorUnhooksClosesAndReleasesEverything) {
  auto board = Shown();
  fake_.FireDocumentComplete();
  EXPECT_EQ(fake_.sinks(), 2u);  // the control's completion and the page's clicks
  board.reset();
  EXPECT_EQ(fake_.sinks(), 0u);
  EXPECT_EQ(fake_.record().closes, 1);
  EXPECT_EQ(fake_.record().sinks_at_close, 0u);  // unhooked before closing, not after
  EXPECT_FALSE(fake_.has_site());
  EXPECT_EQ(fake_.control_references(), 0u);
  EXPECT_EQ(fake_.site_references(), 0u);
  // A control that kept the site past the board may still call it: nothing reaches the board.
  EXPECT_EQ(fake_.RightClick(L"<p>late</p>", POINT{1, 1}), S_OK);
  EXPECT_TRUE(menus_.empty());
}

TEST_F(BoardBrowserTest, MoveFocusAndCopyReachTheControl) {
  auto board = Shown();
  constexpr RECT kMoved{0, 0, 200, 100};
  board->Move(kMoved);
  ASSERT_EQ(fake_.record().object_rects.size(), 1u);
  EXPECT_TRUE(EqualRect(&fake_.record().object_rects[0], &kMoved));

  board->SetFocusToBrowser();
  EXPECT_EQ(fake_.record().verbs.back(), OLEIVERB_UIACTIVATE);
  EXPECT_EQ(GetFocus(), fake_.page_window());

  board->MakeCtrlC();
  using Key = std::tuple<UINT, WPARAM, bool>;
  EXPECT_EQ(fake_.record().keys,
            (std::vector<Key>{{WM_KEYDOWN, VK_CONTROL, true},
                              {WM_KEYDOWN, 'C', true},
                              {WM_KEYUP, 'C', true},
                              {WM_KEYUP, VK_CONTROL, false}}));
  EXPECT_GE(GetKeyState(VK_CONTROL), 0);  // the real keyboard state is back
}

// Wine's own control may or may not be there; either way the board says so truthfully and
// goes without a trace.
TEST_F(BoardBrowserTest, TheSystemBrowserIsMadeOrRefusedCleanly) {
  int completions = 0;
  {
    BoardBrowser board(parent_, BoardBrowser::SystemBrowser(),
                       {nullptr, nullptr, [&completions] { ++completions; }});
    const bool made = board.Create(kArea);
    EXPECT_EQ(board.GetWebBrowser() != nullptr, made);
    EXPECT_EQ(board.getWebHwnd() != nullptr, made);
    if (made) {
      EXPECT_TRUE(IsChild(parent_, board.getWebHwnd()));
    }
    board.Navigate(L"about:blank");
    board.Append("<p>x</p>");
    board.Move(RECT{0, 0, 100, 100});
    MSG message;
    for (int i = 0; i < 50 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    std::printf("[ info     ] system browser %s, document %s (%d completions)\n",
                made ? "made" : "refused",
                board.document_complete() ? "complete" : "not complete", completions);
  }
  // The control's windows went with it.
  EXPECT_EQ(GetWindow(parent_, GW_CHILD), nullptr);
}

}  // namespace
}  // namespace corvina::win32
