#pragma once
// The part of Outlook's object model the add-in uses, as abstract interfaces. Every member is
// one object-model call in real Outlook (a late-bound IDispatch call); each may throw
// corvina::Error with the number, source and description Outlook reported. Objects are handed
// out as Ref: shared, because Outlook hands out reference-counted objects, and possibly
// Nothing, because any member may return Nothing where an object was expected.
//
// Collections are 1-based, as in Outlook.
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/date.h"
#include "base/error.h"
#include "platform/event_connection.h"

namespace corvina::outlook {

// An object reference. Nothing is an empty Ref; using Nothing through -> or * raises the
// classic error 91 instead of touching a null pointer, so a host that answers Nothing where an
// object belongs costs one log line, never the process. Testing a Ref for Nothing (`if (!x)`)
// is always safe.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT: Nothing converts implicitly, as in the object model
  template <class U>
    requires std::convertible_to<U*, T*>
  Ref(std::shared_ptr<U> object) : object_(std::move(object)) {}  // NOLINT
  template <class U>
    requires std::convertible_to<U*, T*>
  Ref(Ref<U> other) : object_(std::move(other).shared()) {}  // NOLINT

  T* operator->() const { return &Use(); }
  T& operator*() const { return Use(); }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  // The raw pointer, null for Nothing: for handing on, never for calling through.
  T* get() const noexcept { return object_.get(); }
  const std::shared_ptr<T>& shared() const& noexcept { return object_; }
  std::shared_ptr<T> shared() && noexcept { return std::move(object_); }
  void reset() noexcept { object_.reset(); }

  friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.object_ == b.object_; }
  friend bool operator==(const Ref& a, std::nullptr_t) noexcept { return !a.object_; }

 private:
  T& Use() const {
    if (!object_) Raise(kErrObjectVariableNotSet, L"Object variable or With block variable not set");
    return *object_;
  }
  std::shared_ptr<T> object_;
};

// Item Class values (OlObjectClass).
inline constexpr int32_t olAppointment = 26;
inline constexpr int32_t olContact = 40;
inline constexpr int32_t olMail = 43;
inline constexpr int32_t olPost = 45;
inline constexpr int32_t olReport = 46;
inline constexpr int32_t olRemote = 47;
inline constexpr int32_t olTaskRequest = 49;
inline constexpr int32_t olMeetingRequest = 53;
inline constexpr int32_t olMeetingCancellation = 54;

// GetDefaultFolder kinds.
inline constexpr int32_t olFolderDeletedItems = 3;
inline constexpr int32_t olFolderOutbox = 4;
inline constexpr int32_t olFolderSentMail = 5;
inline constexpr int32_t olFolderInbox = 6;
inline constexpr int32_t olFolderDrafts = 16;

// CreateItem kinds.
inline constexpr int32_t olMailItem = 0;

// Command bar control types and styles.
inline constexpr int32_t msoControlButton = 1;
inline constexpr int32_t msoControlEdit = 2;
inline constexpr int32_t msoControlDropdown = 3;
inline constexpr int32_t msoControlComboBox = 4;
inline constexpr int32_t msoControlPopup = 10;
inline constexpr int32_t msoButtonIconAndCaption = 3;
inline constexpr int32_t msoBarTop = 1;

class Attachment {
 public:
  virtual ~Attachment() = default;
  virtual std::wstring FileName() = 0;
  // Position of the attachment in the body; 0 for a picture embedded in an HTML body.
  virtual int32_t Position() = 0;
  virtual int32_t Size() = 0;
  virtual void SaveAsFile(const std::wstring& path) = 0;
};

class Attachments {
 public:
  virtual ~Attachments() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::Attachment> Item(int32_t index) = 0;
  virtual Ref<outlook::Attachment> Add(const std::wstring& path) = 0;
};

class Recipients {
 public:
  virtual ~Recipients() = default;
  virtual int32_t Count() = 0;
  virtual void Add(const std::wstring& address) = 0;
};

// Any item of a folder: mail, delivery report, meeting request, post... Members an item kind
// does not have throw, as a late-bound call for an unknown name does in Outlook.
class Item {
 public:
  virtual ~Item() = default;
  virtual int32_t Class() = 0;
  virtual std::wstring MessageClass() = 0;
  virtual std::wstring EntryID() = 0;
  virtual std::wstring Subject() = 0;
  virtual void SetSubject(const std::wstring& value) = 0;
  virtual std::wstring Body() = 0;
  virtual void SetBody(const std::wstring& value) = 0;
  virtual std::wstring SenderName() = 0;
  virtual std::wstring To() = 0;
  virtual void SetTo(const std::wstring& value) = 0;
  virtual Date ReceivedTime() = 0;
  virtual Date CreationTime() = 0;
  virtual Date SentOn() = 0;
  virtual bool UnRead() = 0;
  virtual void SetUnRead(bool value) = 0;
  virtual int32_t Size() = 0;
  virtual Ref<outlook::Attachments> Attachments() = 0;
  virtual Ref<outlook::Recipients> Recipients() = 0;
  virtual void Send() = 0;
  virtual void Delete() = 0;
  virtual void Display() = 0;
};

// A folder's item list, with the views Outlook offers over it. Sort orders this collection in
// place; Restrict returns a new collection in this collection's order holding the items that
// match an Outlook filter ("[Property] op value" or "@SQL=" DASL); Find/FindNext walk the
// matches without building one. GetFirst/GetNext walk in the current order.
class Items {
 public:
  virtual ~Items() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::Item> Item(int32_t index) = 0;
  virtual void Sort(const std::wstring& property, bool descending) = 0;
  virtual Ref<outlook::Items> Restrict(const std::wstring& filter) = 0;
  virtual Ref<outlook::Item> Find(const std::wstring& filter) = 0;
  virtual Ref<outlook::Item> FindNext() = 0;
  virtual Ref<outlook::Item> GetFirst() = 0;
  virtual Ref<outlook::Item> GetNext() = 0;
  virtual Ref<outlook::Item> GetLast() = 0;
};

