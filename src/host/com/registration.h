#pragma once
// The registry entries that make Outlook load the add-in: the COM class (CLSID, its
// InprocServer32 and ProgID) and the add-in's key under Outlook\Addins. Written under one hive:
// HKEY_LOCAL_MACHINE for every user (regsvr32), HKEY_CURRENT_USER for one user without
// administrator rights (regsvr32 /n /i:user). Wine only finds machine-wide classes.
#include <string>

#include "platform/win32/windows_api.h"

namespace corvina::com {

// "Software\Microsoft\Office\Outlook\Addins\Vireo.DesVireo", below the hive.
std::wstring AddinKeyPath();
// "Software\Classes\CLSID\{...}", below the hive.
std::wstring ClassKeyPath();

// Writes every entry, creating missing parent keys along and noting which (on the class key);
// the first failure stops and is returned (entries already written stay until Unregister).
HRESULT Register(HKEY hive, const std::wstring& dll_path);
// Removes exactly what Register created: its own keys, and the parent keys it noted as created
// by it that hold nothing now. A parent that existed before, or holds another key or value by
// now, stays. Keys already gone are no failure.
HRESULT Unregister(HKEY hive);

}  // namespace corvina::com
