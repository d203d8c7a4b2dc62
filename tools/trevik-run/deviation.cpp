#include "trevik-run/deviation.h"

#include <algorithm>
#include <cmath>

namespace trevik_run
{
namespace
{

constexpr int curve_halvings = 12;

Vec4 WayFrom(const ProgrammedPath &path, double share, const Pulses &position)
{
    Vec4 way = path.At(share);
    for (std::size_t i = 0; i < axis_count; ++i) {
        way[i] = position[i] - way[i];
    }
    return way;
}

// The way from the path's nearest point to the position; its length squared is returned.
double OffsetFrom(const ProgrammedPath &path, const Pulses &position, Vec4 &offset)
{
    offset = WayFrom(path, path.NearestShare(position), position);
    double square = 0;
    for (const double component : offset) {
        square += component * component;
    }
    return square;
}

double LargestSize(const Vec4 &offset)
{
    return std::max({std::fabs(offset[0]), std::fabs(offset[1]), std::fabs(offset[2]), std::fabs(offset[3])});
}

// Keeps in `best` the way to the position whose largest axis is smallest, of the one that it holds and those from
// points of the line. Along the line each axis's distance is a straight rise and fall, so the smallest maximum is
// at an end or where two of them cross.
void ImproveLargest(const PathLine &line, const Pulses &position, Vec4 &best)
{
    const auto try_share = [&](double share) {
        Vec4 offset;
        for (std::size_t i = 0; i < axis_count; ++i) {
            offset[i] = position[i] - line.from[i] - std::clamp(share, 0.0, 1.0) * line.delta[i];
        }
        if (LargestSize(offset) < LargestSize(best)) {
            best = offset;
        }
    };
    try_share(0);
    try_share(1);
    for (std::size_t i = 0; i < axis_count; ++i) {
        for (std::size_t j = i; j < axis_count; ++j) {
            for (const double sign : {1.0, -1.0}) {
                const double slope = line.delta[i] + sign * line.delta[j];
                if (slope != 0) {
                    try_share((position[i] - line.from[i] + sign * (position[j] - line.from[j])) / slope);
                }
            }
        }
    }
}

// The same on an arc. Within two pulses it is nearly straight, so that the maximum falls and rises there too.
void ImproveLargestOnArc(const ProgrammedPath &path, const Pulses &position, Vec4 &best)
{
    const double reach = 2 / path.Length();
    const double nearest = path.NearestShare(position);
    double low = std::max(0.0, nearest - reach);
    double high = std::min(1.0, nearest + reach);
    for (int i = 0; i < curve_halvings; ++i) {
        const double third = (high - low) / 3;
        const Vec4 one = WayFrom(path, low + third, position);
        const Vec4 two = WayFrom(path, high - third, position);
        const bool first = LargestSize(one) < LargestSize(two);
        (first ? high : low) = first ? high - third : low + third;
        const Vec4 &better = first ? one : two;
        if (LargestSize(better) < LargestSize(best)) {
            best = better;
        }
    }
}

void ImproveLargest(const ProgrammedPath &path, const Pulses &position, Vec4 &best)
{
    if (path.Curved()) {
        ImproveLargestOnArc(path, position, best);
    } else {
        ImproveLargest(path.Line(), position, best);
    }
}

} // namespace

double Deviation::LargestPulses() const
{
    return *std::max_element(pulses.begin(), pulses.end());
}

DeviationMeter::DeviationMeter(const Machine &machine)
{
    for (std::size_t i = 0; i < axis_count; ++i) {
        mm_per_pulse_[i] = i == angular_axis ? 0 : 1 / machine.pulses_per_unit[i];
    }
}

void DeviationMeter::Follow(const ProgrammedPath &before, const ProgrammedPath &now)
{
    before_ = before;
    now_ = now;
}

void DeviationMeter::Measure(const Pulses &position)
{
    Vec4 offset;
    if (const double square = OffsetFrom(now_, position, offset); square > 0) {
        Vec4 other;
        if (OffsetFrom(before_, position, other) < square) {
            offset = other;
        }
    }
    TakeLargest(position, offset);
}

// The second comparison is dear and needed only where the first would set a new record.
void DeviationMeter::TakeLargest(const Pulses &position, Vec4 offset)
{
    double square_mm = 0;
    bool record = false;
    for (std::size_t i = 0; i < axis_count; ++i) {
        const double mm = offset[i] * mm_per_pulse_[i];
        square_mm += mm * mm;
        record = record || std::fabs(offset[i]) > largest_.pulses[i];
    }
    largest_.mm = std::max(largest_.mm, std::sqrt(square_mm));
    if (!record) {
        return;
    }
    ImproveLargest(now_, position, offset);
    ImproveLargest(before_, position, offset);
    for (std::size_t i = 0; i < axis_count; ++i) {
        largest_.pulses[i] = std::max(largest_.pulses[i], std::fabs(offset[i]));
    }
}

} // namespace trevik_run
