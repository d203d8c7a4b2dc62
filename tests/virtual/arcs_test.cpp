// Circles with ends that tests/numbers does not try, and their speeds.
#include "support/virtual_machine.h"

#include "virtual/arc_path.h"

#include <cmath>
#include <cstdlib>
#include <utility>

using namespace trevik::test;
using trevik::Register;
using trevik::virtual_card::ArcPath;
using trevik::virtual_card::ArcPoint;

TEST_CASE("small circles, and ends beside them")
{
    struct Row {
        ArcPoint center, end;
        bool plus;
        std::int64_t steps;
        ArcPoint reached;
    };
    // (10, 11) is one pulse off the circle, (10, 13) three.
    const Row rows[] = {{{1, 0}, {0, 0}, true, 4, {0, 0}},       {{2, 0}, {0, 0}, true, 12, {0, 0}},
                        {{5, 0}, {5, 5}, true, 7, {5, 5}},       {{5, 0}, {5, 5}, false, 21, {5, 5}},
                        {{0, 0}, {9, 9}, true, 0, {0, 0}},       {{3, 4}, {6, 8}, true, 14, {6, 8}},
                        {{10, 0}, {10, 11}, true, 15, {10, 11}}, {{10, 0}, {10, 13}, true, 14, {10, 10}},
                        {{10, 0}, {0, 1}, true, 1, {0, 1}},      {{10, 0}, {-1, 0}, true, 1, {-1, 0}}};
    for (const Row &row : rows) {
        CAPTURE(row.end.x);
        CAPTURE(row.center.x);
        ArcPath path;
        path.plan(row.center, row.end, row.plus);
        CHECK(path.steps() == row.steps);
        const ArcPoint reached = path.at(path.steps());
        CHECK((reached.x == row.reached.x && reached.y == row.reached.y));
    }
}

TEST_CASE_FIXTURE(VirtualMachine, "each axis of a circle has the speed, and its sign, of the way it goes")
{
    // All round a center to the right, over the top: a quarter of the steps each up, right and down.
    CHECK(TrevikA_T_ARC_center_move(0, 0, 6000, 0, 0, 0, relative, 500, 20000, 0, 0, 0) == TREVIK_OK);
    const double leading_pps = 20000 / 1.11107; // as the library divides it
    const double quarter_s = next_event() / 4;
    for (const auto &[right, up] : {std::pair{0, 1}, {1, 0}, {0, -1}}) {
        CHECK(speed(0) == doctest::Approx(right * leading_pps).epsilon(0.001).scale(leading_pps));
        CHECK(speed(1) == doctest::Approx(up * leading_pps).epsilon(0.001).scale(leading_pps));
        TrevikHost_advance(quarter_s);
    }
}

TEST_CASE("a helix keeps Z in proportion to the steps of its circle, also when it goes on after a stop")
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        CAPTURE(seed);
        Draw draw(seed);
        const std::int32_t x = draw.distance(1, 2000); // of the center; it ends opposite
        const std::int32_t y = draw.distance(1, 2000);
        const std::int32_t z = draw.distance(1, 20000);
        const auto counterclockwise = static_cast<std::uint8_t>(draw.between(0, 1));
        ArcPath path;
        path.plan({x, y}, {2 * x, 2 * y}, counterclockwise == 0);
        const VirtualMachine machine;
        CHECK(TrevikA_T_ArcXY_LineZ_center_move(0, x, y, 2 * x, 2 * y, z, relative, 500, 20000, 100,
                                                counterclockwise, 0) == TREVIK_OK);
        const double counted = OnChip([](auto &chip, auto) { return chip.setting(3, Register::DISTANCE); });
        const auto on_helix = [&] { // axis 3 counts steps, all in all up to 4 too many
            const double share = machine.at(3) / counted;
            const bool level = std::abs(z * share - machine.at(2)) <= 1 + std::abs(z) / counted;
            const auto last = static_cast<std::int64_t>(static_cast<double>(path.steps()) * share) + 2;
            std::int64_t step = last - 3;
            while (step <= last && (path.at(step).x != machine.at(0) || path.at(step).y != machine.at(1)))
                ++step;
            return level && step <= last;
        };
        TrevikHost_advance(machine.next_event() * draw.between(1, 100) / 120);
        CHECK(on_helix());
        TrevikA_stop(0, all_axes, 50);
        machine.run_out();
        CHECK(on_helix());
        TrevikA_4Axis_restart(0);
        TrevikHost_advance(machine.next_event() * draw.between(1, 100) / 120);
        CHECK(on_helix());
        machine.run_out();
        CHECK((machine.at(2) == z && machine.at(3) == counted && on_helix()));
    }
}
