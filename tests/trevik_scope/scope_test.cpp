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

namespace
{

struct Outcome {
    int status = -1;
    std::string said; // on both outputs
    std::string svg;
};

bool Contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

// One folder for each process, so that tests may run side by side.
class Scope
{
  public:
    Scope() { std::filesystem::create_directory(folder_); }
    ~Scope() { std::filesystem::remove_all(folder_); }
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;

    std::string Path(const char *name) const { return (folder_ / name).string(); }

    Outcome Run(const std::string &arguments, const std::string &outputs) const
    {
        const std::string command = TREVIK_SCOPE " " + arguments + " " + outputs + " 2>&1";
        Outcome outcome;
        outcome.status = trevik::test::RunCommand(command, outcome.said);
        std::ifstream svg(Path("move.svg"));
        outcome.svg.assign(std::istreambuf_iterator<char>(svg), {});
        return outcome;
    }

    Outcome Draw(const std::string &arguments) const { return Run(arguments, "--svg " + Path("move.svg")); }

    // An SVG reader takes it.
    bool WellFormed() const { return trevik::test::SvgIsReadable(Path("move.svg")); }

  private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("trevik-scope-test-" + std::to_string(trevik::host::ProcessId()));
};

struct Drawn {
    const char *arguments;
    std::array<const char *, 3> said;
    std::array<const char *, 3> in_svg;
};

// Ends, ramps and times by hand: a ramp takes (rate + 1) x 4 x speed units / 19.6608 MHz.
constexpr Drawn moves[] = {
    {"T-position --distance 20000",
     {"took 1088.7 ms, ended at 20,000 pulses; highest speed 20,000 pulses/s", // 2 x 91.0 + (20000 - 1865) / 20
      "ACCEL_RATE                  6  ramp of 91 ms",
      "ramp up   at 0.0 ms: 500 to 20,000 pulses/s in 91.0 ms, asked for 100"},
     {"TrevikA_T_position_move(0, 0, 20000, 0, 500, 20000, 100, 100, 0);", "RAMPDOWN_POINT", "CMD_START_ACC_DEC"}},
    {"S-position --distance 12000 --accel 200 --s-accel 50",
     {"ended at 12,000 pulses", "asked for 200", "positioning, S"},
     {"S_ACCEL_RANGE", "S_DECEL_RANGE", "wholly curved"}},
    {"T-position --change-at 250 --change-distance 3000",
     {"at 250 ms: TrevikA_position_change(0, 0, 3000, 0);", "ended at 3,000 pulses",
      "TrevikA_position_change wrote"},
     {">change</text>", "250 ms: TrevikA_position_change", "MULTIPLIER"}},
    {"T-position --change-at 250 --change-max 40000",
     {"highest speed 40,000 pulses/s", "ended at 20,000 pulses", "TrevikA_T_onLINE_change wrote"},
     {"TrevikA_T_onLINE_change(0, 0, 20000, 0, 500, 40000, 100, 100);", ">change</text>", "RAMPDOWN_POINT"}},
    {"T-position --stop-at 300 --stop-time 200 --restart-at 700",
     {"ended at 20,000 pulses", "20,000 to 0 pulses/s in", "CMD_RESTART"},
     {">stop</text>", ">restart</text>", "CMD_STOP_DECEL"}},
    {"T-velocity --max -20000 --speed-at 200 --speed -30000 --fix-range 30000",
     {"seen for 350.00 ms", "highest speed 30,000 pulses/s", "runs on, −"},
     {"TrevikA_velocity_range_fix(0, 0, 30000);", ">new speed</text>", "MAX_SPEED"}},
    {"S-velocity --stop-at 200 --stop-time 0",
     {"took 200.00 ms", "runs on, +, S", "CMD_STOP_IMMEDIATE"},
     {"TrevikA_stop(0, (uint8_t[]){1, 0, 0, 0}, 0);", "S_ACCEL_RANGE", ">stop</text>"}},
    {"home --home-mode 1 --home-switch 3000 3600 --max 5000",
     {"ended at 3,000 pulses", "mode 1, option 0", "home, +, T"},
     {"TrevikA_home_mode_set(0, 0, 1, 0);", "class=\"switch\"", ">home</text>"}},
    {"home-search --direction 1 --home-switch -3600 -3000 --max 5000 --distance 300",
     {"took", "search, −, T", "DISTANCE                  300"},
     {"TrevikA_home_search(0, 0, 500, 5000, 100, 1, 300);", "HOME_CONFIG", ">home</text>"}},
    {"T-position --distance -3 --absolute",
     {"ended at -3 pulses; highest speed 945 pulses/s", "500 to 945 pulses/s in 2.08 ms, part of a ramp",
      "945 to 500 pulses/s in 2.08 ms"},
     {"TrevikA_T_position_move(0, 0, -3, 1,", "acceleration, pulses/s²", "time, ms"}},
    {"handwheel --counts 500 --turn 1000 --ratio 3",
     {"then at 1,500 pulses; highest speed 1,500 pulses/s", "the last tick of 20 ms", "MOTION_CONFIG"},
     {"TrevikA_pulser_motion_enable(0, 0, 1, 3);", "the last tick of 20 ms", "no deceleration"}},
    {"T-position --plus-limit 8000", {"ended at 8,000 pulses", "took", ""}, {"+ limit", "class=\"switch\"", ""}}};

struct Refused {
    const char *arguments;
    int status;
    const char *said;
};

constexpr Refused mistakes[] = {
    {"position", 2, "position"},
    {"T-position --distance far", 2, "--distance"},
    {"T-position --s-accel 20", 2, "--s-accel"},
    {"T-position --change-at 100", 2, "say what changes"},
    {"T-position --max 6553501", 1,
     "TrevikA_T_position_move at 0 ms returned 302: an argument is outside its range"},
    {"T-position --distance 0", 1, "returned 302"},
    {"S-position --accel 100 --s-accel 51", 1, "each S time may be half of its ramp at most"},
    {"T-position --change-at 5000 --change-distance 3000", 1, "make the change earlier"},
    {"home --home-mode 13", 1, "Home modes are 0 to 12"}};

} // namespace

