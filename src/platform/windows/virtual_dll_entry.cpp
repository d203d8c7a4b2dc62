// The entry of the virtual DLL, around the C++ runtime's own, for its beginning and its end.
#include "platform/host/windows/unloading.h"

#include <chrono>

#include <windows.h>

extern "C" BOOL WINAPI DllMainCRTStartup(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace
{

// The runtime asks the system's loader for its clock when it first reads it. Now that does no harm; a thread that did
// so later, while the library is unloaded, would wait for the loader, and the loader for the thread.
void FindClocks()
{
    [[maybe_unused]] const auto system = std::chrono::system_clock::now();
    [[maybe_unused]] const auto steady = std::chrono::steady_clock::now();
}

BOOL Unload(HINSTANCE instance)
{
    trevik::host::BeginUnloading();
    const BOOL done = DllMainCRTStartup(instance, DLL_PROCESS_DETACH, nullptr); // destructors
    trevik::host::StopRemainingThreads();
    return done;
}

} // namespace

extern "C" BOOL WINAPI TrevikDllEntry(HINSTANCE instance, DWORD reason, LPVOID reserved)
{
    if (reason == DLL_PROCESS_ATTACH)
        FindClocks();
    if (reason != DLL_PROCESS_DETACH)
        return DllMainCRTStartup(instance, reason, reserved);
    // At the end of the process its other threads are gone, and what they held is held for ever. Nothing is left that
    // the system does not clean up.
    return reserved != nullptr ? TRUE : Unload(instance);
}
