#pragma once
// The outgoing interfaces the add-in listens on and the DISPIDs of the events it handles. A
// sink advises on the dispinterface (never on a vtable events interface): Outlook calls it
// through IDispatch::Invoke with the event's DISPID.
#include "platform/win32/windows_api.h"

namespace corvina::win32 {

// ApplicationEvents_11, the default source of Outlook 2003 to 365.
inline constexpr IID kApplicationEvents11 = {
    0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kDispIdNewMail = 0xF003;
inline constexpr DISPID kDispIdStartup = 0xF006;

// ExplorerEvents_10 (Outlook 2002 on).
inline constexpr IID kExplorerEvents10 = {
    0x0006300F, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kDispIdExplorerDeactivate = 0xF006;
inline constexpr DISPID kDispIdExplorerClose = 0xF008;

// InspectorsEvents: NewInspector(Inspector) when a mail window opens.
inline constexpr IID kInspectorsEvents = {
    0x00063079, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kDispIdNewInspector = 0xF001;

// InspectorEvents_10: one mail window's Close.
inline constexpr IID kInspectorEvents10 = {
    0x0006302A, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kDispIdInspectorClose = 0xF008;

// Office command bar controls: Click(Ctrl, CancelDefault) of a button, Change(Ctrl) of a combo.
inline constexpr IID kCommandBarButtonEvents = {
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID kCommandBarComboBoxEvents = {
    0x000C0354, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr DISPID kDispIdClick = 1;
inline constexpr DISPID kDispIdChange = 1;

}  // namespace corvina::win32
