#include "settings/config.h"

namespace corvina {

Config::Config(const std::wstring& addin_folder)
    : TempFolder(addin_folder + L"\\Temp"), AppPath(addin_folder) {}

}  // namespace corvina
