#include "motion/line.h"

#include "motion/online_change.h"
#include "motion/target.h"
#include "status/motion_status.h"

#include <span>

namespace trevik
{
namespace
{

// Signed distance of every axis; the targets advance.
std::array<std::uint32_t, 4> LineDistances(const CheckedAxes &axes, const LineDestination &destination)
{
    std::array<std::uint32_t, 4> distances{};
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const bool absolute = destination.absolute_flags[axes[i].number()] != 0;
        const auto coordinate = static_cast<std::uint32_t>(destination.coordinates[i]);
        distances[i] = DistanceFromTarget(axes[i].shadow(), coordinate, absolute);
    }
    return distances;
}

LinePlan PlanMove(const CheckedAxes &axes, std::span<const std::uint32_t> distances, MoveSpeeds speeds,
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
    WriteMoveRegister(axis, Register::DISTANCE, distance);
    WriteSpeedRegisters(axis, profile);
    WriteMoveRegister(axis, Register::RAMPDOWN_POINT, profile.RampDownValue);
    WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
    if (curve == Curve::S)
        WriteSRanges(axis, profile);
}

} // namespace

Result LineMove(const Card &card, const AxisSet &set, const LineDestination &destination, MoveSpeeds speeds,
                const LineRamps &ramps, std::uint8_t trigger)
{
    const std::uint8_t highest_trigger = set.size == 4 ? 1 : 2;
    if (trigger > highest_trigger || set.size == 0 || destination.absolute_flags == nullptr)
        return Result::Param;
    const CheckedAxes axes(card, set);
    if (const Result allowed = MoveAllowed(axes); allowed != Result::Ok)
        return allowed;
    SyncLastTarget(axes);
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

Result LineChange(const Card &card, const AxisSet &set, const std::array<std::int32_t, 4> &coordinates,
                  bool absolute, MoveSpeeds speeds, RampTimes times)
{
    if (set.size == 0)
        return Result::Param;
    const CheckedAxes axes(card, set);
    for (const Axis &axis : axes)
        if (Idle(axis))
            return Result::NotMoving;
    std::array<std::uint32_t, 4> amounts{};
    for (std::size_t i = 0; i < axes.size(); ++i)
        axes[i].read(Register::DISTANCE, amounts[i]);
    std::array<std::uint32_t, 4> distances{};
    for (std::size_t i = 0; i < axes.size(); ++i)
        distances[i] =
            MoveTarget(axes[i].shadow(), amounts[i], {static_cast<std::uint32_t>(coordinates[i]), absolute});
    if (SpeedTooHigh(speeds.max_pps))
        return Result::Param;

    LineRamps ramps = TRamps(times);
    ramps.running = true;
    const LinePlan plan = PlanMove(axes, distances, speeds, ramps);
    for (const Axis &axis : axes)
        ComposeModeWord(axis.shadow(), OperationCode::Line, Curve::T, plan.rampdown);
    Result result = Result::Ok;
    for (std::size_t i = 0; i < axes.size(); ++i)
        result = WriteChange(axes[i], distances[i], plan.profiles[i], Curve::T);
    return result;
}

} // namespace trevik
