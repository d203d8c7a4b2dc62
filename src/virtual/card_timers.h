// The two timers of a card, as its ports show them. How often a timer has expired is computed, never counted out.
#pragma once

#include "driver/registers.h"
#include "virtual/moment.h"

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

class CardTimers
{
  public:
    // The timer ports. The high half of a value counts when its low half is written, and starts the period anew.
    static constexpr bool owns(std::uint32_t offset)
    {
        return offset >= static_cast<std::uint32_t>(Port::TimerControl) &&
               offset <= static_cast<std::uint32_t>(Port::Timer1High) && offset % 2 == 0;
    }
    std::uint16_t read(std::uint32_t offset) const { return ports_[IndexOf(offset)]; }
    void write(std::uint32_t offset, std::uint16_t value, std::int64_t now_ns);

    // Bit n: timer n has expired since this was last asked.
    unsigned take_expired(std::int64_t now_ns);

    // When the next one expires, after `now_ns`.
    std::int64_t next(std::int64_t now_ns) const;

  private:
    struct Timer {
        std::int64_t period_ns = 0; // 0: stands
        std::int64_t begin_ns = 0;
        std::int64_t taken = 0; // expiries

        std::int64_t expiries(std::int64_t now_ns) const { return (now_ns - begin_ns) / period_ns; }
    };

    static constexpr unsigned IndexOf(std::uint32_t offset)
    {
        return (offset - static_cast<std::uint32_t>(Port::TimerControl)) / 2;
    }
    bool running() const { return (ports_[0] & 1) != 0; }
    void restart(unsigned timer, std::int64_t now_ns);

    std::array<Timer, 2> timers_;
    std::array<std::uint32_t, 2> values_us_{};
    std::array<std::uint16_t, 5> ports_{}; // as written
};

} // namespace trevik::virtual_card
