#include "trevik-run/planner.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace trevik_run
{
namespace
{

double StandingSpeed(const Move &move, const Machine &machine)
{
    return std::min(static_cast<double>(move.speed_pps), machine.start_pps);
}

// By the unrounded directions: rounding would bend chains of very short moves.
bool RunsThrough(const PathLine &before, const PathLine &after, double corner_cosine)
{
    double dot = 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        dot += before.delta[i] * after.delta[i];
    }
    return dot >= corner_cosine * std::sqrt(before.square * after.square);
}

// First pass: how fast each move may begin for its corner alone.
void LimitCorners(Program &program, const Machine &machine)
{
    // A hair is given so that a corner of exactly the angle runs through.
    const double corner_cosine = std::cos(machine.corner_degrees * std::numbers::pi / 180) - 1e-9;
    Vec4 from = program.start;
    PathLine before;
    const Move *previous = nullptr; // the feed move that this one may follow without a stop
    for (Move &move : program.moves) {
        if (move.kind == MoveKind::dwell) {
            previous = nullptr;
            continue;
        }
        const PathLine after = MakePathLine(from, move.target, machine);
        double entry = StandingSpeed(move, machine);
        if (previous != nullptr && move.kind == MoveKind::feed && RunsThrough(before, after, corner_cosine)) {
            entry = std::min(previous->speed_pps, move.speed_pps);
        } else if (previous != nullptr) {
            entry = std::min(entry, StandingSpeed(*previous, machine));
        }
        move.entry_pps = static_cast<float>(entry);
        previous = move.kind == MoveKind::feed ? &move : nullptr;
        before = after;
        from = move.target;
    }
}

double Reachable(double speed_pps, double accel_pps2, float length_pulses)
{
    return std::sqrt(speed_pps * speed_pps + 2 * accel_pps2 * static_cast<double>(length_pulses));
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
        const double limit = Reachable(ExitSpeed(program, i, machine), ramps.DecelPps2(), moves[i].length_pulses);
        moves[i].entry_pps = std::min(moves[i].entry_pps, static_cast<float>(limit));
    }
    for (std::size_t i = 0; i + 1 < moves.size(); ++i) {
        if (moves[i].kind == MoveKind::dwell) {
            continue; // what follows begins from rest, at the speed of its own
        }
        const double limit = Reachable(moves[i].entry_pps, ramps.AccelPps2(), moves[i].length_pulses);
        moves[i + 1].entry_pps = std::min(moves[i + 1].entry_pps, static_cast<float>(limit));
    }
}

double ExitSpeed(const Program &program, std::size_t index, const Machine &machine)
{
    const Move &move = program.moves[index];
    const double standing = StandingSpeed(move, machine);
    if (index + 1 == program.moves.size() || move.kind == MoveKind::rapid) {
        return standing;
    }
    const Move &next = program.moves[index + 1];
    return next.kind == MoveKind::feed ? static_cast<double>(next.entry_pps) : standing;
}

} // namespace trevik_run
