#include "ac/pid.h"

#include "ac/index.h"

namespace trevik
{
namespace
{

// The card's loop constant K is this over the time constant.
constexpr std::uint32_t loop_constant_of_1 = 4194304;

constexpr std::uint16_t High(std::uint32_t value)
{
    return static_cast<std::uint16_t>(value >> 16);
}

constexpr std::uint16_t Low(std::uint32_t value)
{
    return static_cast<std::uint16_t>(value);
}

constexpr std::uint32_t Join(std::uint16_t high, std::uint16_t low)
{
    return std::uint32_t{high} << 16 | low;
}

constexpr bool InRange(std::uint16_t value)
{
    return value >= 1 && value <= 4095;
}

} // namespace

Result PIDControlModeSet(const Card &card, std::uint8_t mode)
{
    return mode > 4 ? Result::Param : WriteIndex(card, 0, Index::ControlMode, mode);
}

Result PIDControlModeRead(const Card &card, std::uint8_t *mode)
{
    return ReadIndexByte(card, 0, Index::ControlMode, mode);
}

Result PIDSet(const Card &card, std::uint8_t axis, std::uint16_t gain, std::uint16_t time)
{
    if (!InRange(gain) || !InRange(time))
        return Result::Param;
    const std::uint32_t k = loop_constant_of_1 / time;
    WriteIndex(card, axis, Index::Gain, gain);
    WriteIndex(card, axis, Index::LoopConstantHigh, High(k));
    return WriteIndex(card, axis, Index::LoopConstantLow, Low(k));
}

Result PIDRead(const Card &card, std::uint8_t axis, std::uint16_t *gain, std::uint16_t *time)
{
    if (AnyNull(gain, time))
        return Result::Param;
    std::uint16_t high = 0;
    std::uint16_t low = 0;
    ReadIndex(card, axis, Index::Gain, *gain);
    ReadIndex(card, axis, Index::LoopConstantHigh, high);
    const Result result = ReadIndex(card, axis, Index::LoopConstantLow, low);
    const std::uint32_t k = Join(high, low);
    *time = k != 0 ? static_cast<std::uint16_t>(loop_constant_of_1 / k) : std::uint16_t{0};
    return result;
}

Result PIDStart(const Card &card, std::uint8_t axis)
{
    return WriteIndex(card, axis, Index::LoopRun, 1);
}

Result PIDStop(const Card &card, std::uint8_t axis)
{
    return WriteIndex(card, axis, Index::LoopRun, 0);
}

Result PIDErrorCounterRead(const Card &card, std::uint8_t axis, std::uint32_t *error)
{
    if (error == nullptr)
        return Result::Param;
    std::uint16_t low = 0;
    std::uint16_t high = 0;
    ReadIndex(card, axis, Index::ErrorCounterLow, low);
    const Result result = ReadIndex(card, axis, Index::ErrorCounterHigh, high);
    *error = Join(high, low);
    return result;
}

Result PIDErrorDetectorSet(const Card &card, std::uint8_t axis, std::uint8_t enable)
{
    return enable > 1 ? Result::Param : WriteIndex(card, axis, Index::DetectorEnable, enable);
}

Result PIDErrorDetectorRead(const Card &card, std::uint8_t axis, std::uint8_t *status, std::uint8_t *enable)
{
    if (AnyNull(status, enable))
        return Result::Param;
    ReadIndexByte(card, axis, Index::DetectorEnable, enable);
    return ReadIndexByte(card, axis, Index::DetectorStatus, status);
}

Result PIDErrorDetectorClear(const Card &card, std::uint8_t axis)
{
    return WriteIndex(card, axis, Index::DetectorStatus, 0);
}

} // namespace trevik
