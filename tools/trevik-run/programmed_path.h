// The way that a move is programmed to go, straight or curved, in unrounded pulses.
//
// A share runs from 0 at the beginning to 1 at the end; on an arc it is the share of the angle.
#pragma once

#include "trevik-run/machine.h"
#include "trevik-run/program.h"

namespace trevik_run
{

// What the card divides the speed of an arc by: its registers pace the leading axis, which is slower than the path.
// The path speed then swings around the one that is asked for, from 0.90 to 1.27 of it.
constexpr double arc_speed_divisor = 1.11107;

class ProgrammedPath
{
  public:
    ProgrammedPath() = default;
    ProgrammedPath(const Vec4 &from, const Vec4 &to, const Machine &machine);
    ProgrammedPath(const Vec4 &from, const Vec4 &to, const Arc &arc, const Machine &machine);

    bool Curved() const { return curved_; }
    const PathLine &Line() const { return line_; } // of an arc: its chord
    Vec4 At(double share) const;
    Vec4 Slope(double share) const; // change of the place per share
    double Length() const;          // pulses
    double LengthInUnits() const;   // mm, of an arc
    double NearestShare(const Pulses &position) const;
    double Turn() const { return arc_.sweep; } // radians
    double Angle(double share) const { return arc_.angle + arc_.sweep * share; }

    // The card's speed registers count the pulses of the longest axis of a line, and of an arc the steps of
    // whichever of X and Y leads in the octant (of Z where a helix is that steep). Those of the whole move:
    double Steps() const;
    // And their speed where the speed along the path is 1.
    double Pace(double share) const;
    double SmallestRadius() const; // pulses, of an arc

    // mm of the way (degrees where only A turns) at the share for each of these pulses.
    double UnitsPerStep(double share) const;

  private:
    double Improved(double share, const Pulses &position) const;
    double NearestOfArc(const Pulses &position) const;

    PathLine line_;
    Vec4 units_per_pulse_{};
    bool curved_ = false;
    Arc arc_;
    double circle_steps_ = 0;
    double rise_ratio_ = 1; // card pulses per step of the circle: above 1 where Z has more of them
};

// Of a move that begins at `from`.
ProgrammedPath PathOf(const Program &program, const Move &move, const Vec4 &from, const Machine &machine);

} // namespace trevik_run
