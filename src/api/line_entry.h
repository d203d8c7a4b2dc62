// How the entries of both families describe a line: their arguments as the line operation takes them.
#pragma once

#include "motion/line.h"

#include <cstdint>

namespace trevik
{

using Coordinates = std::array<std::int32_t, 4>;

// Linear and curved times of the 2- and 3-axis S-curve lines.
inline LineRamps STimeRamps(std::uint32_t accel_ms, std::uint32_t decel_ms, std::uint32_t s_accel_ms,
                            std::uint32_t s_decel_ms)
{
    LineRamps ramps = TRamps(Seconds(accel_ms, decel_ms));
    ramps.kind = LineRamps::Kind::STimes;
    ramps.accel_ms = accel_ms;
    ramps.decel_ms = decel_ms;
    ramps.s_accel_ms = s_accel_ms;
    ramps.s_decel_ms = s_decel_ms;
    return ramps;
}

inline LineRamps SRangeRamps(RampTimes times, SRangeSpeeds ranges)
{
    LineRamps ramps = TRamps(times);
    ramps.kind = LineRamps::Kind::SRanges;
    ramps.ranges = ranges;
    return ramps;
}

inline SRangeSpeeds SRangeSpeedsOf(std::uint32_t accel, std::uint32_t decel)
{
    return {static_cast<std::int32_t>(accel), static_cast<std::int32_t>(decel)};
}

// A line whose S ranges come from the entry's check of the ramp times.
inline Result SRangeLine(const Card &card, SRangeSpeeds ranges, const AxisSet &set,
                         const LineDestination &destination, MoveSpeeds speeds, RampTimes times,
                         std::uint8_t trigger)
{
    return LineMove(card, set, destination, speeds, SRangeRamps(times, ranges), trigger);
}

// The forms of the earlier interface: one absolute flag for all axes, no trigger.
inline constexpr std::uint8_t start_at_once = 0;

inline Result LineMoveOneFlag(const Card &card, const AxisSet &set, const Coordinates &coordinates,
                              std::uint8_t absolute, MoveSpeeds speeds, const LineRamps &ramps)
{
    const std::uint8_t flags[] = {absolute, absolute, absolute, absolute};
    return LineMove(card, set, {coordinates, flags}, speeds, ramps, start_at_once);
}

inline Result SRangeLineOneFlag(const Card &card, SRangeSpeeds ranges, const AxisSet &set,
                                const Coordinates &coordinates, std::uint8_t absolute, MoveSpeeds speeds,
                                RampTimes times)
{
    return LineMoveOneFlag(card, set, coordinates, absolute, speeds, SRangeRamps(times, ranges));
}

} // namespace trevik
