// Where a move starts to slow down, and how short moves are fitted. Pure arithmetic: no driver, no state.
//
// A move decides on one of the cases below (a line does so on its first axis) and then computes its values by it (a
// line does so on every axis). With distance D and the symbols of the register values (FL, FH, a, d, Sa, Sd, m):
//   K = (m + 1) x 32768, A = FH^2 - FL^2, B = a + d + 2
#pragma once

#include "motion/profile.h"

#include <cstdint>

namespace trevik
{

enum class RampDownCase {
    NoDeceleration, // no deceleration time: the move ends at its speed
    Automatic,      // the chip finds the point
    // T-curve, manual point
    Full,
    Short, // the maximum speed is not reached
    // S-curve, manual point
    PureFull,           // both ramps wholly curved
    PureReduced,        // maximum speed lowered, both ramps wholly curved
    SFull,              // curved and linear sections, maximum speed reached
    EqualReduced,       // maximum speed lowered; equal S ranges
    DecelCurvedReduced, // maximum speed lowered until the deceleration is wholly curved (its S range is larger)
    AccelCurvedReduced, // the same with the acceleration's S range the larger
    LinearReduced,      // maximum speed lowered, both ramps keep a linear section
};

// Bit of the mode word: the written ramp-down point counts.
constexpr bool ManualRampDown(RampDownCase c)
{
    return c != RampDownCase::Automatic;
}

// Bit of the mode word: the profile does not reach the maximum speed it was asked for, or does not decelerate.
constexpr bool ShortProfile(RampDownCase c)
{
    switch (c) {
    case RampDownCase::Automatic:
    case RampDownCase::Full:
    case RampDownCase::PureFull:
    case RampDownCase::SFull:
        return false;
    default:
        return true;
    }
}

// The case of a T-curve or S-curve move over `distance` pulses (an absolute value).
RampDownCase DecideRampDownT(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance);
RampDownCase DecideRampDownS(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance);

// The case of a T-curve change of a running move, for which the chip never finds the point itself.
RampDownCase DecideManualRampDownT(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance);

// Fills in the ramp-down point by the case; the reduced S-curve cases lower the maximum speed, and PureReduced
// makes the ramps wholly curved. The rates stay as they are.
void ApplyRampDown(RampDownCase c, ProfileRegisters &profile, std::uint32_t distance);

} // namespace trevik
