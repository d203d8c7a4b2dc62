// One motion of one axis, as the command line describes it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace trevik_scope
{

enum class Kind : std::uint8_t { t_position, s_position, t_velocity, s_velocity, home, home_search, handwheel };

// The arguments that the calls have in common. Speeds in pulses/s, times in ms, distances in pulses.
struct Profile {
    std::int32_t distance = 20000;
    bool absolute = false;
    std::int32_t start = 500;
    std::int32_t max = 20000; // velocity moves: the sign is the direction
    std::uint32_t accel_ms = 100;
    std::uint32_t decel_ms = 100;
    std::uint32_t s_accel_ms = 0;
    std::uint32_t s_decel_ms = 0;
};

// What happens while it runs; times from the start of the motion.
struct Change {
    double at_ms = 0;
    bool distance_only = true;
    Profile to;
};

struct SpeedChange {
    double at_ms = 0;
    std::int32_t speed = 0;
    std::uint32_t time_ms = 100;
};

struct Stop {
    double at_ms = 0;
    std::uint32_t time_ms = 100; // 0: at once
};

struct Homing {
    std::uint8_t mode = 0;
    std::uint8_t option = 0;
    std::uint8_t direction = 0; // 0: +
};

// A switch of the machine: on from position first to position last.
struct Switch {
    std::string name;
    std::uint8_t input = 0;
    std::int32_t first = 0;
    std::int32_t last = 0;
};

struct Index {
    std::int32_t first = 0;
    std::uint32_t period = 0; // 0: none
};

struct Handwheel {
    std::int32_t counts = 0;
    double turn_ms = 500;
    std::uint16_t ratio = 1;
};

struct Motion {
    Kind kind = Kind::t_position;
    Profile profile;
    Homing homing;
    Handwheel handwheel;
    std::optional<std::uint32_t> fixed_range; // pulses/s
    std::optional<Change> change;
    std::optional<SpeedChange> speed_change;
    std::optional<Stop> stop;
    std::optional<double> restart_at_ms;
    std::vector<Switch> switches;
    Index index;
    double for_ms = 0; // the longest time to look at a motion that does not end; 0: chosen

    bool Curved() const { return kind == Kind::s_position || kind == Kind::s_velocity; }
};

constexpr std::uint8_t card = 0;
constexpr std::uint8_t axis = 0;

} // namespace trevik_scope
