#pragma once
// The Win32 implementations of the platform services, owned together by one COM object and
// handed to the core as corvina::Services.
#include "addin/services.h"
#include "platform/win32/registry_settings_tree.h"
#include "platform/win32/win32_beeper.h"
#include "platform/win32/win32_clipboard.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_user_interface.h"

namespace corvina::com {

class AddinServices {
 public:
  // The references in the result point into this object: it must outlive them.
  Services Make();

 private:
  win32::Win32FileSystem files_;
  win32::RegistrySettingsTree settings_;
  win32::Win32UserInterface ui_;
  win32::Win32Clock clock_;
  win32::Win32Beeper beeper_;
  win32::Win32Clipboard clipboard_;
};

// Outlook's Application object when Outlook is already running (GetActiveObject), else
// nothing. Only the creation-time fallback: the object handed to OnConnection is the one to use.
outlook::Ref<outlook::Application> FindRunningOutlook();

}  // namespace corvina::com
