#include "host/control_table.h"

#include <cwchar>

namespace corvina {
namespace {

const ControlSpec kControls[] = {
    {0, kTagCoolMail, 59, 0, true, 1},
    {1, kTagSave, kSaveFace, kSaveBusyFace, true, 2},
    {2, kTagConfiguration, 222, 0, true, 3},
    {3, kTagPreview, 1362, 0, true, 4},
    {4, kTagSmartSender, kSmartSenderFace, kSmartSenderBusyFace, true, 5},
    {5, kTagHebrew, 3540, 0, true, 7},
    {7, kTagLanguage, 0, 0, false, 0},
    {8, kTagVirusAlert, 719, 0, true, 8},
    {9, kTagAbout, 49, 0, true, 9},
    {10, kTagUpload, 3763, 0, false, 10},
    {11, kTagMyStorage, 3655, 0, false, 11},
    {12, kTagChat, 3735, 0, true, 12},
    {13, kTagSearch, 1744, 0, true, 13},
    {14, kTagVoiceMail, 27, 0, true, 14},
};

const int kStartupOrder[] = {0, 1, 2, 3, 4, 5, 8, 7, 9, 12, 13, 14};
const int kInspectorOrder[] = {0, 1, 14};

}  // namespace

std::span<const ControlSpec> ControlTable() { return kControls; }

const ControlSpec* FindControl(int index) {
  for (const ControlSpec& c : kControls)
    if (c.index == index) return &c;
  return nullptr;
}

const ControlSpec* FindControlByTag(const wchar_t* tag) {
  for (const ControlSpec& c : kControls)
    if (std::wcscmp(c.tag, tag) == 0) return &c;
  return nullptr;
}

std::span<const int> StartupCreationOrder() { return kStartupOrder; }
std::span<const int> InspectorCreationOrder() { return kInspectorOrder; }

}  // namespace corvina
