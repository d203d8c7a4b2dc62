// Card initialisation: everything a card is set to before a program configures it.
#pragma once

#include "driver/card.h"

namespace trevik
{

// Outputs off, configuration registers at their initial values, axes stopped, counters cleared, TTL mode 0, timer 0
// at 10000. Result: that of the TTL mode; refusals before it do not stop the sequence.
Result CardInit(const Card &card);

} // namespace trevik
