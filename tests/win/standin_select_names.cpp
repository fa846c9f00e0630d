// The select-names dialog NameSpace.GetSelectNamesDialog hands out, its Recipients and one
// Recipient. Display asks the sim for the next answer of the store's queue; an empty pick is
// the user's Cancel, as the sim reads it.
#include "platform/sim/outlook_errors.h"
#include "standin_object.h"

namespace corvina::standin {
namespace {

// An answer without "@" stands for a name typed into the dialog that the address book did not
// resolve: Outlook gives it a Name but no Address yet.
bool Resolved(const std::wstring& entry) { return entry.find(L'@') != std::wstring::npos; }

}  // namespace

const KindTable<SelectNamesDialog>& TableOf(KindTag<SelectNamesDialog>) {
  using D = SelectNamesDialog;
  static const KindTable<D> table{
      L"SelectNamesDialog",
      {
          {L"Caption", 0, [](Ref<D> o, Call& c) { c.Return(o->caption); },
           [](Ref<D> o, Call& c) { o->caption = c.Text(0); }},
          {L"Display", 0,
           [](Ref<D> o, Call& c) {
             o->picked = o->name_space->SelectNames(o->caption);
             c.Return(!o->picked.empty());
           }},
          {L"Recipients", 0,
           [](Ref<D> o, Call& c) {
             c.Return(std::make_shared<PickedRecipients>(PickedRecipients{o->picked}));
           }},
      },
      {}};
  return table;
}

// Named as Outlook names every recipient collection, so hiding one of its members hides it on
// a mail's recipients as well.
const KindTable<PickedRecipients>& TableOf(KindTag<PickedRecipients>) {
  using R = PickedRecipients;
  static const KindTable<R> table{
      L"Recipients",
      {
          {L"Count", 0,
           [](Ref<R> o, Call& c) { c.Return(static_cast<int32_t>(o->entries.size())); }},
          {L"Item", 1,
           [](Ref<R> o, Call& c) {
             const int32_t i = c.Int(0);
             if (i < 1 || static_cast<size_t>(i) > o->entries.size()) throw sim::BadIndexError();
             c.Return(std::make_shared<PickedRecipient>(
                 PickedRecipient{o->entries[static_cast<size_t>(i - 1)]}));
           }},
      },
      {}};
  return table;
}

const KindTable<PickedRecipient>& TableOf(KindTag<PickedRecipient>) {
  using R = PickedRecipient;
  static const KindTable<R> table{
      L"Recipient",
      {
          {L"Address", 0,
           [](Ref<R> o, Call& c) { c.Return(Resolved(o->entry) ? o->entry : std::wstring()); }},
          {L"Name", 0, [](Ref<R> o, Call& c) { c.Return(o->entry); }},
      },
      {}};
  return table;
}

}  // namespace corvina::standin
