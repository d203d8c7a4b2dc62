#include "status/position.h"

#include "status/motion_status.h"

namespace trevik
{

Result CurrentPositionRead(const Axis &axis, std::uint32_t *position)
{
    return position == nullptr ? Result::Param : axis.read(Register::COUNTER1, *position);
}

Result CurrentPositionSet(const Axis &axis, std::uint32_t position)
{
    if (!Idle(axis))
        return Result::Busy;
    const Result result = axis.write(Register::COUNTER1, position);
    axis.shadow().LastTarget = position;
    return result;
}

} // namespace trevik
