#include "trevik-run/arc_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace trevik_run
{
namespace
{

constexpr double same_place_mm = 1e-6; // what sums of offsets and inches leave of equal coordinates
constexpr double relative_tolerance = 1e-3;

double Tolerance(double radius, double tolerance_mm)
{
    return std::max(tolerance_mm, relative_tolerance * radius);
}

// Center of the arc with the given radius: right of the way for a clockwise arc of less than half a turn.
std::string FindCenter(const ArcEnds &ends, double tolerance_mm, std::array<double, 2> &center)
{
    const double dx = ends.to[0] - ends.from[0];
    const double dy = ends.to[1] - ends.from[1];
    const double way = std::hypot(dx, dy);
    if (way < same_place_mm) {
        return "an arc by its radius must end elsewhere than it begins; write a whole turn with I and J";
    }
    const double radius = std::fabs(ends.radius);
    if (radius + Tolerance(radius, tolerance_mm) < way / 2 || radius < same_place_mm) {
        return fmt::format("the radius {:.6g} mm is less than half the way to the end, {:.6g} mm", radius, way / 2);
    }
    const double height = std::sqrt(std::max(0.0, radius * radius - way * way / 4));
    const double left = (ends.clockwise ? -1 : 1) * (ends.radius > 0 ? 1 : -1) * height / way;
    center = {(ends.from[0] + ends.to[0]) / 2 - left * dy, (ends.from[1] + ends.to[1]) / 2 + left * dx};
    return {};
}

double Sweep(double from_angle, double to_angle, bool clockwise)
{
    const double ahead = clockwise ? from_angle - to_angle : to_angle - from_angle;
    const double sweep = ahead > 0 ? ahead : ahead + whole_turn;
    return clockwise ? -sweep : sweep;
}

} // namespace

std::string MakeArc(const ArcEnds &ends, double tolerance_mm, Arc &arc)
{
    std::array<double, 2> center = ends.center;
    if (ends.by_radius) {
        if (std::string wrong = FindCenter(ends, tolerance_mm, center); !wrong.empty()) {
            return wrong;
        }
    }
    const auto [x, y] = center;
    arc.x = x;
    arc.y = y;
    arc.radius = std::hypot(ends.from[0] - x, ends.from[1] - y);
    arc.end_radius = std::hypot(ends.to[0] - x, ends.to[1] - y);
    if (arc.radius < same_place_mm) {
        return "the center of the arc is where it begins";
    }
    if (std::fabs(arc.radius - arc.end_radius) > Tolerance(arc.radius, tolerance_mm)) {
        return fmt::format("the center does not fit the end: the arc begins {:.6g} mm and ends {:.6g} mm from it",
                           arc.radius, arc.end_radius);
    }
    arc.angle = std::atan2(ends.from[1] - y, ends.from[0] - x);
    const bool closed = std::hypot(ends.to[0] - ends.from[0], ends.to[1] - ends.from[1]) < same_place_mm;
    const double to_angle = closed ? arc.angle : std::atan2(ends.to[1] - y, ends.to[0] - x);
    arc.sweep = Sweep(arc.angle, to_angle, ends.clockwise);
    return {};
}

} // namespace trevik_run
