#include "trevik-run/trace.h"

#include <algorithm>
#include <cmath>

namespace trevik_run
{
namespace
{

constexpr std::size_t max_buckets = 1600; // more than the drawing is wide in pixels

int ShadeOf(double degrees)
{
    const double turn = degrees / 360 - std::floor(degrees / 360);
    return std::min(static_cast<int>(turn * shade_count), shade_count - 1);
}

} // namespace

void Trace::Take(const Sample &sample)
{
    TakePath(sample);
    TakeSpeed(sample);
    end_s_ = sample.time_s;
}

void Trace::TakePath(const Sample &sample)
{
    const Point point = {sample.position[0], sample.position[1]};
    const int shade = shade_by_a_ ? ShadeOf(sample.position[angular_axis]) : 0;
    if (strokes_.empty() || strokes_.back().rapid != sample.rapid || strokes_.back().shade != shade) {
        const Point begin = strokes_.empty() ? point : strokes_.back().points.back();
        if (!strokes_.empty() && strokes_.back().points.size() == 1) {
            strokes_.pop_back(); // nothing moved in the plane
        }
        strokes_.push_back({sample.rapid, shade, {}});
        thinner_.Begin(strokes_.back().points, begin);
    }
    thinner_.Add(strokes_.back().points, point);
}

void Trace::TakeSpeed(const Sample &sample)
{
    auto bucket = static_cast<std::size_t>(sample.time_s / bucket_s_);
    while (bucket >= max_buckets) {
        HalveSpeeds();
        bucket = static_cast<std::size_t>(sample.time_s / bucket_s_);
    }
    if (speeds_.size() <= bucket) {
        speeds_.resize(bucket + 1);
    }
    speeds_[bucket].lowest = std::min(speeds_[bucket].lowest, sample.speed_mm_min);
    speeds_[bucket].highest = std::max(speeds_[bucket].highest, sample.speed_mm_min);
}

// Two buckets become one: every peak stays.
void Trace::HalveSpeeds()
{
    const std::size_t half = (speeds_.size() + 1) / 2;
    for (std::size_t i = 0; i < half; ++i) {
        SpeedBucket merged = speeds_[2 * i];
        if (2 * i + 1 < speeds_.size()) {
            merged.lowest = std::min(merged.lowest, speeds_[2 * i + 1].lowest);
            merged.highest = std::max(merged.highest, speeds_[2 * i + 1].highest);
        }
        speeds_[i] = merged;
    }
    speeds_.resize(half);
    bucket_s_ *= 2;
}

} // namespace trevik_run
