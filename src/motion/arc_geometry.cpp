#include "motion/arc_geometry.h"

#include "motion/profile.h"

#include <cmath>
#include <numbers>

namespace trevik
{
namespace
{

std::int32_t Truncated(double value)
{
    return static_cast<std::int32_t>(TruncateToRegister(value));
}

std::int32_t WrappingSum(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int64_t Absolute(std::int64_t value)
{
    return value < 0 ? -value : value;
}

std::uint64_t Square(std::int64_t value)
{
    const auto size = static_cast<std::uint64_t>(Absolute(value));
    return size * size;
}

// Steps from the start to the border of its octant, and from the border of the end's octant to the end. `q`: the
// steps of a whole octant.
double StepsLeft(unsigned octant, double q, double x, double y)
{
    switch (octant) {
    case 0:
        return q - y;
    case 1:
        return -x;
    case 2:
        return q - x;
    case 3:
        return y;
    case 4:
        return y + q;
    case 5:
        return x;
    case 6:
        return x + q;
    default:
        return -y;
    }
}
double StepsIn(unsigned octant, double q, double x, double y)
{
    switch (octant) {
    case 0:
        return y;
    case 1:
        return x + q;
    case 2:
        return x;
    case 3:
        return q - y;
    case 4:
        return -y;
    case 5:
        return q - x;
    case 6:
        return -x;
    default:
        return y + q;
    }
}

// Steps to an end in the start's own octant: along its leading axis, or, when that leads backwards, all the way
// round.
std::int64_t StepsWithin(unsigned octant, double whole, Point end)
{
    std::int64_t ahead = 0;
    switch (octant) {
    case 0:
    case 7:
        ahead = end.y;
        break;
    case 1:
    case 2:
        ahead = end.x;
        break;
    case 3:
    case 4:
        ahead = -std::int64_t{end.y};
        break;
    default:
        ahead = -std::int64_t{end.x};
        break;
    }
    return ahead < 0 ? static_cast<std::int64_t>(whole + static_cast<double>(ahead)) : ahead;
}

// Stands for the slope of a vertical line.
constexpr double vertical = 1.7e308;

// A perpendicular bisector: through a point, with a slope.
struct Bisector {
    double x, y, slope;

    // Where it is at a whole coordinate, each part truncated by itself.
    std::int32_t at(std::int32_t column) const
    {
        return WrappingSum(Truncated((column - x) * slope), Truncated(y));
    }
};

Point Crossing(const Bisector &one, const Bisector &two)
{
    if (one.slope == vertical) {
        const std::int32_t x = Truncated(one.x);
        return {x, two.at(x)};
    }
    if (two.slope == vertical) {
        const std::int32_t x = Truncated(two.x);
        return {x, one.at(x)};
    }
    const double k1 = one.slope;
    const double k2 = two.slope;
    const std::int32_t x = Truncated((k2 * two.x - k1 * one.x + one.y - two.y) / (k2 - k1));
    if (x - one.x != 0)
        return {x, one.at(x)};
    return {x, Truncated((k1 * k2 * (two.x - one.x) + k2 * one.y - k1 * two.y) / (k2 - k1))};
}

bool Odd(bool a, bool b, bool c)
{
    return (a != b) != c;
}

struct RealPoint {
    double x, y;
};

// Center on the perpendicular bisector y = k x + b of a way that is not along the first axis.
RealPoint CenterOnBisector(double r, Point end, bool other_way)
{
    const double k = -static_cast<double>(end.x) / end.y;
    const double b = static_cast<double>(Square(end.x) + Square(end.y)) / (2.0 * end.y);
    const double A = k * k + 1;
    const double B = 2 * k * b;
    const double C = b * b - r * r;
    const double discriminant = B * B - 4 * A * C;
    double x = -B / (2 * A);
    if (discriminant > 0) {
        const double root = std::sqrt(discriminant);
        const bool plus = !Odd(other_way, r < 0, end.y < 0);
        x = (plus ? -B + root : -B - root) / (2 * A);
    }
    return {x, k * x + b};
}

// The same for a way along the first axis.
RealPoint CenterAbove(double r, Point end, bool other_way)
{
    const std::int32_t middle = end.x / 2; // whole pulses
    const double x = middle;
    if (std::abs(r) <= std::abs(x))
        return {x, 0};
    const double y = std::sqrt(r * r - x * x);
    return {x, Odd(other_way, r < 0, end.x < 0) ? y : -y};
}

// A center nearer to the start than to the end goes one pulse further away from the start, along its smaller
// coordinate.
void KeepAwayFromStart(Point &center, Point end)
{
    const std::uint64_t to_start = Square(center.x) + Square(center.y);
    const std::uint64_t along = Square(std::int64_t{center.x} - end.x);
    const std::uint64_t across = Square(std::int64_t{center.y} - end.y);
    if (along <= to_start && across <= to_start - along)
        return;
    std::int32_t &moved = Absolute(center.x) < Absolute(center.y) ? center.x : center.y;
    moved = WrappingSum(moved, moved >= 0 ? 1 : -1);
}

} // namespace

unsigned ArcOctant(std::int64_t x, std::int64_t y)
{
    const std::int64_t width = Absolute(x);
    const std::int64_t height = Absolute(y);
    unsigned octant = 0;
    if (x >= 0 && y > 0)
        octant = width >= height ? 3 : 2;
    if (x < 0 && y >= 0)
        octant = width > height ? 0 : 1;
    if (x <= 0 && y < 0)
        octant = width >= height ? 7 : 6;
    if (x > 0 && y <= 0)
        octant = width > height ? 4 : 5;
    return octant;
}

std::uint32_t ArcSteps(const Circle &circle, std::uint8_t direction)
{
    const auto [center, end] = circle;
    const double cx = center.x;
    const double cy = center.y;
    const double q = std::sqrt(cx * cx + cy * cy) / std::numbers::sqrt2;
    const double whole = 8 * q;
    const std::int64_t start_x = -std::int64_t{center.x};
    const std::int64_t start_y = -std::int64_t{center.y};
    const std::int64_t end_x = std::int64_t{end.x} - center.x;
    const std::int64_t end_y = std::int64_t{end.y} - center.y;
    const unsigned first = ArcOctant(start_x, start_y);
    const unsigned last = ArcOctant(end_x, end_y);

    std::int64_t steps = 0;
    if (first != last) {
        const unsigned crossed = (last - first - 1) % 8;
        steps = static_cast<std::int64_t>(
            crossed * q + StepsLeft(first, q, static_cast<double>(start_x), static_cast<double>(start_y)) +
            StepsIn(last, q, static_cast<double>(end_x), static_cast<double>(end_y)));
    } else {
        steps = StepsWithin(first, whole, end);
    }
    if (direction == 1)
        steps = static_cast<std::int64_t>(whole) - steps;
    if (end == Point{})
        steps = static_cast<std::int64_t>(whole);
    return static_cast<std::uint32_t>(steps + 2);
}

ThreePointArc ThreePointCenter(Point way, Point end)
{
    const double wx = way.x;
    const double wy = way.y;
    const double ex = end.x;
    const double ey = end.y;
    ThreePointArc arc;
    arc.circle.end = end;
    arc.direction = std::int64_t{way.x} * end.y >= std::int64_t{way.y} * end.x ? 1 : 0;
    const Bisector one{wx / 2, wy / 2, way.y != 0 ? -wx / wy : vertical};
    const Bisector two{(wx + ex) / 2, (wy + ey) / 2, end.y != way.y ? (wx - ex) / (ey - wy) : vertical};
    arc.collinear = one.slope == two.slope;
    if (!arc.collinear)
        arc.circle.center = Crossing(one, two);
    return arc;
}

bool RadiusCenter(std::int32_t radius, Point end, std::uint8_t direction, Point &center)
{
    if (end == Point{})
        return false;
    const bool other_way = direction != 0;
    const RealPoint exact =
        end.y != 0 ? CenterOnBisector(radius, end, other_way) : CenterAbove(radius, end, other_way);
    center = {Truncated(exact.x), Truncated(exact.y)};
    KeepAwayFromStart(center, end);
    return true;
}

} // namespace trevik
