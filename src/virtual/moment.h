// Time as the chip knows it: whole nanoseconds from outside, and moments between them, so that an operation that
// follows another starts exactly where that one ended, however long the machine has been running.
#pragma once

#include "virtual/arithmetic.h"

#include <cstdint>
#include <limits>

namespace trevik::virtual_card
{

inline constexpr std::int64_t never_ns = std::numeric_limits<std::int64_t>::max();

struct Moment {
    std::int64_t ns = never_ns;
    double beyond_s = 0; // 0 or more, below a nanosecond

    bool before(const Moment &other) const
    {
        return ns < other.ns || (ns == other.ns && beyond_s < other.beyond_s);
    }
    // The first whole nanosecond at which the moment has come.
    std::int64_t reached_ns() const { return beyond_s > 0 ? ns + 1 : ns; }

    double seconds_until(std::int64_t later_ns) const
    {
        return static_cast<double>(later_ns - ns) * 1e-9 - beyond_s;
    }
    double seconds_until(const Moment &later) const { return seconds_until(later.ns) + later.beyond_s; }

    // The moment `seconds` later; never, where that is out of reach.
    Moment later(double seconds) const
    {
        const double span_ns = (beyond_s + seconds) * 1e9;
        if (!(span_ns < static_cast<double>(never_ns - ns)))
            return {};
        const auto whole = static_cast<std::int64_t>(span_ns);
        return {ns + whole, (span_ns - static_cast<double>(whole)) * 1e-9};
    }
};

} // namespace trevik::virtual_card
