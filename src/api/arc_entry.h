// How the entries describe arcs and helices: their arguments as the operations take them.
#pragma once

#include "motion/arc.h"
#include "motion/helix.h"

#include <cstdint>

namespace trevik
{

inline ArcRun TArcRun(const std::uint8_t *abs_flags, MoveSpeeds speeds, std::uint32_t ramp_ms, std::uint8_t trigger)
{
    return {abs_flags, speeds, {Curve::T, Seconds(ramp_ms), 0}, trigger};
}

// A ramp shorter than its curved sections is not refused here: it has no S range.
inline ArcRun SArcRun(const std::uint8_t *abs_flags, MoveSpeeds speeds, std::uint32_t ramp_ms, std::uint32_t s_ms,
                      std::uint8_t trigger)
{
    ArcRun run = TArcRun(abs_flags, speeds, ramp_ms, trigger);
    run.ramp.curve = Curve::S;
    CheckSCurveTimes(Magnitude(speeds.start_pps), Magnitude(speeds.max_pps), ramp_ms, s_ms, run.ramp.s_range_pps);
    return run;
}

// Most S-curve helices refuse such a ramp.
inline SRampTimes HelixTimes(MoveSpeeds speeds, std::uint32_t ramp_ms, std::uint32_t s_ms)
{
    return {speeds.start_pps, speeds.max_pps, ramp_ms, ramp_ms, s_ms, s_ms};
}

inline Result SHelixThroughMove(const Card &card, SRangeSpeeds, const ThroughArc &arc, ArcEnd end, HelixEnd z,
                                const ArcRun &run)
{
    return HelixThroughMove(card, arc, end, z, run);
}

inline Result SHelixRadiusMove(const Card &card, SRangeSpeeds, const RadiusArc &arc, ArcEnd end, HelixEnd z,
                               const ArcRun &run)
{
    return HelixRadiusMove(card, arc, end, z, run);
}

} // namespace trevik
