#include "trevik-run/interpreter.h"

#include <doctest/doctest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "trevik-run/run.h"

using namespace trevik_run;

namespace
{

Program Read(std::string_view text)
{
    return ReadProgram(text, {});
}

// Of the whole part: read and checked.
PartError ErrorOf(std::string_view text)
{
    try {
        const Part part(text, {}, {});
    } catch (const PartError &error) {
        return error;
    }
    return {};
}

} // namespace

TEST_CASE("reader: every spelling of the same move")
{
    for (const char *text :
         {"G1 X10.5 Y-2 F600", "g1x10.5y-2f600", "G 1 X 1 0 . 5 Y - 2 F 6 0 0", "\tG01\tX+10.50Y-02.F600\r\n",
          "N10 G01 (in)X10.5(to) Y-2 F600 ; out", "%\nO1000\nF600\nG1\nX10.5 Y-2\n%\nX99",
          "\xEF\xBB\xBFG1X10.5Y-2F600", "G21G17G40G49G80G90G94G54G43H1G64P0.01G1X10.5Y-2F600S1000M3T1M6",
          "/G1 X10.5 Y-2 F600", "G53 G1 X10.5 Y-2 F600", "G91 G1 F600 X10.5 Y-2", "G1 X10.5 Y-2 F600 M30\nG1 X99",
          "G1 F600 X10.500000000000000000000 Y-2"}) {
        CAPTURE(std::string(text));
        const Program program = Read(text);
        REQUIRE(program.moves.size() == 1);
        const Move &move = program.moves[0];
        CHECK(move.target == Vec4{10.5, -2, 0, 0});
        CHECK(move.kind == MoveKind::feed);
        CHECK(move.rate == 600);
    }
}

TEST_CASE("reader: where each kind of move ends")
{
    const std::vector<std::pair<std::string, std::vector<Vec4>>> cases = {
        {"G0 X1 Y2 Z3 A4\nX5", {{1, 2, 3, 4}, {5, 2, 3, 4}}},
        {"G20 G0 X1 A90", {{25.4, 0, 0, 90}}},
        {"G0 X1\nG91 X1 Y1\nX1\nG90 X0", {{1, 0, 0, 0}, {2, 1, 0, 0}, {3, 1, 0, 0}, {0, 1, 0, 0}}},
        {"G0 X10\nG92 X0\nX5\nG53 X5\nG92.1\nX1", {{10, 0, 0, 0}, {15, 0, 0, 0}, {5, 0, 0, 0}, {1, 0, 0, 0}}},
        {"G0 X3 Z5\nG91 G28 Z1", {{3, 0, 5, 0}, {3, 0, 6, 0}, {3, 0, 0, 0}}},
        {"G0 X3 Z5\nG28", {{3, 0, 5, 0}, {0, 0, 0, 0}}},
        {"G91 G0 X1\nG53 X7", {{1, 0, 0, 0}, {7, 0, 0, 0}}},
        {"G0 X2\nG4 P0.5\nY1", {{2, 0, 0, 0}, {2, 0, 0, 0}, {2, 1, 0, 0}}},
    };
    for (const auto &row : cases) {
        const auto &[text, targets] = row;
        CAPTURE(row.first);
        std::vector<Vec4> ends;
        for (const Move &move : Read(text).moves)
            ends.push_back(move.target);
        CHECK((ends == targets));
    }
}

TEST_CASE("reader: feeds in inches, and of the turning axis alone")
{
    const Program program = Read("G20 F10 G1 X1\nA90\nX2 A0\nG21 X3");
    CHECK(program.moves[0].rate == 254);
    CHECK(program.moves[1].rate == 10); // degrees/min know no inches
    CHECK(program.moves[2].rate == 254);
    CHECK(program.moves[3].rate == 254); // a feed keeps its meaning when the unit changes
}

TEST_CASE("reader: every form of an arc")
{
    constexpr double turn = 360;
    // Center, radii at both ends, sweep in degrees.
    const std::tuple<std::string, double, double, double, double, double> cases[] = {
        {"G2 X20 I10", 10, 0, 10, 10, -180},
        {"G3 X20 I10 J0 K0", 10, 0, 10, 10, 180},
        {"G3 X10 Y10 J10", 0, 10, 10, 10, 90},
        {"G2 X10 Y10 J10", 0, 10, 10, 10, -270},
        {"G2 X10 Y10 R10", 10, 0, 10, 10, -90},
        {"G3 X10 Y10 R10", 0, 10, 10, 10, 90},
        {"G2 X10 Y10 R-10", 0, 10, 10, 10, -270},
        {"G3 X10 Y10 R-10", 10, 0, 10, 10, 270},
        {"G3 X20 R9.996", 10, 0, 10, 10, 180}, // shorter than half the way by less than the tolerance
        {"G2 I5", 5, 0, 5, 5, -turn},
        {"G3 X0 Y0 J-5", 0, -5, 5, 5, turn},
        {"G3 I5 Z-1", 5, 0, 5, 5, turn},
        {"G3\nX20 I10", 10, 0, 10, 10, 180}, // modal
        {"G2 X20 I10.004", 10.004, 0, 10.004, 9.996, -180},
        {"G90.1 G2 X20 I10 J0", 10, 0, 10, 10, -180},
        {"G92 X100\nG90.1 G2 X120 I110 J0", 10, 0, 10, 10, -180},
        {"G90.1\nG91.1 G2 X20 I10", 10, 0, 10, 10, -180},
        {"G91 G2 X20 I10", 10, 0, 10, 10, -180},
        {"G20 G2 X2 R1", 25.4, 0, 25.4, 25.4, -180},
    };
    for (const auto &row : cases) {
        const auto &[text, x, y, radius, end_radius, sweep_degrees] = row;
        CAPTURE(std::get<0>(row));
        const Program program = Read("F600\n" + text);
        REQUIRE(program.moves.size() == 1);
        REQUIRE(program.arcs.size() == 1);
        const Arc &arc = program.arcs[program.moves[0].arc];
        CHECK((arc.x == doctest::Approx(x) && arc.y == doctest::Approx(y)));
        CHECK((arc.radius == doctest::Approx(radius) && arc.end_radius == doctest::Approx(end_radius)));
        CHECK(arc.sweep * 180 / 3.14159265358979 == doctest::Approx(sweep_degrees));
    }
    // With lines of a slash left out, and arcs as bad as this.
    const Program program =
        ReadProgram("/G0 X1\nF1 G2 X20 I10.2", {.block_delete = true, .start = {}, .arc_tolerance_mm = 0.5});
    CHECK((program.moves.size() == 1 && program.arcs.size() == 1));
}

