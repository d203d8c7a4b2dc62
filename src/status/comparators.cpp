#include "status/comparators.h"

namespace trevik
{
namespace
{

constexpr std::uint8_t highest_counter = 3;
constexpr std::uint8_t highest_condition = 5;

Axis CompareStartAxisOf(const Card &card)
{
    return card.axis(card.state().CompareStartAxis);
}

} // namespace

Result CMPOutSet(const Axis &axis, std::uint8_t counter, std::uint8_t condition, std::uint8_t action)
{
    if (counter > highest_counter || condition > highest_condition || action > 2)
        return Result::Param;
    return Modify(axis, start_trigger_env::counter5.to(counter), start_trigger_env::condition5.to(condition),
                  start_trigger_env::action5.to(action));
}

Result CMPOutRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *condition, std::uint8_t *action)
{
    if (AnyNull(counter, condition, action))
        return Result::Param;
    return Fetch(axis, start_trigger_env::counter5.into(counter), start_trigger_env::condition5.into(condition),
                 start_trigger_env::action5.into(action));
}

Result CMPDataSet(const Axis &axis, std::uint32_t value)
{
    return axis.write(Register::COMPARATOR_DATA, value);
}

Result CMPDataRead(const Axis &axis, std::uint32_t *value)
{
    return value == nullptr ? Result::Param : axis.read(Register::COMPARATOR_DATA, *value);
}

Result CMPFlagRead(const Axis &axis, std::uint8_t *flag)
{
    return flag == nullptr ? Result::Param : Fetch(axis, main_status::cmp.into(flag));
}

// All axes of the card learn whose comparator starts them.
Result CompareStartSet(const Axis &axis, std::uint8_t counter, std::uint8_t condition)
{
    constexpr std::uint32_t compare_start_on = 3;
    if (counter > highest_counter || condition > highest_condition)
        return Result::Param;
    Modify(axis, limit_config::counter3.to(counter), limit_config::condition3.to(condition),
           limit_config::action3.to(0));
    const Card card = axis.card();
    card.state().CompareStartAxis = axis.number();
    Modify(axis, start_trigger_env::compare_start.to(compare_start_on));
    Result result = Result::Ok;
    for (std::uint8_t n = 0; n < axis_count; ++n)
        result = Modify(card.axis(n), start_trigger_env::compare_start_axis.to(axis.number()));
    return result;
}

Result CompareStartRead(const Axis &axis, std::uint8_t *counter, std::uint8_t *condition)
{
    if (AnyNull(counter, condition))
        return Result::Param;
    return Fetch(axis, limit_config::counter3.into(counter), limit_config::condition3.into(condition));
}

Result CompareStartDataSet(const Card &card, std::uint32_t value)
{
    return CompareStartAxisOf(card).write(Register::COMPARE_START_DATA, value);
}

Result CompareStartDataRead(const Card &card, std::uint32_t *value)
{
    return value == nullptr ? Result::Param : CompareStartAxisOf(card).read(Register::COMPARE_START_DATA, *value);
}

} // namespace trevik
