// trevik::os on Windows: the system's own functions and types.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <mmsystem.h>
#include <setupapi.h>

#include "platform/os_constants.h"

namespace trevik::os
{

using ::BOOL;
using ::DWORD;
using ::DWORD_PTR;
using ::GUID;
using ::HANDLE;
using ::HDEVINFO;
using ::HWND;
using ::LPCSTR;
using ::LPDWORD;
using ::LPOVERLAPPED;
using ::LPSECURITY_ATTRIBUTES;
using ::LPTHREAD_START_ROUTINE;
using ::LPTIMECALLBACK;
using ::LPVOID;
using ::MMRESULT;
using ::PSP_DEVICE_INTERFACE_DATA;
using ::PSP_DEVICE_INTERFACE_DETAIL_DATA_A;
using ::PSP_DEVINFO_DATA;
using ::SIZE_T;
using ::SP_DEVICE_INTERFACE_DATA;
using ::SP_DEVICE_INTERFACE_DETAIL_DATA_A;
using ::SP_DEVINFO_DATA;
using ::UINT;

using ::CloseHandle;
using ::CreateEventA;
using ::CreateFileA;
using ::CreateThread;
using ::DeviceIoControl;
using ::ExitThread;
using ::GetCurrentProcessId;
using ::GetCurrentThreadId;
using ::GetLastError;
using ::OpenEventA;
using ::OutputDebugStringA;
using ::ResumeThread;
using ::SetEvent;
using ::SetThreadPriority;
using ::SetupDiDestroyDeviceInfoList;
using ::SetupDiEnumDeviceInterfaces;
using ::SetupDiGetClassDevsA;
using ::SetupDiGetDeviceInterfaceDetailA;
using ::Sleep;
using ::timeKillEvent;
using ::timeSetEvent;
using ::WaitForSingleObject;

// INVALID_HANDLE_VALUE, which CreateFileA and SetupDiGetClassDevsA return on failure.
inline HANDLE InvalidHandle()
{
    return INVALID_HANDLE_VALUE;
}

// The driver interface fixes the 32-bit record sizes.
static_assert(sizeof(SP_DEVICE_INTERFACE_DATA) == 28);
static_assert(sizeof(SP_DEVINFO_DATA) == 28);
static_assert(sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_A) == 5);

static_assert(ErrorSuccess == ERROR_SUCCESS && ErrorFileNotFound == ERROR_FILE_NOT_FOUND);
static_assert(ErrorTooManyOpenFiles == ERROR_TOO_MANY_OPEN_FILES && ErrorAccessDenied == ERROR_ACCESS_DENIED);
static_assert(ErrorInvalidHandle == ERROR_INVALID_HANDLE && ErrorNotEnoughMemory == ERROR_NOT_ENOUGH_MEMORY);
static_assert(ErrorInvalidData == ERROR_INVALID_DATA && ErrorInvalidParameter == ERROR_INVALID_PARAMETER);
static_assert(ErrorInsufficientBuffer == ERROR_INSUFFICIENT_BUFFER && ErrorAlreadyExists == ERROR_ALREADY_EXISTS);
static_assert(ErrorNoMoreItems == ERROR_NO_MORE_ITEMS && ErrorInvalidUserBuffer == ERROR_INVALID_USER_BUFFER);
static_assert(PresentDeviceInterfaces == (DIGCF_PRESENT | DIGCF_DEVICEINTERFACE));
static_assert(GenericReadWrite == (GENERIC_READ | GENERIC_WRITE));
static_assert(OpenExisting == OPEN_EXISTING && FileAttributeNormal == FILE_ATTRIBUTE_NORMAL);
static_assert(EventModifyState == EVENT_MODIFY_STATE && EventAllAccess == EVENT_ALL_ACCESS);
static_assert(CreateSuspended == CREATE_SUSPENDED && ThreadPriorityIdle == THREAD_PRIORITY_IDLE);
static_assert(ThreadPriorityNormal == THREAD_PRIORITY_NORMAL);
static_assert(Infinite == INFINITE && WaitObject0 == WAIT_OBJECT_0);
static_assert(WaitTimeout == WAIT_TIMEOUT && WaitFailed == WAIT_FAILED);
static_assert(TimeOneShot == TIME_ONESHOT && TimePeriodic == TIME_PERIODIC);
static_assert(TimerNoError == TIMERR_NOERROR && TimerNoCanDo == TIMERR_NOCANDO);

} // namespace trevik::os
