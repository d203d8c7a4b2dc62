#include "motion/move.h"

#include "status/motion_status.h"

namespace trevik
{

Result MoveAllowed(const Axis &axis)
{
    if (axis.shadow().ContinuousFlag != 0)
        return PresetFull(axis) ? Result::QueueFull : Result::Ok;
    return Idle(axis) ? Result::Ok : Result::Busy;
}

Result MoveAllowed(const CheckedAxes &axes)
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

std::uint32_t PositionMultiplier(const AxisShadow &shadow, std::uint32_t max_speed)
{
    if (shadow.ContinuousFlag != 0 && shadow.RangeFixed != 0)
        return shadow.FixedMultiplier;
    return SelectMultiplier(max_speed);
}

std::uint32_t VelocityMultiplier(const AxisShadow &shadow, std::uint32_t max_speed)
{
    if (shadow.RangeFixed != 0)
        return shadow.FixedMultiplier;
    return SelectMultiplier(max_speed);
}

OperationCode PositioningCode(const AxisShadow &shadow)
{
    return shadow.BacklashEnabled != 0 ? OperationCode::PositioningBacklash : OperationCode::Positioning;
}

void ComposeModeWord(AxisShadow &shadow, OperationCode operation, Curve curve)
{
    const std::uint32_t word = mode_field::operation.put(shadow.ModeWord, static_cast<std::uint32_t>(operation));
    shadow.ModeWord = mode_field::s_curve.put(word, curve == Curve::S);
}

void ComposeModeWord(AxisShadow &shadow, OperationCode operation, Curve curve, RampDownCase rampdown)
{
    ComposeModeWord(shadow, operation, curve);
    std::uint32_t word = shadow.ModeWord;
    if (operation == OperationCode::Line)
        word = mode_field::arc_option.put(word, 0);
    word = mode_field::manual_rampdown.put(word, ManualRampDown(rampdown));
    word = mode_field::short_profile.put(word, ShortProfile(rampdown));
    shadow.ModeWord = word;
}

void ApplyStartTrigger(const Axis &axis, StartTrigger trigger)
{
    AxisShadow &shadow = axis.shadow();
    shadow.ModeWord = mode_field::start_trigger.put(shadow.ModeWord, static_cast<std::uint32_t>(trigger));
    if (trigger == StartTrigger::Comparator)
        Modify(axis, start_trigger_env::compare_start_axis.to(axis.card().state().CompareStartAxis));
}

void ClearStartTrigger(AxisShadow &shadow)
{
    shadow.ModeWord = mode_field::start_trigger.put(shadow.ModeWord, 0);
}

void WriteSpeedRegisters(const Axis &axis, const ProfileRegisters &profile)
{
    WriteMoveRegister(axis, Register::START_SPEED, profile.StartSpeedValue);
    WriteMoveRegister(axis, Register::MAX_SPEED, profile.MaxSpeedValue);
    WriteMoveRegister(axis, Register::ACCEL_RATE, profile.AccelRateValue);
    WriteMoveRegister(axis, Register::DECEL_RATE, profile.DecelRateValue);
    WriteMoveRegister(axis, Register::MULTIPLIER, profile.MultiplierValue);
}

void WriteSRanges(const Axis &axis, const ProfileRegisters &profile)
{
    WriteMoveRegister(axis, Register::S_ACCEL_RANGE, profile.AccelSRangeValue);
    WriteMoveRegister(axis, Register::S_DECEL_RANGE, profile.DecelSRangeValue);
}

} // namespace trevik
