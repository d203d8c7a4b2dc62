#include "trevik-run/planner.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "trevik-run/programmed_path.h"

namespace trevik_run
{
namespace
{

// What the card's ramps act on: along a line the path speed, on an arc the speed of the leading axis, which is
// `begin` and `end` for each pulse/s of path speed at the two ends.
struct Pace {
    double begin = 1;
    double end = 1;
    double highest_pps = 0;
    double length = 0;

    double BeginLimit() const { return highest_pps / begin; } // path speeds
    double EndLimit() const { return highest_pps / end; }
};

Pace PaceOf(const Program &program, const Move &move)
{
    const double speed_pps = move.speed_pps;
    if (move.arc == no_arc) {
        return {1, 1, speed_pps, move.length_pulses};
    }
    const Arc &arc = program.arcs[move.arc];
    return {arc.begin_pace, arc.end_pace, speed_pps / arc_speed_divisor, arc.steps};
}

// Path speeds at the ends of a move that may be begun or ended at the start speed.
double StandingBegin(const Program &program, const Move &move, const Machine &machine)
{
    return std::min({static_cast<double>(move.speed_pps), machine.start_pps, PaceOf(program, move).BeginLimit()});
}

double StandingEnd(const Program &program, const Move &move, const Machine &machine)
{
    return std::min({static_cast<double>(move.speed_pps), machine.start_pps, PaceOf(program, move).EndLimit()});
}

// Path speed at a joint that is run through.
double JointSpeed(const Program &program, const Move &before, const Move &after)
{
    return std::min({static_cast<double>(std::min(before.speed_pps, after.speed_pps)),
                     PaceOf(program, before).EndLimit(), PaceOf(program, after).BeginLimit()});
}

// By the unrounded directions: rounding would bend chains of very short moves.
bool RunsThrough(const Vec4 &before, const Vec4 &after, double corner_cosine)
{
    double dot = 0;
    double square_before = 0;
    double square_after = 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        dot += before[i] * after[i];
        square_before += before[i] * before[i];
        square_after += after[i] * after[i];
    }
    return dot >= corner_cosine * std::sqrt(square_before * square_after);
}

// First pass: how fast each move may begin for its corner alone.
void LimitCorners(Program &program, const Machine &machine)
{
    // A hair is given so that a corner of exactly the angle runs through.
    const double corner_cosine = std::cos(machine.corner_degrees * std::numbers::pi / 180) - 1e-9;
    Vec4 from = program.start;
    Vec4 before{};
    const Move *previous = nullptr; // the feed move that this one may follow without a stop
    for (Move &move : program.moves) {
        if (move.kind == MoveKind::dwell) {
            previous = nullptr;
            continue;
        }
        const ProgrammedPath path = PathOf(program, move, from, machine);
        double entry = StandingBegin(program, move, machine);
        if (previous != nullptr && move.kind == MoveKind::feed &&
            RunsThrough(before, path.Slope(0), corner_cosine)) {
            entry = JointSpeed(program, *previous, move);
        } else if (previous != nullptr) {
            entry = std::min(entry, StandingEnd(program, *previous, machine));
        }
        move.entry_pps = static_cast<float>(entry);
        previous = move.kind == MoveKind::feed ? &move : nullptr;
        before = path.Slope(1);
        from = move.target;
    }
}

double Reachable(double speed_pps, double accel_pps2, double length)
{
    return std::sqrt(speed_pps * speed_pps + 2 * accel_pps2 * length);
}

} // namespace

double WantedAcceleration(const Machine &machine)
{
    const Vec4 &scale = machine.pulses_per_unit;
    const double rapid_pps = machine.rapid_mm_min / 60 * std::max({scale[0], scale[1], scale[2]});
    // At a rapid speed near the start speed there is next to nothing to ramp; feeds still need an acceleration.
    const double gain_pps = std::max(rapid_pps - machine.start_pps, rapid_pps / 10);
    return gain_pps * 1000 / std::max<double>(machine.ramp_ms, 1);
}

void PlanSpeeds(Program &program, const Machine &machine, const RampMaker &ramps)
{
    LimitCorners(program, machine);
    std::vector<Move> &moves = program.moves;
    for (std::size_t i = moves.size(); i-- > 0;) {
        const Pace pace = PaceOf(program, moves[i]);
        const double limit = Reachable(ExitSpeed(program, i, machine) * pace.end, ramps.DecelPps2(), pace.length);
        moves[i].entry_pps = std::min(moves[i].entry_pps, static_cast<float>(limit / pace.begin));
    }
    for (std::size_t i = 0; i + 1 < moves.size(); ++i) {
        if (moves[i].kind == MoveKind::dwell) {
            continue; // what follows begins from rest, at the speed of its own
        }
        const Pace pace = PaceOf(program, moves[i]);
        const double entry_pps = moves[i].entry_pps;
        const double limit = Reachable(entry_pps * pace.begin, ramps.AccelPps2(), pace.length);
        moves[i + 1].entry_pps = std::min(moves[i + 1].entry_pps, static_cast<float>(limit / pace.end));
    }
}

double ExitSpeed(const Program &program, std::size_t index, const Machine &machine)
{
    const Move &move = program.moves[index];
    const double standing = StandingEnd(program, move, machine);
    if (index + 1 == program.moves.size() || move.kind == MoveKind::rapid) {
        return standing;
    }
    const Move &next = program.moves[index + 1];
    return next.kind == MoveKind::feed ? static_cast<double>(next.entry_pps) : standing;
}

} // namespace trevik_run
