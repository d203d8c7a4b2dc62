#include "motion/target.h"

#include "status/motion_status.h"

namespace trevik
{
namespace
{

// Without a position there is nothing to re-base on: a refused read leaves the bookkeeping as it is.
Result RebaseOnPosition(const Axis &axis)
{
    AxisShadow &shadow = axis.shadow();
    std::uint32_t position = shadow.LastTarget;
    const Result result = axis.read(Register::COUNTER1, position);
    if (result != Result::Ok)
        return result;
    shadow.ShortfallPending = std::uint8_t{1};
    shadow.ArcShortfall = shadow.LastTarget - position;
    shadow.LastTarget = position;
    return result;
}

} // namespace

Result SyncLastTarget(const Axis &axis)
{
    AxisShadow &shadow = axis.shadow();
    Result result = Result::Ok;
    if (shadow.MoveIssued == 1) {
        MainStatus status;
        result = axis.read(status);
        if (status.idle())
            result = RebaseOnPosition(axis);
    }
    shadow.MoveIssued = std::uint8_t{1};
    return result;
}

Result SyncLastTarget(const CheckedAxes &axes)
{
    Result result = Result::Ok;
    for (const Axis &axis : axes)
        if (const Result one = SyncLastTarget(axis); one != Result::Ok)
            result = one;
    return result;
}

std::uint32_t DistanceFromTarget(AxisShadow &shadow, std::uint32_t coordinate, bool absolute)
{
    if (absolute) {
        shadow.ShortfallPending = std::uint8_t{0};
        const std::uint32_t distance = coordinate - shadow.LastTarget;
        shadow.LastTarget = coordinate;
        return distance;
    }
    std::uint32_t distance = coordinate;
    if (shadow.ShortfallPending == 1 && shadow.LastMoveWasArc == 1) {
        distance += shadow.ArcShortfall;
        shadow.ShortfallPending = std::uint8_t{0};
        shadow.LastMoveWasArc = std::uint8_t{0};
    }
    shadow.LastTarget = shadow.LastTarget + distance;
    return distance;
}

} // namespace trevik