TEST_CASE("reader: every error names line, column and word")
{
    // Line, column, word, a part of the message.
    const std::tuple<std::string, std::uint32_t, std::uint32_t, std::string, std::string> cases[] = {
        {"F9 G2 X2", 1, 4, "G2", "its center (I, J) or its radius (R)"},
        {"G 2 X2 I1", 1, 1, "G 2", "without a feed"},
        {"F9\nG2 X20 I10.02", 2, 8, "I10.02", "begins 10.02 mm and ends 9.98 mm from it"},
        {"F9\nG3 X20 R9.97", 2, 8, "R9.97", "the radius 9.97 mm is less than half the way to the end, 10 mm"},
        {"F9 G2 R5", 1, 7, "R5", "must end elsewhere"},
        {"F9 G2 X1 I1 R5", 1, 13, "R5", "a radius and a center"},
        {"F9 G90.1 G2 X2 I1", 1, 16, "I1", "both I and J"},
        {"F9 G2 X2 I1 A5", 1, 13, "A5", "A cannot turn along an arc"},
        {"F9 G1 X2\nX3 J1", 2, 4, "J1", "write G2 or G3"},
        {"\n\nG0 G55", 3, 4, "G55", "G54"},
        {"G0 X#1", 1, 4, "X", "parameters"},
        {"G0 G1 X1", 1, 4, "G1", "second motion word"},
        {"G90 G91", 1, 5, "G91", "contradicts"},
        {"G0 X1 x2", 1, 7, "x2", "twice"},
        {"G0 X1..2", 1, 7, ".", "begins with a letter"},
        {"G0 X1234567890123456789", 1, 4, "X", "too many digits"},
        {"G0 X1 B2", 1, 7, "B2", "no such axis"},
        {"G0 X1 Q2", 1, 7, "Q2", "unknown word"},
        {"G1 X1", 1, 1, "G1", "without a feed"},
        {"G1 F0 X1", 1, 4, "F0", "above 0"},
        {"N1 X1", 1, 4, "X1", "without a motion mode"},
        {"G0 X1\nG80 X2", 2, 5, "X2", "without a motion mode"},
        {"G4", 1, 1, "G4", "needs a P word"},
        {"G4 P-1", 1, 4, "P-1", "below 0"},
        {"G92 G0 X1", 1, 1, "G92", "shares"},
        {"G0 (open\nX1", 1, 4, "(open", "not closed"},
        {"\xEF\xBB\xBF/N5 G0 Y1 X99999999", 1, 11, "X99999999", "beyond the card's 32 bits"},
        {"G1 X1 F600\n\n X5000000\n\tY3 x -5000000", 4, 5, "x -5000000", "make two moves of it"},
        {"G0 X1\nX5368709.13", 2, 1, "X5368709.13", "the target"}, // of 400 pulses/mm
        {"F600\nG2 X1 R5368710", 2, 1, "G2", "the circle of this arc"},
        {"G1 F1000 X1\nF983026 X2", 2, 1, "F983026", "lower the feed"}, // 6,553,500 pulses/s and a few
        {"G1 X1 F0.001\nY1", 1, 7, "F0.001", "raise the feed"},
        {"F600 G1 X1\nF9999999\n(on) Y2 X3", 3, 6, "Y2", "lower the feed"}, // the feed stands on another line
    };
    for (const auto &row : cases) {
        const auto &[text, line, column, word, what] = row;
        CAPTURE(std::get<0>(row));
        const PartError error = ErrorOf(text);
        CHECK((error.line == line && error.column == column));
        CHECK(error.word == word);
        CHECK_MESSAGE(error.what.find(what) != std::string::npos, error.what);
    }
    for (const std::string word :
         {"G18", "G19", "G28.1", "G41", "G42", "G59", "G81", "G93", "G95", "G1.5", "G-1", "M98", "M99"}) {
        const PartError error = ErrorOf(word + " F1");
        CHECK((error.column == 1 && error.word == word));
    }
    for (const char *most : {"G0 X1\nX5368709.11", "G1 F983025 X1"})
        CHECK(ErrorOf(most).line == 0);
    CHECK(ErrorOf("\nG2 X1").Message("a.ngc").rfind("a.ngc:2:1: G2: an arc", 0) == 0);
    CHECK(ErrorOf("X1 \x1b[m").Message("a.ngc").rfind("a.ngc:1:4: \\x1B: a word", 0) == 0);
}
