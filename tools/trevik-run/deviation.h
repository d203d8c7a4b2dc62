// How far the card's positions are from the programmed path.
#pragma once

#include "trevik-run/programmed_path.h"

namespace trevik_run
{

// In pulses a position is compared with the point of the path whose furthest axis is nearest: "one pulse" then
// means that some point of the path is within one pulse on every axis. In mm it is the plain distance from the
// path.
struct Deviation {
    Vec4 pulses{}; // largest of each axis
    double mm = 0; // largest distance of the linear axes

    double LargestPulses() const;
};

class DeviationMeter
{
  public:
    explicit DeviationMeter(const Machine &machine);

    // The move that the card is on and the one that it comes from. Positions near the joint may be on either.
    void Follow(const ProgrammedPath &before, const ProgrammedPath &now);
    void Measure(const Pulses &position);
    const Deviation &Largest() const { return largest_; }

  private:
    void TakeLargest(const Pulses &position, Vec4 offset);

    Vec4 mm_per_pulse_{}; // 0 for A
    ProgrammedPath before_;
    ProgrammedPath now_;
    Deviation largest_;
};

} // namespace trevik_run