TEST_CASE("every kind of move is told and drawn")
{
    const Scope scope;
    for (const Drawn &move : moves) {
        CAPTURE(move.arguments);
        const Outcome outcome = scope.Draw(move.arguments);
        CAPTURE(outcome.said);
        CHECK(outcome.status == 0);
        for (const char *part : move.said) {
            CHECK_MESSAGE(Contains(outcome.said, part), part);
        }
        for (const char *part : move.in_svg) {
            CHECK_MESSAGE(Contains(outcome.svg, part), part);
        }
        CHECK(scope.WellFormed());
    }
}

TEST_CASE("what is wrong is said, and nothing is drawn")
{
    const Scope scope;
    for (const Refused &mistake : mistakes) {
        CAPTURE(mistake.arguments);
        const Outcome outcome = scope.Draw(mistake.arguments);
        CHECK(outcome.status == mistake.status);
        CHECK_MESSAGE(Contains(outcome.said, mistake.said), outcome.said);
        CHECK(outcome.svg.empty());
    }
    CHECK_MESSAGE(Contains(scope.Run("", "").said, "A kind of motion (T-position"), "no kind given");
    const Outcome unwritable = scope.Run("T-position", "--svg " + scope.Path("no/folder.svg"));
    CHECK(unwritable.status == 1);
    CHECK_MESSAGE(Contains(unwritable.said, "cannot write"), unwritable.said);
}

TEST_CASE("the samples are even, end with the move and agree with themselves")
{
    const Scope scope;
    scope.Run("T-position --distance 20000",
              "--svg " + scope.Path("move.svg") + " --csv " + scope.Path("move.csv"));
    std::ifstream csv(scope.Path("move.csv"));
    std::string line;
    std::getline(csv, line);
    REQUIRE(line == "time_s,position_pulses,speed_pps");
    double time_s = 0;
    double position = 0;
    double speed_pps = 0;
    double travelled = 0;
    for (double last_s = 0, last_pps = 0; std::getline(csv, line); last_s = time_s, last_pps = speed_pps) {
        REQUIRE(std::sscanf(line.c_str(), "%lf,%lf,%lf", &time_s, &position, &speed_pps) == 3);
        travelled += (time_s - last_s) * (last_pps + speed_pps) / 2;
        REQUIRE(std::fabs(position - travelled) < 1);
    }
    CHECK(position == 20000);
    CHECK(speed_pps == 0);
}
