#pragma once
// What the add-in shows the user. Windows' state and rules live in the core (the forms are
// thin); this interface only draws them and returns what the user did. The sim answers from a
// script and records everything it was shown.
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/chat_list_view.h"
#include "platform/virus_windows.h"

namespace corvina {

// Classic message box style bits and results.
inline constexpr int32_t vbOKOnly = 0;
inline constexpr int32_t vbOKCancel = 1;
inline constexpr int32_t vbYesNoCancel = 3;
inline constexpr int32_t vbYesNo = 4;
inline constexpr int32_t vbCritical = 16;
inline constexpr int32_t vbQuestion = 32;
inline constexpr int32_t vbExclamation = 48;
inline constexpr int32_t vbInformation = 64;
inline constexpr int32_t vbDefaultButton2 = 256;

inline constexpr int32_t vbOK = 1;
inline constexpr int32_t vbCancel = 2;
inline constexpr int32_t vbYes = 6;
inline constexpr int32_t vbNo = 7;

// The add-in's own question box as it is about to be shown: labels, caption and which of its
// four buttons and its "don't show again" box are visible.
struct MsgBoxView {
  std::wstring text;
  std::wstring second_text;
  std::wstring caption;
  bool yes_visible = true;
  bool no_visible = true;
  bool ok_visible = false;
  bool cancel_visible = false;
  bool dont_show_visible = false;
  std::wstring yes_caption = L"Yes";
  std::wstring no_caption = L"No";
  std::wstring ok_caption = L"OK";
  std::wstring cancel_caption = L"Cancel";
  std::wstring dont_show_caption = L"Don't show this message again";
};

enum class MsgBoxButton { kYes, kNo, kOk, kCancel };

struct MsgBoxAnswer {
  MsgBoxButton button = MsgBoxButton::kCancel;
  bool dont_show_checked = false;
};

// frmSaving as it is drawn.
struct SavingFormView {
  std::wstring caption;
  std::wstring caption_label;  // lblCaption
  std::wstring total_label;    // lblNumber: how many attachments the job has
  std::wstring saved_label;    // how many are saved so far
  std::wstring cancel_caption;
  std::wstring hide_caption;
  int32_t progress_max = 0;    // prgrs_Numbers
  int32_t progress_value = 0;
  bool right_to_left = false;
};

// What frmSaving's buttons do; they are pressed while the job lets window messages run.
struct SavingFormEvents {
  std::function<void()> cancel;  // cmdCancel_Click
  std::function<void()> hide;    // cmdHideMe_Click
};

// A colour a picker offers: its name and its 0x00BBGGRR value.
struct ColorChoice {
  std::wstring name;
  uint32_t color = 0;
};

// frmChat's fixed texts: its labels, buttons and menus ("&" marks the access key).
struct ChatWindowLabels {
  std::wstring send_to = L"Send to:";
  std::wstring send = L"&Send";
  std::wstring bold = L"B";
  std::wstring italic = L"I";
  std::wstring underline = L"U";
  std::wstring color = L"Colour";
  std::wstring attach = L"&Attach...";
  std::wstring remove_attachment = L"&Remove";
  std::wstring attachments = L"Attachments:";
  std::wstring name_column = L"Name";
  std::wstring email_column = L"E-mail";
  std::wstring chat_menu = L"&Chat";
  std::wstring users_menu = L"&Users";
  std::wstring add_user = L"&Add user...";
  std::wstring remove_user = L"&Remove user";
  std::wstring user_properties = L"User &properties...";
  std::wstring add_sender = L"Add the sender to the &list";
  std::wstring sender_properties = L"Sender &properties...";
  std::wstring show_attachments = L"&Open the mail with the attachments";
  std::wstring copy = L"&Copy";
  std::wstring clear_board = L"C&lear the board";
  std::wstring save_board = L"&Save the board as...";
  std::wstring close = L"Cl&ose";
  std::wstring attach_title = L"Attach a file";
  std::wstring board_unavailable = L"The board is shown as plain text: this computer's web browser could not show it.";
};

// frmChat as it is drawn: the send-to list, the message being written, the files to send with
// it, the last report, and the board page the browser shows.
struct ChatWindowView {
  std::wstring caption;
  ChatWindowLabels labels;
  ChatListView users;
  std::wstring message;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  uint32_t color = 0;  // 0x00BBGGRR
  std::vector<ColorChoice> colors;  // the colour button's menu
  std::vector<std::wstring> attachments;
  std::wstring status;      // the last send report
  std::wstring board_path;  // the page the browser shows
  // Changes when the page is started again: the window then shows it anew from its file.
  uint32_t board_serial = 0;
  // The blocks (HTML, UTF-8) written to the page since the window last drew; it appends them
  // to the page it shows, so a long board is never reloaded.
  std::vector<std::string> board_blocks;
  bool right_to_left = false;
  // Where the window was left: screen pixels; a width or height of 0 means the window's own
  // size, centred.
  int32_t left = 0;
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;
};

// What frmChat's controls do. Each reaches the model, which draws the window again.
struct ChatWindowEvents {
  std::function<void(const std::vector<std::wstring>& emails)> select_users;
  std::function<void(const std::wstring& text)> message_changed;
  std::function<void(bool bold, bool italic, bool underline)> format_changed;
  std::function<void(uint32_t color)> color_changed;
  std::function<void(const std::wstring& path)> add_attachment;
  std::function<void(size_t index)> remove_attachment;
  std::function<void()> send;
  std::function<void()> activated;
  std::function<void()> flash_tick;
  // The window was moved or sized: its new placement in screen pixels.
  std::function<void(int32_t left, int32_t top, int32_t width, int32_t height)> placed;
  // The user closed the window.
  std::function<void()> close;
  // The board: a click, and its menu's commands, each with the clicked element's HTML.
  std::function<void(const std::wstring& html)> board_click;
  std::function<void(const std::wstring& html)> board_add_user;
  std::function<void(const std::wstring& html)> board_user_properties;
  std::function<void(const std::wstring& html)> board_show_attachments;
  // The user list's and the board's commands.
  std::function<void()> add_user;
  std::function<void()> remove_users;
  std::function<void(const std::wstring& email)> user_properties;
  std::function<void()> clear_board;
  std::function<void()> save_board;
};

// frmChatUserProperties: the fields of one chat user, edited by the user.
struct ChatUserPropertiesView {
  std::wstring caption;
  std::wstring email;
  std::wstring nick_name;
  int16_t status = 1;
  std::wstring color_user;     // a name of `colors`
  std::wstring color_message;
  std::wstring icon;
  std::vector<std::wstring> colors;  // the names the pickers offer
  std::vector<uint32_t> color_values;  // the swatch of each name
  // The statuses the dialog offers: value and name.
  std::vector<std::pair<int16_t, std::wstring>> statuses;
};

// Results of the Save button's folder menu besides an entry index.
inline constexpr int32_t kFolderMenuBrowse = -1;
inline constexpr int32_t kFolderMenuNone = -2;

class UserInterface {
 public:
  virtual ~UserInterface() = default;
  // A plain system message box; returns vbOK, vbCancel, vbYes or vbNo.
  virtual int32_t MsgBox(const std::wstring& prompt, int32_t style, const std::wstring& title) = 0;
  // The add-in's own modal box; returns when the user pressed one of the visible buttons
  // (closing the window counts as Cancel).
  virtual MsgBoxAnswer ShowMsgBox(const MsgBoxView& view) = 0;

