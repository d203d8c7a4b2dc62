// The samples of a run in a bounded number of points: the path seen from above and the speed over time.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "shared/path.h"
#include "trevik-run/sample.h"

namespace trevik_run
{

using trevik_tools::PathThinner;
using trevik_tools::Point;

// A stretch of path of one kind and one shade.
struct Stroke {
    bool rapid = false;
    int shade = 0; // of A's angle, 0 to shade_count - 1
    std::vector<Point> points;
};

constexpr int shade_count = 24;

struct SpeedBucket {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -1; // below 0: empty
};

class Trace : public SampleSink
{
  public:
    // shade_by_a: A turns in this part.
    Trace(double tolerance_mm, bool shade_by_a) : thinner_(tolerance_mm), shade_by_a_(shade_by_a) {}
    void Take(const Sample &sample) override;

    const std::vector<Stroke> &Strokes() const { return strokes_; }
    const std::vector<SpeedBucket> &Speeds() const { return speeds_; }
    double BucketSeconds() const { return bucket_s_; }
    double EndSeconds() const { return end_s_; }
    bool ShadedByA() const { return shade_by_a_; }

  private:
    void TakePath(const Sample &sample);
    void TakeSpeed(const Sample &sample);
    void HalveSpeeds();

    PathThinner thinner_;
    bool shade_by_a_;
    std::vector<Stroke> strokes_;
    std::vector<SpeedBucket> speeds_;
    double bucket_s_ = 1e-3;
    double end_s_ = 0;
};

} // namespace trevik_run
