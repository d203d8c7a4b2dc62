#include "trevik-run/programmed_path.h"

#include <algorithm>
#include <numbers>

namespace trevik_run
{
namespace
{

constexpr int ellipse_places = 64;

double Length(const Vec4 &way)
{
    return std::sqrt(way[0] * way[0] + way[1] * way[1] + way[2] * way[2] + way[3] * way[3]);
}

double LongestAxis(const Vec4 &way)
{
    return std::max({std::fabs(way[0]), std::fabs(way[1]), std::fabs(way[2]), std::fabs(way[3])});
}

double LeadingSlope(const Vec4 &slope)
{
    return std::max(std::fabs(slope[0]), std::fabs(slope[1]));
}

// Mean of a function of the share over the whole arc.
template <class Function>
double Mean(int places, Function value)
{
    double sum = 0;
    for (int i = 0; i < places; ++i) {
        sum += value((i + 0.5) / places);
    }
    return sum / places;
}

// The mean of max(|sin|, |cos|) over the angles from a to b.
double MeanLead(double a, double b)
{
    constexpr double quarter = std::numbers::pi / 2;
    const auto integral = [](double angle) {
        const double turns = std::floor(angle / quarter + 0.5); // the lead repeats after every quarter turn
        return turns * std::numbers::sqrt2 + std::sin(angle - turns * quarter);
    };
    return (integral(b) - integral(a)) / (b - a);
}

} // namespace

ProgrammedPath::ProgrammedPath(const Vec4 &from, const Vec4 &to, const Machine &machine)
    : line_(MakePathLine(from, to, machine))
{
    for (std::size_t i = 0; i < axis_count; ++i) {
        units_per_pulse_[i] = 1 / machine.pulses_per_unit[i];
    }
}

ProgrammedPath::ProgrammedPath(const Vec4 &from, const Vec4 &to, const Arc &arc, const Machine &machine)
    : ProgrammedPath(from, to, machine)
{
    curved_ = true;
    arc_ = arc;
    const double pulses_per_mm = (machine.pulses_per_unit[0] + machine.pulses_per_unit[1]) / 2;
    const double mean_radius = (arc.radius + arc.end_radius) / 2 * pulses_per_mm;
    circle_steps_ = mean_radius * std::fabs(arc.sweep * MeanLead(arc.angle, arc.angle + arc.sweep));
    rise_ratio_ = std::max(1.0, std::fabs(line_.delta[2]) / circle_steps_);
}

ProgrammedPath PathOf(const Program &program, const Move &move, const Vec4 &from, const Machine &machine)
{
    if (move.arc == no_arc) {
        return {from, move.target, machine};
    }
    return {from, move.target, program.arcs[move.arc], machine};
}

Vec4 ProgrammedPath::At(double share) const
{
    Vec4 place;
    for (std::size_t i = 0; i < axis_count; ++i) {
        place[i] = line_.from[i] + line_.delta[i] * share;
    }
    if (curved_) {
        const double angle = Angle(share);
        const double radius = arc_.radius + (arc_.end_radius - arc_.radius) * share;
        place[0] = (arc_.x + radius * std::cos(angle)) / units_per_pulse_[0];
        place[1] = (arc_.y + radius * std::sin(angle)) / units_per_pulse_[1];
    }
    return place;
}

Vec4 ProgrammedPath::Slope(double share) const
{
    Vec4 slope = line_.delta;
    if (curved_) {
        const double angle = Angle(share);
        const double growth = arc_.end_radius - arc_.radius;
        const double turn = (arc_.radius + growth * share) * arc_.sweep;
        slope[0] = (growth * std::cos(angle) - turn * std::sin(angle)) / units_per_pulse_[0];
        slope[1] = (growth * std::sin(angle) + turn * std::cos(angle)) / units_per_pulse_[1];
    }
    return slope;
}

double ProgrammedPath::Length() const
{
    if (!curved_) {
        return line_.Length();
    }
    // Along a circle the slope is the same everywhere.
    const int places = units_per_pulse_[0] == units_per_pulse_[1] ? 1 : ellipse_places;
    return Mean(places, [this](double share) { return trevik_run::Length(Slope(share)); });
}

double ProgrammedPath::LengthInUnits() const
{
    const double around = (arc_.radius + arc_.end_radius) / 2 * arc_.sweep;
    return std::hypot(around, line_.delta[2] * units_per_pulse_[2]);
}

double ProgrammedPath::Steps() const
{
    return curved_ ? circle_steps_ * rise_ratio_ : LongestAxis(line_.delta);
}

double ProgrammedPath::Pace(double share) const
{
    const Vec4 slope = Slope(share);
    const double leading = curved_ ? LeadingSlope(slope) * rise_ratio_ : LongestAxis(slope);
    return leading / trevik_run::Length(slope);
}

double ProgrammedPath::SmallestRadius() const
{
    return std::min(arc_.radius, arc_.end_radius) / std::max(units_per_pulse_[0], units_per_pulse_[1]);
}

double ProgrammedPath::UnitsPerStep(double share) const
{
    Vec4 way = Slope(share);
    const double steps = curved_ ? LeadingSlope(way) * rise_ratio_ : LongestAxis(way);
    for (std::size_t i = 0; i < axis_count; ++i) {
        way[i] *= units_per_pulse_[i];
    }
    return steps > 0 ? FeedLength({}, way) / steps : 0;
}

// Nearer to the position along the tangent.
double ProgrammedPath::Improved(double share, const Pulses &position) const
{
    constexpr int improvements = 3;
    for (int i = 0; i < improvements; ++i) {
        const Vec4 place = At(share);
        const Vec4 slope = Slope(share);
        double along = 0;
        double square = 0;
        for (std::size_t axis = 0; axis < axis_count; ++axis) {
            along += (position[axis] - place[axis]) * slope[axis];
            square += slope[axis] * slope[axis];
        }
        share = std::clamp(share + along / square, 0.0, 1.0);
    }
    return share;
}

double ProgrammedPath::NearestShare(const Pulses &position) const
{
    if (curved_) {
        return NearestOfArc(position);
    }
    double along = 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        along += (position[i] - line_.from[i]) * line_.delta[i];
    }
    return line_.square > 0 ? std::clamp(along / line_.square, 0.0, 1.0) : 0;
}

