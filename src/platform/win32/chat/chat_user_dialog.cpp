// frmChatUserProperties: labels in one column, fields in the next, OK and Cancel under a rule.
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/win32/chat/chat_dialog_choices.h"
#include "platform/win32/chat/chat_dialog_items.h"
#include "platform/win32/chat/chat_dialog_window.h"
#include "platform/win32/chat/chat_dialogs.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmChatUserProperties";
constexpr int kIconSize = 16;
constexpr int kVisibleItems = 10;

struct Row {
  const wchar_t* label;
  int id;
};
constexpr Row kRows[] = {{L"&E-mail:", kChatUserEmailId},
                         {L"&Nick name:", kChatUserNickNameId},
                         {L"&Status:", kChatUserStatusId},
                         {L"Name &colour:", kChatUserColorUserId},
                         {L"&Message colour:", kChatUserColorMessageId},
                         {L"&Picture:", kChatUserIconId}};

void AddItem(HWND combo, const std::wstring& text, LPARAM data) {
  const LRESULT at = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  if (at >= 0) SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(at), data);
}

class UserDialog final : public ChatDialogWindow {
 public:
  explicit UserDialog(const ChatUserPropertiesView& view)
      : ChatDialogWindow(kClassName),
        result_(view),
        statuses_(StatusChoices(view.statuses, view.status)),
        pictures_(PictureChoices(view.icon)),
        icons_(LoadPictureIcons(kIconSize)) {}

  bool Run(HWND owner, bool right_to_left) {
    const DialogUnits& u = units();
    const int margin = u.X(7), column_gap = u.X(6), row_height = u.Y(14), row_gap = u.Y(5);
    int label_width = 0;
    for (const Row& row : kRows) label_width = std::max(label_width, TextWidth(font(), row.label));
    label_width += u.X(2);  // room for right-to-left text, drawn a little wider than measured
    const int field_left = margin + label_width + column_gap;
    const int edit_width = u.X(150), list_width = u.X(90);
    const int client_width = field_left + edit_width + margin;
    const int rows_bottom = margin + 6 * row_height + 5 * row_gap;
    const int rule_top = rows_bottom + u.Y(7);
    const int buttons_top = rule_top + u.Y(7);
    const int client_height = buttons_top + u.Y(14) + margin;
    if (!Create(owner, result_.caption, SIZE{client_width, client_height}, right_to_left))
      return false;

    const int item_height = std::max(u.text_height + 6, kIconSize + 4);
    HWND first = nullptr;
    int top = margin;
    for (const Row& row : kRows) {
      const int label_top = top + (row_height - u.text_height) / 2;
      AddControl(L"STATIC", row.label, SS_LEFT, -1,
                 RECT{margin, label_top, margin + label_width, label_top + u.text_height + 2});
      const bool edit = row.id == kChatUserEmailId || row.id == kChatUserNickNameId;
      const RECT field{field_left, top, field_left + (edit ? edit_width : list_width),
                       top + row_height};
      HWND control =
          edit ? AddControl(L"EDIT", Text(row.id), ES_AUTOHSCROLL | WS_TABSTOP | WS_GROUP, row.id,
                            field, WS_EX_CLIENTEDGE)
               : AddDropDownList(row.id, field,
                                 row.id == kChatUserStatusId ? 0u : CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
                                 item_height, kVisibleItems);
      if (!first) first = control;
      top += row_height + row_gap;
    }
    AddControl(L"STATIC", L"", SS_ETCHEDHORZ, -1,
               RECT{margin, rule_top, client_width - margin, rule_top + 2});
    AddButtons(buttons_top, client_width);
    FillLists();
    return RunModal(first);
  }

  ChatUserPropertiesView&& TakeResult() noexcept { return std::move(result_); }

 private:
  std::wstring Text(int id) const {
    return id == kChatUserEmailId ? result_.email : result_.nick_name;
  }

  void FillLists() {
    HWND status = GetDlgItem(hwnd(), kChatUserStatusId);
    for (const StatusChoice& choice : statuses_) AddItem(status, choice.name, choice.value);
    Select(kChatUserStatusId, IndexOfStatus(statuses_, result_.status));

    for (int id : {kChatUserColorUserId, kChatUserColorMessageId}) {
      HWND list = GetDlgItem(hwnd(), id);
      for (size_t i = 0; i < result_.colors.size(); ++i) {
        const uint32_t swatch = i < result_.color_values.size() ? result_.color_values[i] : 0;
        AddItem(list, result_.colors[i], static_cast<LPARAM>(swatch));
      }
    }
    Select(kChatUserColorUserId, IndexOfColor(result_.colors, result_.color_user));
    Select(kChatUserColorMessageId, IndexOfColor(result_.colors, result_.color_message));

    HWND pictures = GetDlgItem(hwnd(), kChatUserIconId);
    for (size_t i = 0; i < pictures_.size(); ++i) {
      const HICON icon = i < icons_.size() ? icons_[i].get() : nullptr;
      AddItem(pictures, pictures_[i], reinterpret_cast<LPARAM>(icon));
    }
    Select(kChatUserIconId, IndexOfPicture(pictures_, result_.icon));
  }

  void Select(int id, size_t index) const {
    SendMessageW(GetDlgItem(hwnd(), id), CB_SETCURSEL, index, 0);
  }
  // The selected position, or `count` when nothing is selected.
  size_t Selected(int id, size_t count) const {
    const LRESULT at = SendMessageW(GetDlgItem(hwnd(), id), CB_GETCURSEL, 0, 0);
    return at >= 0 && static_cast<size_t>(at) < count ? static_cast<size_t>(at) : count;
  }

  void Accept() override {
    ChatUserPropertiesView edited = result_;
    edited.email = ControlText(kChatUserEmailId);
    edited.nick_name = ControlText(kChatUserNickNameId);
    if (size_t at = Selected(kChatUserStatusId, statuses_.size()); at < statuses_.size())
      edited.status = statuses_[at].value;
    if (size_t at = Selected(kChatUserColorUserId, result_.colors.size()); at < result_.colors.size())
      edited.color_user = result_.colors[at];
    if (size_t at = Selected(kChatUserColorMessageId, result_.colors.size());
        at < result_.colors.size())
      edited.color_message = result_.colors[at];
    if (size_t at = Selected(kChatUserIconId, pictures_.size()); at < pictures_.size())
      edited.icon = pictures_[at];
    result_ = std::move(edited);
  }

  bool DrawItem(const DRAWITEMSTRUCT& item) override {
    if (item.CtlID == kChatUserColorUserId || item.CtlID == kChatUserColorMessageId) {
      DrawColorItem(item);
      return true;
    }
    if (item.CtlID == kChatUserIconId) {
      DrawPictureItem(item, kIconSize);
      return true;
    }
    return false;
  }

  ChatUserPropertiesView result_;  // the view as given until OK copies the fields in
  std::vector<StatusChoice> statuses_;
  std::vector<std::wstring> pictures_;
  std::vector<UniqueHIcon> icons_;
};

}  // namespace

bool RunChatUserDialog(ChatUserPropertiesView& view, HWND owner, bool right_to_left) {
  try {
    UserDialog dialog(view);
    if (!dialog.Run(owner, right_to_left)) return false;
    view = dialog.TakeResult();
    return true;
  } catch (...) {
    return false;  // out of memory building the lists: as if cancelled, the view untouched
  }
}

}  // namespace corvina::win32
