// The timers' side of the clock, and the alarm.
#pragma once

#include "platform/host/clock.h"

#include <cstdint>

namespace trevik::host
{

// Moves the manual clock to `target_ns`, running what is due on the way at its due time.
void RunTimersUntil(std::int64_t target_ns);

// The clock was switched between manual and real.
void ClockSwitched();

// True on the thread that is running a timer callback.
bool InsideTimerCallback();

// The alarm: one function of the host layer's own, called like a timer callback at the time that was asked for,
// before the callbacks of the same time. It is there while it has users.
using Alarm = void (*)();
void UseAlarm(Alarm alarm);
void LeaveAlarm();

// Has the alarm called at `due_ns` or before, once. Nothing happens when it has no users.
void SetAlarm(std::int64_t due_ns);

// False when SetAlarm is needed to be called by then.
inline bool AlarmIsSetBy(std::int64_t due_ns)
{
    return clock_state.alarm_due_ns.load(std::memory_order_relaxed) <= due_ns;
}

} // namespace trevik::host
