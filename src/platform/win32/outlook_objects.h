#pragma once
// The wrappers of Outlook's objects, one factory per interface of platform/outlook.h. Each
// takes the Dispatch a call returned (sharing the connection's DISPID cache) and gives Nothing
// for an empty one, so `Wrap...(d.Get<Dispatch>(L"ActiveExplorer"))` reads like the object
// model itself.
#include <memory>

#include "platform/outlook.h"
#include "platform/win32/dispatch.h"

namespace corvina::win32 {

std::shared_ptr<outlook::Explorers> WrapExplorers(Dispatch object);
std::shared_ptr<outlook::Explorer> WrapExplorer(Dispatch object);
std::shared_ptr<outlook::Inspectors> WrapInspectors(Dispatch object);
std::shared_ptr<outlook::Inspector> WrapInspector(Dispatch object);
std::shared_ptr<outlook::Selection> WrapSelection(Dispatch object);
std::shared_ptr<outlook::NameSpace> WrapNameSpace(Dispatch object);
std::shared_ptr<outlook::Folder> WrapFolder(Dispatch object);
std::shared_ptr<outlook::Items> WrapItems(Dispatch object);
std::shared_ptr<outlook::Item> WrapItem(Dispatch object);
std::shared_ptr<outlook::Attachments> WrapAttachments(Dispatch object);
std::shared_ptr<outlook::Attachment> WrapAttachment(Dispatch object);
std::shared_ptr<outlook::Recipients> WrapRecipients(Dispatch object);
std::shared_ptr<outlook::CommandBars> WrapCommandBars(Dispatch object);
std::shared_ptr<outlook::CommandBar> WrapCommandBar(Dispatch object);
std::shared_ptr<outlook::CommandBarControls> WrapCommandBarControls(Dispatch object);
std::shared_ptr<outlook::CommandBarControl> WrapCommandBarControl(Dispatch object);

// Shared by the factories: names the object for error messages, Nothing stays Nothing.
template <class Wrapper>
std::shared_ptr<Wrapper> MakeWrapper(Dispatch object, const wchar_t* type) {
  if (!object) return nullptr;
  object.set_type(type);
  return std::make_shared<Wrapper>(std::move(object));
}

}  // namespace corvina::win32
