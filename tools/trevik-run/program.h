// A part program as the reader leaves it: moves in machine coordinates, nothing about cards or pulses yet.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace trevik_run
{

constexpr int axis_count = 4;
constexpr int angular_axis = 3;
constexpr std::array<char, axis_count> axis_letters = {'X', 'Y', 'Z', 'A'};

constexpr double whole_turn = 2 * std::numbers::pi;

using Vec4 = std::array<double, axis_count>;

enum class MoveKind : std::uint8_t { rapid, feed, dwell };

// The circle of a curved move, in the plane of X and Y. CAM programs round their ends and centers, so that the two
// radii differ a little: the way between them is a spiral that meets both ends.
struct Arc {
    double x = 0; // center in mm, machine coordinates
    double y = 0;
    double radius = 0; // mm, at the beginning
    double end_radius = 0;
    double angle = 0; // radians, of the beginning as seen from the center
    double sweep = 0; // radians, counter-clockwise above 0, at most a whole turn
    // Filled in by CheckProgram, see ProgrammedPath.
    float steps = 0;
    float begin_pace = 1;
    float end_pace = 1;
};

constexpr std::uint32_t no_arc = std::numeric_limits<std::uint32_t>::max();

// Kept small: a part has as many of these as it has lines. Length and speeds are filled in by CheckProgram and
// PlanSpeeds.
struct Move {
    Vec4 target{};              // mm and degrees, machine coordinates
    float rate = 0;             // feed: mm/min (degrees/min when only A turns); dwell: seconds
    std::uint32_t line = 0;     // source line
    std::uint32_t arc = no_arc; // index of the arc of a curved feed move
    float length_pulses = 0;    // of the rounded move that the card makes
    float speed_pps = 0;        // along the path, in pulses/s: the highest speed of this move
    float entry_pps = 0;        // planned speed at its beginning
    MoveKind kind = MoveKind::rapid;
};

struct Program {
    Vec4 start{}; // where the axes stand before the first move
    std::vector<Move> moves;
    std::vector<Arc> arcs;
    std::uint32_t lines = 0; // source lines read
};

// An error in a part program. `word` is the text that it is about, `what` says what is wrong and what to do.
struct PartError {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::string word;
    std::string what;

    std::string Message(const std::string &file) const;
};

} // namespace trevik_run
