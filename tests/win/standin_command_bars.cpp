// Office's command bars as an Outlook window carries them: CommandBars, CommandBar,
// CommandBarControls and CommandBarControl, whose connection points raise a button's Click and
// a combo box's Change.
#include "platform/sim/outlook_errors.h"
#include "standin_ids.h"
#include "standin_object.h"

namespace corvina::standin {
namespace {

using C = outlook::CommandBarControl;

constexpr int32_t kBarFloating = 4;  // msoBarFloating, Office's default position
constexpr int32_t kCustomControl = 1;  // Controls.Add's Id for a control of the add-in's own

// Office also finds a bar by its name (in any case).
// The control raising the event is its first argument. The subscription does not keep the
// control alive: the connection point that made it does, for as long as it exists.
template <size_t N>
std::function<void()> Raiser(const std::shared_ptr<Context>& context, Ref<C> control,
                             const Fire& fire, DISPID id) {
  return [context, weak = std::weak_ptr<C>(control), fire, id] {
    Microsoft::WRL::ComPtr<IDispatch> ctrl = Expose(context, weak.lock());
    VARIANT_BOOL cancel = VARIANT_FALSE;
    VARIANT args[2];
    VariantInit(&args[0]);
    VariantInit(&args[1]);
    // Click(Ctrl, CancelDefault): last first, so the flag comes first.
    VARIANT& ctrl_arg = args[N - 1];
    ctrl_arg.vt = VT_DISPATCH;
    ctrl_arg.pdispVal = ctrl.Get();
    if constexpr (N == 2) {
      args[0].vt = VT_BOOL | VT_BYREF;
      args[0].pboolVal = &cancel;
    }
    fire(id, std::span<VARIANT>(args, N));
  };
}

}  // namespace

const KindTable<outlook::CommandBars>& TableOf(KindTag<outlook::CommandBars>) {
  using B = outlook::CommandBars;
  static const KindTable<B> table{
      L"CommandBars",
      {
          {L"Count", 0, [](Ref<B> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1,
           [](Ref<B> o, Call& c) {
             if (!c.IsText(0)) return c.Return(o->Item(c.Int(0)));
             auto bar = o->ItemByName(c.Text(0));
             if (!bar) throw sim::InvalidArgumentError();  // as Office answers an unknown name
             c.Return(bar);
           }},
          // Add(Name, Position, MenuBar, Temporary). Replacing the window's menu bar is not
          // something the sim models, so a caller asking for it is told so.
          {L"Add", 4,
           [](Ref<B> o, Call& c) {
             if (c.Bool(2, false)) throw sim::InvalidArgumentError();
             c.Return(o->Add(c.Missing(0) ? std::wstring(L"Custom") : c.Text(0),
                             c.Int(1, kBarFloating), c.Bool(3, false)));
           }},
      },
      {}};
  return table;
}

const KindTable<outlook::CommandBar>& TableOf(KindTag<outlook::CommandBar>) {
  using B = outlook::CommandBar;
  static const KindTable<B> table{
      L"CommandBar",
      {
          {L"Name", 0, [](Ref<B> o, Call& c) { c.Return(o->Name()); }},
          {L"Visible", 0, [](Ref<B> o, Call& c) { c.Return(o->Visible()); },
           [](Ref<B> o, Call& c) { o->SetVisible(c.Bool(0)); }},
          {L"Controls", 0, [](Ref<B> o, Call& c) { c.Return(o->Controls()); }},
          // FindControl(Type, Id, Tag, Visible, Recursive): only the tag is modelled.
          {L"FindControl", 5, [](Ref<B> o, Call& c) { c.Return(o->FindControl(c.Text(2))); }},
          {L"Delete", 0, [](Ref<B> o, Call&) { o->Delete(); }},
      },
      {}};
  return table;
}

const KindTable<outlook::CommandBarControls>& TableOf(KindTag<outlook::CommandBarControls>) {
  using K = outlook::CommandBarControls;
  static const KindTable<K> table{
      L"CommandBarControls",
      {
          {L"Count", 0, [](Ref<K> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<K> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
          // Add(Type, Id, Parameter, Before, Temporary): a new control of the add-in's own at
          // the end. Office's built-in controls (another Id) and placing it before another
          // control are not modelled, and refused rather than silently done differently.
          {L"Add", 5,
           [](Ref<K> o, Call& c) {
             if (c.Int(1, kCustomControl) != kCustomControl || !c.Missing(3))
               throw sim::InvalidArgumentError();
             c.Return(o->Add(c.Int(0, outlook::msoControlButton), c.Bool(4, false)));
           }},
      },
      {}};
  return table;
}

const KindTable<C>& TableOf(KindTag<C>) {
  static const KindTable<C> table{
      L"CommandBarControl",
      {
          {L"Type", 0, [](Ref<C> o, Call& c) { c.Return(o->Type()); }},
          {L"Tag", 0, [](Ref<C> o, Call& c) { c.Return(o->Tag()); },
           [](Ref<C> o, Call& c) { o->SetTag(c.Text(0)); }},
          {L"Caption", 0, [](Ref<C> o, Call& c) { c.Return(o->Caption()); },
           [](Ref<C> o, Call& c) { o->SetCaption(c.Text(0)); }},
          {L"FaceId", 0, [](Ref<C> o, Call& c) { c.Return(o->FaceId()); },
           [](Ref<C> o, Call& c) { o->SetFaceId(c.Int(0)); }},
          {L"TooltipText", 0, [](Ref<C> o, Call& c) { c.Return(o->ToolTipText()); },
           [](Ref<C> o, Call& c) { o->SetToolTipText(c.Text(0)); }},
          {L"Style", 0, [](Ref<C> o, Call& c) { c.Return(o->Style()); },
           [](Ref<C> o, Call& c) { o->SetStyle(c.Int(0)); }},
          {L"Visible", 0, [](Ref<C> o, Call& c) { c.Return(o->Visible()); },
           [](Ref<C> o, Call& c) { o->SetVisible(c.Bool(0)); }},
          {L"Text", 0, [](Ref<C> o, Call& c) { c.Return(o->Text()); }},
          {L"Delete", 0, [](Ref<C> o, Call&) { o->Delete(); }},
      },
      {
          {kButtonEvents,
           [](const std::shared_ptr<Context>& context, Ref<C> control, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(control->OnClick(Raiser<2>(context, control, fire, kClick)));
             return all;
           }},
          {kComboBoxEvents,
           [](const std::shared_ptr<Context>& context, Ref<C> control, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(control->OnChange(Raiser<1>(context, control, fire, kChange)));
             return all;
           }},
      }};
  return table;
}

}  // namespace corvina::standin
