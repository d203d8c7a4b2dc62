#include "config/compensation.h"

#include "ac/index.h"

namespace trevik
{

Result BacklashCompSet(const Axis &axis, std::uint16_t amount, std::uint8_t mode, std::uint32_t speed_pps)
{
    constexpr std::uint16_t highest_amount = 4095;
    if (amount > highest_amount)
        return Result::Param;
    Modify(axis, motion_config::backlash_amount.to(amount), motion_config::backlash_mode.to(mode != 0));
    const Result result = Modify(axis, home_config::cleared_by_backlash.to(0));
    axis.shadow().BacklashEnabled = mode;
    axis.shadow().CorrectionSpeed = speed_pps;
    return result;
}

Result BacklashCompRead(const Axis &axis, std::uint16_t *amount, std::uint8_t *mode, std::uint32_t *speed_pps)
{
    if (AnyNull(amount, mode, speed_pps))
        return Result::Param;
    *mode = axis.shadow().BacklashEnabled;
    *speed_pps = axis.shadow().CorrectionSpeed;
    return Fetch(axis, motion_config::backlash_amount.into(amount));
}

Result SuppressVibrationSet(const Axis &axis, std::uint16_t first, std::uint16_t second)
{
    return axis.write(Register::VIBRATION_CONFIG,
                      vibration_config::second.put(vibration_config::first.put(0, first), second));
}

Result SuppressVibrationRead(const Axis &axis, std::uint16_t *first, std::uint16_t *second)
{
    if (AnyNull(first, second))
        return Result::Param;
    return Fetch(axis, vibration_config::first.into(first), vibration_config::second.into(second));
}

Result DebounceSet(const Card &card, std::uint8_t axis, std::uint8_t value)
{
    return value > 3 ? Result::Param : WriteIndex(card, axis, Index::Debounce, value);
}

Result DebounceRead(const Card &card, std::uint8_t axis, std::uint8_t *value)
{
    return ReadIndexByte(card, axis, Index::Debounce, value);
}

} // namespace trevik
