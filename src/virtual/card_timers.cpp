#include "virtual/card_timers.h"

namespace trevik::virtual_card
{

void CardTimers::write(std::uint32_t offset, std::uint16_t value, std::int64_t now_ns)
{
    ports_[IndexOf(offset)] = value;
    switch (static_cast<Port>(offset)) {
    case Port::TimerControl:
        restart(0, now_ns);
        restart(1, now_ns);
        break;
    case Port::Timer0Low:
        values_us_[0] = std::uint32_t{ports_[IndexOf(static_cast<std::uint32_t>(Port::Timer0High))]} << 16 | value;
        restart(0, now_ns);
        break;
    case Port::Timer1Low:
        values_us_[1] = std::uint32_t{ports_[IndexOf(static_cast<std::uint32_t>(Port::Timer1High))]} << 16 | value;
        restart(1, now_ns);
        break;
    default:
        break;
    }
}

void CardTimers::restart(unsigned timer, std::int64_t now_ns)
{
    constexpr std::int64_t ns_per_us = 1000;
    timers_[timer] = {running() ? values_us_[timer] * ns_per_us : 0, now_ns, 0};
}

unsigned CardTimers::take_expired(std::int64_t now_ns)
{
    unsigned expired = 0;
    for (unsigned i = 0; i < timers_.size(); ++i) {
        Timer &timer = timers_[i];
        if (timer.period_ns == 0)
            continue;
        const std::int64_t expiries = timer.expiries(now_ns);
        expired |= expiries > timer.taken ? 1u << i : 0u;
        timer.taken = expiries;
    }
    return expired;
}

std::int64_t CardTimers::next(std::int64_t now_ns) const
{
    std::int64_t next_ns = never_ns;
    for (const Timer &timer : timers_) {
        if (timer.period_ns == 0)
            continue;
        const std::int64_t due_ns = timer.begin_ns + (timer.expiries(now_ns) + 1) * timer.period_ns;
        next_ns = due_ns < next_ns ? due_ns : next_ns;
    }
    return next_ns;
}

} // namespace trevik::virtual_card