class Folder {
 public:
  virtual ~Folder() = default;
  virtual std::wstring Name() = 0;
  virtual Ref<outlook::Items> Items() = 0;
};

class NameSpace {
 public:
  virtual ~NameSpace() = default;
  virtual Ref<outlook::Folder> GetDefaultFolder(int32_t kind) = 0;
  virtual Ref<outlook::Item> GetItemFromID(const std::wstring& entry_id) = 0;
  // AddressLists.Count: how many address books the profile offers.
  virtual int32_t AddressListCount() = 0;
  // The session's select-names dialog, titled `caption`: the addresses the user picked, in
  // order; none when cancelled.
  virtual std::vector<std::wstring> SelectNames(const std::wstring& caption) = 0;
};

class CommandBarControl {
 public:
  virtual ~CommandBarControl() = default;
  virtual int32_t Type() = 0;
  virtual std::wstring Tag() = 0;
  virtual void SetTag(const std::wstring& value) = 0;
  virtual std::wstring Caption() = 0;
  virtual void SetCaption(const std::wstring& value) = 0;
  virtual int32_t FaceId() = 0;
  virtual void SetFaceId(int32_t value) = 0;
  virtual std::wstring ToolTipText() = 0;
  virtual void SetToolTipText(const std::wstring& value) = 0;
  virtual int32_t Style() = 0;
  virtual void SetStyle(int32_t value) = 0;
  virtual bool Visible() = 0;
  virtual void SetVisible(bool value) = 0;
  // The combo box's current text (empty for buttons).
  virtual std::wstring Text() = 0;
  virtual void Delete() = 0;
  // Click of a button, Change of a combo box. The handler gets the control Outlook raised the
  // event for; subscriptions end when the returned connection is destroyed.
  [[nodiscard]] virtual EventConnection OnClick(std::function<void()> handler) = 0;
  [[nodiscard]] virtual EventConnection OnChange(std::function<void()> handler) = 0;
};

class CommandBarControls {
 public:
  virtual ~CommandBarControls() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::CommandBarControl> Item(int32_t index) = 0;
  virtual Ref<outlook::CommandBarControl> Add(int32_t type, bool temporary) = 0;
};

class CommandBar {
 public:
  virtual ~CommandBar() = default;
  virtual std::wstring Name() = 0;
  virtual bool Visible() = 0;
  virtual void SetVisible(bool value) = 0;
  virtual Ref<outlook::CommandBarControls> Controls() = 0;
  // FindControl(Tag:=tag): the first control on the bar with that tag, or Nothing. One call,
  // where walking the controls would cost two per control.
  virtual Ref<outlook::CommandBarControl> FindControl(const std::wstring& tag) = 0;
  virtual void Delete() = 0;
};

class CommandBars {
 public:
  virtual ~CommandBars() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::CommandBar> Item(int32_t index) = 0;
  // Item(name): the bar of that name, or Nothing when there is none. One call, where walking
  // the window's bars (a hundred or more in Outlook) would cost two per bar.
  virtual Ref<outlook::CommandBar> ItemByName(const std::wstring& name) = 0;
  virtual Ref<outlook::CommandBar> Add(const std::wstring& name, int32_t position,
                                          bool temporary) = 0;
};

class Selection {
 public:
  virtual ~Selection() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::Item> Item(int32_t index) = 0;
};

class Explorer {
 public:
  virtual ~Explorer() = default;
  virtual Ref<outlook::Selection> Selection() = 0;
  virtual Ref<outlook::CommandBars> CommandBars() = 0;
  virtual void Activate() = 0;
  [[nodiscard]] virtual EventConnection OnClose(std::function<void()> handler) = 0;
  [[nodiscard]] virtual EventConnection OnDeactivate(std::function<void()> handler) = 0;
};

class Explorers {
 public:
  virtual ~Explorers() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::Explorer> Item(int32_t index) = 0;
};

class Inspector {
 public:
  virtual ~Inspector() = default;
  virtual Ref<outlook::Item> CurrentItem() = 0;
  virtual Ref<outlook::CommandBars> CommandBars() = 0;
  [[nodiscard]] virtual EventConnection OnClose(std::function<void()> handler) = 0;
};

// The open mail windows; NewInspector hands over each window Outlook opens.
class Inspectors {
 public:
  virtual ~Inspectors() = default;
  virtual int32_t Count() = 0;
  virtual Ref<outlook::Inspector> Item(int32_t index) = 0;
  [[nodiscard]] virtual EventConnection OnNewInspector(
      std::function<void(Ref<outlook::Inspector>)> handler) = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  virtual Ref<outlook::Explorers> Explorers() = 0;
  virtual Ref<outlook::Explorer> ActiveExplorer() = 0;    // Nothing without a main window
  virtual Ref<outlook::Inspector> ActiveInspector() = 0;  // Nothing without a mail window
  virtual Ref<outlook::Inspectors> Inspectors() = 0;
  virtual Ref<outlook::NameSpace> GetNamespace(const std::wstring& type) = 0;
  virtual Ref<outlook::Item> CreateItem(int32_t kind) = 0;
  [[nodiscard]] virtual EventConnection OnNewMail(std::function<void()> handler) = 0;
  [[nodiscard]] virtual EventConnection OnStartup(std::function<void()> handler) = 0;
};

}  // namespace corvina::outlook
