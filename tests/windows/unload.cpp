// Unloads the DLL that it finds, and ends the process, while the handwheel's tick, callbacks and the timers' thread run.
//   unload free    20 times: load, use, unload
//   unload exit    the process ends with everything running
//   unload stuck   a callback that never comes back
// Exit code: the number of the first step that went wrong, 0 when all went well.
#include <trevik/TrevikA.h>
#include <trevik/TrevikVirtual.h>

#include <atomic>
#include <cstring>

#include <windows.h>

namespace
{

std::atomic<int> calls{0};
bool stuck = false;

void TREVIK_CALL Count(std::uint32_t)
{
    ++calls;
    if (stuck)
        Sleep(INFINITE);
}

template <class Function>
Function *Find(HMODULE library, const char *name, Function *)
{
    return reinterpret_cast<Function *>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
}

#define FIND(name) Find(library, #name, name)

// Axis 0 moves to and fro and interrupts at the end of every move, axis 1 follows a handwheel.
int Use(HMODULE library)
{
    const int before = calls;
    if (FIND(TrevikA_initial)() != TREVIK_OK || FIND(TrevikA_init_card)(0) != TREVIK_OK)
        return 2;
    if (FIND(TrevikA_pulser_map_set)(0, 1, 1, 0) != TREVIK_OK ||
        FIND(TrevikA_pulser_motion_enable)(0, 1, 1, 10) != TREVIK_OK)
        return 3;
    if (FIND(TrevikA_IRQ_source_set)(0, 0, 0, 1) != TREVIK_OK || FIND(TrevikA_IRQ_mask_set)(0, 0, 1) != TREVIK_OK ||
        FIND(TrevikA_IRQ_process_link)(0, Count) != TREVIK_OK || FIND(TrevikA_IRQ_enable)(0) != TREVIK_OK)
        return 4;
    auto *const turn_handwheel = FIND(TrevikVirtual_counter_set); // the real DLL does not have it
    const ULONGLONG start_ms = GetTickCount64();
    for (std::int32_t turn = 0; calls < before + 3; ++turn) {
        if (GetTickCount64() - start_ms > 5000)
            return 5;
        if (turn_handwheel != nullptr)
            turn_handwheel(0, 1, 4, turn);
        FIND(TrevikA_T_position_move)(0, 0, turn % 2 == 0 ? 50 : -50u, 0, 5000, 50000, 1, 1, 0);
        Sleep(1);
        if (stuck && calls > 0)
            break;
    }
    return 0;
}

int LoadUseFree(const char *name)
{
    HMODULE library = LoadLibraryA(name);
    if (library == nullptr)
        return 1;
    const int fault = Use(library);
    FreeLibrary(library);
    return fault != 0 ? fault : GetModuleHandleA(name) != nullptr ? 6 : 0;
}

} // namespace

int main(int count, char **arguments)
{
    const char *name = "TrevikA.dll";
    const char *how = count > 1 ? arguments[1] : "";
    if (std::strcmp(how, "exit") == 0)
        return Use(LoadLibraryA(name));
    stuck = std::strcmp(how, "stuck") == 0;
    for (int round = 0; round < (stuck ? 2 : 20); ++round) {
        calls = 0;
        const ULONGLONG start_ms = GetTickCount64();
        const int fault = LoadUseFree(name);
        if (GetTickCount64() - start_ms > 15000)
            return 7;
        if (fault != 0)
            return fault;
    }
    return 0;
}
