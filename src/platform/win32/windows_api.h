#pragma once
// The one way in to <windows.h> for the whole project. Only code under win32/ and com/
// includes it. Header names are lower case: the build machine's file system is case-sensitive.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601  // Windows 7: the oldest system the supported Outlook versions run on
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif

#include <windows.h>
#include <oaidl.h>
#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

// <windows.h> maps these names to their ...W functions with macros, which would rename the
// FileSystem interface's members in any file that sees both headers. Win32 code calls the
// ...W functions by their full names instead.
#undef CopyFile
#undef CreateDirectory
#undef DeleteFile
#undef GetDiskFreeSpace
#undef MoveFile
