#include "platform/sim/ui_event.h"

#include "base/text.h"

namespace corvina::sim {

namespace {

std::wstring Quoted(std::wstring_view s) {
  std::wstring one_line = Replace(Replace(Replace(s, L"\r\n", L"\n"), L"\r", L"\n"), L"\n", L"\\n");
  return L"\"" + one_line + L"\"";
}

const wchar_t* MsgBoxButtons(int32_t style) {
  switch (style & 7) {
    case vbOKCancel:
      return L"OK/Cancel";
    case 2:
      return L"Abort/Retry/Ignore";
    case vbYesNoCancel:
      return L"Yes/No/Cancel";
    case vbYesNo:
      return L"Yes/No";
    case 5:
      return L"Retry/Cancel";
  }
  return L"OK";
}

const wchar_t* MsgBoxIcon(int32_t style) {
  switch (style & 0x70) {
    case vbCritical:
      return L" X";
    case vbQuestion:
      return L" ?";
    case vbExclamation:
      return L" !";
    case vbInformation:
      return L" i";
  }
  return L"";
}

std::wstring DialogButtons(const MsgBoxView& v) {
  std::wstring r;
  auto add = [&r](bool visible, const std::wstring& caption) {
    if (!visible) return;
    if (!r.empty()) r += L"/";
    r += caption;
  };
  add(v.yes_visible, v.yes_caption);
  add(v.ok_visible, v.ok_caption);
  add(v.no_visible, v.no_caption);
  add(v.cancel_visible, v.cancel_caption);
  return r.empty() ? L"(no buttons)" : r;
}

std::wstring Caption(const MsgBoxView& v, MsgBoxButton b) {
  switch (b) {
    case MsgBoxButton::kYes:
      return v.yes_caption;
    case MsgBoxButton::kNo:
      return v.no_caption;
    case MsgBoxButton::kOk:
      return v.ok_caption;
    case MsgBoxButton::kCancel:
      return v.cancel_caption;
  }
  return L"?";
}

std::wstring Remark(const UiEvent& e) {
  if (e.rejected_answer) return L" (scripted answer not on the box)";
  return e.defaulted ? L" (default)" : L"";
}

}  // namespace

std::wstring MsgBoxResultName(int32_t vb_result) {
  static const wchar_t* const kNames[] = {L"OK",     L"Cancel", L"Abort", L"Retry",
                                          L"Ignore", L"Yes",    L"No"};
  return vb_result >= 1 && vb_result <= 7 ? kNames[vb_result - 1]
                                          : L"#" + std::to_wstring(vb_result);
}

std::wstring ButtonName(MsgBoxButton button) {
  switch (button) {
    case MsgBoxButton::kYes:
      return L"Yes";
    case MsgBoxButton::kNo:
      return L"No";
    case MsgBoxButton::kOk:
      return L"OK";
    case MsgBoxButton::kCancel:
      return L"Cancel";
  }
  return L"?";
}

std::wstring Describe(const UiEvent& e) {
  switch (e.kind) {
    case UiEventKind::kMsgBox:
      return L"[box] " + Quoted(e.title) + L" " + MsgBoxButtons(e.style) + MsgBoxIcon(e.style) +
             L" " + Quoted(e.text) + L" -> " + MsgBoxResultName(e.result) + Remark(e);
    case UiEventKind::kShowMsgBox:
      return L"[dialog] " + Quoted(e.view.caption) + L" " + DialogButtons(e.view) +
             (e.view.dont_show_visible ? L" +don't-show " : L" ") + Quoted(e.view.text) + L" | " +
             Quoted(e.view.second_text) + L" -> " + Caption(e.view, e.answer.button) +
             (e.answer.dont_show_checked ? L", don't show again" : L"") + Remark(e);
    case UiEventKind::kProgressText:
      return L"[progress] " + Quoted(e.text);
    case UiEventKind::kLoadForm:
      return L"[form] load " + e.text;
    case UiEventKind::kUnloadForm:
      return L"[form] unload " + e.text;
    case UiEventKind::kFormToFront:
      return L"[form] to the front " + e.text;
    case UiEventKind::kSavingForm:
      return L"[saving] " + Quoted(e.saving.caption) + L" " + std::to_wstring(e.saving.progress_value) +
             L" of " + std::to_wstring(e.saving.progress_max) + L" saved";
    case UiEventKind::kFolderMenu:
      return L"[menu] " + e.text + L" -> " +
             (e.result == kFolderMenuBrowse ? std::wstring(L"Browse...")
              : e.result == kFolderMenuNone ? std::wstring(L"(dismissed)")
                                            : L"entry " + std::to_wstring(e.result)) +
             Remark(e);
    case UiEventKind::kBrowse:
      return L"[browse] " + Quoted(e.title) + L" from " + Quoted(e.text) + L" -> " +
             (e.result_text.empty() ? std::wstring(L"(cancelled)") : Quoted(e.result_text)) + Remark(e);
    case UiEventKind::kSaveFile:
      return L"[save file] " + Quoted(e.title) + L" from " + Quoted(e.text) + L" -> " +
             (e.result_text.empty() ? std::wstring(L"(cancelled)") : Quoted(e.result_text)) + Remark(e);
    case UiEventKind::kChatUserProperties:
      return L"[dialog] " + Quoted(e.text) + L" -> " +
             (e.result == 0 ? L"Cancel" + Remark(e)
                            : L"OK: email " + Quoted(e.properties.email) + L", nick " +
                                  Quoted(e.properties.nick_name) + L", status " +
                                  std::to_wstring(e.properties.status) + L", colours " +
                                  e.properties.color_user + L"/" + e.properties.color_message +
                                  L", icon " + Quoted(e.properties.icon));
    case UiEventKind::kChatAddress:
      return L"[address] " + Quoted(e.text) + L" -> " +
             (e.result_text.empty() ? std::wstring(L"(cancelled)") : Quoted(e.result_text)) + Remark(e);
    case UiEventKind::kRuleWizard:
      return L"[wizard] " + Quoted(e.text) + L" -> " +
             (e.result == 0 ? L"Cancel" + Remark(e)
                            : L"Finish: " + Quoted(e.rule.description) + L", subject " +
                                  Quoted(e.rule.subject) + L", body " + Quoted(e.rule.body) +
                                  L", attachment " + Quoted(e.rule.attachment) + L", from " +
                                  Quoted(e.rule.from) + (e.rule.active ? L", on" : L", off"));
  }
  return L"[?]";
}

}  // namespace corvina::sim
