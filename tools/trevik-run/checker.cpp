#include "trevik-run/checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <limits>

#include "trevik-run/planner.h"
#include "trevik-run/programmed_path.h"

namespace trevik_run
{
namespace
{

void CheckTarget(const Move &move, const Machine &machine)
{
    for (std::size_t i = 0; i < axis_count; ++i) {
        const double pulses = move.target[i] * machine.pulses_per_unit[i];
        if (std::fabs(pulses) <= std::numeric_limits<std::int32_t>::max()) {
            continue;
        }
        throw PartError{move.line, 1, std::string(1, axis_letters[i]),
                        fmt::format("the target {:g} is {:.0f} pulses, beyond the card's 32 bits; move the part "
                                    "nearer to machine zero or use fewer pulses per unit",
                                    move.target[i], pulses)};
    }
}

// The whole circle has to fit, not only the arc: it is simpler, and nobody cuts such parts.
void CheckCircle(const Move &move, const Arc &arc, const Machine &machine)
{
    for (std::size_t i = 0; i < 2; ++i) {
        const double reach = std::fabs(i == 0 ? arc.x : arc.y) + std::max(arc.radius, arc.end_radius);
        const double pulses = reach * machine.pulses_per_unit[i];
        if (pulses > std::numeric_limits<std::int32_t>::max()) {
            throw PartError{
                move.line, 1, "G",
                fmt::format("the circle of this arc reaches {:.0f} pulses from machine zero, beyond the "
                            "card's 32 bits; write a line, or use fewer pulses per unit",
                            pulses)};
        }
    }
}

// Along a circle the machine needs an acceleration towards the center; the start speed it takes round any corner.
double CircleSpeed(const ProgrammedPath &path, const Machine &machine)
{
    return std::max(machine.start_pps, std::sqrt(WantedAcceleration(machine) * path.SmallestRadius()));
}

void FillPaces(const ProgrammedPath &path, Arc &arc)
{
    arc.steps = static_cast<float>(path.Steps());
    arc.begin_pace = static_cast<float>(path.Pace(0));
    arc.end_pace = static_cast<float>(path.Pace(1));
}

// The card takes a move's distance in 32 bits too.
void CheckDistance(const Move &move, const Piece &piece)
{
    if (piece.longest > std::numeric_limits<std::int32_t>::max()) {
        std::size_t axis = 0;
        while (std::fabs(piece.delta[axis]) != piece.longest) {
            ++axis;
        }
        throw PartError{move.line, 1, std::string(1, axis_letters[axis]),
                        fmt::format("a move over {:.0f} pulses, beyond the card's 32 bits; make "
                                    "two moves of it",
                                    piece.longest)};
    }
}

// A rapid takes as long as the slower of its linear and its turning part at the rapid speed.
double Seconds(const Move &move, const Vec4 &from, double feed_length, const Machine &machine)
{
    if (move.kind == MoveKind::feed) {
        return feed_length / (static_cast<double>(move.rate) / 60);
    }
    const double turn = std::fabs(move.target[angular_axis] - from[angular_axis]);
    return std::max(feed_length, turn) / (machine.rapid_mm_min / 60);
}

void CheckSpeed(const Move &move, double speed_pps)
{
    const char *const word = move.kind == MoveKind::feed ? "F" : "G";
    if (speed_pps > max_speed_pps + 0.5) { // half a pulse/s for rounding
        throw PartError{
            move.line, 1, word,
            fmt::format("this move needs {:.0f} pulses/s, the card makes {:.0f}; lower the feed, the rapid "
                        "speed or the pulses per unit",
                        speed_pps, max_speed_pps)};
    }
    if (speed_pps < min_speed_pps) {
        throw PartError{
            move.line, 1, word,
            fmt::format("this move needs {:.2g} pulses/s, the card makes no fewer than {:.0f}; raise the "
                        "feed, the rapid speed or the pulses per unit",
                        speed_pps, min_speed_pps)};
    }
}

// A line takes at least two axes: the lowest idle ones join.
std::uint32_t AtLeastTwo(std::uint32_t axes)
{
    for (std::uint32_t bit = 1; std::popcount(axes) < 2; bit <<= 1U) {
        axes |= bit;
    }
    return axes;
}

std::uint32_t MovingAxes(const Piece &piece, bool curved)
{
    std::uint32_t axes = curved ? 0b0011 : 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        axes |= (piece.delta[i] != 0 ? 1U : 0U) << i;
    }
    return axes;
}

// False where the card would make no pulse of it.
bool MakesPulses(const ProgrammedPath &path, const Piece &piece)
{
    constexpr double smallest_circumference = 3; // of a circle that reaches another pulse
    return piece.length > 0 || (path.Curved() && path.Length() >= smallest_circumference);
}

// Length and speed of a move, and its part in the whole.
void Measure(Move &move, const Vec4 &from, const Piece &piece, const ProgrammedPath &path, const Machine &machine,
             CheckedProgram &checked)
{
    // Of the unrounded way: rounding would make the speeds of short moves jump about.
    const double length = path.Length();
    const double feed_length = path.Curved() ? path.LengthInUnits() : FeedLength(from, move.target);
    double speed_pps = length / Seconds(move, from, feed_length, machine);
    CheckSpeed(move, speed_pps);
    if (path.Curved()) {
        speed_pps = std::min(speed_pps, CircleSpeed(path, machine));
    }
    move.length_pulses = static_cast<float>(path.Curved() ? length : piece.length);
    move.speed_pps = static_cast<float>(std::min(speed_pps, max_speed_pps));
    checked.axes |= MovingAxes(piece, path.Curved());
    checked.top_pps = std::max(checked.top_pps, static_cast<double>(move.speed_pps));
    checked.path_mm += feed_length;
    checked.path_pulses += static_cast<double>(move.length_pulses);
    ++checked.segments;
}

} // namespace

CheckedProgram CheckProgram(Program &program, const Machine &machine)
{
    CheckedProgram checked;
    Vec4 from = program.start;
    Pulses from_pulses = ToPulses(from, machine);
    std::size_t kept = 0;
    for (Move &move : program.moves) {
        CheckTarget(move, machine);
        const Pulses to = ToPulses(move.target, machine);
        const Piece piece = MakePiece(from_pulses, to);
        CheckDistance(move, piece);
        const ProgrammedPath path = PathOf(program, move, from, machine);
        if (move.kind == MoveKind::dwell) {
            checked.dwell_s += static_cast<double>(move.rate);
        } else if (!MakesPulses(path, piece)) {
            continue;
        } else {
            if (path.Curved()) {
                CheckCircle(move, program.arcs[move.arc], machine);
                FillPaces(path, program.arcs[move.arc]);
            }
            Measure(move, from, piece, path, machine, checked);
            from = move.target;
            from_pulses = to;
        }
        program.moves[kept++] = move;
    }
    program.moves.resize(kept);
    checked.axes = AtLeastTwo(checked.axes);
    return checked;
}

} // namespace trevik_run
