// The virtual cards of the library that this program is linked to.
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include "trevik-run/virtual_clock.h"

namespace trevik_run
{

const VirtualClock *TheVirtualClock()
{
    static constexpr VirtualClock clock = {TrevikVirtual_next_event_read, TrevikHost_clock_manual,
                                           TrevikHost_advance};
    return &clock;
}

} // namespace trevik_run
