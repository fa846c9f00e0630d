#include "platform/win32/auto_answer.h"

#include <array>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {
namespace {

constexpr int32_t vbAbort = 3, vbRetry = 4, vbIgnore = 5;

bool Affirmative(AutoAnswer a) { return a == AutoAnswer::kYes || a == AutoAnswer::kOk; }

// The answer's own button first, then its stand-in.
template <class T>
std::array<T, 2> Preferred(AutoAnswer a, T yes, T no, T ok, T cancel) {
  switch (a) {
    case AutoAnswer::kYes: return {yes, ok};
    case AutoAnswer::kOk: return {ok, yes};
    case AutoAnswer::kNo: return {no, cancel};
    case AutoAnswer::kCancel: break;
  }
  return {cancel, no};
}

template <class T>
T Choose(AutoAnswer a, const std::vector<T>& buttons, std::array<T, 2> preferred) {
  for (T wanted : preferred)
    for (T b : buttons)
      if (b == wanted) return b;
  return Affirmative(a) ? buttons.front() : buttons.back();
}

}  // namespace

std::optional<AutoAnswer> ParseAutoAnswer(std::wstring_view text) {
  const std::wstring t = LCase(Trim(text));
  if (t == L"yes") return AutoAnswer::kYes;
  if (t == L"no") return AutoAnswer::kNo;
  if (t == L"ok") return AutoAnswer::kOk;
  if (t == L"cancel") return AutoAnswer::kCancel;
  return std::nullopt;
}

std::optional<AutoAnswer> AutoAnswerFromEnvironment() {
  wchar_t value[32];
  const DWORD n = GetEnvironmentVariableW(kAutoAnswerVariable, value, 32);
  if (n == 0 || n >= 32) return std::nullopt;
  return ParseAutoAnswer(std::wstring_view(value, n));
}

int32_t AutoMsgBoxResult(AutoAnswer answer, int32_t style) {
  static const std::vector<int32_t> kButtons[] = {
      {vbOK}, {vbOK, vbCancel}, {vbAbort, vbRetry, vbIgnore},
      {vbYes, vbNo, vbCancel}, {vbYes, vbNo}, {vbRetry, vbCancel}};
  const auto group = static_cast<size_t>(style & 7);
  const std::vector<int32_t>& buttons = group < std::size(kButtons) ? kButtons[group] : kButtons[0];
  return Choose(answer, buttons, Preferred(answer, vbYes, vbNo, vbOK, vbCancel));
}

MsgBoxAnswer AutoShowMsgBoxAnswer(AutoAnswer answer, const MsgBoxView& view) {
  std::vector<MsgBoxButton> buttons;
  if (view.yes_visible) buttons.push_back(MsgBoxButton::kYes);
  if (view.no_visible) buttons.push_back(MsgBoxButton::kNo);
  if (view.ok_visible) buttons.push_back(MsgBoxButton::kOk);
  buttons.push_back(MsgBoxButton::kCancel);  // visible or not, closing the box is Cancel
  const auto preferred = Preferred(answer, MsgBoxButton::kYes, MsgBoxButton::kNo,
                                   MsgBoxButton::kOk, MsgBoxButton::kCancel);
  return MsgBoxAnswer{Choose(answer, buttons, preferred), false};
}

}  // namespace corvina::win32
