#pragma once
// The "Vireo" toolbar of the main window and the "VireoInspector" bar of mail windows, and the
// buttons on them. Bars and controls are always found again by name and tag.
#include <cstdint>
#include <memory>
#include <string>

#include "addin/addin.h"
#include "platform/outlook.h"

namespace corvina {

// The first bar called `name`, or Nothing.
outlook::Ref<outlook::CommandBar> FindBar(outlook::CommandBars& bars, const std::wstring& name);
// The first control on `bar` tagged `tag`, or Nothing.
outlook::Ref<outlook::CommandBarControl> FindTaggedControl(outlook::CommandBar& bar,
                                                              const std::wstring& tag);

outlook::Ref<outlook::CommandBar> CreateAddInCommandBar(AddIn& addin,
                                                           outlook::Application& application);
outlook::Ref<outlook::CommandBar> CreateAddInCommandBarInspector(AddIn& addin,
                                                                    outlook::Inspector& inspector);

// The control of `index` on `bar` (the "Vireo" bar just found or made), created when missing.
// An existing Hebrew or Virus Alert button is hidden instead and Nothing is returned.
outlook::Ref<outlook::CommandBarControl> CreateAddInButton(AddIn& addin,
                                                              outlook::CommandBar& bar, int index);
outlook::Ref<outlook::CommandBarControl> CreateAddInButtonInspector(AddIn& addin,
                                                                       outlook::CommandBar& bar,
                                                                       int index);
// Creates nothing: hides the existing language combo box and returns it. Without one, the
// empty reference fails and the failure is only logged.
outlook::Ref<outlook::CommandBarControl> CreateAddInComboBox(AddIn& addin,
                                                                outlook::CommandBar& bar,
                                                                int index);
// Removes the "Vireo" bar, only when the user removed the add-in (mode 1).
void RemoveAddInCommandBarButton(AddIn& addin, int32_t RemoveMode);

void ToggleSaveFaceID(AddIn& addin, bool flag);
void ToggleSmartSenderFaceID(AddIn& addin, bool flag);

}  // namespace corvina
