// The entry of the virtual DLL, before the C++ runtime's own, for the end of it.
#include "platform/host/windows/unloading.h"

#include <windows.h>

extern "C" BOOL WINAPI DllMainCRTStartup(HINSTANCE instance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI TrevikDllEntry(HINSTANCE instance, DWORD reason, LPVOID reserved)
{
    using namespace trevik::host;
    // The process ends: its other threads are gone, and what they held is held for ever. Nothing is left that the
    // system does not clean up.
    if (reason == DLL_PROCESS_DETACH && reserved != nullptr)
        return TRUE;
    if (reason == DLL_PROCESS_DETACH)
        BeginUnloading();
    const BOOL done = DllMainCRTStartup(instance, reason, reserved); // constructors and destructors
    if (reason == DLL_PROCESS_DETACH)
        StopRemainingThreads();
    return done;
}
