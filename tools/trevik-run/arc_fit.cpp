#include "trevik-run/arc_fit.h"

#include "shared/path.h"

#include <algorithm>
#include <limits>
#include <numbers>

namespace trevik_run
{
namespace
{

constexpr double step_error = 0.5;      // pulses of the following axis, between circle and pulse
constexpr double good_deviation = 0.95; // pulses
constexpr double small_excess = 0.02;   // over what the rounded ends bring with them
constexpr double most_end_gap = 0.35;   // pulses from the circle to the end; at 45 degrees it is stepped over
constexpr double most_bulge = 0.2;      // pulses by which other centers may flatten or bend the arc
constexpr int most_centers = 12;        // tried to either side
constexpr std::size_t even_places = 9;  // looked at between both ends, and
constexpr std::size_t most_sides = 5;   // where an axis turns round: there a deviation is all of one axis

using trevik_tools::Point;

Point operator-(const Point &a, const Point &b)
{
    return {a.x - b.x, a.y - b.y};
}

double Size(const Point &p)
{
    return std::sqrt(p.x * p.x + p.y * p.y);
}

Point InPlane(const Pulses &pulses)
{
    return {static_cast<double>(pulses[0]), static_cast<double>(pulses[1])};
}

Point CenterOf(const Point &a, const Point &b, const Point &c)
{
    const Point ab = b - a;
    const Point ac = c - a;
    const double area = 2 * (ab.x * ac.y - ab.y * ac.x);
    const double b2 = ab.x * ab.x + ab.y * ab.y;
    const double c2 = ac.x * ac.x + ac.y * ac.y;
    return {a.x + (ac.y * b2 - ab.y * c2) / area, a.y + (ab.x * c2 - ac.x * b2) / area};
}

// The angle by which a circle around `center` turns from a to b on its way, counter-clockwise above 0.
double TurnAround(const Point &center, const Point &a, const Point &b, bool clockwise)
{
    const Point from = a - center;
    const Point to = b - center;
    const double turn = std::atan2(from.x * to.y - from.y * to.x, from.x * to.x + from.y * to.y);
    const double whole = 2 * std::numbers::pi;
    if (clockwise) {
        return turn > 0 ? turn - whole : turn;
    }
    return turn < 0 ? turn + whole : turn;
}

// A distance across the path as the furthest axis sees it, with the card's own stepping added. `x` and `y`: the unit
// vector across.
double InAxes(double across, double x, double y)
{
    const double larger = std::max(std::fabs(x), std::fabs(y));
    return (std::fabs(across) + step_error * larger) / (std::fabs(x) + std::fabs(y));
}

// The work of FitCircle for one piece.
class Fitter
{
  public:
    Fitter(const ProgrammedPath &path, const ArcPiece &piece);
    bool Find(PulseCircle &circle);

  private:
    void AddPlace(double share);
    void AddSides();
    bool Closed() const { return from_.x == to_.x && from_.y == to_.y; }
    void TryAlongBisector();
    void TryAround();
    void Try(double x, double y);
    bool GoesRound(const Point &center) const;
    double DeviationOf(const Point &center) const;
    double EndDeviation(const Point &rounded, std::size_t place) const;

    struct Place {
        Point at;
        Point across{}; // unit vector
    };

