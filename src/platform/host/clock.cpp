#include "platform/host/clock.h"

#include "platform/host/immortal.h"
#include "platform/host/timers.h"

#include <trevik/TrevikHost.h>

#include <algorithm>
#include <chrono>
#include <mutex>

namespace trevik::host
{

constinit ClockState clock_state;

namespace
{

// What earlier moves left over below a nanosecond, -0.5 to 0.5. Belongs to the thread that moves the clock.
std::atomic<double> remainder_ns{0.0};

// The whole nanoseconds of a move. To the nearest, not cut: 0.0003 s is 299999.99999999994 ns as a double product,
// and a timer due after 300000 ns must run.
std::int64_t WholeNanoseconds(double seconds)
{
    const double exact_ns =
        std::min(seconds * 1e9, static_cast<double>(last_ns)) + remainder_ns.load(std::memory_order_relaxed);
    const double half_up_ns = exact_ns + 0.5; // never negative
    const auto whole_ns = static_cast<std::int64_t>(half_up_ns);
    remainder_ns.store(exact_ns - static_cast<double>(whole_ns), std::memory_order_relaxed);
    return whole_ns;
}

void MakeManual()
{
    remainder_ns = 0.0;
    MoveManualClock(NowNanoseconds());
}

void MakeReal()
{
    clock_state.shift_ns = NowNanoseconds() - SystemNanoseconds();
    MoveManualClock(-1);
}

} // namespace

std::int64_t SystemNanoseconds()
{
    using Clock = std::chrono::steady_clock;
    static const Clock::time_point start = Clock::now();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - start).count();
}

} // namespace trevik::host

void TrevikHost_clock_manual(int on)
{
    using namespace trevik::host;
    static Immortal<std::mutex> switching;
    const std::lock_guard lock(switching.get());
    if ((on != 0) == ClockIsManual())
        return;
    on != 0 ? MakeManual() : MakeReal();
    ClockSwitched();
}

void TrevikHost_advance(double seconds)
{
    using namespace trevik::host;
    const std::int64_t now_ns = clock_state.manual_ns.load(std::memory_order_relaxed);
    if (now_ns < 0 || !(seconds >= 0.0) || InsideTimerCallback())
        return;
    const std::int64_t target_ns = now_ns + std::min(WholeNanoseconds(seconds), last_ns - now_ns);
    if (target_ns < clock_state.next_due_ns.load(std::memory_order_relaxed)) {
        MoveManualClock(target_ns);
    } else {
        RunTimersUntil(target_ns);
    }
}
