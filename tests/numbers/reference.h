// The motion that written registers describe, integrated from speed over time. It shares nothing with the library or the
// virtual chip: docs/virtual-cards.md and this file are two statements of the same thing.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>
#include <vector>

namespace trevik::test::reference
{

inline constexpr double endless = std::numeric_limits<double>::infinity();

// A change of speed with two equal curved sections, or a time of even speed. Pulses/s, s.
struct Phase {
    double from, to, curved_s, seconds;
    double used; // it may be broken off

    double speed(double t) const
    {
        const double steepest = from == to ? 0 : (to - from) / (seconds - curved_s);
        if (t < curved_s)
            return from + steepest * t * t / (2 * curved_s);
        if (t <= seconds - curved_s)
            return from + steepest * (t - curved_s / 2);
        return to - steepest * (seconds - t) * (seconds - t) / (2 * curved_s);
    }
    // Simpson's rule from break to break, which is exact for parabolas.
    double distance(double t) const
    {
        double sum = 0;
        double begin = 0;
        for (const double mark : {curved_s, seconds - curved_s, seconds}) {
            const double end = std::min(t, mark);
            if (end > begin)
                sum += (end - begin) / 6 * (speed(begin) + 4 * speed((begin + end) / 2) + speed(end));
            begin = std::max(begin, end);
        }
        return sum;
    }
    double length() const { return used == endless ? endless : distance(used); }
};

// The rising point of a condition between two numbers.
template <class Condition>
double Bisect(double low, double high, Condition reached)
{
    for (int i = 0; i < 100 && low < high; ++i) {
        const double middle = low + (high - low) / 2;
        (reached(middle) ? high : low) = middle;
    }
    return high;
}

struct Path {
    std::vector<Phase> phases;

    void add(const Phase &phase)
    {
        if (phase.used > 0)
            phases.push_back(phase);
    }
    template <class Of>
    double at(double t, Of of) const // of(phase before, whole), of(the phase at t, its time)
    {
        double result = 0;
        for (const Phase &phase : phases) {
            result = of(result, phase, std::min(t, phase.used));
            if (t <= phase.used)
                break;
            t -= phase.used;
        }
        return result;
    }
    double distance(double t) const
    {
        return at(t, [](double sum, const Phase &phase, double s) { return sum + phase.distance(s); });
    }
    double speed(double t) const
    {
        return at(t, [](double, const Phase &phase, double s) { return phase.speed(s); });
    }
    double seconds() const
    {
        double sum = 0;
        for (const Phase &phase : phases)
            sum += phase.used;
        return sum;
    }
    // Ends it where it is so long.
    void cut(double length)
    {
        for (auto phase = phases.begin(); phase != phases.end(); ++phase) {
            const double own = phase->length();
            if (own >= length) {
                const double slowest = std::max(std::min(phase->from, phase->to), 1e-9);
                const double latest = phase->used == endless ? length / slowest * 1.001 + 1e-9 : phase->used;
                phase->used = Bisect(0, latest, [&](double t) { return phase->distance(t) >= length; });
                phases.erase(length > 0 ? phase + 1 : phase, phases.end());
                return;
            }
            length -= own;
        }
    }
};

enum class Code : std::uint32_t { // of registers, from 0x80 for the next operation and from 0x90 for this one
    Distance,
    StartSpeed,
    MaxSpeed,
    AccelRate,
    DecelRate,
    Multiplier,
    RampDownPoint,
    Mode,
    Center,
    SAccelRange,
    SDecelRange
};

struct Registers {
    std::array<std::uint32_t, 16> words{};

    std::uint32_t operator[](Code code) const { return words[static_cast<std::size_t>(code)]; }
    double unit() const { return 300.0 / ((*this)[Code::Multiplier] + 1.0); }
    double start_speed() const { return (*this)[Code::StartSpeed] * unit(); }
    double max_speed() const { return (*this)[Code::MaxSpeed] * unit(); }
    std::uint32_t operation() const { return (*this)[Code::Mode] & 0x7F; }
    bool arc() const { return operation() == 0x64 || operation() == 0x65; }
    bool positioning() const { return operation() == 0x41; }
    bool continuous() const { return operation() == 0x00 || operation() == 0x08; }
    int way() const { return operation() == 0x08 ? -1 : 1; }
    bool manual() const { return ((*this)[Code::Mode] & 0x2000) != 0 && !arc(); }
    std::int32_t distance() const { return static_cast<std::int32_t>((*this)[Code::Distance]); }

