// The pulses of a circular operation: each step moves the leading axis of the octant by one pulse, and the other axis
// to the pulse nearest to the circle. Positions at any step are computed at once.
#pragma once

#include <cstdint>

namespace trevik::virtual_card
{

// Pulses along the two axes of a circle.
struct ArcPoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

class ArcPath
{
  public:
    // A circle around `center` from the origin to `end`, both signed pulses; an end at the origin: a full circle.
    // `plus`: clockwise with the first axis to the right and the second one up.
    // The path ends when the leading axis of the end's octant is where the end has it; with a step more on the end
    // itself, if that is a pulse off.
    void plan(ArcPoint center, ArcPoint end, bool plus);

    std::int64_t steps() const { return steps_; }

    // Where the path is after a step, from the origin; 0 to steps().
    ArcPoint at(std::int64_t step) const;

    // Pulses that each axis makes a step, on the circle itself.
    void slope(std::int64_t step, double &x, double &y) const;

    // The first step beyond `step` at which one coordinate may turn round, or steps().
    std::int64_t next_turn(std::int64_t step, bool of_x) const;

  private:
    // Where on the round of the circle a point lies: the number of the step that leads there.
    std::int64_t index_of(ArcPoint from_center) const;
    std::int64_t index_at(std::int64_t step) const;
    ArcPoint on_round(std::int64_t index) const;
    std::int64_t height(std::int64_t offset) const;

    ArcPoint center_;
    ArcPoint end_;
    std::uint64_t radius_squared_ = 0;
    std::int64_t half_ = 0;  // steps from the middle of a side of the circle to its corner
    std::int64_t side_ = 0;  // steps of a side, with the one across the corner
    std::int64_t first_ = 0; // index of the start
    std::int64_t steps_ = 0;
    bool plus_ = true;
    bool ends_on_end_ = false;
};

} // namespace trevik::virtual_card
