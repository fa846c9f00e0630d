#include "simulator/answer_queue.h"

namespace corvina::simulator {
namespace {

int32_t ToMsgBoxResult(MsgBoxButton button) {
  switch (button) {
    case MsgBoxButton::kYes: return vbYes;
    case MsgBoxButton::kNo: return vbNo;
    case MsgBoxButton::kOk: return vbOK;
    case MsgBoxButton::kCancel: return vbCancel;
  }
  return vbCancel;
}

}  // namespace

int32_t AnswerQueue::MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) {
  Before();
  if (!answers_.empty()) {
    inner_.QueueMsgBoxAnswer(ToMsgBoxResult(answers_.front().button));
    answers_.pop_front();
  }
  return inner_.MsgBox(prompt, style, title);
}

MsgBoxAnswer AnswerQueue::ShowMsgBox(const MsgBoxView& view) {
  Before();
  if (!answers_.empty()) {
    inner_.QueueShowMsgBoxAnswer(answers_.front());
    answers_.pop_front();
  }
  return inner_.ShowMsgBox(view);
}

}  // namespace corvina::simulator