    Phase ramp(double from, double to) const
    {
        const double clocks = ((*this)[to < from ? Code::DecelRate : Code::AccelRate] + 1.0) / 19660800;
        const double range = (*this)[to < from ? Code::SDecelRange : Code::SAccelRange];
        const double units = std::abs(to - from) / unit();
        const bool s_curve = ((*this)[Code::Mode] & 0x400) != 0;
        const double curved = !s_curve ? 0 : range == 0 || 2 * range > units ? units / 2 : range;
        const double seconds = 2 * 8 * clocks * curved + 4 * clocks * (units - 2 * curved);
        return {from, to, 8 * clocks * curved, seconds, seconds};
    }
};

// From this speed over this distance: the operation that the registers describe.
inline Path Plan(double speed, double distance, const Registers &registers, bool slows_down)
{
    const double start = registers.start_speed();
    const double max = registers.max_speed();
    const bool continuous = distance == endless;
    const double point = registers[Code::RampDownPoint];
    Path path;
    path.add(registers.ramp(speed, max));
    const double rise = path.phases.empty() ? 0 : path.phases.front().length();
    path.add({max, max, 0, endless, endless});
    if (continuous)
        return path;
    if (slows_down && registers.manual() && point > 0) {
        path.cut(std::max(0.0, distance - point));
        const double there = path.phases.empty() ? speed : path.speed(endless);
        const double end = std::min(start, max);
        path.add(registers.ramp(there, end));
        path.add({end, end, 0, endless, endless});
    } else if (slows_down && !registers.manual() && max > start) {
        double top = max;
        if (rise + registers.ramp(max, start).length() > distance) {
            const auto covers = [&](double tried) {
                return registers.ramp(speed, tried).length() + registers.ramp(tried, start).length() >= distance;
            };
            top = speed > max ? speed - Bisect(0, speed - max, [&](double drop) { return covers(speed - drop); })
                              : Bisect(std::max(start, speed), max, covers);
            path.phases.clear();
            path.add(registers.ramp(speed, top));
        } else {
            path.cut(distance - registers.ramp(max, start).length());
        }
        path.add(registers.ramp(top, start));
        path.add({start, start, 0, endless, endless});
    }
    path.cut(distance);
    return path;
}

struct Point {
    std::int64_t x, y;
    bool operator==(const Point &) const = default;
};

inline std::int64_t OnCircle(double radius_squared, std::int64_t along)
{
    return std::llround(std::sqrt(radius_squared - static_cast<double>(along * along)));
}

// The pulses of a whole circle, clockwise from the upper left diagonal: side after side, the leading axis by one each.
inline std::vector<Point> Circle(double radius_squared)
{
    auto reach = static_cast<std::int64_t>(std::sqrt(radius_squared / 2));
    reach += OnCircle(radius_squared, reach + 1) > reach ? 1 : 0; // a pulse on the diagonal belongs to both sides
    std::vector<Point> points;
    for (const std::int64_t way : {1, -1}) {
        for (std::int64_t along = -reach; along <= reach; ++along)
            points.push_back({along * way, way * OnCircle(radius_squared, along)});
        for (std::int64_t along = reach; along >= -reach; --along)
            points.push_back({way * OnCircle(radius_squared, along), along * way});
    }
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.front() == points.back())
        points.pop_back();
    return points;
}

// From the start at (0, 0) to an end on the circle; to the start: all the way round.
inline std::vector<Point> Arc(Point center, Point end, bool clockwise)
{
    const double radius_squared = static_cast<double>(center.x * center.x + center.y * center.y);
    std::vector<Point> circle = Circle(radius_squared);
    if (!clockwise)
        std::reverse(circle.begin(), circle.end());
    const auto find = [&](Point p) {
        return std::find(circle.begin(), circle.end(), Point{p.x - center.x, p.y - center.y}) - circle.begin();
    };
    std::rotate(circle.begin(), circle.begin() + find({0, 0}), circle.end());
    circle.push_back(circle.front());
    for (Point &p : circle)
        p = {p.x + center.x, p.y + center.y};
    const auto last = std::find(circle.begin() + 1, circle.end(), end);
    circle.erase(last == circle.end() ? last : last + 1, circle.end());
    return circle;
}

// One operation of a card and one that waits behind it, by what is written to the card.
class Card
{
  public:
    std::array<std::int64_t, 4> stands{}; // where the axes are while nothing runs; a stop leaves it to its user

