// The virtual cards of the DLL that was found for this program, if that has any.
#include <optional>

#include <windows.h>

#include "trevik-run/virtual_clock.h"

namespace trevik_run
{
namespace
{

template <class Function>
bool Find(HMODULE library, const char *name, Function *&function)
{
    function = reinterpret_cast<Function *>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
    return function != nullptr;
}

std::optional<VirtualClock> FindClock()
{
    HMODULE library = GetModuleHandleA("TrevikA.dll");
    VirtualClock clock{};
    const bool found = Find(library, "TrevikVirtual_next_event_read", clock.next_event_read) &&
                       Find(library, "TrevikHost_clock_manual", clock.manual) &&
                       Find(library, "TrevikHost_advance", clock.advance);
    return found ? std::optional(clock) : std::nullopt;
}

} // namespace

const VirtualClock *TheVirtualClock()
{
    static const std::optional<VirtualClock> clock = FindClock();
    return clock ? &*clock : nullptr;
}

} // namespace trevik_run
