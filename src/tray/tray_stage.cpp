#include "tray/tray_stage.h"

namespace corvina {

void AddNewMailToTray(AddIn& addin, outlook::Item& /*mail*/) { addin.Run(L"AddItemToTray", [] {}); }

}  // namespace corvina
