#include "trevik-scope/options.h"

#include <CLI/CLI.hpp>

#include <trevik/TrevikVirtual.h>

#include <limits>
#include <optional>
#include <vector>

#include "shared/option_checks.h"
#include "shared/version.h"

namespace trevik_scope
{
namespace
{

using trevik_tools::Between;

constexpr int usage_status = 2;
constexpr double longest_ms = 1e7;

constexpr const char *description =
    "Makes one move on a virtual card and draws position, speed and acceleration over time,\n"
    "with the registers that were written. trevik-scope KIND --help lists the options of a kind.";

constexpr const char *footer =
    "Exit status: 0 done, 1 the library refused a call or a file could not be written, 2 wrong command line.";

// Options that do something only when they are given.
struct Later {
    std::optional<double> change_at_ms;
    std::optional<std::int32_t> change_distance;
    bool change_absolute = false;
    std::optional<std::int32_t> change_start;
    std::optional<std::int32_t> change_max;
    std::optional<std::uint32_t> change_accel_ms;
    std::optional<std::uint32_t> change_decel_ms;
    std::optional<std::uint32_t> change_s_accel_ms;
    std::optional<std::uint32_t> change_s_decel_ms;
    std::optional<double> speed_at_ms;
    SpeedChange speed_change;
    std::optional<double> stop_at_ms;
    Stop stop;
};

template <typename Value>
CLI::Option *AddTime(CLI::App &kind, const std::string &name, Value &value, const std::string &help)
{
    return kind.add_option(name, value, help)->check(Between(0, longest_ms));
}

void AddSpeeds(CLI::App &kind, Profile &profile, const char *max_help)
{
    kind.add_option("--start", profile.start, "pulses/s at which the ramps begin and end")->capture_default_str();
    kind.add_option("--max", profile.max, max_help)->capture_default_str();
    kind.add_option("--accel", profile.accel_ms, "ms from the start to the maximum speed")->capture_default_str();
}

void AddSTimes(CLI::App &kind, Profile &profile, bool decel)
{
    kind.add_option("--s-accel", profile.s_accel_ms,
                    "ms of each of the two curved sections of the acceleration; 0: the whole ramp is curved")
        ->capture_default_str();
    if (decel) {
        kind.add_option("--s-decel", profile.s_decel_ms, "the same of the deceleration")->capture_default_str();
    }
}

// A switch: where it is first and last on, in pulses from where the axis stands.
void AddSwitch(CLI::App &kind, Motion &motion, const char *option, const char *name, std::uint8_t input)
{
    kind.add_option_function<std::vector<std::int32_t>>(
            option,
            [&motion, name, input](const std::vector<std::int32_t> &ends) {
                motion.switches.push_back({name, input, ends.front(), ends.back()});
            },
            std::string("where the ") + name + " switch is on, pulses from where the axis stands at first")
        ->expected(2)
        ->type_name("FIRST LAST");
}

void AddMachine(CLI::App &kind, Motion &motion)
{
    constexpr std::int32_t no_first = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t no_last = std::numeric_limits<std::int32_t>::max();
    AddSwitch(kind, motion, "--home-switch", "home", TREVIK_VIRTUAL_HOME);
    AddSwitch(kind, motion, "--slow-down", "slow-down", TREVIK_VIRTUAL_SLOW_DOWN);
    kind.add_option_function<std::int32_t>(
        "--plus-limit",
        [&motion](std::int32_t first) {
            motion.switches.push_back({"+ limit", TREVIK_VIRTUAL_PLUS_LIMIT, first, no_last});
        },
        "where the + end limit begins, pulses");
    kind.add_option_function<std::int32_t>(
        "--minus-limit",
        [&motion](std::int32_t last) {
            motion.switches.push_back({"− limit", TREVIK_VIRTUAL_MINUS_LIMIT, no_first, last});
        },
        "where the - end limit ends, pulses");
    kind.add_option_function<std::vector<std::int32_t>>(
            "--index",
            [&motion](const std::vector<std::int32_t> &index) {
                motion.index = {index.front(), static_cast<std::uint32_t>(index.back())};
            },
            "an index pulse at FIRST and every PERIOD pulses")
        ->expected(2)
        ->type_name("FIRST PERIOD");
}

void AddCommon(CLI::App &kind, Options &options, Later &later)
{
    kind.add_option("--svg", options.svg, "draw into this file")->capture_default_str();
    kind.add_option("--csv", options.csv, "write the samples into this file");
    CLI::Option *at = AddTime(kind, "--stop-at", later.stop_at_ms, "ms; stops the axis then");
    kind.add_option("--stop-time", later.stop.time_ms, "ms from the maximum speed to standstill; 0: at once")
        ->capture_default_str()
        ->needs(at);
    kind.add_option("--fix-range", options.motion.fixed_range,
                    "pulses/s; fixes the speed range for this speed first");
    AddMachine(kind, options.motion);
    AddTime(kind, "--for", options.motion.for_ms,
            "ms; the longest time to look at it (default: a move that does not end is seen until its last ramp has "
            "been over for a while)");
}

// Arguments of the online change that are not given are those of the move.
void AddChange(CLI::App &kind, Later &later, bool curved)
{
    CLI::Option *at = AddTime(kind, "--change-at", later.change_at_ms, "ms; changes the running move then");
    const auto add = [&](const char *name, auto &value, const char *help) {
        kind.add_option(name, value, help)->needs(at);
    };
    add("--change-distance", later.change_distance,
        "pulses from the start of the move, or to position with --change-absolute");
    kind.add_flag("--change-absolute", later.change_absolute, "the new distance is a position")->needs(at);
    add("--change-start", later.change_start,
        "pulses/s; with this or one of the next, speeds and ramps change too");
    add("--change-max", later.change_max, "pulses/s");
    add("--change-accel", later.change_accel_ms, "ms");
    add("--change-decel", later.change_decel_ms, "ms");
    if (curved) {
        add("--change-s-accel", later.change_s_accel_ms, "ms");
        add("--change-s-decel", later.change_s_decel_ms, "ms");
    }
}

void AddPosition(CLI::App &app, Options &options, Later &later, Kind which)
{
    const bool curved = which == Kind::s_position;
    Profile &profile = options.motion.profile;
    CLI::App &kind =
        *app.add_subcommand(curved ? "S-position" : "T-position",
                            curved ? "a position move with S-shaped ramps" : "a position move with straight ramps");
    kind.callback([&options, which] { options.motion.kind = which; });
    kind.add_option("--distance", profile.distance, "pulses to move")->capture_default_str();
    kind.add_flag("--absolute", profile.absolute, "the distance is a position; the axis stands at 0");
    AddSpeeds(kind, profile, "pulses/s, the speed to reach");
    kind.add_option("--decel", profile.decel_ms, "ms from the maximum to the start speed")->capture_default_str();
    if (curved) {
        AddSTimes(kind, profile, true);
    }
    AddCommon(kind, options, later);
    AddTime(kind, "--restart-at", options.motion.restart_at_ms, "ms; lets a stopped move go on then");
    AddChange(kind, later, curved);
}

void AddVelocity(CLI::App &app, Options &options, Later &later, Kind which)
{
    const bool curved = which == Kind::s_velocity;
    CLI::App &kind =
        *app.add_subcommand(curved ? "S-velocity" : "T-velocity",
                            curved ? "a velocity move with S-shaped ramps" : "a velocity move with straight ramps");
    kind.callback([&options, which] { options.motion.kind = which; });
    AddSpeeds(kind, options.motion.profile, "pulses/s, the speed to reach; its sign is the direction");
    if (curved) {
        AddSTimes(kind, options.motion.profile, false);
    }
    CLI::Option *at = AddTime(kind, "--speed-at", later.speed_at_ms, "ms; changes the speed then");
    kind.add_option("--speed", later.speed_change.speed, "pulses/s, the new speed; its sign is the direction")
        ->needs(at);
    kind.add_option("--speed-time", later.speed_change.time_ms, "ms from the old to the new speed")
        ->capture_default_str()
        ->needs(at);
    AddCommon(kind, options, later);
}

void AddHoming(CLI::App &app, Options &options, Later &later, Kind which)
{
    const bool search = which == Kind::home_search;
    Motion &motion = options.motion;
    CLI::App &kind = *app.add_subcommand(search ? "home-search" : "home",
                                         search ? "searches the home switch" : "homes in one direction");
    kind.callback([&motion, which] { motion.kind = which; });
    kind.add_option("--direction", motion.homing.direction, "0: to +, 1: to -")
        ->check(Between(0, 1))
        ->capture_default_str();
    if (search) {
        kind.add_option("--distance", motion.profile.distance, "pulses to go clear of the switch")
            ->capture_default_str();
    } else {
        kind.add_option("--home-mode", motion.homing.mode, "0 to 12, as docs/virtual-cards.md says")
            ->check(Between(0, 255))
            ->capture_default_str();
        kind.add_option("--option", motion.homing.option, "0 to 15; one more index pulse than this is counted")
            ->check(Between(0, 255))
            ->capture_default_str();
    }
    AddSpeeds(kind, motion.profile, "pulses/s, the speed to reach");
    AddCommon(kind, options, later);
}

void AddHandwheel(CLI::App &app, Options &options, Later &later)
{
    Motion &motion = options.motion;
    CLI::App &kind = *app.add_subcommand("handwheel", "follows a handwheel");
    kind.callback([&motion] { motion.kind = Kind::handwheel; });
    kind.add_option("--counts", motion.handwheel.counts, "handwheel counts to turn it by")->capture_default_str();
    AddTime(kind, "--turn", motion.handwheel.turn_ms, "ms that the turn takes")->capture_default_str();
    kind.add_option("--ratio", motion.handwheel.ratio, "pulses for each count, 1 to 1000")->capture_default_str();
    AddCommon(kind, options, later);
}

// What is not given stays as the move has it.
Change ChangeOf(const Profile &move, const Later &later)
{
    Change change = {*later.change_at_ms, true, move};
    if (later.change_distance) {
        change.to.distance = *later.change_distance;
        change.to.absolute = later.change_absolute;
    }
    const auto take = [&change](auto &value, const auto &given) {
        if (given) {
            value = *given;
            change.distance_only = false;
        }
    };
    take(change.to.start, later.change_start);
    take(change.to.max, later.change_max);
    take(change.to.accel_ms, later.change_accel_ms);
    take(change.to.decel_ms, later.change_decel_ms);
    take(change.to.s_accel_ms, later.change_s_accel_ms);
    take(change.to.s_decel_ms, later.change_s_decel_ms);
    if (change.distance_only && !later.change_distance) {
        throw CLI::ValidationError("--change-at", "say what changes: --change-distance, --change-max, ...");
    }
    return change;
}

void TakeLater(Motion &motion, const Later &later)
{
    if (later.change_at_ms) {
        motion.change = ChangeOf(motion.profile, later);
    }
    if (later.speed_at_ms) {
        motion.speed_change = later.speed_change;
        motion.speed_change->at_ms = *later.speed_at_ms;
    }
    if (later.stop_at_ms) {
        motion.stop = later.stop;
        motion.stop->at_ms = *later.stop_at_ms;
    }
}

} // namespace

bool ParseOptions(int argc, const char *const *argv, Options &options, int &status)
{
    CLI::App app(description, "trevik-scope");
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.footer(footer);
    app.set_version_flag("--version", "trevik-scope " TREVIK_TOOLS_VERSION);
    app.require_subcommand(0, 1); // the complaint about none is our own
    Later later;
    AddPosition(app, options, later, Kind::t_position);
    AddPosition(app, options, later, Kind::s_position);
    AddVelocity(app, options, later, Kind::t_velocity);
    AddVelocity(app, options, later, Kind::s_velocity);
    AddHoming(app, options, later, Kind::home);
    AddHoming(app, options, later, Kind::home_search);
    AddHandwheel(app, options, later);
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty()) {
            throw CLI::RequiredError("A kind of motion (T-position, S-position, T-velocity, S-velocity, home, "
                                     "home-search, handwheel)");
        }
        TakeLater(options.motion, later);
    } catch (const CLI::ParseError &error) {
        status = app.exit(error) == 0 ? 0 : usage_status;
        return false;
    }
    return true;
}

} // namespace trevik_scope
