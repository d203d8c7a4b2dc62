#include "motion/continuous.h"

#include "driver/mode_word.h"
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
    constexpr BitField buffer_count{20, 2};
    if (count == nullptr)
        return Result::Param;
    std::uint32_t status = 0;
    const Result result = axis.read(StatusRegister::EXT_STATUS, status);
    *count = static_cast<std::uint8_t>(buffer_count.get(status));
    return result;
}

} // namespace trevik
