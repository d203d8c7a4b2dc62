// Interrupt delivery: the application's callback runs on a thread of the library whenever the card's driver signals.
#pragma once

#include "driver/card.h"

#include <cstdint>

namespace trevik
{

// Opens or creates the card's named event, which is never closed, and asks the driver to deliver. The second form
// hands the event out.
Result IRQEnable(const Card &card);
Result IRQEnableEvent(const Card &card, std::uint32_t *event);

// The callback threads end at the next signal, without a callback.
Result IRQDisable(const Card &card);

// Registers a fresh event with the driver and starts a thread that calls back at each signal of it. A second link of
// a card adds a thread; both serve the newer link. Param: no callback. NoResources: too many links that are not
// disabled.
Result IRQProcessLink(const Card &card, UserCallback callback);

// At the end of a card or of the library: disables, and lets the threads end now. The second one waits until they
// have; a callback that does not return delays it by a second at most.
void EndCallbacks(const Card &card);
void JoinCallbacks(const Card &card);

} // namespace trevik
