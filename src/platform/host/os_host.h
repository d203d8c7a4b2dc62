// trevik::os where the host layer stands in for Windows: Windows' types and the functions of src/platform/host.
#pragma once

#include <trevik/TrevikHost.h>

#include "platform/os_constants.h"

#include <cstddef>
#include <cstdint>

namespace trevik::os
{

using BOOL = int;
using UINT = unsigned int;
using DWORD = std::uint32_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using MMRESULT = UINT;
using LPVOID = void *;
using LPDWORD = DWORD *;
using LPCSTR = const char *;
using HANDLE = void *;
using HDEVINFO = void *;
using HWND = void *;

// Never looked into: callers pass null.
struct SECURITY_ATTRIBUTES;
struct OVERLAPPED;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES *;
using LPOVERLAPPED = OVERLAPPED *;

using LPTHREAD_START_ROUTINE = DWORD(TREVIK_CALL *)(LPVOID parameter);
using LPTIMECALLBACK = void(TREVIK_CALL *)(UINT timer, UINT reserved, DWORD_PTR user, DWORD_PTR reserved1,
                                           DWORD_PTR reserved2);

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};

// The reserved words are pointers in a 64-bit Windows; here the records have their 32-bit sizes everywhere.
struct SP_DEVICE_INTERFACE_DATA {
    DWORD cbSize;
    GUID InterfaceClassGuid;
    DWORD Flags;
    std::uint32_t Reserved;
};
using PSP_DEVICE_INTERFACE_DATA = SP_DEVICE_INTERFACE_DATA *;

struct SP_DEVINFO_DATA {
    DWORD cbSize;
    GUID ClassGuid;
    DWORD DevInst;
    std::uint32_t Reserved;
};
using PSP_DEVINFO_DATA = SP_DEVINFO_DATA *;

#pragma pack(push, 1)
struct SP_DEVICE_INTERFACE_DETAIL_DATA_A {
    DWORD cbSize;
    char DevicePath[1];
};
#pragma pack(pop)
using PSP_DEVICE_INTERFACE_DETAIL_DATA_A = SP_DEVICE_INTERFACE_DETAIL_DATA_A *;

static_assert(sizeof(SP_DEVICE_INTERFACE_DATA) == 28);
static_assert(sizeof(SP_DEVINFO_DATA) == 28);
static_assert(sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_A) == 5);

// What CreateFileA and SetupDiGetClassDevsA return on failure.
inline HANDLE InvalidHandle()
{
    return reinterpret_cast<HANDLE>(~std::uintptr_t{0}); // NOLINT(performance-no-int-to-ptr)
}

// Card search: a set stands for the driver in place when it was made.
HDEVINFO SetupDiGetClassDevsA(const GUID *interface_class, LPCSTR enumerator, HWND parent, DWORD flags);
BOOL SetupDiEnumDeviceInterfaces(HDEVINFO set, PSP_DEVINFO_DATA device, const GUID *interface_class, DWORD index,
                                 PSP_DEVICE_INTERFACE_DATA interface_data);
BOOL SetupDiGetDeviceInterfaceDetailA(HDEVINFO set, PSP_DEVICE_INTERFACE_DATA interface_data,
                                      PSP_DEVICE_INTERFACE_DETAIL_DATA_A detail, DWORD detail_size,
                                      LPDWORD required_size, PSP_DEVINFO_DATA device);
BOOL SetupDiDestroyDeviceInfoList(HDEVINFO set);

// Devices.
HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share_mode, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD attributes, HANDLE template_file);
BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD in_size, LPVOID out, DWORD out_size,
                     LPDWORD returned, LPOVERLAPPED overlapped);
BOOL CloseHandle(HANDLE handle);
DWORD GetLastError();

// Events, threads, waits.
HANDLE CreateEventA(LPSECURITY_ATTRIBUTES security, BOOL manual_reset, BOOL signalled, LPCSTR name);
HANDLE OpenEventA(DWORD access, BOOL inheritable, LPCSTR name);
BOOL SetEvent(HANDLE event);
HANDLE CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stack_size, LPTHREAD_START_ROUTINE start,
                    LPVOID parameter, DWORD flags, LPDWORD id);
BOOL SetThreadPriority(HANDLE thread, int priority);
DWORD ResumeThread(HANDLE thread);
DWORD WaitForSingleObject(HANDLE object, DWORD timeout_ms);
void Sleep(DWORD time_ms); // by the machine's own clock, also while the manual one stands still
[[noreturn]] void ExitThread(DWORD exit_code);
DWORD GetCurrentThreadId();
DWORD GetCurrentProcessId();

// Timers.
MMRESULT timeSetEvent(UINT delay_ms, UINT resolution_ms, LPTIMECALLBACK callback, DWORD_PTR user, UINT flags);
MMRESULT timeKillEvent(UINT timer);

void OutputDebugStringA(LPCSTR text);

} // namespace trevik::os