    void write(unsigned axis, std::uint32_t code, std::uint32_t value)
    {
        if (code < 0x80 || code > 0x9F)
            return;
        advance(0);
        const bool direct = code >= 0x90;
        (direct ? direct_ : preset_)[axis].words[code & 0xF] = value;
        if ((code & 0xF) == static_cast<std::uint32_t>(Code::Mode))
            direct_last_[axis] = direct;
        if (running_ && !stopping_ && direct && axis == lead_)
            changed(static_cast<Code>(code & 0xF));
    }
    void command(unsigned axes, std::uint32_t code)
    {
        advance(0);
        const bool touches = running_ && (axes & axes_) != 0;
        if (code >= 0x51 && code <= 0x53)
            start(axes, code);
        else if (code == 0x4A && touches)
            slow_down(axes);
        else if ((code == 0x49 || code == 0x05) && touches)
            settle(whole(done()));
        else if (code == 0x57 && !running_)
            restart();
    }
    void advance(double seconds)
    {
        time_s_ += seconds;
        while (running_ && time_s_ >= path_.seconds()) {
            time_s_ -= path_.seconds();
            leg_ended();
        }
    }

    bool running() const { return running_; }
    bool queued() const { return queued_axes_ != 0; }
    bool arc() const { return !points_.empty(); }
    bool moves(unsigned axis) const { return (axes_ >> axis & 1) != 0; }
    double left_s() const { return path_.seconds() - time_s_; }
    double since_end_s() const { return time_s_; }
    double done() const { return before_ + path_.distance(time_s_); } // by the leading axis since the leg began
    // Where an axis is when the leading one has done so many.
    std::int64_t at(unsigned axis, std::int64_t pulses) const
    {
        if (arc()) {
            const auto last = static_cast<std::int64_t>(points_.size()) - 1;
            const Point point = points_[static_cast<std::size_t>(std::clamp<std::int64_t>(pulses, 0, last))];
            return from_[axis] + (axis == lead_ ? point.x : point.y);
        }
        if (axis == lead_)
            return from_[axis] + way_ * pulses;
        if (length_ == 0)
            return from_[axis];
        return from_[axis] + std::llround(static_cast<double>(goes_[axis]) * static_cast<double>(pulses) / length_);
    }

  private:
    template <class Of>
    void each(unsigned axes, Of of)
    {
        for (unsigned axis = 0; axis < 4; ++axis)
            if ((axes >> axis & 1) != 0)
                of(axis);
    }
    const Registers &now() const { return direct_[lead_]; }
    static std::int64_t whole(double pulses) { return static_cast<std::int64_t>(std::floor(pulses + 1e-6)); }
    bool slows_down() const { return start_ != 0x51; }

