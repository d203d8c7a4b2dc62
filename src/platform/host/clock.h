// The clock of timers, timeouts and chips: nanoseconds since the library was first used, of the system's monotonic
// clock or moved by hand. Switching keeps the time that it has.
#pragma once

#include <atomic>
#include <cstdint>
#include <limits>

namespace trevik::host
{

struct ClockState {
    std::atomic<std::int64_t> manual_ns{-1}; // the manual clock; negative: the clock is not manual
    std::atomic<std::int64_t> shift_ns{0};   // added to the system's clock while the clock is not manual
    // Kept by the timers, so that a move of the manual clock that meets none of them needs no lock.
    std::atomic<std::int64_t> next_due_ns{std::numeric_limits<std::int64_t>::max()};
    std::atomic<std::int64_t> alarm_due_ns{std::numeric_limits<std::int64_t>::max()};
    std::atomic<bool> callback_running{false};
};

extern constinit ClockState clock_state;

// The clock stops here, half the range of its type, so that a due time can always be added.
inline constexpr std::int64_t last_ns = std::numeric_limits<std::int64_t>::max() / 2;

std::int64_t SystemNanoseconds();

inline std::int64_t NowNanoseconds()
{
    const std::int64_t manual_ns = clock_state.manual_ns.load(std::memory_order_acquire);
    return manual_ns >= 0 ? manual_ns : SystemNanoseconds() + clock_state.shift_ns.load(std::memory_order_relaxed);
}

inline bool ClockIsManual()
{
    return clock_state.manual_ns.load(std::memory_order_acquire) >= 0;
}

inline void MoveManualClock(std::int64_t to_ns)
{
    clock_state.manual_ns.store(to_ns, std::memory_order_release);
}

} // namespace trevik::host
