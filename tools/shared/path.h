// Polylines of a drawing, with no more points than one can see.
#pragma once

#include <vector>

namespace trevik_tools
{

struct Point {
    double x = 0;
    double y = 0;
};

// Drops points that lie on the line through their neighbours within the tolerance: from the last point kept, the
// directions that pass all later points narrow a sleeve, and a point outside the sleeve begins a new one.
class PathThinner
{
  public:
    explicit PathThinner(double tolerance) : tolerance_(tolerance) {}
    void Begin(std::vector<Point> &points, const Point &first);
    void Add(std::vector<Point> &points, const Point &next);

  private:
    bool InSleeve(const Point &next);

    double tolerance_;
    Point anchor_;
    Point low_; // directions that bound the sleeve; both 0 while it is open
    Point high_;
    double reach_ = 0;
};

} // namespace trevik_tools
