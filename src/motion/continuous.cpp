#include "motion/continuous.h"

#include "status/motion_status.h"

namespace trevik
{

Result ContinuousFlagSet(const Axis &axis, std::uint8_t flag)
{
    axis.shadow().ContinuousFlag = flag;
    return Result::Ok;
}

Result ContinuousBufferRead(const Axis &axis, std::uint8_t *full)
{
    return MotionStatusQuery(axis, 1, full);
}

Result ContinuousBufferCountRead(const Axis &axis, std::uint8_t *count)
{
    return count == nullptr ? Result::Param : Fetch(axis, ext_status::buffer_count.into(count));
}

} // namespace trevik
