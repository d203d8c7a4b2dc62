#include "shared/path.h"

#include <algorithm>
#include <cmath>

namespace trevik_tools
{
namespace
{

double Cross(const Point &a, const Point &b)
{
    return a.x * b.y - a.y * b.x;
}

} // namespace

void PathThinner::Begin(std::vector<Point> &points, const Point &first)
{
    points.push_back(first);
    anchor_ = first;
    low_ = high_ = {};
    reach_ = 0;
}

// Narrows the sleeve to the directions that pass `next`. Going back is outside.
bool PathThinner::InSleeve(const Point &next)
{
    const Point way = {next.x - anchor_.x, next.y - anchor_.y};
    const double distance = std::hypot(way.x, way.y);
    if (distance <= tolerance_) {
        return reach_ <= 2 * tolerance_;
    }
    const bool open = low_.x == 0 && low_.y == 0;
    if (!open && (Cross(low_, way) < 0 || Cross(way, high_) < 0 || distance < reach_ - tolerance_)) {
        return false;
    }
    const double sine = tolerance_ / distance;
    const double cosine = std::sqrt(1 - sine * sine);
    const Point low = {way.x * cosine + way.y * sine, way.y * cosine - way.x * sine};
    const Point high = {way.x * cosine - way.y * sine, way.y * cosine + way.x * sine};
    low_ = open || Cross(low_, low) > 0 ? low : low_;
    high_ = open || Cross(high, high_) > 0 ? high : high_;
    reach_ = std::max(reach_, distance);
    return true;
}

void PathThinner::Add(std::vector<Point> &points, const Point &next)
{
    const Point &last = points.back();
    if (next.x == last.x && next.y == last.y) {
        return;
    }
    if (InSleeve(next) && points.size() > 1) {
        points.back() = next;
        return;
    }
    if (points.size() > 1) {
        anchor_ = last;
        low_ = high_ = {};
        reach_ = 0;
        InSleeve(next);
    }
    points.push_back(next);
}

} // namespace trevik_tools
