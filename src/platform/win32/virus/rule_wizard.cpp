#include "platform/win32/virus/rule_wizard.h"

#include <algorithm>
#include <utility>

#include <commctrl.h>

#include "platform/win32/chat/chat_dialog_window.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.RuleWizard";
// Posted before the loop starts, so the test hook runs inside it.
constexpr UINT kShown = WM_APP + 1;
constexpr UINT_PTR kSubclass = 1;
constexpr int kLabelOffset = 100;  // a field's label has the field's id plus this

std::function<void(HWND)>& ShownHook() {
  static std::function<void(HWND)> hook;
  return hook;
}

// The edits of the values step, top to bottom.
struct Field {
  int id;
  std::wstring RuleWizardLabels::*label;
  std::wstring RuleValues::*value;
};
constexpr Field kFields[] = {
    {kWizardSubject, &RuleWizardLabels::subject, &RuleValues::subject},
    {kWizardBody, &RuleWizardLabels::body, &RuleValues::body},
    {kWizardAttachment, &RuleWizardLabels::attachment, &RuleValues::attachment},
    {kWizardFrom, &RuleWizardLabels::from, &RuleValues::from},
};

// An edit box breaks lines only on CR LF.
std::wstring EditLines(const std::wstring& text) {
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'\n' && (i == 0 || text[i - 1] != L'\r')) out += L'\r';
    out += text[i];
  }
  return out;
}

UniqueHFont BoldFont(HFONT base) {
  LOGFONTW font{};
  if (!base || !GetObjectW(base, sizeof font, &font)) return {};
  font.lfWeight = FW_BOLD;
  return UniqueHFont(CreateFontIndirectW(&font));
}

// The core's answer to Next or Finish; no handler agrees, and one that fails refuses.
template <class Arg>
bool Agrees(const std::function<bool(const Arg&)>& handler, const Arg& arg) noexcept {
  try {
    const auto copy = handler;
    return !copy || copy(arg);
  } catch (...) {
    return false;
  }
}

class RuleWizard final : public ChatDialogWindow {
 public:
  RuleWizard(const RuleWizardView& view, const RuleWizardEvents& events)
      : ChatDialogWindow(kClassName), view_(view), events_(events), bold_(BoldFont(font())) {}
  // The dialog's window is released after this object's own members: it must no longer call
  // in, nor draw with the bold font.
  ~RuleWizard() override {
    if (!hwnd()) return;
    RemoveWindowSubclass(hwnd(), &RuleWizard::Subclass, kSubclass);
    SendMessageW(GetDlgItem(hwnd(), kWizardStep), WM_SETFONT, reinterpret_cast<WPARAM>(font()), FALSE);
  }
  RuleWizard(const RuleWizard&) = delete;
  RuleWizard& operator=(const RuleWizard&) = delete;

