// A planned straight move as the lines that the card makes of it.
//
// The card does not blend: a queued line begins at its own start speed the moment the running one ends. A line
// begins at its start speed when it ramps up and at its maximum speed otherwise; it ends at its start speed when it
// ramps down and at its maximum speed otherwise. So one line can hold a speed, ramp up to one, ramp down from one,
// or do both between equal ends; a move that has to rise above two different ends is split in two.
#pragma once

#include <array>
#include <cstdint>

#include "trevik-run/machine.h"
#include "trevik-run/ramps.h"

namespace trevik_run
{

enum class Shape : std::uint8_t { line, arc, helix };

struct CardMove {
    Pulses target{};
    std::uint32_t start_pps = 0;
    std::uint32_t max_pps = 0;
    std::uint32_t accel_ms = 0;
    std::uint32_t decel_ms = 0;
    bool s_curve = false;
    Shape shape = Shape::line;
    bool clockwise = false;
    std::array<std::int32_t, 2> center{}; // of arcs and helices, which run at max_pps
    double end_share = 1;                 // of the programmed move
};

// Begins and ends at these speeds as nearly as the card can; limit_pps is never exceeded.
struct MoveSpeeds {
    double entry_pps = 0;
    double exit_pps = 0;
    double limit_pps = 0;
};

struct CardMoves {
    std::array<CardMove, 2> move;
    int count = 0;
};

// `line` is the programmed line: a split point is rounded from it, not from the rounded ends, so that it is as near
// to the path as they are. `first_axis` is the lowest axis of the line's set: the card looks at it to shape ramps
// down.
CardMoves MakeCardMoves(const Pulses &from, const Pulses &to, const PathLine &line, const MoveSpeeds &speeds,
                        const RampMaker &ramps, std::size_t first_axis, bool s_curve);

} // namespace trevik_run
