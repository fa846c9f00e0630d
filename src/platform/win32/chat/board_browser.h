#pragma once
// The chat board's browser: the system's web browser control (Shell.Explorer, IWebBrowser2)
// in-place active in a child area of the chat window, hosted through our own client site
// (there is no ATL under mingw-w64). The page is shown once from its file; every later
// message is appended to the live document, so a long board costs nothing more per message.
//
// The control runs no script and loads no ActiveX or Java: the site answers the ambient
// download-control property accordingly. Clicks and right clicks on the page come back as the
// clicked element's outer HTML, which the chat window's model reads.
#include <functional>
#include <memory>
#include <string>

#include "platform/win32/windows_api.h"

#include <exdisp.h>
#include <oleidl.h>

namespace corvina::win32 {

class BoardSite;

class BoardBrowser {
 public:
  struct Events {
    // A left click on the page: the clicked element's outer HTML.
    std::function<void(const std::wstring& html)> click;
    // A right click: the element under the mouse (its outer HTML, "" when none) and the
    // mouse position on the screen; the window shows its own menu.
    std::function<void(const std::wstring& html, POINT screen)> context_menu;
    // The page's document has loaded (after each Navigate).
    std::function<void()> document_complete;
  };
  // Makes the control; the system's browser unless a test hands in its own.
  using Factory = std::function<HRESULT(IOleObject** control)>;
  static Factory SystemBrowser();

  BoardBrowser(HWND parent, Factory factory, Events events);
  ~BoardBrowser();  // the control closed and every reference released
  BoardBrowser(const BoardBrowser&) = delete;
  BoardBrowser& operator=(const BoardBrowser&) = delete;

  // Makes the control and activates it in place over `area` of the parent. False when the
  // control cannot be had; the window then shows its plain fallback.
  bool Create(const RECT& area);
  // Shows the page file from the start (a board started again).
  void Navigate(const std::wstring& path);
  // Appends one block (UTF-8 HTML) at the end of the page's body. The board writes each
  // block to the page's file first, so blocks that arrive while the page is still loading
  // are not lost and not added twice: the loading page may or may not have read them, so
  // when it has loaded it is shown once more from its file, which holds them all.
  void Append(const std::string& html);
  bool document_complete() const;
  void Move(const RECT& area);

  IWebBrowser2* GetWebBrowser() const;
  // The control's own window (the one keys go to); nullptr before it is active.
  HWND getWebHwnd() const;
  void SetFocusToBrowser();
  // Copies the page's selection: the key stroke Ctrl+C sent to the control's window.
  void MakeCtrlC();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace corvina::win32
