// The timers' side of the clock.
#pragma once

#include <cstdint>

namespace trevik::host
{

// Moves the manual clock to `target_ns`, running what is due on the way at its due time.
void RunTimersUntil(std::int64_t target_ns);

// The clock was switched between manual and real.
void ClockSwitched();

// True on the thread that is running a timer callback.
bool InsideTimerCallback();

} // namespace trevik::host
