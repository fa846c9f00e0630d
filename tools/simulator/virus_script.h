#pragma once
// The virus-alert window driven from a script (`virus new ...`, `virus scan` ...), and its rule
// list told in the transcript.
#include <functional>
#include <string>

#include "addin/addin.h"
#include "platform/sim/outlook_store.h"
#include "platform/sim/scripted_user_interface.h"

namespace corvina::simulator {

// Carries out one `virus ...` line on the open window; false (after saying why) when it
// cannot be.
bool PerformVirus(AddIn& addin, sim::ScriptedUserInterface& ui, sim::SimStore& store,
                  const std::wstring& command, const std::function<void(const std::wstring&)>& say);

}  // namespace corvina::simulator
