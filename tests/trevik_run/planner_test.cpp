#include "trevik-run/planner.h"

#include <doctest/doctest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "trevik-run/arc_moves.h"
#include "trevik-run/card_moves.h"
#include "trevik-run/checker.h"
#include "trevik-run/interpreter.h"
#include "trevik_run/random_part.h"

using namespace trevik_run;

namespace
{

struct Planned {
    Machine machine;
    Program program;
    CheckedProgram checked;
    RampMaker ramps;

    explicit Planned(const std::string &text, const Machine &on = {})
        : machine(on),
          program(ReadProgram(text, {})),
          checked(CheckProgram(program, machine)),
          ramps(checked.top_pps, WantedAcceleration(machine))
    {
        PlanSpeeds(program, machine, ramps);
    }
};

// A walk of feed moves of random length, direction and feed, with corners, reversals and short moves.
std::string RandomPart(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0, 1);
    std::string text = "G91 G1 F1000 X5\n";
    double heading = 0;
    for (int i = 0; i < 300; ++i) {
        heading += (unit(random) < 0.1 ? 3 : 0.4) * (unit(random) - 0.5);
        const double length = std::pow(10, 3 * unit(random) - 2); // 0.01 to 10 mm
        text += "F" + std::to_string(100 + 2900 * unit(random)) + " X" +
                std::to_string(length * std::cos(heading)) + " Y" + std::to_string(length * std::sin(heading)) +
                "\n";
        text += unit(random) < 0.05 ? "G0 Z1\nG0 Z-1\nG1\n" : "";
    }
    return text;
}

// The length of path that the library's own formulas give a ramp, in pulses; without a time none.
double RampPulses(const Planned &p, const CardMove &move, std::uint32_t time_ms, double factor)
{
    if (time_ms == 0)
        return 0;
    const double unit = 300 / (std::floor(19660500 / std::floor(p.checked.top_pps)));
    const double low = std::trunc(move.start_pps * factor / unit + 0.95);
    const double high = std::trunc(move.max_pps * factor / unit + 0.95);
    const double rate = std::max(1.0, std::trunc(time_ms * 19660.8 / (4 * (high - low))) - 1);
    return (high * high - low * low) * unit * unit / 2 * (4 * (rate + 1) / 19660800 / unit) / factor;
}

} // namespace

TEST_CASE("planner: corners, reversals and rapids begin at the start speed, bends and tangents do not")
{
    const double start = 800;
    const double feed = 10000;
    // Bends; and into an arc along X, out of it at 45 degrees, where its leading axis is slower than the path.
    const std::pair<const char *, std::vector<double>> parts[] = {
        {"G0 X10\nG1 F1500 X30\nX50 Y5\nY50\nY20\nG0 X0\nX-20", {start, start, feed, start, start, start, start}},
        {"G1 F1500 X10\nG3 X24.142 Y5.858 J20\nG1 X34.142 Y15.858\nG1 Y0",
         {start, feed / arc_speed_divisor, feed, start}}};
    for (const auto &[text, entries] : parts) {
        const Planned p(text);
        REQUIRE(p.program.moves.size() == entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i)
            CHECK_MESSAGE(p.program.moves[i].entry_pps == doctest::Approx(entries[i]).epsilon(0.001), i);
        CHECK(ExitSpeed(p.program, entries.size() - 1, p.machine) == start);
    }
}

// Each move, where it begins, and the speed at its end.
template <class Check>
void ForEachMove(const Planned &p, Check check)
{
    Vec4 from = p.program.start;
    for (std::size_t i = 0; i < p.program.moves.size(); ++i) {
        const Move &move = p.program.moves[i];
        CAPTURE(move.line);
        check(move, from, ExitSpeed(p.program, i, p.machine));
        from = move.target;
    }
}

