// CommandBars, CommandBar, CommandBarControls and CommandBarControl over the store's bar data.
// A bar or control deleted through any reference is disconnected: further calls on it fail as
// they do in Office.
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_objects.h"

namespace corvina::sim {

namespace {

class SimControl final : public outlook::CommandBarControl {
 public:
  SimControl(SimStore& store, std::shared_ptr<SimControlData> data)
      : store_(store), d_(std::move(data)) {}

  int32_t Type() override { return Get("CommandBarControl.Type", d_->type); }
  std::wstring Tag() override { return Get("CommandBarControl.Tag", d_->tag); }
  void SetTag(const std::wstring& v) override { Set("CommandBarControl.SetTag", d_->tag, v); }
  std::wstring Caption() override { return Get("CommandBarControl.Caption", d_->caption); }
  void SetCaption(const std::wstring& v) override {
    Set("CommandBarControl.SetCaption", d_->caption, v);
  }
  int32_t FaceId() override { return Get("CommandBarControl.FaceId", d_->face_id); }
  void SetFaceId(int32_t v) override { Set("CommandBarControl.SetFaceId", d_->face_id, v); }
  std::wstring ToolTipText() override {
    return Get("CommandBarControl.ToolTipText", d_->tooltip_text);
  }
  void SetToolTipText(const std::wstring& v) override {
    Set("CommandBarControl.SetToolTipText", d_->tooltip_text, v);
  }
  int32_t Style() override { return Get("CommandBarControl.Style", d_->style); }
  void SetStyle(int32_t v) override { Set("CommandBarControl.SetStyle", d_->style, v); }
  bool Visible() override { return Get("CommandBarControl.Visible", d_->visible); }
  void SetVisible(bool v) override { Set("CommandBarControl.SetVisible", d_->visible, v); }
  std::wstring Text() override { return Get("CommandBarControl.Text", d_->text); }

  void Delete() override {
    Enter("CommandBarControl.Delete");
    d_->deleted = true;
    if (auto bar = d_->bar.lock()) bar->RemoveControl(*d_);
  }

  EventConnection OnClick(std::function<void()> handler) override {
    Enter("CommandBarControl.OnClick");
    return d_->click.Connect(std::move(handler));
  }
  EventConnection OnChange(std::function<void()> handler) override {
    Enter("CommandBarControl.OnChange");
    return d_->change.Connect(std::move(handler));
  }

 private:
  void Enter(const char* name) {
    store_.Enter(name);
    if (d_->deleted) throw DisconnectedError();
  }
  template <typename T>
  T Get(const char* name, const T& field) {
    Enter(name);
    return field;
  }
  template <typename T>
  void Set(const char* name, T& field, const T& value) {
    Enter(name);
    field = value;
  }

  SimStore& store_;
  std::shared_ptr<SimControlData> d_;
};

class SimControls final : public outlook::CommandBarControls {
 public:
  SimControls(SimStore& store, std::shared_ptr<SimCommandBarData> bar)
      : store_(store), bar_(std::move(bar)) {}

  int32_t Count() override {
    Enter("CommandBarControls.Count");
    return static_cast<int32_t>(bar_->controls.size());
  }
  outlook::Ref<outlook::CommandBarControl> Item(int32_t index) override {
    Enter("CommandBarControls.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    if (index < 1 || static_cast<size_t>(index) > bar_->controls.size()) throw BadIndexError();
    return std::make_shared<SimControl>(store_, bar_->controls[static_cast<size_t>(index - 1)]);
  }
  outlook::Ref<outlook::CommandBarControl> Add(int32_t type, bool temporary) override {
    Enter("CommandBarControls.Add");
    if (store_.faults().TakeNothing()) return nullptr;
    return std::make_shared<SimControl>(store_, bar_->AddControl(type, temporary));
  }

 private:
  void Enter(const char* name) {
    store_.Enter(name);
    if (bar_->deleted) throw DisconnectedError();
  }

  SimStore& store_;
  std::shared_ptr<SimCommandBarData> bar_;
};

class SimBar final : public outlook::CommandBar {
 public:
  SimBar(SimStore& store, std::shared_ptr<SimCommandBarData> bar)
      : store_(store), bar_(std::move(bar)) {}

