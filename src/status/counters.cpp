#include "status/counters.h"

namespace trevik
{

Result FBCounterRead(const Axis &axis, std::uint32_t *count)
{
    return count == nullptr ? Result::Param : axis.read(Register::COUNTER2, *count);
}

Result FBCounterSet(const Axis &axis, std::uint32_t count)
{
    return axis.write(Register::COUNTER2, count);
}

Result FBCounterLatchValueRead(const Axis &axis, std::uint32_t *count)
{
    return count == nullptr ? Result::Param : axis.read(StatusRegister::LATCH_DATA, *count);
}

Result CSTATrigger(const Card &card)
{
    return card.command(all_axes, Command::CMD_CSTA_PULSE);
}

Result CSTPTrigger(const Card &card)
{
    return card.command(all_axes, Command::CMD_CSTP_PULSE);
}

} // namespace trevik
