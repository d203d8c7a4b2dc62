// The comparator start trigger: an operation waits until a counter of an axis of the card meets a condition.
#include "virtual/chip.h"

namespace trevik::virtual_card
{
namespace
{

// Fields of LIMIT_CONFIG and START_TRIGGER_ENV.
constexpr BitField compared_counter{16, 2};
constexpr BitField compare_condition{18, 3};
constexpr BitField trigger_axis{20, 2};

enum class Condition : std::uint32_t {
    Off = 0,
    Equal = 1,
    EqualCountingUp = 2,
    EqualCountingDown = 3,
    Below = 4, // the counter is below the data
    Above = 5,
};

// The counter value at which a condition becomes true, for a counter that moves one step at a time.
std::uint32_t FirstCount(Condition condition, std::uint32_t data)
{
    if (condition == Condition::Below)
        return data - 1;
    return condition == Condition::Above ? data + 1 : data;
}

bool TrueNow(Condition condition, std::uint32_t counter, std::uint32_t data)
{
    const auto ahead = static_cast<std::int32_t>(counter - data);
    return (condition == Condition::Equal && ahead == 0) || (condition == Condition::Below && ahead < 0) ||
           (condition == Condition::Above && ahead > 0);
}

// A condition that looks at the direction of counting is not met the other way.
bool RightWay(Condition condition, bool up)
{
    return condition != (up ? Condition::EqualCountingDown : Condition::EqualCountingUp);
}

} // namespace

// Time at which the running operation of `source` brings its command counter to `count`, counting the way that the
// condition asks for; never if it does not.
Moment Chip::time_of_count(const Section &source, std::uint32_t count, std::uint32_t condition, std::int64_t now_ns)
{
    Section &leader = leader_of(source);
    if (source.state != State::Running || leader.longest == 0)
        return {};
    const auto target = static_cast<std::int64_t>(
        static_cast<std::int32_t>(count - source.put_out - source.reg(Register::COUNTER1)));
    std::int64_t pulses = leader_pulses(leader, now_ns);
    while (pulses < leader.longest) {
        const bool arc = IsArc(source.kind);
        const std::int64_t turn = arc ? pulses_at_turn(source, pulses) : leader.longest;
        const std::int64_t done = share(source, pulses);
        const std::int64_t end = arc ? share(source, turn) : source.distance;
        const bool between = done < end ? target > done && target <= end : target < done && target >= end;
        if (between && RightWay(static_cast<Condition>(condition), end > done)) {
            const std::int64_t reached =
                arc ? FirstTrue(
                          pulses, turn,
                          [&](std::int64_t p) { return Size(share(source, p) - done) >= Size(target - done); })
                    : pulses_at_step(source, Size(target));
            const Moment when = leader.start_time.later(leader.profile.time_at(static_cast<double>(reached)));
            return when.ns < now_ns ? Moment{now_ns, 0} : when;
        }
        pulses = turn;
    }
    return {};
}

Moment Chip::comparator_time(const Section &waiting, std::int64_t now_ns)
{
    const std::uint32_t mode = waiting.reg(Register::MODE);
    if (mode_field::start_trigger.get(mode) != static_cast<std::uint32_t>(StartTrigger::Comparator))
        return {};
    const Section &source = sections_[trigger_axis.get(waiting.reg(Register::START_TRIGGER_ENV))];
    const std::uint32_t config = source.reg(Register::LIMIT_CONFIG);
    const auto condition = static_cast<Condition>(compare_condition.get(config));
    const std::uint32_t select = compared_counter.get(config);
    const std::uint32_t data = source.reg(Register::COMPARE_START_DATA);
    const std::uint32_t count = counter(source, select + 1, now_ns);
    if (TrueNow(condition, count, data))
        return {now_ns, 0};
    if (condition == Condition::Off || select != 0)
        return {};
    return time_of_count(source, FirstCount(condition, data), static_cast<std::uint32_t>(condition), now_ns);
}

} // namespace trevik::virtual_card
