#include "host/control_table.h"

#include <cwchar>

namespace corvina {
namespace {

using enum TextId;

const ControlSpec kControls[] = {
    {0, kTagCoolMail, 59, kCaptionCoolMail, kTipCoolMail},
    {1, kTagSave, kSaveFace, kCaptionSave, kTipSave},
    {2, kTagConfiguration, 222, kCaptionConfiguration, kTipConfiguration},
    {3, kTagPreview, 1362, kCaptionPreview, kTipPreview},
    {4, kTagSmartSender, kSmartSenderFace, kCaptionSmartSender, kTipSmartSender},
    {5, kTagHebrew, 3540, kCaptionHebrew, kTipHebrew},
    {7, kTagLanguage, 0, kCount, kCount},
    {8, kTagVirusAlert, 719, kCaptionVirusAlert, kTipVirusAlert},
    {9, kTagAbout, 49, kCaptionAbout, kTipAbout},
    {10, kTagUpload, 3763, kCount, kCount},
    {11, kTagMyStorage, 3655, kCount, kCount},
    {12, kTagChat, 3735, kCaptionChat, kTipChat},
    {13, kTagSearch, 1744, kCaptionSearch, kTipSearch},
    {14, kTagVoiceMail, 27, kCaptionVoiceMail, kTipVoiceMail},
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
