#pragma once
// The identifiers the COM server is known by. The CLSID never changes: Outlook's add-in list
// and every registration refer to it.
#include "platform/win32/windows_api.h"

namespace corvina::com {

// {5E4A9087-DBFC-407A-B2A1-E069B019A6E5}
inline constexpr CLSID kClsidDesVireo = {
    0x5E4A9087, 0xDBFC, 0x407A, {0xB2, 0xA1, 0xE0, 0x69, 0xB0, 0x19, 0xA6, 0xE5}};
inline constexpr wchar_t kClsidText[] = L"{5E4A9087-DBFC-407A-B2A1-E069B019A6E5}";
// Named after the connect class, as the add-in has always been registered.
inline constexpr wchar_t kProgId[] = L"Vireo.DesVireo";
inline constexpr wchar_t kFriendlyName[] = L"Corvina";
inline constexpr wchar_t kDescription[] =
    L"Corvina: saves attachments, previews pictures, filters mail and chats inside Outlook";

// IDTExtensibility2 {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
inline constexpr IID kIidIDTExtensibility2 = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
// Outlook.Application {0006F03A-0000-0000-C000-000000000046}
inline constexpr CLSID kClsidOutlookApplication = {
    0x0006F03A, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

}  // namespace corvina::com
