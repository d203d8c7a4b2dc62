#include "motion/line.h"

#include "motion/target.h"
#include "status/motion_status.h"

#include <span>

namespace trevik
{
namespace
{

// The checked axes of a set.
class LineAxes
{
  public:
    LineAxes(const Card &card, const AxisSet &set) : size_(set.size)
    {
        for (unsigned i = 0; i < size_; ++i)
            axes_[i] = card.axis(set.axes[i]);
    }

    const Axis *begin() const { return axes_.data(); }
    const Axis *end() const { return axes_.data() + size_; }
    const Axis &first() const { return axes_[0]; }
    const Axis &operator[](std::size_t i) const { return axes_[i]; }
    std::size_t size() const { return size_; }

    std::uint8_t bits() const
    {
        unsigned bits = 0;
        for (const Axis &axis : *this)
            bits |= axis.bit();
        return static_cast<std::uint8_t>(bits);
    }

  private:
    std::array<Axis, 4> axes_;
    std::size_t size_;
};

// All axes in continuous mode or none, before any status is read; then every axis must be able to take a move.
Result LineAllowed(const LineAxes &axes)
{
    const bool continuous = axes.first().shadow().ContinuousFlag != 0;
    for (const Axis &axis : axes)
        if ((axis.shadow().ContinuousFlag != 0) != continuous)
            return Result::ContinuousMix;
    for (const Axis &axis : axes)
        if (const Result allowed = MoveAllowed(axis); allowed != Result::Ok)
            return allowed;
    return Result::Ok;
}

// Signed distance of every axis; the targets advance.
std::array<std::uint32_t, 4> LineDistances(const LineAxes &axes, const LineDestination &destination)
{
    std::array<std::uint32_t, 4> distances{};
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const bool absolute = destination.absolute_flags[axes[i].number()] != 0;
        const auto coordinate = static_cast<std::uint32_t>(destination.coordinates[i]);
        distances[i] = DistanceFromTarget(axes[i].shadow(), coordinate, absolute);
    }
    return distances;
}

LinePlan PlanMove(const LineAxes &axes, std::span<const std::uint32_t> distances, MoveSpeeds speeds,
                  const LineRamps &ramps)
{
    std::array<std::uint32_t, 4> magnitudes{};
    for (std::size_t i = 0; i < axes.size(); ++i)
        magnitudes[i] = Magnitude(distances[i]);
    const std::uint32_t multiplier = PositionMultiplier(axes.first().shadow(), speeds.max_pps);
    return PlanLine(std::span(magnitudes.data(), axes.size()), Magnitude(speeds.start_pps),
                    Magnitude(speeds.max_pps), ramps, multiplier);
}

void WriteAxis(const Axis &axis, std::uint32_t distance, const ProfileRegisters &profile, Curve curve)
{
    WriteSpeedRegisters(axis, distance, profile);
    WriteMoveRegister(axis, Register::RAMPDOWN_POINT, profile.RampDownValue);
    WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
    if (curve == Curve::S) {
        WriteMoveRegister(axis, Register::S_ACCEL_RANGE, profile.AccelSRangeValue);
        WriteMoveRegister(axis, Register::S_DECEL_RANGE, profile.DecelSRangeValue);
    }
}

} // namespace

AxisSet AxisPair(std::uint8_t selector)
{
    constexpr std::array<AxisSet, 6> pairs{
        {{{0, 1}, 2}, {{0, 2}, 2}, {{0, 3}, 2}, {{1, 2}, 2}, {{1, 3}, 2}, {{2, 3}, 2}}};
    return selector < pairs.size() ? pairs[selector] : AxisSet{};
}

AxisSet AxisTriple(std::uint8_t selector)
{
    constexpr std::array<AxisSet, 4> triples{{{{0, 1, 2}, 3}, {{0, 1, 3}, 3}, {{0, 2, 3}, 3}, {{1, 2, 3}, 3}}};
    return selector < triples.size() ? triples[selector] : AxisSet{};
}

Result LineMove(const Card &card, const AxisSet &set, const LineDestination &destination, MoveSpeeds speeds,
                const LineRamps &ramps, std::uint8_t trigger)
{
    const std::uint8_t highest_trigger = set.size == 4 ? 1 : 2;
    if (trigger > highest_trigger || set.size == 0 || destination.absolute_flags == nullptr)
        return Result::Param;
    const LineAxes axes(card, set);
    if (const Result allowed = LineAllowed(axes); allowed != Result::Ok)
        return allowed;
    for (const Axis &axis : axes)
        SyncLastTarget(axis);
    const auto distances = LineDistances(axes, destination);
    if (SpeedTooHigh(speeds.max_pps))
        return Result::Param;

    const LinePlan plan = PlanMove(axes, distances, speeds, ramps);
    for (const Axis &axis : axes)
        ComposeModeWord(axis.shadow(), OperationCode::Line, ramps.curve(), plan.rampdown);
    for (const Axis &axis : axes)
        ApplyStartTrigger(axis, static_cast<StartTrigger>(trigger));
    for (std::size_t i = 0; i < axes.size(); ++i)
        WriteAxis(axes[i], distances[i], plan.profiles[i], ramps.curve());
    const std::uint32_t correction =
        CorrectionToRegister(axes.first().shadow().CorrectionSpeed, plan.profiles[0].MultiplierValue);
    for (const Axis &axis : axes)
        axis.write(Register::CORRECTION_SPEED, correction);

    const Result result = card.command(
        axes.bits(), SelectStartCommand(Magnitude(speeds.start_pps), Magnitude(speeds.max_pps), ramps.times));
    for (const Axis &axis : axes)
        ClearStartTrigger(axis.shadow());
    return result;
}

} // namespace trevik
