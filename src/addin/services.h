#pragma once
// The platform services one running add-in is given. Outlook itself arrives at connection.
#include <functional>
#include <memory>
#include <string>

#include "platform/beeper.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/outlook.h"
#include "platform/settings_tree.h"
#include "platform/user_interface.h"

namespace corvina {

struct Services {
  FileSystem& files;
  SettingsTree& settings;
  UserInterface& ui;
  Clock& clock;
  Beeper& beeper;
  Clipboard& clipboard;
  // The folder of the add-in's own file (App.Path): base of the log, Temp, Chat, ...
  std::wstring addin_folder;
  // Creates or finds an Outlook application object before connection. Only a fallback: the
  // object Outlook hands to OnConnection is the one it trusts. May be empty.
  std::function<outlook::Ref<outlook::Application>()> create_application;
};

}  // namespace corvina
