#include "motion/arc.h"

#include "motion/arc_axes.h"
#include "motion/line.h"
#include "motion/target.h"

#include <array>

namespace trevik
{
namespace
{

// What a speed along the path is divided by: the leading axis of an octant is slower than the path.
constexpr double path_divisor = 1.11107;

constexpr std::array<std::uint8_t, 4> all_relative{};

OperationCode ArcCode(std::uint8_t direction)
{
    return direction == 0 ? OperationCode::ArcPlus : OperationCode::ArcMinus;
}

double DividedSpeed(std::uint32_t speed)
{
    return static_cast<std::int32_t>(Magnitude(speed)) / path_divisor + 0.5;
}

// The end of the circle that a move makes.
Point EndOf(ArcEnd end, Point point)
{
    return end == ArcEnd::FullCircle ? Point{} : point;
}

std::array<std::int32_t, 4> LineEnd(Point point)
{
    return {point.x, point.y};
}

void WriteConstantAxis(const Axis &axis, std::int32_t end, std::uint32_t speed, std::uint32_t multiplier,
                       std::int32_t center)
{
    WriteMoveRegister(axis, Register::DISTANCE, static_cast<std::uint32_t>(end));
    WriteMoveRegister(axis, Register::START_SPEED, speed);
    WriteMoveRegister(axis, Register::MAX_SPEED, speed);
    WriteMoveRegister(axis, Register::MULTIPLIER, multiplier);
    WriteMoveRegister(axis, Register::MODE, axis.shadow().ModeWord);
    WriteMoveRegister(axis, Register::CENTER, static_cast<std::uint32_t>(center));
}

void WriteRampedAxis(const Axis &axis, std::int32_t end, const ProfileRegisters &profile, std::int32_t center,
                     std::uint32_t steps, Curve curve)
{
    WriteCircleAxis(axis, end, profile, center);
    WriteMoveRegister(axis, Register::ARC_STEPS, steps);
    if (curve == Curve::S)
        WriteSRanges(axis, profile);
}

} // namespace

ProfileRegisters PlanArc(MoveSpeeds speeds, const ArcRamp &ramp, std::uint32_t multiplier)
{
    ProfileRegisters p;
    p.MultiplierValue = multiplier;
    p.MaxSpeedValue = SpeedToRegister(DividedSpeed(speeds.max_pps), multiplier, round_up_offset);
    p.StartSpeedValue = SpeedToRegister(DividedSpeed(speeds.start_pps), multiplier, round_up_offset);
    FillRamps(p, ramp.both());
    return p;
}

Result ArcCenterMove(const Card &card, const AxisSet &pair, const CenterArc &arc, bool absolute,
                     std::uint32_t speed)
{
    if (pair.size == 0)
        return Result::Param;
    const CheckedAxes axes(card, pair);
    if (const Result allowed = MoveAllowed(axes); allowed != Result::Ok)
        return allowed;
    SyncLastTarget(axes);
    const auto path_speed = static_cast<std::int32_t>(TruncateToRegister(DividedSpeed(speed)));
    if (path_speed > static_cast<std::int32_t>(highest_speed_pps))
        return Result::Param;
    Circle circle;
    if (!TakeCircle(axes, arc.center, arc.end, {absolute, absolute}, circle))
        return Result::Param;

    const std::uint32_t multiplier = VelocityMultiplier(axes.first().shadow(), speed);
    const std::uint32_t value = SpeedToRegister(path_speed, multiplier, round_up_offset);
    PrepareCircle(axes, ArcCode(arc.direction));
    WriteConstantAxis(axes[0], circle.end.x, value, multiplier, circle.center.x);
    WriteConstantAxis(axes[1], circle.end.y, value, multiplier, circle.center.y);
    const Result result =
        card.command(axes.bits(), SelectStartCommand(Magnitude(speed), Magnitude(speed), RampTimes{}));
    MarkCircle(axes);
    return result;
}

Result ArcThroughMove(const Card &card, const AxisSet &pair, const ThroughArc &arc, ArcEnd end, bool absolute,
                      std::uint32_t speed)
{
    if (pair.size == 0)
        return Result::Param;
    const CheckedAxes axes(card, pair);
    const Point way = RelativePoint(axes, arc.way, {absolute, absolute});
    const Point last = RelativePoint(axes, arc.end, {absolute, absolute});
    const ThreePointArc found = ThreePointCenter(way, last);
    if (!found.collinear)
        return ArcCenterMove(card, pair, {found.circle.center, EndOf(end, last), found.direction}, false, speed);
    if (end == ArcEnd::AtPoint) {
        LineMove(card, pair, {LineEnd(last), all_relative.data()}, {speed, speed}, TRamps({}), 0);
        return Result::ArcAsLine;
    }
    ArcCenterMove(card, pair, {{last.x / 2, last.y / 2}, {}, found.direction}, false, speed);
    return Result::CircleAsDiameter;
}

Result ArcRadiusMove(const Card &card, const AxisSet &pair, const RadiusArc &arc, ArcEnd end, bool absolute,
                     std::uint32_t speed)
{
    if (pair.size == 0)
        return Result::Param;
    const CheckedAxes axes(card, pair);
    const Point last = RelativePoint(axes, arc.end, {absolute, absolute});
    Point center;
    if (!RadiusCenter(arc.radius, last, arc.direction, center))
        return Result::Ok;
    return ArcCenterMove(card, pair, {center, EndOf(end, last), arc.direction}, false, speed);
}

Result RampedArcCenterMove(const Card &card, const AxisSet &pair, const CenterArc &arc, const ArcRun &run)
{
    if (run.trigger > 2 || pair.size == 0 || run.absolute_flags == nullptr)
        return Result::Param;
    const CheckedAxes axes(card, pair);
    if (const Result allowed = MoveAllowed(axes); allowed != Result::Ok)
        return allowed;
    SyncLastTarget(axes);
    if (DividedSpeed(run.speeds.max_pps) > highest_speed_pps)
        return Result::Param;
    Circle circle;
    if (!TakeCircle(axes, arc.center, arc.end, AbsoluteOf(axes, run.absolute_flags), circle))
        return Result::Param;

    const std::uint32_t multiplier = VelocityMultiplier(axes.first().shadow(), run.speeds.max_pps);
    const ProfileRegisters profile = PlanArc(run.speeds, run.ramp, multiplier);
    const std::uint32_t steps = ArcSteps(circle, arc.direction);
    PrepareCircle(axes, ArcCode(arc.direction));
    for (const Axis &axis : axes)
        ApplyStartTrigger(axis, static_cast<StartTrigger>(run.trigger));
    WriteRampedAxis(axes[0], circle.end.x, profile, circle.center.x, steps, run.ramp.curve);
    WriteRampedAxis(axes[1], circle.end.y, profile, circle.center.y, steps, run.ramp.curve);
    const Result result =
        card.command(axes.bits(), SelectStartCommand(Magnitude(run.speeds.start_pps), Magnitude(run.speeds.max_pps),
                                                     run.ramp.both().times));
    for (const Axis &axis : axes)
        ClearStartTrigger(axis.shadow());
    MarkCircle(axes);
    return result;
}

Result FindCircle(const CheckedAxes &axes, const ThroughArc &arc, ArcEnd end, const std::uint8_t *absolute_flags,
                  CenterArc &found)
{
    SyncLastTarget(axes);
    const AbsolutePair absolute = AbsoluteOf(axes, absolute_flags);
    const Point last = RelativePoint(axes, arc.end, absolute);
    const ThreePointArc three = ThreePointCenter(RelativePoint(axes, arc.way, absolute), last);
    found = {three.circle.center, EndOf(end, last), three.direction};
    return three.collinear ? Result::ArcAsLine : Result::Ok;
}

Result FindCircle(const CheckedAxes &axes, const RadiusArc &arc, ArcEnd end, const std::uint8_t *absolute_flags,
                  CenterArc &found)
{
    const Result synced = SyncLastTarget(axes);
    const Point last = RelativePoint(axes, arc.end, AbsoluteOf(axes, absolute_flags));
    found = {{}, EndOf(end, last), arc.direction};
    return RadiusCenter(arc.radius, last, arc.direction, found.center) ? synced : Result::Param;
}

Result RampedArcThroughMove(const Card &card, const AxisSet &pair, const ThroughArc &arc, ArcEnd end,
                            const ArcRun &run)
{
    if (pair.size == 0 || run.absolute_flags == nullptr)
        return Result::Param;
    CenterArc found;
    const Result geometry = FindCircle(CheckedAxes(card, pair), arc, end, run.absolute_flags, found);
    if (geometry == Result::Ok)
        return RampedArcCenterMove(card, pair, found, {all_relative.data(), run.speeds, run.ramp, run.trigger});
    if (end == ArcEnd::AtPoint || run.ramp.curve == Curve::S)
        LineMove(card, pair, {LineEnd(arc.end), run.absolute_flags}, run.speeds, TRamps(run.ramp.both().times),
                 run.trigger);
    return geometry;
}

Result RampedArcRadiusMove(const Card &card, const AxisSet &pair, const RadiusArc &arc, ArcEnd end,
                           const ArcRun &run)
{
    if (pair.size == 0 || run.absolute_flags == nullptr)
        return Result::Param;
    CenterArc found;
    const Result geometry = FindCircle(CheckedAxes(card, pair), arc, end, run.absolute_flags, found);
    if (geometry != Result::Ok)
        return geometry;
    return RampedArcCenterMove(card, pair, found, {all_relative.data(), run.speeds, run.ramp, run.trigger});
}

Result ArcRadiusTest(const Card &, std::uint32_t end_a, std::int32_t radius, std::uint32_t end_b,
                     std::uint8_t direction, std::uint32_t *center_a, std::uint32_t *center_b)
{
    Point center;
    const Point end{static_cast<std::int32_t>(end_a), static_cast<std::int32_t>(end_b)};
    if (center_a == nullptr || center_b == nullptr || !RadiusCenter(radius, end, direction, center))
        return Result::Param;
    *center_a = static_cast<std::uint32_t>(center.x);
    *center_b = static_cast<std::uint32_t>(center.y);
    return Result::Ok;
}

} // namespace trevik