    void start(unsigned axes, std::uint32_t code)
    {
        const auto first = static_cast<unsigned>(std::countr_zero(axes));
        if (!running_) {
            time_s_ = 0;
            take(axes, code, !direct_last_[first]);
        } else if (!direct_last_[first]) {
            queued_axes_ = axes;
            queued_start_ = code;
        } else if (now().continuous()) {
            changed(Code::MaxSpeed);
        }
    }
    void take(unsigned axes, std::uint32_t code, bool preset)
    {
        axes_ = axes;
        start_ = code;
        origin_ = stands;
        lead_ = static_cast<unsigned>(std::countr_zero(axes));
        points_.clear();
        each(axes, [&](unsigned axis) {
            if (preset)
                direct_[axis] = preset_[axis];
            goes_[axis] = direct_[axis].distance();
            if (!now().arc() && std::abs(goes_[axis]) > std::abs(goes_[lead_]))
                lead_ = axis;
        });
        if (now().arc()) {
            const auto second = static_cast<unsigned>(std::countr_zero(axes & (axes - 1)));
            const auto center = [this](unsigned axis) {
                return static_cast<std::int32_t>(direct_[axis][Code::Center]);
            };
            points_ =
                Arc({center(lead_), center(second)}, {goes_[lead_], goes_[second]}, now().operation() == 0x64);
        }
        launch();
    }
    // From standstill over what goes_ or points_ say.
    void launch()
    {
        running_ = true;
        stopping_ = turning_ = false;
        from_ = stands;
        before_ = 0;
        way_ = now().continuous() ? now().way() : goes_[lead_] < 0 ? -1 : 1;
        asked_way_ = way_;
        length_ = now().continuous() ? endless
                  : arc()            ? static_cast<double>(points_.size() - 1)
                                     : static_cast<double>(std::abs(goes_[lead_]));
        path_ = Plan(start_ == 0x53 ? now().start_speed() : now().max_speed(), length_, now(), slows_down());
    }
    void leg_ended()
    {
        const bool comes_back = turning_;
        const bool stopped = stopping_;
        settle(whole(before_ + path_.distance(path_.seconds())));
        if (stopped)
            return;
        if (comes_back) {
            start_ = 0x53;
            goes_[lead_] = origin_[lead_] + now().distance() - stands[lead_];
            launch();
        } else if (queued_axes_ != 0) {
            take(std::exchange(queued_axes_, 0), queued_start_, true);
        }
    }
    void settle(std::int64_t pulses)
    {
        running_ = false;
        done_ = pulses;
        each(axes_, [&](unsigned axis) { stands[axis] = at(axis, pulses); });
    }
    void slow_to(double speed, const Registers &rates)
    {
        const double has = path_.speed(time_s_);
        before_ = done();
        path_.phases.clear();
        time_s_ = 0;
        if (has > speed && rates.ramp(has, speed).seconds > 1e-9) // otherwise it is over with the next request
            path_.add(rates.ramp(has, speed));
    }
    void slow_down(unsigned axes)
    {
        queued_axes_ = 0;
        const double left = turning_ ? endless : length_ - done();
        turning_ = false;
        stopping_ = true;
        slow_to(0, direct_[(axes >> lead_ & 1) != 0 ? lead_ : static_cast<unsigned>(std::countr_zero(axes))]);
        path_.cut(left);
    }
    // What a stop interrupted goes on, from where its axes stand.
    void restart()
    {
        if (arc()) {
            const auto here = [this](std::int64_t pulses) {
                bool same = true;
                each(axes_, [&](unsigned axis) { same = same && at(axis, pulses) == stands[axis]; });
                return same;
            };
            done_ += here(done_) ? 0 : here(done_ - 1) ? -1 : 1; // a stop is within a pulse
            points_.erase(points_.begin(), points_.begin() + static_cast<std::ptrdiff_t>(done_));
            for (auto point = points_.rbegin(); point != points_.rend(); ++point)
                *point = {point->x - points_.front().x, point->y - points_.front().y};
        }
        each(axes_, [&](unsigned axis) { goes_[axis] += from_[axis] - stands[axis]; });
        time_s_ = 0;
        launch();
    }
    // Goes straight on while it can still slow down before its end; otherwise it slows down and comes back.
    void changed(Code code)
    {
        const bool positioning = now().positioning() && (code == Code::Distance || code == Code::Mode);
        const bool turned = now().continuous() && code == Code::Mode && now().way() != asked_way_;
        if (!positioning && !turned && !(now().continuous() && code == Code::MaxSpeed))
            return;
        asked_way_ = now().way();
        const std::int64_t target = origin_[lead_] + now().distance() - from_[lead_];
        const bool same_way = positioning ? target * way_ > 0 : now().way() == way_;
        const double rest = positioning ? static_cast<double>(std::abs(target)) - done() : endless;
        const double has = path_.speed(time_s_);
        const bool brakes = positioning && slows_down() && has > now().start_speed() &&
                            !(now().manual() && now()[Code::RampDownPoint] == 0);
        const double braking = brakes ? now().ramp(has, now().start_speed()).length() : 0;
        turning_ = !same_way || rest < 0 || rest + 1 < braking;
        if (turning_)
            return slow_to(now().start_speed(), now());
        before_ = done();
        time_s_ = 0;
        length_ = before_ + rest;
        path_ = Plan(has, rest, now(), slows_down());
    }

    std::array<Registers, 4> direct_{}, preset_{};
    std::array<bool, 4> direct_last_{};
    unsigned axes_ = 0, lead_ = 0, queued_axes_ = 0;
    std::uint32_t start_ = 0, queued_start_ = 0;
    std::array<std::int64_t, 4> origin_{}, from_{}, goes_{}; // of the operation; of its leg
    std::vector<Point> points_;                              // of an arc
    bool running_ = false, stopping_ = false, turning_ = false;
    int way_ = 1, asked_way_ = 1; // of the leg; of a continuous operation
    double length_ = 0, before_ = 0, time_s_ = 0;
    std::int64_t done_ = 0; // when it was stopped
    Path path_;
};

} // namespace trevik::test::reference
