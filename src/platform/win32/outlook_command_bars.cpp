// Office command bars as Outlook's windows carry them: CommandBars, CommandBar,
// CommandBarControls and CommandBarControl (with the Click and Change events).
#include "base/error.h"
#include "platform/win32/event_sink.h"
#include "platform/win32/outlook_events.h"
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {

namespace {

class ComControl final : public outlook::CommandBarControl {
 public:
  explicit ComControl(Dispatch d) : d_(std::move(d)) {}

  int32_t Type() override { return d_.Get<int32_t>(L"Type"); }
  std::wstring Tag() override { return d_.Get<std::wstring>(L"Tag"); }
  void SetTag(const std::wstring& value) override { d_.Put(L"Tag", value); }
  std::wstring Caption() override { return d_.Get<std::wstring>(L"Caption"); }
  void SetCaption(const std::wstring& value) override { d_.Put(L"Caption", value); }
  // Buttons only: on another kind of control the call fails as in Office.
  int32_t FaceId() override { return d_.Get<int32_t>(L"FaceId"); }
  void SetFaceId(int32_t value) override { d_.Put(L"FaceId", value); }
  std::wstring ToolTipText() override { return d_.Get<std::wstring>(L"TooltipText"); }
  void SetToolTipText(const std::wstring& value) override { d_.Put(L"TooltipText", value); }
  int32_t Style() override { return d_.Get<int32_t>(L"Style"); }
  void SetStyle(int32_t value) override { d_.Put(L"Style", value); }
  bool Visible() override { return d_.Get<bool>(L"Visible"); }
  void SetVisible(bool value) override { d_.Put(L"Visible", value); }
  // A combo or edit box's text. A button has no such member: its text is empty (asking the
  // type first would cost every combo box a second call).
  std::wstring Text() override {
    try {
      return d_.Get<std::wstring>(L"Text");
    } catch (const Error& e) {
      if (e.number() == DISP_E_UNKNOWNNAME || e.number() == DISP_E_MEMBERNOTFOUND) return {};
      throw;
    }
  }
  void Delete() override { d_.Call(L"Delete"); }

  EventConnection OnClick(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kCommandBarButtonEvents, kDispIdClick, std::move(handler),
                       L"CommandBarButton.Click");
  }
  EventConnection OnChange(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kCommandBarComboBoxEvents, kDispIdChange, std::move(handler),
                       L"CommandBarComboBox.Change");
  }

 private:
  Dispatch d_;
};

class ComControls final : public outlook::CommandBarControls {
 public:
  explicit ComControls(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::CommandBarControl> Item(int32_t index) override {
    return WrapCommandBarControl(d_.Call<Dispatch>(L"Item", index));
  }
  // Add(Type, Id, Parameter, Before, Temporary): a new control of `type` at the end.
  outlook::Ref<outlook::CommandBarControl> Add(int32_t type, bool temporary) override {
    return WrapCommandBarControl(
        d_.Call<Dispatch>(L"Add", type, Missing{}, Missing{}, Missing{}, temporary));
  }

 private:
  Dispatch d_;
};

class ComBar final : public outlook::CommandBar {
 public:
  explicit ComBar(Dispatch d) : d_(std::move(d)) {}
  std::wstring Name() override { return d_.Get<std::wstring>(L"Name"); }
  bool Visible() override { return d_.Get<bool>(L"Visible"); }
  void SetVisible(bool value) override { d_.Put(L"Visible", value); }
  outlook::Ref<outlook::CommandBarControls> Controls() override {
    return WrapCommandBarControls(d_.Get<Dispatch>(L"Controls"));
  }
  // FindControl(Type, Id, Tag): Nothing when no control has the tag.
  outlook::Ref<outlook::CommandBarControl> FindControl(const std::wstring& tag) override {
    return WrapCommandBarControl(d_.Call<Dispatch>(L"FindControl", Missing{}, Missing{}, tag));
  }
  void Delete() override { d_.Call(L"Delete"); }

 private:
  Dispatch d_;
};

class ComBars final : public outlook::CommandBars {
 public:
  explicit ComBars(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::CommandBar> Item(int32_t index) override {
    return WrapCommandBar(d_.Call<Dispatch>(L"Item", index));
  }
  // Office answers Item with a name it does not know by failing the call; that means "no such
  // bar" here (a genuine failure shows again when the caller goes on to add the bar).
  outlook::Ref<outlook::CommandBar> ItemByName(const std::wstring& name) override {
    try {
      return WrapCommandBar(d_.Call<Dispatch>(L"Item", name));
    } catch (const Error&) {
      return nullptr;
    }
  }
  // Add(Name, Position, MenuBar, Temporary): a toolbar, never the window's menu bar.
  outlook::Ref<outlook::CommandBar> Add(const std::wstring& name, int32_t position,
                                           bool temporary) override {
    return WrapCommandBar(d_.Call<Dispatch>(L"Add", name, position, false, temporary));
  }

 private:
  Dispatch d_;
};

}  // namespace

outlook::Ref<outlook::CommandBars> WrapCommandBars(Dispatch object) {
  return MakeWrapper<ComBars>(std::move(object), L"CommandBars");
}
outlook::Ref<outlook::CommandBar> WrapCommandBar(Dispatch object) {
  return MakeWrapper<ComBar>(std::move(object), L"CommandBar");
}
outlook::Ref<outlook::CommandBarControls> WrapCommandBarControls(Dispatch object) {
  return MakeWrapper<ComControls>(std::move(object), L"CommandBarControls");
}
outlook::Ref<outlook::CommandBarControl> WrapCommandBarControl(Dispatch object) {
  return MakeWrapper<ComControl>(std::move(object), L"CommandBarControl");
}

}  // namespace corvina::win32