TEST_CASE(
    "planner and card moves: of a random contour can be driven, stay under the feed, fit their ramps and join")
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        CAPTURE(seed);
        const bool s_curve = seed % 2 == 0;
        const Planned p(RandomPart(seed));
        double speed = p.machine.start_pps;
        double reach = 0;
        ForEachMove(p, [&](const Move &move, const Vec4 &from, double exit) {
            const double entry = move.entry_pps;
            REQUIRE(entry <= move.speed_pps);
            REQUIRE(exit <= move.speed_pps * 1.0001);
            REQUIRE(exit * exit <= entry * entry + 2.001 * p.ramps.AccelPps2() * move.length_pulses);
            REQUIRE(entry * entry <= exit * exit + 2.001 * p.ramps.DecelPps2() * move.length_pulses);
            reach = std::max(reach, entry);
            Pulses at = ToPulses(from, p.machine);
            const Pulses end = ToPulses(move.target, p.machine);
            const CardMoves lines = MakeCardMoves(at, end, MakePathLine(from, move.target, p.machine),
                                                  {entry, exit, move.speed_pps}, p.ramps, 0, s_curve);
            for (int n = 0; n < lines.count; ++n) {
                const CardMove &line = lines.move[static_cast<std::size_t>(n)];
                const Piece piece = MakePiece(at, line.target);
                const double factor = piece.longest / piece.length;
                REQUIRE(line.max_pps <= move.speed_pps);
                REQUIRE(line.start_pps <= line.max_pps);
                REQUIRE(piece.length > 0);
                const double up = RampPulses(p, line, line.accel_ms, factor);
                const double down = RampPulses(p, line, line.decel_ms, factor);
                REQUIRE(up + down <= piece.length + 2);
                // What a stepper takes in one go: about the start speed.
                const double begin = line.accel_ms != 0 ? line.start_pps : line.max_pps;
                REQUIRE(std::fabs(begin - speed) <= 1.3 * p.machine.start_pps);
                speed = line.decel_ms != 0 ? line.start_pps : line.max_pps;
                at = line.target;
            }
            REQUIRE(at == end);
        });
        CHECK(speed <= p.machine.start_pps * 1.01);
        CHECK(reach > 5 * p.machine.start_pps); // it does gather speed
    }
}

TEST_CASE("arc moves: of random contours join, keep to the feed and change speed in steps that motors take")
{
    // Of the leading axis; a whole speed, and the card's divisor, round it.
    const auto pace = [](const CardMove &move, const ProgrammedPath &path, double share) {
        return move.shape == Shape::arc ? move.max_pps / arc_speed_divisor : move.max_pps * path.Pace(share);
    };
    for (unsigned seed = 1; seed <= 20; ++seed) {
        CAPTURE(seed);
        const Planned p(RandomArcs(seed, 300));
        std::vector<CardMove> pieces;
        double speed = p.machine.start_pps; // along the path, where the last move ended
        ForEachMove(p, [&](const Move &move, const Vec4 &from, double exit) {
            const ProgrammedPath path = PathOf(p.program, move, from, p.machine);
            double last = std::exchange(speed, exit) * path.Pace(0);
            if (!path.Curved())
                return;
            const Pulses to = ToPulses(move.target, p.machine);
            const Pulses begin = ToPulses({path.Line().from[0] / 400, path.Line().from[1] / 400}, p.machine);
            MakeArcMoves(path, {0, begin, to}, {move.entry_pps, exit, move.speed_pps}, p.ramps,
                         {p.machine.start_pps, true}, pieces);
            REQUIRE((!pieces.empty() && pieces.back().target == to));
            double share = 0;
            for (const CardMove &piece : pieces) {
                const double now = pace(piece, path, (share + piece.end_share) / 2);
                REQUIRE(now <= move.speed_pps / arc_speed_divisor + 1);
                REQUIRE(std::fabs(now - last) <= 1.01 * p.machine.start_pps + 1);
                REQUIRE(piece.end_share > share);
                last = now;
                share = piece.end_share;
            }
            REQUIRE(share == 1);
            REQUIRE(std::fabs(last - exit * path.Pace(1)) <= 1.01 * p.machine.start_pps + 1);
        });
    }
}

TEST_CASE("checker: small circles are run no faster than the ramps' acceleration allows")
{
    const Planned p("G1 F3000 X1\nG2 I1\nG2 I100");
    CHECK(p.program.moves[1].speed_pps == doctest::Approx(std::sqrt(WantedAcceleration(p.machine) * 400)));
    CHECK(p.program.moves[2].speed_pps == doctest::Approx(20000));
}

TEST_CASE("checker: moves of no whole pulse are dropped, and what they add up to is not lost")
{
    Program program = ReadProgram("G91 G1 F600 X0.001\nX0.001\nX0.001\nX0.001\nG4 P1", {});
    const CheckedProgram checked = CheckProgram(program, Machine{}); // 0.4 pulses each
    REQUIRE(program.moves.size() == 3);
    CHECK(program.moves[0].target[0] == doctest::Approx(0.002));
    CHECK(program.moves[1].target[0] == doctest::Approx(0.004));
    CHECK(checked.segments == 2);
    CHECK(checked.axes == 3); // X alone takes Y along
}
