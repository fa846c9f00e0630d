#include "virus/virus_state.h"

#include "virus/virus_alerter.h"
#include "virus/virus_report.h"

namespace corvina {

VirusState::VirusState() = default;
VirusState::~VirusState() = default;

}  // namespace corvina