  bool Run(HWND owner) {
    const DialogUnits& u = units();
    const RuleWizardLabels& l = view_.labels;
    const int margin = u.X(7), row = u.Y(14), row_gap = u.Y(5), box = u.Y(10);
    int label_width = TextWidth(font(), l.name);
    for (const Field& f : kFields) label_width = std::max(label_width, TextWidth(font(), l.*f.label));
    label_width += u.X(2);  // right-to-left text is drawn a little wider than measured
    const int field_left = margin + label_width + u.X(6);
    int button = u.X(50);
    for (const std::wstring* text : {&l.back, &l.next, &l.finish, &l.cancel})
      button = std::max(button, TextWidth(font(), *text) + u.X(14));
    const int buttons_width = 4 * button + u.X(4) + u.X(8) + u.X(4);
    const int client_width =
        std::max(field_left + u.X(180) + margin, buttons_width + 2 * margin);
    const int step_height = u.text_height + 4;
    const int fields_top = margin + step_height + u.Y(8);
    const int active_top = fields_top + 4 * (row + row_gap);
    const int sentence_top = active_top + box + u.Y(6);
    const int sentence_height = u.Y(40);
    const int rule_top = sentence_top + sentence_height + u.Y(7);
    const int buttons_top = rule_top + u.Y(7);
    const int client_height = buttons_top + row + margin;
    if (!Create(owner, view_.caption, SIZE{client_width, client_height}, view_.right_to_left))
      return false;
    SetWindowSubclass(hwnd(), &RuleWizard::Subclass, kSubclass, reinterpret_cast<DWORD_PTR>(this));

    const int field_right = client_width - margin;
    HWND step = AddControl(L"STATIC", L"", SS_LEFT | SS_NOPREFIX, kWizardStep,
                           RECT{margin, margin, field_right, margin + step_height});
    if (bold_) SendMessageW(step, WM_SETFONT, reinterpret_cast<WPARAM>(bold_.get()), FALSE);
    auto add_field = [&](int id, const std::wstring& label, int top) {
      const int label_top = top + (row - u.text_height) / 2;
      AddControl(L"STATIC", label, SS_LEFT, id + kLabelOffset,
                 RECT{margin, label_top, margin + label_width, label_top + u.text_height + 2});
      return AddControl(L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP | WS_GROUP, id,
                        RECT{field_left, top, field_right, top + row}, WS_EX_CLIENTEDGE);
    };
    HWND name = add_field(kWizardDescription, l.name, fields_top);
    int top = fields_top;
    for (const Field& f : kFields) {
      add_field(f.id, l.*f.label, top);
      top += row + row_gap;
    }
    AddControl(L"BUTTON", l.active, BS_AUTOCHECKBOX | WS_TABSTOP | WS_GROUP, kWizardActive,
               RECT{field_left, active_top, field_right, active_top + box});
    AddControl(L"EDIT", L"", ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL, kWizardSentence,
               RECT{margin, sentence_top, field_right, sentence_top + sentence_height},
               WS_EX_CLIENTEDGE);
    AddControl(L"STATIC", L"", SS_ETCHEDHORZ, -1, RECT{margin, rule_top, field_right, rule_top + 2});
    // < Back and Next > side by side, Finish and Cancel apart from them.
    int x = field_right - buttons_width;
    const std::pair<int, const std::wstring*> buttons[] = {
        {kWizardBack, &l.back}, {kWizardNext, &l.next}, {IDOK, &l.finish}, {IDCANCEL, &l.cancel}};
    for (const auto& [id, text] : buttons) {
      AddControl(L"BUTTON", *text, BS_PUSHBUTTON | WS_TABSTOP | (id == kWizardBack ? WS_GROUP : 0), id,
                 RECT{x, buttons_top, x + button, buttons_top + row});
      x += button + (id == kWizardNext ? u.X(8) : id == kWizardBack ? 0 : u.X(4));
    }

    filling_ = true;
    SetWindowTextW(name, view_.values.description.c_str());
    for (const Field& f : kFields)
      SetWindowTextW(GetDlgItem(hwnd(), f.id), (view_.values.*f.value).c_str());
    SendMessageW(GetDlgItem(hwnd(), kWizardActive), BM_SETCHECK,
                 view_.values.active ? BST_CHECKED : BST_UNCHECKED, 0);
    filling_ = false;
    GoTo(1);
    PostMessageW(hwnd(), kShown, 0, 0);
    return RunModal(name);
  }

  RuleValues&& TakeValues() noexcept { return std::move(result_); }

 private:
  static LRESULT CALLBACK Subclass(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam,
                                   UINT_PTR /*id*/, DWORD_PTR self) {
    try {
      LRESULT result = 0;
      if (reinterpret_cast<RuleWizard*>(self)->Intercept(message, wparam, result)) return result;
    } catch (...) {
      return 0;  // the wizard stays as it was
    }
    // The owner closing (Outlook shutting down while the wizard is up) takes the wizard with
    // it: its loop must end, as cancelled.
    if (message == WM_DESTROY) DefSubclassProc(hwnd, WM_CLOSE, 0, 0);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(hwnd, &RuleWizard::Subclass, kSubclass);
    return DefSubclassProc(hwnd, message, wparam, lparam);
  }

