#include "virtual/speed_profile.h"

#include "virtual/arithmetic.h"

namespace trevik::virtual_card
{
namespace
{

// What rounding leaves of a distance: no piece of its own.
constexpr double negligible_pulses = 1e-7;

// Speed gained in each curved section of a ramp over `rise`; a section cannot take more than half of it.
double CurvedSection(double rise_pps, const RampShape &shape)
{
    if (!shape.s_curve)
        return 0;
    const double half = rise_pps / 2;
    return shape.s_range_pps == 0 ? half : Smaller(shape.s_range_pps, half);
}

// Speed at which an operation may end.
double EndSpeed(const ProfileInput &input)
{
    return Smaller(input.start_pps, input.max_pps);
}

// Ramp that brings an operation from a speed to its maximum speed.
const RampShape &RampToMaximum(double pps, const ProfileInput &input)
{
    return pps > input.max_pps ? input.decel : input.accel;
}

// Peak speed at which a ramp up from `start` and one down to `end` just cover `distance`.
double MeetingSpeed(double start_pps, double end_pps, double distance, const ProfileInput &input)
{
    const double low = Larger(start_pps, end_pps);
    if (input.accel.s_curve) {
        return Solve(low, input.max_pps, distance, [&](double peak) {
            return RampDistance(start_pps, peak, input.accel) + RampDistance(peak, end_pps, input.decel);
        });
    }
    const double up = input.accel.seconds_per_pps;
    const double down = input.decel.seconds_per_pps;
    const double squared = (2 * distance + start_pps * start_pps * up + end_pps * end_pps * down) / (up + down);
    return Smaller(Larger(SquareRoot(squared), low), input.max_pps);
}

// Speed above the maximum speed to which a changed operation slows down first, where slowing down to the maximum speed
// and then, by a curve of its own, to `end` would take more than `distance`.
double DetourSpeed(double pps, double end_pps, double distance, const ProfileInput &input)
{
    const auto ramps = [&](double drop) {
        return RampDistance(pps, pps - drop, input.decel) + RampDistance(pps - drop, end_pps, input.decel);
    };
    return pps - Solve(0, pps - input.max_pps, distance, ramps);
}

} // namespace

// Time within the piece, at most `most_s`, at which a distance is reached.
double SpeedProfile::Piece::time_to(double target, double most_s) const
{
    const double rest = target - start_distance;
    if (jerk != 0)
        return Solve(0, most_s, target, [&](double t) { return distance(t); });
    return 2 * rest / (speed + SquareRoot(speed * speed + 2 * acceleration * rest));
}

double RampDuration(double from_pps, double to_pps, const RampShape &shape)
{
    const double rise = Absolute(to_pps - from_pps);
    return (rise + 2 * CurvedSection(rise, shape)) * shape.seconds_per_pps;
}

double RampDistance(double from_pps, double to_pps, const RampShape &shape)
{
    return (from_pps + to_pps) / 2 * RampDuration(from_pps, to_pps, shape);
}

double BrakingDistance(double pps, const ProfileInput &input)
{
    const bool brakes = input.start != StartKind::High && (!input.manual_rampdown || input.rampdown_pulses > 0);
    return brakes && pps > input.start_pps ? RampDistance(pps, input.start_pps, input.decel) : 0;
}

// Drops all pieces; the next one starts here.
void SpeedProfile::begin(double time_s, double distance, double speed)
{
    count_ = last_used_ = 0;
    end_s_ = time_s;
    end_distance_ = distance;
    end_speed_ = speed;
}

void SpeedProfile::add(double duration_s, double acceleration, double jerk)
{
    if (!(duration_s > 0) || end_s_ == never || count_ == most_pieces)
        return;
    const Piece piece{end_s_, end_distance_, end_speed_, acceleration, jerk};
    pieces_[count_++] = piece;
    end_s_ += duration_s;
    end_distance_ = duration_s == never ? never : piece.distance(duration_s);
    end_speed_ = duration_s == never ? end_speed_ : piece.speed_after(duration_s);
}

// Curved, linear and curved section, all of them symmetric about the middle of the ramp.
void SpeedProfile::add_ramp(double to_pps, const RampShape &shape)
{
    const double rise = to_pps - end_speed_;
    const double size = Absolute(rise);
    const double curved = CurvedSection(size, shape);
    const double acceleration = rise < 0 ? -shape.acceleration : shape.acceleration;
    const double curved_s = 2 * curved * shape.seconds_per_pps;
    const double jerk = curved_s > 0 ? acceleration / curved_s : 0;
    add(curved_s, 0, jerk);
    add((size - 2 * curved) * shape.seconds_per_pps, acceleration, 0);
    add(curved_s, acceleration, -jerk);
    end_speed_ = to_pps;
}

// Constant speed up to a distance, if that is still ahead. Nothing that stands still gets anywhere.
void SpeedProfile::run(double distance)
{
    if (distance > end_distance_ + negligible_pulses)
        add(end_speed_ > 0 ? (distance - end_distance_) / end_speed_ : never, 0, 0);
}

// Ends the pieces where `distance` is reached, if they go beyond it.
void SpeedProfile::cut(double distance)
{
    if (end_distance_ <= distance + negligible_pulses)
        return;
    while (count_ > 1 && pieces_[count_ - 1].start_distance >= distance) {
        --count_;
        end_s_ = pieces_[count_].start_s;
    }
    const Piece &last = pieces_[count_ - 1];
    const double span_s = last.time_to(distance, end_s_ - last.start_s);
    end_s_ = last.start_s + span_s;
    end_distance_ = distance;
    end_speed_ = last.speed_after(span_s);
}

// The chip finds the ramp-down point: deceleration ends with the last pulse.
void SpeedProfile::plan_automatic(const ProfileInput &input, double end_pps)
{
    const double end = input.counted < 0 ? input.distance : input.counted;
    const double rest = end - end_distance_;
    double peak = input.max_pps;
    const RampShape &first = RampToMaximum(end_speed_, input);
    const double ramps = RampDistance(end_speed_, peak, first) + RampDistance(peak, end_pps, input.decel);
    if (ramps > rest)
        peak = end_speed_ > peak ? DetourSpeed(end_speed_, end_pps, rest, input)
                                 : MeetingSpeed(end_speed_, end_pps, rest, input);
    add_ramp(peak, first);
    run(end - RampDistance(peak, end_pps, input.decel));
    add_ramp(end_pps, input.decel);
}

// Deceleration starts at the written point, whatever the speed is there.
void SpeedProfile::plan_manual(const ProfileInput &input, double end_pps)
{
    const double rampdown_at = input.distance - input.rampdown_pulses;
    if (rampdown_at > end_distance_) {
        add_ramp(input.max_pps, RampToMaximum(end_speed_, input));
        run(rampdown_at);
        cut(rampdown_at);
    }
    if (input.rampdown_pulses > 0 && end_speed_ > end_pps)
        add_ramp(end_pps, input.decel);
}

void SpeedProfile::plan_rest(const ProfileInput &input)
{
    distance_ = input.distance;
    const double end_pps = EndSpeed(input);
    if (input.start == StartKind::High)
        add_ramp(input.max_pps, RampToMaximum(end_speed_, input)); // none, unless the speed was changed
    else if (input.manual_rampdown)
        plan_manual(input, end_pps);
    else
        plan_automatic(input, end_pps);
    if (end_speed_ < end_pps) // an axis that was slowing down goes on at no less than its start speed
        add_ramp(end_pps, input.accel);
    run(input.distance);
    cut(input.distance);
    duration_s_ = end_s_;
}

void SpeedProfile::plan(const ProfileInput &input)
{
    const bool from_start_speed = input.start == StartKind::Accelerating;
    begin(0, 0, from_start_speed ? input.start_pps : input.max_pps);
    if (input.distance > 0) {
        plan_rest(input);
    } else {
        distance_ = duration_s_ = 0;
    }
}

void SpeedProfile::plan_from(double pps, const ProfileInput &input)
{
    begin(0, 0, pps);
    plan_rest(input);
}

void SpeedProfile::replan(double now_s, const ProfileInput &input)
{
    begin(now_s, distance_at(now_s), speed_at(now_s));
    plan_rest(input);
}

void SpeedProfile::stop(double now_s, const RampShape &decel, double limit, double last_pps)
{
    begin(now_s, distance_at(now_s), speed_at(now_s));
    if (end_speed_ > last_pps)
        add_ramp(last_pps, decel);
    cut(limit);
    duration_s_ = end_s_;
    distance_ = Smaller(limit, end_distance_);
}

const SpeedProfile::Piece &SpeedProfile::piece_at(double time_s)
{
    while (last_used_ > 0 && pieces_[last_used_].start_s > time_s)
        --last_used_;
    while (last_used_ + 1 < count_ && pieces_[last_used_ + 1].start_s <= time_s)
        ++last_used_;
    return pieces_[last_used_];
}

double SpeedProfile::distance_at(double time_s)
{
    if (time_s >= duration_s_ || count_ == 0)
        return distance_;
    const Piece &piece = piece_at(time_s);
    const double distance = piece.distance(time_s - piece.start_s);
    return Smaller(Larger(distance, 0), distance_);
}

double SpeedProfile::speed_at(double time_s)
{
    if (time_s >= duration_s_ || count_ == 0)
        return 0;
    const Piece &piece = piece_at(time_s);
    return Larger(0, piece.speed_after(time_s - piece.start_s));
}

// Of a whole piece: the acceleration of none changes its sign.
int SpeedProfile::way_of(unsigned piece) const
{
    const Piece &p = pieces_[piece];
    const double middle = p.jerk == 0 ? p.acceleration : p.acceleration + p.jerk * (end_of(piece) - p.start_s) / 2;
    return middle > 0 ? 1 : middle < 0 ? -1 : 0;
}

SpeedProfile::Ramp SpeedProfile::ramp_at(double time_s)
{
    if (time_s >= duration_s_ || count_ == 0)
        return {0, never};
    piece_at(time_s);
    unsigned last = last_used_;
    const int way = way_of(last);
    while (last + 1 < count_ && way_of(last + 1) == way)
        ++last;
    return {way, end_of(last)};
}

double SpeedProfile::time_at(double distance)
{
    if (distance > distance_)
        return never;
    if (distance == distance_)
        return duration_s_;
    unsigned i = 0;
    while (i + 1 < count_ && pieces_[i + 1].start_distance <= distance)
        ++i;
    return pieces_[i].start_s + pieces_[i].time_to(distance, end_of(i) - pieces_[i].start_s);
}

double SpeedProfile::time_as_fast(double pps, double from_s) const
{
    for (unsigned i = 0; i < count_; ++i) {
        const Piece &piece = pieces_[i];
        const double begin_s = Larger(piece.start_s, from_s);
        const double end_s = end_of(i);
        if (end_s <= begin_s)
            continue;
        const auto speed = [&piece](double time_s) { return piece.speed_after(time_s - piece.start_s); };
        if (speed(begin_s) >= pps)
            return begin_s;
        if (way_of(i) > 0 && speed(end_s) >= pps)
            return Solve(begin_s, end_s, pps, speed);
    }
    return never;
}

} // namespace trevik::virtual_card
