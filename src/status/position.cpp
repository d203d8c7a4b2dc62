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

Result CorrectCurrentPosition(const Axis &axis)
{
    if (!Idle(axis))
        return Result::Ok;
    std::uint32_t position = axis.shadow().LastTarget;
    const Result result = axis.read(Register::COUNTER1, position);
    axis.shadow().LastTarget = position;
    return result;
}

} // namespace trevik
