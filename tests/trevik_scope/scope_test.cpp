// trevik-scope as one uses it: the program, run from a shell.
#include "support/system.h"

#include "platform/host/system.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace
{

struct Outcome {
    int status = -1;
    std::string said; // on both outputs
    std::string svg;
};

// One folder for each process, so that tests may run side by side.
struct Scope {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("trevik-scope-test-" + std::to_string(trevik::host::ProcessId()));
    const std::string svg = (folder / "move.svg").string();
    const std::string csv = (folder / "move.csv").string();

    Scope() { std::filesystem::create_directory(folder); }
    ~Scope() { std::filesystem::remove_all(folder); }
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;

    Outcome run(const std::string &arguments) const
    {
        Outcome outcome;
        outcome.status = trevik::test::RunCommand(TREVIK_SCOPE " " + arguments + " 2>&1", outcome.said);
        std::ifstream file(svg);
        outcome.svg.assign(std::istreambuf_iterator<char>(file), {});
        return outcome;
    }
};

struct Run {
    const char *arguments;
    std::array<std::string_view, 5> parts; // of what is said, and with a > drawn
    int status = 0;
};

// Ends, ramps and times by hand: a ramp takes (rate + 1) x 4 x speed units / 19.6608 MHz.
constexpr Run runs[] = {
    {"T-position --distance 20000", // 2 x 91.0 + (20000 - 1865) / 20
     {"took 1088.7 ms, ended at 20,000 pulses; highest speed 20,000 pulses/s",
      "ACCEL_RATE                  6  ramp of 91 ms",
      "ramp up   at 0.0 ms: 500 to 20,000 pulses/s in 91.0 ms, asked for 100",
      ">TrevikA_T_position_move(0, 0, 20000, 0, 500, 20000, 100, 100, 0);", ">acceleration, pulses/s²<"}},
    {"S-position --distance 12000 --accel 200 --s-accel 50",
     {"ended at 12,000 pulses", "positioning, S", ">S_DECEL_RANGE<", ">wholly curved"}},
    {"T-position --change-at 250 --change-distance 3000",
     {"at 250 ms: TrevikA_position_change(0, 0, 3000, 0);", "ended at 3,000 pulses", ">change<"}},
    {"T-position --change-at 250 --change-max 40000",
     {"highest speed 40,000 pulses/s", "TrevikA_T_onLINE_change(0, 0, 20000, 0, 500, 40000, 100, 100);"}},
    {"T-position --stop-at 300 --stop-time 200 --restart-at 700",
     {"ended at 20,000 pulses", "20,000 to 0 pulses/s in", ">stop</text>", ">restart</text>"}},
    {"T-velocity --max -20000 --speed-at 200 --speed -30000 --fix-range 30000",
     {"seen for 350.00 ms", "runs on, −", "TrevikA_velocity_range_fix(0, 0, 30000);", ">new speed</text>"}},
    {"S-velocity --stop-at 200 --stop-time 0", {"took 200.00 ms", "runs on, +, S", "CMD_STOP_IMMEDIATE"}},
    {"home --home-mode 1 --home-switch 3000 3600 --max 5000",
     {"ended at 3,000 pulses", "mode 1, option 0", "TrevikA_home_mode_set(0, 0, 1, 0);", "class=\"switch\""}},
    {"home-search --direction 1 --home-switch -3600 -3000 --max 5000 --distance 300",
     {"search, −, T", "TrevikA_home_search(0, 0, 500, 5000, 100, 1, 300);", ">home</text>"}},
    {"T-position --distance -3 --absolute",
     {"ended at -3 pulses; highest speed 945 pulses/s", "500 to 945 pulses/s in 2.08 ms, part of a ramp",
      "TrevikA_T_position_move(0, 0, -3, 1,"}},
    {"handwheel --counts 500 --turn 1000 --ratio 3",
     {"then at 1,500 pulses; highest speed 1,500 pulses/s", "the last tick of 20 ms", "no deceleration"}},
    {"T-position --plus-limit 8000", {"ended at 8,000 pulses", ">+ limit<", "class=\"switch\""}},
    {"position", {"position"}, 2},
    {"T-position --s-accel 20", {"--s-accel"}, 2},
    {"T-position --change-at 100", {"say what changes"}, 2},
    {"T-position --max 6553501", {"at 0 ms returned 302: an argument is outside its range"}, 1},
    {"S-position --accel 100 --s-accel 51", {"each S time may be half of its ramp at most"}, 1},
    {"T-position --change-at 5000 --change-distance 3000", {"make the change earlier"}, 1},
    {"home --home-mode 13", {"Home modes are 0 to 12"}, 1}};

} // namespace

TEST_CASE_FIXTURE(Scope, "every kind of move is told and drawn; what is wrong is said, and nothing is drawn")
{
    for (const Run &row : runs) {
        std::filesystem::remove(svg);
        const Outcome outcome = run(row.arguments + (" --svg " + svg));
        INFO(std::string(row.arguments) << ": " << outcome.said);
        CHECK(outcome.status == row.status);
        for (const std::string_view part : row.parts)
            CHECK_MESSAGE((outcome.said + outcome.svg).find(part) != std::string::npos, part);
        CHECK((row.status == 0 ? trevik::test::SvgIsReadable(svg) : outcome.svg.empty()));
    }
    const Outcome unwritable = run("T-position --svg " + folder.string() + "/no/folder.svg");
    CHECK((unwritable.status == 1 && unwritable.said.find("cannot write") != std::string::npos));
}

TEST_CASE_FIXTURE(Scope, "the samples are even, end with the move and agree with themselves")
{
    run("T-position --distance 20000 --svg " + svg + " --csv " + csv);
    std::ifstream file(csv);
    std::string line;
    std::getline(file, line);
    REQUIRE(line == "time_s,position_pulses,speed_pps");
    double time_s = 0;
    double position = 0;
    double speed_pps = 0;
    double travelled = 0;
    for (double last_s = 0, last_pps = 0; std::getline(file, line); last_s = time_s, last_pps = speed_pps) {
        REQUIRE(std::sscanf(line.c_str(), "%lf,%lf,%lf", &time_s, &position, &speed_pps) == 3);
        travelled += (time_s - last_s) * (last_pps + speed_pps) / 2;
        REQUIRE(std::fabs(position - travelled) < 1);
    }
    CHECK((position == 20000 && speed_pps == 0));
}
