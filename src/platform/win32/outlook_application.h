#pragma once
// The entry into the real object model: the Application object Outlook hands the add-in at
// connection, wrapped as outlook::Application. Every object reached from it shares one
// DISPID cache, which lives as long as the last of them.
#include <memory>

#include "platform/outlook.h"
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// Takes its own reference on `application`. Nothing (null) for a null pointer.
outlook::Ref<outlook::Application> WrapApplication(IDispatch* application);

}  // namespace corvina::win32
