#include "ac/encoder.h"

#include "ac/index.h"

namespace trevik
{
namespace
{

Result ReadIndexWord(const Card &card, std::uint8_t axis, Index index, std::uint16_t *value)
{
    return value == nullptr ? Result::Param : ReadIndex(card, axis, index, *value);
}

} // namespace

Result EncoderModeSet(const Card &card, std::uint8_t axis, std::uint16_t s1, std::uint16_t s2, std::uint16_t s3)
{
    if (s1 > 2 || s2 > 4 || s3 > 2)
        return Result::Param;
    WriteIndex(card, axis, Index::EncoderSetting1, s1);
    WriteIndex(card, axis, Index::EncoderSetting2, s2);
    return WriteIndex(card, axis, Index::EncoderSetting3, s3);
}

Result EncoderModeRead(const Card &card, std::uint8_t axis, std::uint16_t *s1, std::uint16_t *s2, std::uint16_t *s3)
{
    if (AnyNull(s1, s2, s3))
        return Result::Param;
    ReadIndex(card, axis, Index::EncoderSetting1, *s1);
    ReadIndex(card, axis, Index::EncoderSetting2, *s2);
    return ReadIndex(card, axis, Index::EncoderSetting3, *s3);
}

Result EncoderPolaritySet(const Card &card, std::uint8_t axis, std::uint16_t bits)
{
    constexpr std::uint16_t all_switches = 63;
    return bits > all_switches ? Result::Param : WriteIndex(card, axis, Index::EncoderPolarity, bits);
}

Result EncoderPolarityRead(const Card &card, std::uint8_t axis, std::uint16_t *bits)
{
    return ReadIndexWord(card, axis, Index::EncoderPolarity, bits);
}

Result EncoderStatusRead(const Card &card, std::uint8_t axis, std::uint16_t *status)
{
    return ReadIndexWord(card, axis, Index::EncoderStatus, status);
}

// Zero goes out with the negative sign.
Result AnalogOutputSet(const Card &card, std::uint8_t axis, std::int32_t value)
{
    constexpr std::int32_t highest = 65535;
    if (value < -highest || value > highest)
        return Result::Param;
    const bool positive = value >= 1;
    WriteIndex(card, axis, Index::OutputMagnitude, static_cast<std::uint16_t>(positive ? value : -value));
    return WriteIndex(card, axis, Index::OutputSign, positive ? 0 : 1);
}

Result AnalogOutputRead(const Card &card, std::uint8_t axis, std::int32_t *value)
{
    if (value == nullptr)
        return Result::Param;
    std::uint16_t magnitude = 0;
    std::uint16_t sign = 0;
    ReadIndex(card, axis, Index::OutputMagnitude, magnitude);
    const Result result = ReadIndex(card, axis, Index::OutputSign, sign);
    *value = sign != 0 ? -std::int32_t{magnitude} : std::int32_t{magnitude};
    return result;
}

Result PulseSwapSet(const Card &card, std::uint8_t axis, std::uint8_t swap)
{
    return swap > 1 ? Result::Param : WriteIndex(card, axis, Index::PulseSwap, swap);
}

Result PulseSwapRead(const Card &card, std::uint8_t axis, std::uint8_t *swap)
{
    return ReadIndexByte(card, axis, Index::PulseSwap, swap);
}

Result SimultaneousCounterRead(const Card &card, std::uint32_t *axis0, std::uint32_t *axis1, std::uint32_t *axis2,
                               std::uint32_t *axis3)
{
    if (AnyNull(axis0, axis1, axis2, axis3))
        return Result::Param;
    card.command(all_axes, Command::CMD_LATCH_COUNTERS);
    card.axis(0).read(StatusRegister::LATCH_DATA, *axis0);
    card.axis(1).read(StatusRegister::LATCH_DATA, *axis1);
    card.axis(2).read(StatusRegister::LATCH_DATA, *axis2);
    return card.axis(3).read(StatusRegister::LATCH_DATA, *axis3);
}

} // namespace trevik
