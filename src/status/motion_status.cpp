#include "status/motion_status.h"

namespace trevik
{

MainStatus ReadStatus(const Axis &axis)
{
    MainStatus status;
    axis.read(status);
    return status;
}

Result MotionStatusQuery(const Axis &axis, std::uint8_t kind, std::uint8_t *flag)
{
    if (flag == nullptr)
        return Result::Param;
    if (kind > 1)
        return Result::Ok;
    MainStatus status;
    const Result result = axis.read(status);
    *flag = kind == 0 ? status.idle() : status.preset_full();
    return result;
}

} // namespace trevik
