#include "virtual/ac_model.h"

namespace trevik::virtual_card
{
namespace
{

constexpr std::int32_t highest_output = 65535;
constexpr std::int32_t detector_limit_pulses = 32767;

constexpr double loop_constant = 4194304; // the library writes this by T

std::int32_t Clamped(double value, std::int32_t most)
{
    const double size = Smaller(Absolute(value), most);
    const auto rounded = static_cast<std::int32_t>(Nearest(size));
    return value < 0 ? -rounded : rounded;
}

} // namespace

// Seconds by which the feedback trails the command; 0: no loop runs.
double AcModel::time_constant_s(unsigned axis) const
{
    const std::uint32_t k =
        std::uint32_t{reg(axis, Index::LoopConstantHigh)} << 16 | reg(axis, Index::LoopConstantLow);
    const std::uint32_t gain = reg(axis, Index::Gain);
    if (reg(axis, Index::LoopRun) == 0 || k == 0 || gain == 0)
        return 0;
    constexpr double s_per_ms = 1e-3;
    return loop_constant / k / gain * s_per_ms;
}

// Pulses that the feedback is behind.
std::int32_t AcModel::error(unsigned axis, Chip &chip, std::int64_t now_ns) const
{
    constexpr std::int32_t most = 0x7FFFFFFF;
    return Clamped(chip.speed(axis, now_ns) * time_constant_s(axis), most);
}

std::int32_t AcModel::output(unsigned axis, Chip &chip, std::int64_t now_ns) const
{
    if (time_constant_s(axis) > 0)
        return Clamped(static_cast<double>(error(axis, chip, now_ns)) * reg(axis, Index::Gain), highest_output);
    const std::int32_t magnitude = reg(axis, Index::OutputMagnitude);
    return reg(axis, Index::OutputSign) != 0 ? -magnitude : magnitude;
}

std::uint16_t AcModel::read(unsigned axis, unsigned index, Chip &chip, std::int64_t now_ns)
{
    if (static_cast<Index>(index) == Index::ErrorCounterLow) {
        // The high half stays with it until the low half is read again.
        const auto count = static_cast<std::uint32_t>(error(axis, chip, now_ns));
        reg(axis, Index::ErrorCounterLow) = static_cast<std::uint16_t>(count);
        reg(axis, Index::ErrorCounterHigh) = static_cast<std::uint16_t>(count >> 16);
    }
    return registers_[axis][index];
}

void AcModel::write(unsigned axis, unsigned index, std::uint16_t value, Chip &chip, std::int64_t now_ns)
{
    std::uint16_t &stored = registers_[axis][index];
    switch (static_cast<Index>(index)) {
    case Index::EncoderStatus:
    case Index::ErrorCounterLow:
    case Index::ErrorCounterHigh:
        return;
    case Index::EncoderSetting1:
    case Index::EncoderPolarity:
        stored = value;
        scale_encoder(axis, chip, now_ns);
        return;
    case Index::PulseSwap:
        stored = value;
        chip.set_reversed(axis, value != 0, now_ns);
        return;
    case Index::DetectorStatus:
        stored = 0;
        return;
    case Index::LoopRun:
        stored = reg(axis, Index::DetectorStatus) == 0 ? value : std::uint16_t{0};
        break;
    default:
        stored = value;
        break;
    }
    adjust_loop(axis, chip, now_ns);
}

void AcModel::scale_encoder(unsigned axis, Chip &chip, std::int64_t now_ns)
{
    const std::uint32_t setting = reg(axis, Index::EncoderSetting1);
    const std::int32_t counts = setting == 0 ? 1 : setting == 1 ? 2 : 4;
    const bool backwards = (reg(axis, Index::EncoderPolarity) & 1) != 0;
    chip.set_encoder_scale(axis, backwards ? -counts : counts, now_ns);
}

// Feedback and detector by the loop's registers as they are now.
void AcModel::adjust_loop(unsigned axis, Chip &chip, std::int64_t now_ns)
{
    const double trail_s = time_constant_s(axis);
    chip.set_feedback_trail(axis, trail_s, now_ns);
    const bool detects = reg(axis, Index::DetectorEnable) != 0 && trail_s > 0;
    detecting_ = detects ? detecting_ | 1u << axis : detecting_ & ~(1u << axis);
    passed_ns_ = now_ns;
}

// Never, for an axis without a detector at work.
std::int64_t AcModel::trip_time(unsigned axis, Chip &chip) const
{
    if ((detecting_ >> axis & 1) == 0)
        return never_ns;
    return chip.time_as_fast(axis, detector_limit_pulses / time_constant_s(axis), passed_ns_);
}

std::int64_t AcModel::next_trip(Chip &chip) const
{
    std::int64_t earliest_ns = never_ns;
    for (unsigned axis = 0; axis < chip_axes; ++axis)
        earliest_ns = Smaller(earliest_ns, trip_time(axis, chip));
    return earliest_ns;
}

// The loops whose error has reached the limit stop.
unsigned AcModel::trip(Chip &chip)
{
    unsigned tripped = 0;
    for (unsigned axis = 0; axis < chip_axes; ++axis) {
        if (trip_time(axis, chip) > passed_ns_)
            continue;
        reg(axis, Index::DetectorStatus) = 1;
        reg(axis, Index::LoopRun) = 0;
        adjust_loop(axis, chip, passed_ns_);
        tripped |= 1u << axis;
    }
    return tripped;
}

// From one thing that the chip does by itself to the next: each changes the speeds that are to come.
unsigned AcModel::pass(Chip &chip, std::int64_t now_ns)
{
    unsigned tripped = 0;
    while (detecting_ != 0) {
        const std::int64_t event_ns = chip.next_event(passed_ns_);
        const std::int64_t next_ns = Smaller(event_ns, next_trip(chip));
        if (next_ns > now_ns)
            break;
        passed_ns_ = next_ns;
        tripped |= trip(chip);
    }
    passed_ns_ = now_ns;
    return tripped;
}

} // namespace trevik::virtual_card
