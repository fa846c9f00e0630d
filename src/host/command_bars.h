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

// Each creator finds its bar itself ("Vireo" among the active explorer's bars, or the mail
// window's "VireoInspector") and has its own error handler: a failing command-bar call is
// logged under the creator's name and leaves the toolbar as far as it was built.
//
// The control of `index` on the bar, created when missing. An existing Hebrew or Virus Alert
// button is hidden instead and Nothing is returned.
outlook::Ref<outlook::CommandBarControl> CreateAddInButton(AddIn& addin,
                                                           outlook::Application& application,
                                                           int index);
outlook::Ref<outlook::CommandBarControl> CreateAddInButtonInspector(AddIn& addin,
                                                                    outlook::Inspector& inspector,
                                                                    int index);
// Creates nothing: hides the existing language combo box and returns it. Without one, the
// empty reference fails and the failure is only logged.
outlook::Ref<outlook::CommandBarControl> CreateAddInComboBox(AddIn& addin,
                                                             outlook::Application& application,
                                                             int index);
// Removes the "Vireo" bar, only when the user removed the add-in (mode 1).
void RemoveAddInCommandBarButton(AddIn& addin, int32_t RemoveMode);

void ToggleSaveFaceID(AddIn& addin, bool flag);
void ToggleSmartSenderFaceID(AddIn& addin, bool flag);

}  // namespace corvina
