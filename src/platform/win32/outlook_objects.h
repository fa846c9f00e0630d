#pragma once
// The wrappers of Outlook's objects, one factory per interface of platform/outlook.h. Each
// takes the Dispatch a call returned (sharing the connection's DISPID cache) and gives Nothing
// for an empty one, so `Wrap...(d.Get<Dispatch>(L"ActiveExplorer"))` reads like the object
// model itself.
#include <memory>

#include "platform/outlook.h"
#include "platform/win32/dispatch.h"

namespace corvina::win32 {

outlook::Ref<outlook::Explorers> WrapExplorers(Dispatch object);
outlook::Ref<outlook::Explorer> WrapExplorer(Dispatch object);
outlook::Ref<outlook::Inspectors> WrapInspectors(Dispatch object);
outlook::Ref<outlook::Inspector> WrapInspector(Dispatch object);
outlook::Ref<outlook::Selection> WrapSelection(Dispatch object);
outlook::Ref<outlook::NameSpace> WrapNameSpace(Dispatch object);
outlook::Ref<outlook::Folder> WrapFolder(Dispatch object);
outlook::Ref<outlook::Items> WrapItems(Dispatch object);
outlook::Ref<outlook::Item> WrapItem(Dispatch object);
outlook::Ref<outlook::Attachments> WrapAttachments(Dispatch object);
outlook::Ref<outlook::Attachment> WrapAttachment(Dispatch object);
outlook::Ref<outlook::Recipients> WrapRecipients(Dispatch object);
outlook::Ref<outlook::CommandBars> WrapCommandBars(Dispatch object);
outlook::Ref<outlook::CommandBar> WrapCommandBar(Dispatch object);
outlook::Ref<outlook::CommandBarControls> WrapCommandBarControls(Dispatch object);
outlook::Ref<outlook::CommandBarControl> WrapCommandBarControl(Dispatch object);

// Shared by the factories: names the object for error messages, Nothing stays Nothing.
template <class Wrapper>
std::shared_ptr<Wrapper> MakeWrapper(Dispatch object, const wchar_t* type) {
  if (!object) return nullptr;
  object.set_type(type);
  return std::make_shared<Wrapper>(std::move(object));
}

}  // namespace corvina::win32
