// The round of a circle has four sides, each around the point that is farthest along one axis; a side ends at the
// corner where both coordinates are the same, or nearly so. Sides in the order of the plus direction: left, top, right,
// bottom. Along a side one coordinate goes from -half to +half a pulse a step.
#include "virtual/arc_path.h"

#include "virtual/arithmetic.h"

namespace trevik::virtual_card
{
namespace
{

constexpr std::uint64_t Square(std::int64_t value)
{
    const auto size = static_cast<std::uint64_t>(Size(value));
    return size * size;
}

constexpr std::int64_t Within(std::int64_t value, std::int64_t most)
{
    return value < -most ? -most : value > most ? most : value;
}

} // namespace

// The other coordinate where one is `offset` from the center: the nearest pulse, 0 or more.
std::int64_t ArcPath::height(std::int64_t offset) const
{
    const std::uint64_t square = Square(offset);
    const std::uint64_t rest = square < radius_squared_ ? radius_squared_ - square : 0;
    return Nearest(SquareRoot(static_cast<double>(rest)));
}

void ArcPath::plan(ArcPoint center, ArcPoint end, bool plus)
{
    center_ = center;
    end_ = end;
    plus_ = plus;
    radius_squared_ = Square(center.x) + Square(center.y);
    half_ = static_cast<std::int64_t>(SquareRoot(static_cast<double>(radius_squared_) / 2)) + 1;
    while (half_ > 0 && height(half_) < half_)
        --half_;
    const bool corner_is_a_pulse = height(half_) == half_;
    side_ = 2 * half_ + (corner_is_a_pulse ? 0 : 1);

    const ArcPoint from_center{end.x - center.x, end.y - center.y};
    first_ = index_of({-center.x, -center.y});
    const std::int64_t round = 4 * side_;
    const std::int64_t ahead = index_of(from_center) - first_;
    steps_ = round == 0 ? 0 : ((plus ? ahead : -ahead) % round + round) % round;
    ends_on_end_ = false;
    if (end.x == 0 && end.y == 0) {
        steps_ = round;
        return;
    }
    const ArcPoint last = at(steps_);
    ends_on_end_ = Size(last.x - end.x) + Size(last.y - end.y) == 1;
    if (ends_on_end_)
        ++steps_;
}

std::int64_t ArcPath::index_of(ArcPoint p) const
{
    if (Size(p.x) > Size(p.y))
        return p.x < 0 ? half_ + Within(p.y, half_) : 2 * side_ + half_ - Within(p.y, half_);
    return p.y > 0 ? side_ + half_ + Within(p.x, half_) : 3 * side_ + half_ - Within(p.x, half_);
}

std::int64_t ArcPath::index_at(std::int64_t step) const
{
    const std::int64_t round = 4 * side_;
    const std::int64_t index = first_ + (plus_ ? step : -step);
    return (index % round + round) % round;
}

// From the center.
ArcPoint ArcPath::on_round(std::int64_t index) const
{
    const std::int64_t offset = index % side_ - half_;
    const std::int64_t far = height(offset);
    switch (index / side_) {
    case 0:
        return {-far, offset};
    case 1:
        return {offset, far};
    case 2:
        return {far, -offset};
    default:
        return {-offset, -far};
    }
}

ArcPoint ArcPath::at(std::int64_t step) const
{
    if (step <= 0 || side_ == 0)
        return {};
    if (step >= steps_ && ends_on_end_)
        return end_;
    const ArcPoint p = on_round(index_at(step));
    return {center_.x + p.x, center_.y + p.y};
}

void ArcPath::slope(std::int64_t step, double &x, double &y) const
{
    if (side_ == 0) {
        x = y = 0;
        return;
    }
    const ArcPoint p = on_round(index_at(step));
    const auto longer = static_cast<double>(Size(p.x) > Size(p.y) ? Size(p.x) : Size(p.y));
    const double way = plus_ ? 1 : -1;
    x = way * static_cast<double>(p.y) / longer;
    y = -way * static_cast<double>(p.x) / longer;
}

// The first coordinate turns in the middle of the left and the right side, the second one in those of top and bottom.
std::int64_t ArcPath::next_turn(std::int64_t step, bool of_x) const
{
    if (side_ == 0)
        return steps_;
    const std::int64_t turn = of_x ? half_ : side_ + half_;
    const std::int64_t between = 2 * side_;
    const std::int64_t beyond = plus_ ? turn - index_at(step) : index_at(step) - turn;
    const std::int64_t ahead = (beyond % between + between) % between;
    const std::int64_t next = step + (ahead == 0 ? between : ahead);
    return next < steps_ ? next : steps_;
}

} // namespace trevik::virtual_card
