// frmChatMail: one label over one edit, OK and Cancel under them.
#include "platform/win32/chat/chat_dialog_window.h"
#include "platform/win32/chat/chat_dialogs.h"

namespace corvina::win32 {
namespace {

constexpr wchar_t kClassName[] = L"Corvina.frmChatMail";

class AddressDialog final : public ChatDialogWindow {
 public:
  AddressDialog() noexcept : ChatDialogWindow(kClassName) {}

  bool Run(const std::wstring& caption, HWND owner, bool right_to_left) {
    const DialogUnits& u = units();
    const int margin = u.X(7), width = u.X(200);
    const int edit_top = margin + u.text_height + u.Y(3);
    const int buttons_top = edit_top + u.Y(14) + u.Y(10);
    const int client_width = width + 2 * margin;
    if (!Create(owner, caption, SIZE{client_width, buttons_top + u.Y(14) + margin}, right_to_left))
      return false;
    AddControl(L"STATIC", L"&E-mail address:", SS_LEFT, -1,
               RECT{margin, margin, margin + width, margin + u.text_height + 2});
    HWND edit = AddControl(L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP | WS_GROUP, kChatAddressEditId,
                           RECT{margin, edit_top, margin + width, edit_top + u.Y(14)},
                           WS_EX_CLIENTEDGE);
    AddButtons(buttons_top, client_width);
    return RunModal(edit);
  }

  std::wstring&& TakeAddress() noexcept { return std::move(address_); }

 private:
  void Accept() override { address_ = ControlText(kChatAddressEditId); }

  std::wstring address_;
};

}  // namespace

std::wstring RunChatAddressDialog(const std::wstring& caption, HWND owner, bool right_to_left) {
  try {
    AddressDialog dialog;
    if (!dialog.Run(caption, owner, right_to_left)) return L"";
    return dialog.TakeAddress();
  } catch (...) {
    return L"";  // as if cancelled
  }
}

}  // namespace corvina::win32
