// A part program as the reader leaves it: moves in machine coordinates, nothing about cards or pulses yet.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace trevik_run
{

constexpr int axis_count = 4;
constexpr int angular_axis = 3;
constexpr std::array<char, axis_count> axis_letters = {'X', 'Y', 'Z', 'A'};

using Vec4 = std::array<double, axis_count>;

enum class MoveKind : std::uint8_t { rapid, feed, dwell };

// Kept small: a part has as many of these as it has lines. The last three are filled in by CheckProgram and
// PlanSpeeds.
struct Move {
    Vec4 target{};           // mm and degrees, machine coordinates
    float rate = 0;          // feed: mm/min (degrees/min when only A turns); dwell: seconds
    std::uint32_t line = 0;  // source line
    float length_pulses = 0; // of the rounded move that the card makes
    float speed_pps = 0;     // along the path, in pulses/s: the highest speed of this move
    float entry_pps = 0;     // planned speed at its beginning
    MoveKind kind = MoveKind::rapid;
};

struct Program {
    Vec4 start{}; // where the axes stand before the first move
    std::vector<Move> moves;
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
