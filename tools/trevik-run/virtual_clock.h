// The clock of virtual cards, which a program may move by hand.
#pragma once

#include <cstdint>

namespace trevik_run
{

struct VirtualClock {
    std::uint32_t (*next_event_read)(std::uint8_t card, double *seconds);
    void (*manual)(int on);
    void (*advance)(double seconds);
};

// Null: the library has no virtual cards.
const VirtualClock *TheVirtualClock();

} // namespace trevik_run