  // True when the message is handled here; the rest go on to the dialog's own handling.
  bool Intercept(UINT message, WPARAM wparam, LRESULT& result) {
    if (message == DM_GETDEFID) {
      // Enter moves on from the name, and finishes from the values.
      result = MAKELRESULT(step_ == 1 ? kWizardNext : IDOK, DC_HASDEFID);
      return true;
    }
    if (message == kShown) {
      if (ShownHook()) ShownHook()(hwnd());
      return true;
    }
    if (message != WM_COMMAND) return false;
    const int id = LOWORD(wparam), code = HIWORD(wparam);
    switch (id) {
      case kWizardNext:
        if (code == BN_CLICKED && step_ == 1 &&
            Agrees(events_.accept_name, WindowText(GetDlgItem(hwnd(), kWizardDescription))))
          GoTo(2);
        return true;
      case kWizardBack:
        if (code == BN_CLICKED && step_ == 2) GoTo(1);
        return true;
      case IDOK: {
        if (code != BN_CLICKED) return true;
        if (step_ != 2) return true;  // the name is not accepted yet
        RuleValues values = Read();
        if (!Agrees(events_.accept_values, values)) return true;
        result_ = std::move(values);
        return false;  // the dialog ends as accepted
      }
      case kWizardActive:
        if (code == BN_CLICKED && !filling_) Describe();
        return true;
      case kWizardSubject:
      case kWizardBody:
      case kWizardAttachment:
      case kWizardFrom:
        if (code == EN_CHANGE && !filling_) Describe();
        return true;
      default:
        return false;
    }
  }

  void GoTo(int step) {
    step_ = step;
    const bool values = step == 2;
    auto show = [this](int id, bool on) { ShowWindow(GetDlgItem(hwnd(), id), on ? SW_SHOW : SW_HIDE); };
    show(kWizardDescription, !values);
    show(kWizardDescription + kLabelOffset, !values);
    for (const Field& f : kFields) {
      show(f.id, values);
      show(f.id + kLabelOffset, values);
    }
    show(kWizardActive, values);
    show(kWizardSentence, values);
    SetWindowTextW(GetDlgItem(hwnd(), kWizardStep),
                   (values ? view_.labels.values_step : view_.labels.name_step).c_str());
    HWND first = GetDlgItem(hwnd(), values ? kWizardSubject : kWizardDescription);
    SetFocus(first);
    SendMessageW(first, EM_SETSEL, 0, -1);
    // The focus is moved first: a disabled button must not keep it.
    EnableWindow(GetDlgItem(hwnd(), kWizardBack), values);
    EnableWindow(GetDlgItem(hwnd(), kWizardNext), !values);
    EnableWindow(GetDlgItem(hwnd(), IDOK), values);
    SendMessageW(GetDlgItem(hwnd(), kWizardNext), BM_SETSTYLE, values ? BS_PUSHBUTTON : BS_DEFPUSHBUTTON, TRUE);
    SendMessageW(GetDlgItem(hwnd(), IDOK), BM_SETSTYLE, values ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    if (values) Describe();
  }

  RuleValues Read() const {
    RuleValues values;
    values.description = ControlText(kWizardDescription);
    for (const Field& f : kFields) values.*f.value = ControlText(f.id);
    values.active = SendMessageW(GetDlgItem(hwnd(), kWizardActive), BM_GETCHECK, 0, 0) == BST_CHECKED;
    return values;
  }

  void Describe() {
    std::wstring sentence;
    try {
      const auto describe = events_.describe;
      if (describe) sentence = EditLines(describe(Read()));
    } catch (...) {
      // No sentence rather than a wrong one.
    }
    HWND box = GetDlgItem(hwnd(), kWizardSentence);
    if (WindowText(box) != sentence) SetWindowTextW(box, sentence.c_str());
  }

  RuleWizardView view_;
  RuleWizardEvents events_;
  UniqueHFont bold_;  // the step's caption
  int step_ = 1;
  bool filling_ = false;  // the view's values going in are not the user's edits
  RuleValues result_;
};

}  // namespace

void SetRuleWizardShownHookForTesting(std::function<void(HWND wizard)> hook) {
  ShownHook() = std::move(hook);
}

bool RunRuleWizard(RuleWizardView& view, const RuleWizardEvents& events, HWND owner) {
  try {
    RuleWizard wizard(view, events);
    if (!wizard.Run(owner)) return false;
    view.values = wizard.TakeValues();
    return true;
  } catch (...) {
    return false;  // as if cancelled, the view untouched
  }
}

}  // namespace corvina::win32
