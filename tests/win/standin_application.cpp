// Application and its windows: Explorers, Explorer (with its Selection), Inspectors and
// Inspector.
#include "standin_ids.h"
#include "standin_object.h"

namespace corvina::standin {

const KindTable<outlook::Application>& TableOf(KindTag<outlook::Application>) {
  using A = outlook::Application;
  static const KindTable<A> table{
      L"Application",
      {
          {L"Explorers", 0, [](Ref<A> o, Call& c) { c.Return(o->Explorers()); }},
          {L"ActiveExplorer", 0, [](Ref<A> o, Call& c) { c.Return(o->ActiveExplorer()); }},
          {L"ActiveInspector", 0, [](Ref<A> o, Call& c) { c.Return(o->ActiveInspector()); }},
          {L"Inspectors", 0, [](Ref<A> o, Call& c) { c.Return(o->Inspectors()); }},
          {L"GetNamespace", 1, [](Ref<A> o, Call& c) { c.Return(o->GetNamespace(c.Text(0))); }},
          {L"CreateItem", 1, [](Ref<A> o, Call& c) { c.Return(o->CreateItem(c.Int(0))); }},
      },
      {
          {kApplicationEvents,
           [](const std::shared_ptr<Context>&, Ref<A> app, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(app->OnNewMail([fire] { fire(kNewMail, {}); }));
             all.push_back(app->OnStartup([fire] { fire(kStartup, {}); }));
             return all;
           }},
      }};
  return table;
}

const KindTable<outlook::Explorers>& TableOf(KindTag<outlook::Explorers>) {
  using E = outlook::Explorers;
  static const KindTable<E> table{
      L"Explorers",
      {
          {L"Count", 0, [](Ref<E> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<E> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Explorer>& TableOf(KindTag<outlook::Explorer>) {
  using E = outlook::Explorer;
  static const KindTable<E> table{
      L"Explorer",
      {
          {L"Selection", 0, [](Ref<E> o, Call& c) { c.Return(o->Selection()); }},
          {L"CommandBars", 0, [](Ref<E> o, Call& c) { c.Return(o->CommandBars()); }},
          {L"Activate", 0, [](Ref<E> o, Call&) { o->Activate(); }},
      },
      {
          {kExplorerEvents,
           [](const std::shared_ptr<Context>&, Ref<E> explorer, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(explorer->OnClose([fire] { fire(kExplorerClose, {}); }));
             all.push_back(explorer->OnDeactivate([fire] { fire(kExplorerDeactivate, {}); }));
             return all;
           }},
      }};
  return table;
}

const KindTable<outlook::Inspectors>& TableOf(KindTag<outlook::Inspectors>) {
  using I = outlook::Inspectors;
  static const KindTable<I> table{
      L"Inspectors",
      {
          {L"Count", 0, [](Ref<I> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<I> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
      },
      {
          // NewInspector(Inspector): the window just opened is the one argument.
          {kInspectorsEvents,
           [](const std::shared_ptr<Context>& context, Ref<I> inspectors, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(inspectors->OnNewInspector(
                 [context, fire](outlook::Ref<outlook::Inspector> window) {
                   Microsoft::WRL::ComPtr<IDispatch> arg = Expose(context, std::move(window).shared());
                   VARIANT v;
                   VariantInit(&v);
                   v.vt = VT_DISPATCH;
                   v.pdispVal = arg.Get();
                   fire(kNewInspector, std::span<VARIANT>(&v, 1));
                 }));
             return all;
           }},
      }};
  return table;
}

const KindTable<outlook::Inspector>& TableOf(KindTag<outlook::Inspector>) {
  using I = outlook::Inspector;
  static const KindTable<I> table{
      L"Inspector",
      {
          {L"CurrentItem", 0, [](Ref<I> o, Call& c) { c.Return(o->CurrentItem()); }},
          {L"CommandBars", 0, [](Ref<I> o, Call& c) { c.Return(o->CommandBars()); }},
      },
      {
          {kInspectorEvents,
           [](const std::shared_ptr<Context>&, Ref<I> inspector, const Fire& fire) {
             std::vector<EventConnection> all;
             all.push_back(inspector->OnClose([fire] { fire(kInspectorClose, {}); }));
             return all;
           }},
      }};
  return table;
}

const KindTable<outlook::Selection>& TableOf(KindTag<outlook::Selection>) {
  using S = outlook::Selection;
  static const KindTable<S> table{
      L"Selection",
      {
          {L"Count", 0, [](Ref<S> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<S> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
      },
      {}};
  return table;
}

}  // namespace corvina::standin
