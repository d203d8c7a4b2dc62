// The register values of a line: speeds along the path become speeds of the longest axis, and the first axis
// decides the shape of the profile for all. Pure arithmetic: no driver, no state.
#pragma once

#include "motion/profile.h"
#include "motion/rampdown.h"

#include <array>
#include <cstdint>
#include <span>

namespace trevik
{

inline constexpr unsigned most_line_axes = 4;

// How the ramps of a line are given.
struct LineRamps {
    enum class Kind {
        T,       // times
        STimes,  // linear and curved times, milliseconds
        SRanges, // times, and the speeds gained in the curved sections
    };
    Kind kind = Kind::T;
    RampTimes times;            // seconds; STimes: those of the linear sections
    std::uint32_t accel_ms = 0; // STimes: linear sections
    std::uint32_t decel_ms = 0;
    std::uint32_t s_accel_ms = 0; // STimes: each curved section
    std::uint32_t s_decel_ms = 0;
    SRangeSpeeds ranges;  // SRanges
    bool running = false; // T: for a running line, for which the chip never finds the ramp-down point

    Curve curve() const { return kind == Kind::T ? Curve::T : Curve::S; }
};

inline LineRamps TRamps(RampTimes times)
{
    LineRamps ramps;
    ramps.times = times;
    return ramps;
}

// One profile for each axis of the line, in the order of its distances.
struct LinePlan {
    std::array<ProfileRegisters, most_line_axes> profiles;
    RampDownCase rampdown = RampDownCase::Automatic;
};

// Share of the path speed at which the longest axis runs: its distance over the length of the path; 0 for a line
// that goes nowhere. Distances are absolute values.
double PathFactor(std::span<const std::uint32_t> distances);

// `distances`: absolute values, 2 to 4, the first axis first. Speeds are magnitudes, pulses/s along the path.
LinePlan PlanLine(std::span<const std::uint32_t> distances, std::uint32_t start_speed, std::uint32_t max_speed,
                  const LineRamps &ramps, std::uint32_t multiplier);

} // namespace trevik