// By the angle seen from the center, for a helix by Z too; on an ellipse in pulses that is only near. Where a whole
// turn meets its beginning, a position a pulse off is seen at the wrong end of it: Z tells one end from the other.
double ProgrammedPath::NearestOfArc(const Pulses &position) const
{
    const double angle =
        std::atan2(position[1] * units_per_pulse_[1] - arc_.y, position[0] * units_per_pulse_[0] - arc_.x);
    const double ahead = (angle - arc_.angle) / arc_.sweep;
    const double turn = whole_turn / std::fabs(arc_.sweep);
    const double share = std::min(1.0, ahead - std::floor(ahead / turn) * turn); // of up to a whole turn
    const bool angle_counts = line_.delta[2] == 0 && units_per_pulse_[0] == units_per_pulse_[1];
    const auto refined = [&](double at) { return angle_counts ? at : Improved(at, position); };
    const double margin = std::max(0.01, 2 / circle_steps_); // two pulses of a small circle
    if (share > margin && share < 1 - margin) {
        return refined(share);
    }
    const auto square_at = [&](double at) {
        const Vec4 place = At(at);
        double square = 0;
        for (std::size_t i = 0; i < axis_count; ++i) {
            square += (position[i] - place[i]) * (position[i] - place[i]);
        }
        return square;
    };
    return std::min({refined(share), refined(0), refined(1)},
                    [&](double a, double b) { return square_at(a) < square_at(b); });
}

} // namespace trevik_run
