// The machine that the card drives: its resolution and what its motors can do.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "trevik-run/program.h"

namespace trevik_run
{

constexpr double max_speed_pps = 6553500; // the card's highest speed
constexpr double min_speed_pps = 1;       // speeds are whole numbers

struct Machine {
    Vec4 pulses_per_unit = {400, 400, 400, 100}; // per mm, for A per degree
    double rapid_mm_min = 3000;                  // also degrees/min of A
    double start_pps = 800;                      // speed that the motors take without a ramp
    std::uint32_t ramp_ms = 100;                 // from the start speed to the rapid speed
    double corner_degrees = 30;                  // sharper corners are taken at the start speed
    bool s_curve = false;
    bool keep_a = false; // no helices of the card, which counts their steps on axis 3
};

using Pulses = std::array<std::int32_t, axis_count>;

// The position that the card is sent to: the nearest whole pulse. The value fits (CheckProgram).
inline Pulses ToPulses(const Vec4 &position, const Machine &machine)
{
    Pulses pulses;
    for (std::size_t i = 0; i < axis_count; ++i) {
        pulses[i] = static_cast<std::int32_t>(std::lrint(position[i] * machine.pulses_per_unit[i]));
    }
    return pulses;
}

// A straight piece in whole pulses.
struct Piece {
    Vec4 delta{};       // pulses
    double length = 0;  // along the path
    double longest = 0; // of the axis that moves most: it carries the card's speed registers
};

inline Piece MakePiece(const Pulses &from, const Pulses &to)
{
    Piece piece;
    double square = 0;
    for (std::size_t i = 0; i < axis_count; ++i) {
        piece.delta[i] = static_cast<double>(to[i]) - from[i];
        square += piece.delta[i] * piece.delta[i];
        piece.longest = std::fmax(piece.longest, std::fabs(piece.delta[i]));
    }
    piece.length = std::sqrt(square);
    return piece;
}

// A programmed straight line in unrounded pulses.
struct PathLine {
    Vec4 from{};
    Vec4 delta{};
    double square = 0; // of its length

    double Length() const { return std::sqrt(square); }
};

inline PathLine MakePathLine(const Vec4 &from, const Vec4 &to, const Machine &machine)
{
    PathLine line;
    for (std::size_t i = 0; i < axis_count; ++i) {
        line.from[i] = from[i] * machine.pulses_per_unit[i];
        line.delta[i] = to[i] * machine.pulses_per_unit[i] - line.from[i];
        line.square += line.delta[i] * line.delta[i];
    }
    return line;
}

// Length of a move as the feed counts it: mm, or degrees when only A turns.
inline double FeedLength(const Vec4 &from, const Vec4 &to)
{
    const double x = to[0] - from[0];
    const double y = to[1] - from[1];
    const double z = to[2] - from[2];
    const double linear = std::sqrt(x * x + y * y + z * z);
    return linear > 0 ? linear : std::fabs(to[angular_axis] - from[angular_axis]);
}

} // namespace trevik_run