    const ProgrammedPath &path_;
    const ArcPiece &piece_;
    Point from_;
    Point to_;
    Point center_; // of the programmed piece
    std::array<Place, even_places + most_sides> places_;
    std::size_t place_count_ = 0;
    Point best_;
    double best_deviation_ = std::numeric_limits<double>::infinity();
};

Fitter::Fitter(const ProgrammedPath &path, const ArcPiece &piece)
    : path_(path), piece_(piece), from_(InPlane(piece.from)), to_(InPlane(piece.to))
{
    for (std::size_t i = 0; i < even_places; ++i) {
        AddPlace(static_cast<double>(i) / (even_places - 1));
    }
    const std::size_t last = (even_places - 1) * (Closed() ? 3 : 4) / 4;
    center_ = CenterOf(places_[0].at, places_[last / 2].at, places_[last].at);
    AddSides();
    for (std::size_t i = 0; i < place_count_; ++i) {
        Place &place = places_[i];
        const Point way = place.at - center_;
        const double size = Size(way);
        place.across = {way.x / size, way.y / size};
    }
}

void Fitter::AddPlace(double share)
{
    const Vec4 at = path_.At(piece_.from_share + (piece_.to_share - piece_.from_share) * share);
    places_[place_count_++].at = {at[0], at[1]};
}

void Fitter::AddSides()
{
    constexpr double quarter = std::numbers::pi / 2;
    const double from = path_.Angle(piece_.from_share);
    const double to = path_.Angle(piece_.to_share);
    for (double angle = std::ceil(std::min(from, to) / quarter) * quarter;
         angle < std::max(from, to) && place_count_ < places_.size(); angle += quarter) {
        AddPlace((angle - from) / (to - from));
    }
}

bool Fitter::Find(PulseCircle &circle)
{
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    // A piece that is as good as straight has its center anywhere.
    if (!(std::fabs(center_.x) < most) || !(std::fabs(center_.y) < most)) {
        return false;
    }
    Closed() ? TryAround() : TryAlongBisector();
    const double ends = std::max(EndDeviation(from_, 0), EndDeviation(to_, even_places - 1));
    circle.center = {static_cast<std::int32_t>(best_.x), static_cast<std::int32_t>(best_.y)};
    circle.deviation = best_deviation_;
    return best_deviation_ <= std::max(good_deviation, std::min(1.0, ends + small_excess));
}

// Only centers on the perpendicular bisector of the ends are equally far from both. Whole pulses near it are few, and
// not all near the programmed center: but a center that is shifted along the bisector changes the arc between the
// ends by a small part of the shift.
void Fitter::TryAlongBisector()
{
    const Point chord = to_ - from_;
    const double size = Size(chord);
    const Point along = {-chord.y / size, chord.x / size};
    const Point middle = {(from_.x + to_.x) / 2, (from_.y + to_.y) / 2};
    const Point to_center = center_ - middle;
    const double height = to_center.x * along.x + to_center.y * along.y;
    const double half_turn = path_.Turn() * (piece_.to_share - piece_.from_share) / 2;
    const double bulge = 1 - std::cos(half_turn); // of a shift by 1
    const int reach = static_cast<int>(std::clamp<double>(most_bulge / bulge, 1, most_centers));
    for (int i = -reach; i <= reach; ++i) {
        if (std::fabs(along.x) >= std::fabs(along.y)) {
            const double x = std::rint(middle.x + along.x * height) + i;
            Try(x, std::rint(middle.y + along.y * (x - middle.x) / along.x));
        } else {
            const double y = std::rint(middle.y + along.y * height) + i;
            Try(std::rint(middle.x + along.x * (y - middle.y) / along.y), y);
        }
    }
}

void Fitter::TryAround()
{
    for (int i = -1; i <= 1; ++i) {
        for (int j = -1; j <= 1; ++j) {
            Try(std::rint(center_.x) + i, std::rint(center_.y) + j);
        }
    }
}

void Fitter::Try(double x, double y)
{
    const double deviation = DeviationOf({x, y});
    if (deviation < best_deviation_) {
        best_deviation_ = deviation;
        best_ = {x, y};
    }
}

// With its center on the other side of the chord a circle meets the same ends, and goes round nearly a whole turn too
// much.
bool Fitter::GoesRound(const Point &center) const
{
    const bool clockwise = path_.Turn() < 0;
    const double wanted = TurnAround(center_, places_[0].at, places_[even_places - 1].at, clockwise);
    return Closed() || std::fabs(TurnAround(center, from_, to_, clockwise) - wanted) < std::numbers::pi / 2;
}

double Fitter::DeviationOf(const Point &center) const
{
    const double radius = Size(from_ - center);
    double largest = 0;
    if (radius < 1 || std::fabs(Size(to_ - center) - radius) > most_end_gap || !GoesRound(center)) {
        return std::numeric_limits<double>::infinity();
    }
    for (std::size_t i = 0; i < place_count_; ++i) {
        const Place &place = places_[i];
        const double across = Size(place.at - center) - radius;
        largest = std::max(largest, InAxes(across, place.across.x, place.across.y));
    }
    return largest;
}

double Fitter::EndDeviation(const Point &rounded, std::size_t place) const
{
    const Point off = rounded - places_[place].at;
    const Point &across = places_[place].across;
    return InAxes(off.x * across.x + off.y * across.y, across.x, across.y);
}

} // namespace

bool FitCircle(const ProgrammedPath &path, const ArcPiece &piece, PulseCircle &circle)
{
    return Fitter(path, piece).Find(circle);
}

} // namespace trevik_run
