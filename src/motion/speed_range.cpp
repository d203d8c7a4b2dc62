#include "motion/speed_range.h"

#include "motion/profile.h"

namespace trevik
{

Result VelocityRangeFix(const Axis &axis, std::uint32_t speed)
{
    if (SpeedTooHigh(speed))
        return Result::Param;
    axis.shadow().FixedMultiplier = SelectMultiplier(speed);
    axis.shadow().RangeFixed = 1;
    return Result::Ok;
}

Result VelocityRangeUnfix(const Axis &axis)
{
    axis.shadow().RangeFixed = 0;
    return Result::Ok;
}

} // namespace trevik
