#pragma once
// The toolbar's controls. Every control is found again by its tag; member N of the connect
// class holds the control created with index N (there is no index 6; 7 is the combo box).
#include <cstdint>
#include <optional>
#include <span>

#include "language/text_id.h"

namespace corvina {

struct ControlSpec {
  int index;
  const wchar_t* tag;
  int32_t face_id;  // 0 for the combo box
  // Texts of a button the add-in creates. The combo box (only found and hidden) and the Upload
  // and MyStorage buttons (never created, only kept hidden) have none (TextId::kCount).
  TextId caption;
  TextId tooltip;
};

inline constexpr int kControlCount = 15;  // indices 0 .. 14
inline constexpr int kComboIndex = 7;

std::span<const ControlSpec> ControlTable();
const ControlSpec* FindControl(int index);
const ControlSpec* FindControlByTag(const wchar_t* tag);

// Creation order at start-up, which is also the order on the toolbar.
std::span<const int> StartupCreationOrder();
// Controls the mail window's bar carries: the commands that work on the open mail.
std::span<const int> InspectorCreationOrder();

inline constexpr wchar_t kBarName[] = L"Vireo";
inline constexpr wchar_t kInspectorBarName[] = L"VireoInspector";
inline constexpr wchar_t kTagCoolMail[] = L"Vireo_CoolMail...";
inline constexpr wchar_t kTagSave[] = L"Vireo_Save...";
inline constexpr wchar_t kTagConfiguration[] = L"Vireo_Configuration";
inline constexpr wchar_t kTagPreview[] = L"Vireo_Preview";
inline constexpr wchar_t kTagSmartSender[] = L"Vireo_Smart sender...";
inline constexpr wchar_t kTagHebrew[] = L"Vireo_2 Hebrew";
inline constexpr wchar_t kTagLanguage[] = L"Vireo_Language";
inline constexpr wchar_t kTagVirusAlert[] = L"Vireo_Virus Alert";
inline constexpr wchar_t kTagAbout[] = L"Vireo_About";
inline constexpr wchar_t kTagUpload[] = L"Vireo_Upload";
inline constexpr wchar_t kTagMyStorage[] = L"Vireo_MyStorage";
inline constexpr wchar_t kTagChat[] = L"Vireo_Chat";
inline constexpr wchar_t kTagSearch[] = L"Vireo_SearchAttachments";
inline constexpr wchar_t kTagVoiceMail[] = L"Vireo_VoiceMail";

inline constexpr int32_t kSaveFace = 1975;
inline constexpr int32_t kSaveBusyFace = 2649;
inline constexpr int32_t kSmartSenderFace = 3203;
inline constexpr int32_t kSmartSenderBusyFace = 602;

}  // namespace corvina
