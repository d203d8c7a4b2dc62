// The G words: what each one does here, or why it is refused.
#pragma once

#include <cstdint>

namespace trevik_run
{

enum class GAction : std::uint8_t {
    none, // accepted, nothing to do
    refuse,
    motion_rapid,
    motion_feed,
    motion_arc_clockwise,
    motion_arc_counter,
    motion_cancel,
    dwell,
    inches,
    millimetres,
    home,
    machine_coordinates,
    absolute,
    relative,
    arc_absolute,
    arc_relative,
    offset_set,
    offset_clear
};

// Words of one group exclude each other in a block.
enum class GGroup : std::uint8_t {
    none,
    motion,
    plane,
    units,
    distance,
    arc_distance,
    path_mode,
    feed_mode,
    offset
};

struct GCode {
    int tenths; // 901 is G90.1
    GAction action;
    GGroup group;
    const char *reason; // of a refusal
};

// Null for a word that is not in the table.
const GCode *FindGCode(int tenths);

} // namespace trevik_run
