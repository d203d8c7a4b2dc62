// A comparator: a condition on one of the four counters of its axis. Counters are signed numbers that wrap.
#pragma once

#include <cstdint>
#include <limits>

namespace trevik::virtual_card
{

enum class Condition : std::uint8_t {
    Off = 0,
    Equal = 1,
    EqualCountingUp = 2,
    EqualCountingDown = 3,
    Below = 4, // the counter is below the data
    Above = 5,
};

// The comparators of an axis, in the order of their bits.
enum class Compared : std::uint8_t { Limit1, Limit2, Start, Output };

inline constexpr unsigned comparator_count = 4;
inline constexpr Compared every_comparator[comparator_count] = {Compared::Limit1, Compared::Limit2, Compared::Start,
                                                                Compared::Output};

constexpr unsigned Bit(Compared compared)
{
    return 1u << static_cast<unsigned>(compared);
}

inline constexpr unsigned soft_limits = Bit(Compared::Limit1) | Bit(Compared::Limit2);

// What a comparator that is met does to the operation of its axis.
enum class StopAction : std::uint8_t { None = 0, AtOnce = 1, Slowly = 2 };

struct Comparator {
    unsigned counter = 1; // 1 to 4
    Condition condition = Condition::Off;
    std::int32_t data = 0;

    bool directed() const
    {
        return condition == Condition::EqualCountingUp || condition == Condition::EqualCountingDown;
    }

    // The condition, but for the way of counting.
    bool holds(std::uint32_t count) const
    {
        const auto value = static_cast<std::int32_t>(count);
        switch (condition) {
        case Condition::Off:
            return false;
        case Condition::Below:
            return value < data;
        case Condition::Above:
            return value > data;
        default:
            return value == data;
        }
    }

    // True when a step from one count to another brings the counter to the data, or past it, in a way that counts.
    bool passed(std::uint32_t from, std::uint32_t to) const
    {
        const auto wanted = static_cast<std::uint32_t>(data);
        const bool up = static_cast<std::int32_t>(to - from) > 0;
        const bool equal = condition == Condition::Equal ||
                           condition == (up ? Condition::EqualCountingUp : Condition::EqualCountingDown);
        return equal && (up ? wanted - from - 1 < to - from : from - wanted - 1 < from - to);
    }

    // Counts, 1 or more, after which the condition may hold or not hold any more, of a counter that goes one way.
    std::int64_t counts_to_change(std::uint32_t from, bool up) const
    {
        constexpr auto lowest = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::min());
        const auto wanted = static_cast<std::uint32_t>(data);
        // The lowest count that meets the condition, and the one above the highest.
        const std::uint32_t first = condition == Condition::Below   ? lowest
                                    : condition == Condition::Above ? wanted + 1
                                                                    : wanted;
        const std::uint32_t end = condition == Condition::Below   ? wanted
                                  : condition == Condition::Above ? lowest
                                                                  : wanted + 1;
        const std::int64_t one = up ? Round(first - from) : Round(from - first + 1);
        const std::int64_t other = up ? Round(end - from) : Round(from - end + 1);
        return one < other ? one : other;
    }

  private:
    // Counts on the ring: none is all the way round.
    static std::int64_t Round(std::uint32_t counts)
    {
        return counts == 0 ? std::int64_t{1} << 32 : std::int64_t{counts};
    }
};

} // namespace trevik::virtual_card