  std::wstring Name() override {
    Enter("CommandBar.Name");
    return bar_->name;
  }
  bool Visible() override {
    Enter("CommandBar.Visible");
    return bar_->visible;
  }
  void SetVisible(bool v) override {
    Enter("CommandBar.SetVisible");
    bar_->visible = v;
  }
  outlook::Ref<outlook::CommandBarControls> Controls() override {
    Enter("CommandBar.Controls");
    if (store_.faults().TakeNothing()) return nullptr;
    return std::make_shared<SimControls>(store_, bar_);
  }
  outlook::Ref<outlook::CommandBarControl> FindControl(const std::wstring& tag) override {
    Enter("CommandBar.FindControl");
    if (store_.faults().TakeNothing()) return nullptr;
    auto control = bar_->FindControl(tag);
    return control ? std::make_shared<SimControl>(store_, control) : nullptr;
  }
  void Delete() override {
    Enter("CommandBar.Delete");
    if (bar_->built_in) throw OutlookError(kFail, L"Method 'Delete' of object 'CommandBar' failed");
    bar_->deleted = true;
    for (const auto& c : bar_->controls) c->deleted = true;
    if (auto owner = bar_->owner.lock()) owner->RemoveBar(*bar_);
  }

 private:
  void Enter(const char* name) {
    store_.Enter(name);
    if (bar_->deleted) throw DisconnectedError();
  }

  SimStore& store_;
  std::shared_ptr<SimCommandBarData> bar_;
};

class SimBars final : public outlook::CommandBars {
 public:
  SimBars(SimStore& store, std::shared_ptr<SimCommandBarsData> bars)
      : store_(store), bars_(std::move(bars)) {}

  int32_t Count() override {
    store_.Enter("CommandBars.Count");
    return static_cast<int32_t>(bars_->bars.size());
  }
  outlook::Ref<outlook::CommandBar> Item(int32_t index) override {
    store_.Enter("CommandBars.Item");
    if (store_.faults().TakeNothing()) return nullptr;
    if (index < 1 || static_cast<size_t>(index) > bars_->bars.size()) throw BadIndexError();
    return std::make_shared<SimBar>(store_, bars_->bars[static_cast<size_t>(index - 1)]);
  }
  outlook::Ref<outlook::CommandBar> ItemByName(const std::wstring& name) override {
    store_.Enter("CommandBars.ItemByName");
    if (store_.faults().TakeNothing()) return nullptr;
    auto bar = bars_->Find(name);
    return bar ? std::make_shared<SimBar>(store_, bar) : nullptr;
  }
  // Office refuses a second bar of a name already taken (error 5, "Invalid procedure call or
  // argument"), which is why code looks its bar up before adding it.
  outlook::Ref<outlook::CommandBar> Add(const std::wstring& name, int32_t position,
                                           bool temporary) override {
    store_.Enter("CommandBars.Add");
    if (store_.faults().TakeNothing()) return nullptr;
    if (bars_->Find(name))
      throw OutlookError(kInvalidArgument, L"Invalid procedure call or argument");
    return std::make_shared<SimBar>(store_, bars_->AddBar(name, position, temporary));
  }

 private:
  SimStore& store_;
  std::shared_ptr<SimCommandBarsData> bars_;
};

}  // namespace

outlook::Ref<outlook::CommandBars> WrapCommandBars(SimStore& store,
                                                      std::shared_ptr<SimCommandBarsData> bars) {
  if (!bars) return nullptr;
  return std::make_shared<SimBars>(store, std::move(bars));
}

}  // namespace corvina::sim
