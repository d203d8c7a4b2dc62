// The two timers of a card, and the one entry for all of them. They need a card of model A or AC (else Model) but
// no open handle; what the driver refuses is not reported.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Timer 0 or 1; another one: Ok, nothing is sent. Read: 0 when the driver refuses, not written for another timer.
Result TimerSet(const Card &card, std::uint8_t timer, std::uint32_t value);
Result TimerRead(const Card &card, std::uint8_t timer, std::uint32_t *value);

Result TimerStart(const Card &card);
Result TimerStop(const Card &card);

// By item: 0 start (value 0) or stop (1); 1 and 2 timers 0 and 1; 3 the card-level interrupt mask. Param: a value
// above 1 for items 0 and 3. Other items: Ok, nothing is sent.
Result TCSet(const Card &card, std::uint8_t item, std::uint32_t value);

// Reads nothing and writes nothing.

} // namespace trevik
