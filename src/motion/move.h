// The pieces that every commanded move is made of: may it start, which multiplier, which registers, which trigger.
#pragma once

#include "driver/card.h"
#include "driver/mode_word.h"
#include "motion/axis_set.h"
#include "motion/profile.h"
#include "motion/rampdown.h"

#include <cstdint>

namespace trevik
{

// How a move starts: speeds in pulses/s as the caller gave them.
struct MoveSpeeds {
    std::uint32_t start_pps;
    std::uint32_t max_pps;
};

// Ok when the axis can take a move now: idle (else Busy), or in continuous mode with its preset registers free
// (else QueueFull).
Result MoveAllowed(const Axis &axis);

// The same for axes that move as one: all in continuous mode or none (else ContinuousMix, before any status is
// read), and every axis able to take a move.
Result MoveAllowed(const CheckedAxes &axes);

// Multiplier of a position-type move: a fixed range counts only while moves are queued back to back.
std::uint32_t PositionMultiplier(const AxisShadow &shadow, std::uint32_t max_speed);

// Multiplier of a velocity-type move: a fixed range always counts.
std::uint32_t VelocityMultiplier(const AxisShadow &shadow, std::uint32_t max_speed);

// Operation code and curve of an operation that keeps the rest of the axis's mode word.
void ComposeModeWord(AxisShadow &shadow, OperationCode operation, Curve curve);

// The operation code of a single-axis positioning move: with or without backlash correction.
OperationCode PositioningCode(const AxisShadow &shadow);

// Composes the operation code, the curve and the ramp-down bits of a move into the axis's mode word; all other bits
// stay.
void ComposeModeWord(AxisShadow &shadow, OperationCode operation, Curve curve, RampDownCase rampdown);

// Sets the start trigger in the mode word; the comparator trigger also writes its source axis to the chip.
void ApplyStartTrigger(const Axis &axis, StartTrigger trigger);

// After the start command: a later operation that chooses no trigger starts at once.
void ClearStartTrigger(AxisShadow &shadow);

// The register set that the axis's moves go to: `direct` itself, or its twin for the next operation in continuous
// mode.
inline Register MoveRegister(const AxisShadow &shadow, Register direct)
{
    return shadow.ContinuousFlag != 0 ? PresetOf(direct) : direct;
}

// Writes speeds, rates and multiplier in the order of every move.
void WriteSpeedRegisters(const Axis &axis, const ProfileRegisters &profile);

// Writes one register of the set that the axis's moves go to.
inline void WriteMoveRegister(const Axis &axis, Register direct, std::uint32_t value)
{
    axis.write(MoveRegister(axis.shadow(), direct), value);
}

// Writes the S ranges of both ramps, which follow the other registers of every S-curve move.
void WriteSRanges(const Axis &axis, const ProfileRegisters &profile);

} // namespace trevik
