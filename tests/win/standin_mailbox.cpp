// The mailbox side: NameSpace (with AddressLists; its select-names dialog is in
// standin_select_names.cpp), Folder, Items, one Item and what hangs from it (Attachments,
// Attachment, Recipients).
#include "standin_object.h"

namespace corvina::standin {

const KindTable<outlook::NameSpace>& TableOf(KindTag<outlook::NameSpace>) {
  using N = outlook::NameSpace;
  static const KindTable<N> table{
      L"NameSpace",
      {
          {L"GetDefaultFolder", 1, [](Ref<N> o, Call& c) { c.Return(o->GetDefaultFolder(c.Int(0))); }},
          // GetItemFromID(EntryIDItem, EntryIDStore): the sim has one store.
          {L"GetItemFromID", 2, [](Ref<N> o, Call& c) { c.Return(o->GetItemFromID(c.Text(0))); }},
          {L"AddressLists", 0,
           [](Ref<N> o, Call& c) { c.Return(std::make_shared<AddressLists>(AddressLists{o})); }},
          {L"GetSelectNamesDialog", 0,
           [](Ref<N> o, Call& c) {
             c.Return(std::make_shared<SelectNamesDialog>(SelectNamesDialog{o, L"", {}}));
           }},
      },
      {}};
  return table;
}

const KindTable<AddressLists>& TableOf(KindTag<AddressLists>) {
  static const KindTable<AddressLists> table{
      L"AddressLists",
      {
          {L"Count", 0,
           [](Ref<AddressLists> o, Call& c) { c.Return(o->name_space->AddressListCount()); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Folder>& TableOf(KindTag<outlook::Folder>) {
  using F = outlook::Folder;
  static const KindTable<F> table{
      L"Folder",
      {
          {L"Name", 0, [](Ref<F> o, Call& c) { c.Return(o->Name()); }},
          {L"Items", 0, [](Ref<F> o, Call& c) { c.Return(o->Items()); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Items>& TableOf(KindTag<outlook::Items>) {
  using I = outlook::Items;
  static const KindTable<I> table{
      L"Items",
      {
          {L"Count", 0, [](Ref<I> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<I> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
          // Sort(Property, Descending = False)
          {L"Sort", 2, [](Ref<I> o, Call& c) { o->Sort(c.Text(0), c.Bool(1, false)); }},
          {L"Restrict", 1, [](Ref<I> o, Call& c) { c.Return(o->Restrict(c.Text(0))); }},
          {L"Find", 1, [](Ref<I> o, Call& c) { c.Return(o->Find(c.Text(0))); }},
          {L"FindNext", 0, [](Ref<I> o, Call& c) { c.Return(o->FindNext()); }},
          {L"GetFirst", 0, [](Ref<I> o, Call& c) { c.Return(o->GetFirst()); }},
          {L"GetNext", 0, [](Ref<I> o, Call& c) { c.Return(o->GetNext()); }},
          {L"GetLast", 0, [](Ref<I> o, Call& c) { c.Return(o->GetLast()); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Item>& TableOf(KindTag<outlook::Item>) {
  using I = outlook::Item;
  static const KindTable<I> table{
      L"Item",
      {
          {L"Class", 0, [](Ref<I> o, Call& c) { c.Return(o->Class()); }},
          {L"MessageClass", 0, [](Ref<I> o, Call& c) { c.Return(o->MessageClass()); }},
          {L"EntryID", 0, [](Ref<I> o, Call& c) { c.Return(o->EntryID()); }},
          {L"Subject", 0, [](Ref<I> o, Call& c) { c.Return(o->Subject()); },
           [](Ref<I> o, Call& c) { o->SetSubject(c.Text(0)); }},
          {L"Body", 0, [](Ref<I> o, Call& c) { c.Return(o->Body()); },
           [](Ref<I> o, Call& c) { o->SetBody(c.Text(0)); }},
          {L"SenderName", 0, [](Ref<I> o, Call& c) { c.Return(o->SenderName()); }},
          {L"To", 0, [](Ref<I> o, Call& c) { c.Return(o->To()); },
           [](Ref<I> o, Call& c) { o->SetTo(c.Text(0)); }},
          {L"ReceivedTime", 0, [](Ref<I> o, Call& c) { c.Return(o->ReceivedTime()); }},
          {L"CreationTime", 0, [](Ref<I> o, Call& c) { c.Return(o->CreationTime()); }},
          {L"SentOn", 0, [](Ref<I> o, Call& c) { c.Return(o->SentOn()); }},
          {L"UnRead", 0, [](Ref<I> o, Call& c) { c.Return(o->UnRead()); },
           [](Ref<I> o, Call& c) { o->SetUnRead(c.Bool(0)); }},
          {L"Size", 0, [](Ref<I> o, Call& c) { c.Return(o->Size()); }},
          {L"Attachments", 0, [](Ref<I> o, Call& c) { c.Return(o->Attachments()); }},
          {L"Recipients", 0, [](Ref<I> o, Call& c) { c.Return(o->Recipients()); }},
          {L"Send", 0, [](Ref<I> o, Call&) { o->Send(); }},
          {L"Delete", 0, [](Ref<I> o, Call&) { o->Delete(); }},
          // Display(Modal): the sim opens a mail window either way.
          {L"Display", 1, [](Ref<I> o, Call&) { o->Display(); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Attachments>& TableOf(KindTag<outlook::Attachments>) {
  using A = outlook::Attachments;
  static const KindTable<A> table{
      L"Attachments",
      {
          {L"Count", 0, [](Ref<A> o, Call& c) { c.Return(o->Count()); }},
          {L"Item", 1, [](Ref<A> o, Call& c) { c.Return(o->Item(c.Int(0))); }},
          // Add(Source, Type, Position, DisplayName): the sim attaches the file by value.
          {L"Add", 4, [](Ref<A> o, Call& c) { c.Return(o->Add(c.Text(0))); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Attachment>& TableOf(KindTag<outlook::Attachment>) {
  using A = outlook::Attachment;
  static const KindTable<A> table{
      L"Attachment",
      {
          {L"FileName", 0, [](Ref<A> o, Call& c) { c.Return(o->FileName()); }},
          {L"Position", 0, [](Ref<A> o, Call& c) { c.Return(o->Position()); }},
          {L"Size", 0, [](Ref<A> o, Call& c) { c.Return(o->Size()); }},
          {L"SaveAsFile", 1, [](Ref<A> o, Call& c) { o->SaveAsFile(c.Text(0)); }},
      },
      {}};
  return table;
}

const KindTable<outlook::Recipients>& TableOf(KindTag<outlook::Recipients>) {
  using R = outlook::Recipients;
  static const KindTable<R> table{
      L"Recipients",
      {
          {L"Count", 0, [](Ref<R> o, Call& c) { c.Return(o->Count()); }},
          // Add(Name): Outlook returns the Recipient, which the sim does not model.
          {L"Add", 1, [](Ref<R> o, Call& c) { o->Add(c.Text(0)); }},
      },
      {}};
  return table;
}

}  // namespace corvina::standin