  // Forms by name: load (and show) one, unload one, list those loaded, in load order.
  virtual void LoadForm(const std::wstring& name) = 0;
  virtual void UnloadForm(const std::wstring& name) = 0;
  virtual std::vector<std::wstring> LoadedForms() = 0;
  // Brings a loaded form's window in front of Outlook's (nothing for a form not loaded).
  virtual void BringFormToFront(const std::wstring& name) = 0;

  // The status label of the progress form "frmInit".
  virtual void SetProgressText(const std::wstring& text) = 0;
  // Lets pending window messages run (DoEvents).
  virtual void DoEvents() = 0;

  // frmSaving: shows the form as `view` says (the form must be loaded) and repaints it.
  virtual void ShowSavingForm(const SavingFormView& view, const SavingFormEvents& events) = 0;
  // frmMenu's pop-up: one entry per folder and a browse entry (captioned `browse_caption`) at
  // the mouse position. Returns the index of the chosen folder, kFolderMenuBrowse, or
  // kFolderMenuNone when dismissed.
  virtual int32_t ShowFolderMenu(const std::vector<std::wstring>& folders,
                                 const std::wstring& browse_caption) = 0;
  // The shell's folder browser; "" when cancelled.
  virtual std::wstring BrowseForFolder(const std::wstring& title, uint32_t flags,
                                       const std::wstring& start_folder) = 0;
  // The shell's save-file dialog opening in `start_folder`; "" when cancelled.
  virtual std::wstring SaveFileDialog(const std::wstring& title, const std::wstring& start_folder,
                                      const std::wstring& file_name,
                                      const std::wstring& filter) = 0;

  // frmChat (loaded through LoadForm): draws the window as `view` says; its controls report
  // through `events`, which stay valid while the form is loaded.
  virtual void ShowChatWindow(const ChatWindowView& view, const ChatWindowEvents& events) = 0;
  // One tick of the caption flash: highlighted when `on` (FlashWindow).
  virtual void FlashChatWindow(bool on) = 0;
  // frmChatUserProperties, modal: true when the user pressed OK, `view` then holding the edits.
  virtual bool ShowChatUserProperties(ChatUserPropertiesView& view) = 0;
  // frmChatMail, modal: the address the user typed, "" when cancelled.
  virtual std::wstring AskChatAddress(const std::wstring& caption) = 0;

  // frmVirusAlerter (loaded through LoadForm): draws the window as `view` says; its controls
  // report through `events`, which stay valid while the form is loaded.
  virtual void ShowVirusAlerter(const VirusAlerterView& view, const VirusAlerterEvents& events) = 0;
  // The rule wizard, modal: true when the user pressed Finish (and `events.accept_values`
  // agreed), `view.values` then holding the rule.
  virtual bool ShowRuleWizard(RuleWizardView& view, const RuleWizardEvents& events) = 0;
  // frmVirusReport (loaded through LoadForm), like frmVirusAlerter.
  virtual void ShowVirusReport(const VirusReportView& view, const VirusReportEvents& events) = 0;

};

}  // namespace corvina
