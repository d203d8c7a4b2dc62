// The motion of one operation over time, computed once from its register values and then evaluated at any time:
// speed is piecewise quadratic, distance piecewise cubic, at most eleven pieces. Basic arithmetic only.
#pragma once

#include <array>
#include <cstdint>

namespace trevik::virtual_card
{

// How an operation starts and ends, as its start command says.
enum class StartKind { High, HighDecelerating, Accelerating };

// One ramp as its registers describe it, in pulses and seconds.
struct RampShape {
    double acceleration = 0;    // pulses/s^2 on the linear section, above 0
    double seconds_per_pps = 0; // its inverse: dividing is what takes time when a profile is planned
    bool s_curve = false;
    double s_range_pps = 0; // speed gained in each curved section; 0: the whole ramp is curved
};

// An operation in pulses and seconds.
struct ProfileInput {
    double distance = 0; // pulses, 0 or more; infinite for an operation that only a stop ends
    double counted = -1; // pulses that the ramp-down counts instead of the distance; below 0: the distance
    double start_pps = 0;
    double max_pps = 0;
    RampShape accel;
    RampShape decel;
    StartKind start = StartKind::High;
    bool manual_rampdown = false;
    double rampdown_pulses = 0; // where deceleration starts, counted from the end; manual ramp-down only
};

class SpeedProfile
{
  public:
    // The whole operation, from its start at time 0.
    void plan(const ProfileInput &input);

    // An operation that is under way at a speed already.
    void plan_from(double pps, const ProfileInput &input);

    // The same operation with another distance or other registers from time `now_s` on: it goes on from where it is
    // at the speed it has. Does not look whether the end can still be reached without overshooting.
    void replan(double now_s, const ProfileInput &input);

    // A decelerating stop at time `now_s`: from the speed then down to `last_pps`, at which the axis may stop at
    // once, or to `limit`, the distance at which the operation would have ended, if that comes first.
    void stop(double now_s, const RampShape &decel, double limit, double last_pps);

    // Time at which the operation has put out its last pulse; infinite for one that only a stop ends.
    double duration_s() const { return duration_s_; }

    // Pulses put out at the end.
    double distance() const { return distance_; }

    // Distance travelled and speed at a time of the operation. Times may come in any order; rising ones are
    // cheapest.
    double distance_at(double time_s);
    double speed_at(double time_s);

    // Which way the speed is changing - 1 up, -1 down, 0 not at all - and until when it goes on so.
    struct Ramp {
        int way = 0;
        double end_s = 0;
    };
    Ramp ramp_at(double time_s);

    // Time at which a distance is reached; infinite if it never is.
    double time_at(double distance);

    // The first time from `from_s` on at which the speed is this or higher; infinite if it never is.
    double time_as_fast(double pps, double from_s) const;

  private:
    // A stretch of constant jerk.
    struct Piece {
        double start_s, start_distance, speed, acceleration, jerk;

        double distance(double t) const
        {
            return start_distance + t * (speed + t * (acceleration * 0.5 + t * (jerk * (1.0 / 6))));
        }
        double speed_after(double t) const { return speed + t * (acceleration + t * (jerk * 0.5)); }
        double time_to(double target, double most_s) const;
    };

    static constexpr unsigned most_pieces = 11;

    void begin(double time_s, double distance, double speed);
    void plan_rest(const ProfileInput &input);
    void add(double duration_s, double acceleration, double jerk);
    void add_ramp(double to_pps, const RampShape &shape);
    void run(double distance);
    void cut(double distance);
    void plan_automatic(const ProfileInput &input, double end_pps);
    void plan_manual(const ProfileInput &input, double end_pps);
    const Piece &piece_at(double time_s);
    double end_of(unsigned piece) const { return piece + 1 < count_ ? pieces_[piece + 1].start_s : duration_s_; }
    int way_of(unsigned piece) const;

    std::array<Piece, most_pieces> pieces_{};
    unsigned count_ = 0;
    unsigned last_used_ = 0;
    // Where the pieces so far end.
    double end_s_ = 0;
    double end_distance_ = 0;
    double end_speed_ = 0;
    double duration_s_ = 0;
    double distance_ = 0;
};

// Distance that an operation at this speed needs to slow down before its end; 0 for one that does not.
double BrakingDistance(double pps, const ProfileInput &input);

// Duration of, and distance travelled in, a ramp between two speeds.
double RampDuration(double from_pps, double to_pps, const RampShape &shape);
double RampDistance(double from_pps, double to_pps, const RampShape &shape);

} // namespace trevik::virtual_card
