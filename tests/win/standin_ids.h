#pragma once
// The event interfaces the stand-in's connection points offer and the DISPIDs of the events
// it raises on them, as Outlook and Office number them.
#include "platform/win32/windows_api.h"

namespace corvina::standin {

// ApplicationEvents_11.
inline constexpr IID kApplicationEvents = {
    0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kNewMail = 0xF003;
inline constexpr DISPID kStartup = 0xF006;

// ExplorerEvents_10.
inline constexpr IID kExplorerEvents = {
    0x0006300F, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kExplorerDeactivate = 0xF006;
inline constexpr DISPID kExplorerClose = 0xF008;

// InspectorsEvents: NewInspector(Inspector). InspectorEvents_10: one mail window's Close.
inline constexpr IID kInspectorsEvents = {
    0x00063079, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kNewInspector = 0xF001;
inline constexpr IID kInspectorEvents = {
    0x0006302A, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kInspectorClose = 0xF008;

// _CommandBarButtonEvents: Click(Ctrl, CancelDefault). _CommandBarComboBoxEvents: Change(Ctrl).
inline constexpr IID kButtonEvents = {
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID kComboBoxEvents = {
    0x000C0354, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kClick = 1;
inline constexpr DISPID kChange = 1;

}  // namespace corvina::standin
