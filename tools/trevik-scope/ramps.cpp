#include "trevik-scope/ramps.h"

#include <algorithm>
#include <cmath>

namespace trevik_scope
{
namespace
{

constexpr double jump_s = 3.5e-9;   // samples nearer than this were taken on both sides of a moment
constexpr double seen_share = 5e-3; // of the highest speed: smaller ramps are not told

// Where one interval's speed begins and ends, without signs.
struct Stretch {
    double begin_s;
    double end_s;
    double from_pps;
    double to_pps;

    double Slope() const { return (to_pps - from_pps) / (end_s - begin_s); }
};

bool IsJump(const Sample &a, const Sample &b)
{
    return b.time_s - a.time_s < jump_s;
}

// The stretches between jumps.
std::vector<std::vector<Stretch>> SmoothParts(const Recording &recording)
{
    std::vector<std::vector<Stretch>> parts(1);
    for (std::size_t i = 1; i < recording.samples.size(); ++i) {
        const Sample &a = recording.samples[i - 1];
        const Sample &b = recording.samples[i];
        if (!IsJump(a, b)) {
            parts.back().push_back({a.time_s, b.time_s, std::fabs(a.speed_pps), std::fabs(b.speed_pps)});
        } else if (a.speed_pps != b.speed_pps && !parts.back().empty()) {
            parts.emplace_back();
        }
    }
    return parts;
}

// A ramp begins and ends between samples: where the slope inside it, prolonged, meets the speed outside.
Ramp Measured(const Stretch *first, const Stretch *last)
{
    Ramp ramp = {first->begin_s, last->end_s, first->from_pps, last->to_pps};
    if (last - first >= 2) {
        const double lead_s = (first->to_pps - first->from_pps) / first[1].Slope();
        const double tail_s = (last->to_pps - last->from_pps) / last[-1].Slope();
        ramp.begin_s = std::max(ramp.begin_s, first->end_s - lead_s);
        ramp.end_s = std::min(ramp.end_s, last->begin_s + tail_s);
    }
    return ramp;
}

int SignOf(const Stretch &stretch, double least)
{
    const double rise = stretch.to_pps - stretch.from_pps;
    return rise > least ? 1 : rise < -least ? -1 : 0;
}

} // namespace

std::vector<Interval> IntervalsOf(const Recording &recording)
{
    std::vector<Interval> intervals;
    for (std::size_t i = 1; i < recording.samples.size(); ++i) {
        const Sample &a = recording.samples[i - 1];
        const Sample &b = recording.samples[i];
        if (!IsJump(a, b)) {
            intervals.push_back({a.time_s, b.time_s, (b.speed_pps - a.speed_pps) / (b.time_s - a.time_s)});
        }
    }
    return intervals;
}

std::vector<Ramp> RampsOf(const Recording &recording)
{
    const double highest = HighestSpeed(recording);
    const double least = highest * 1e-9; // what rounding makes
    std::vector<Ramp> ramps;
    for (const std::vector<Stretch> &part : SmoothParts(recording)) {
        for (std::size_t first = 0; first < part.size();) {
            const int sign = SignOf(part[first], least);
            std::size_t next = first + 1;
            while (next < part.size() && SignOf(part[next], least) == sign) {
                ++next;
            }
            const Ramp ramp = Measured(&part[first], &part[next - 1]);
            if (sign != 0 && std::fabs(ramp.to_pps - ramp.from_pps) > highest * seen_share) {
                ramps.push_back(ramp);
            }
            first = next;
        }
    }
    return ramps;
}

double HighestSpeed(const Recording &recording)
{
    double highest = 0;
    for (const Sample &sample : recording.samples) {
        highest = std::max(highest, std::fabs(sample.speed_pps));
    }
    return highest;
}

} // namespace trevik_scope
