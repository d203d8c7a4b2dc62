#include "trevik-run/run.h"

#include <doctest/doctest.h>
#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>

#include "support/reading.h"
#include "trevik-run/interrupt.h"
#include "trevik-run/svg.h"
#include "trevik-run/trace.h"
#include "trevik_run/random_part.h"

using namespace trevik_run;

namespace
{

// A pocket as CAM programs write them.
constexpr const char *pocket = "G0 X10.123 Y5.077\nG0 Z5.\nG1 Z-1. F300.\nG1 X30.5 F1200.\nX31.2 Y5.3\nX31.8 Y5.7\n"
                               "X32.2 Y6.3\nX32.4 Y7.\nY25.\nG4 P0.25\nX10.123 Y5.077\nG0 Z15.\nG28 Z15.\nM30\n%";

Options QuietOptions()
{
    Options options;
    options.quiet = true;
    return options;
}

void FreshCard()
{
    REQUIRE(TrevikVirtual_cards_set("0:A,3:AC") == TREVIK_OK);
    SetInterrupted(false);
}

// Of a run on a fresh card, to its exact end.
Report Ran(const std::string &text, const Options &options = QuietOptions())
{
    FreshCard();
    Report report;
    REQUIRE(RunPart(text, options, report) == RunEnd::completed);
    CHECK(report.position == report.programmed);
    CHECK(report.segments_begun == report.segments);
    return report;
}

// A ring of short lines, with Z and A along where asked for.
std::string Ring(bool four_axes)
{
    std::string text = "G1 F1800\n";
    for (int i = 0; i <= 200; ++i) {
        const double t = 2 * 3.14159265358979 * i / 200;
        text += "X" + std::to_string(20 * std::cos(t)) + "Y" + std::to_string(20 * std::sin(t));
        text += four_axes ? "Z" + std::to_string(std::sin(5 * t)) + "A" + std::to_string(t * 57.3) : "";
        text += "\n";
    }
    return text + "G0 X0 Y0\n";
}

// Calls an operation with each sample.
template <class Operation>
struct Watch : SampleSink {
    Operation operation;
    explicit Watch(Operation with_each) : operation(with_each) {}
    void Take(const Sample &sample) override { operation(sample); }
};

Report RanBeside(SampleSink &sink, const std::string &text)
{
    FreshCard();
    Pulses position{};
    REQUIRE_FALSE(OpenCard(0, position));
    const Options options = QuietOptions();
    Report report;
    RunOnCard(Part(text, options, {}), options, {&sink}, report);
    TrevikA_close();
    return report;
}

std::int32_t StandsAt(std::uint8_t axis)
{
    return trevik::test::Value(TrevikVirtual_position_read, 0, axis);
}

} // namespace

TEST_CASE("run: parts stay within a pulse of the programmed path and end exactly")
{
    const std::string circles = "F1200 G0 X30 Y1\nG2 I-10\nG3 I0.5\nG3 I0.001\nG2 I-10 Z-3\nG0 X0 Y0";
    // Pulses/mm of X, and but for 333 of Y; the time of lines: the programmed way at the programmed speeds, and more.
    const std::tuple<const char *, std::string, double, double, double> cases[] = {
        {"pocket", pocket, 400, 5.4, 7.0},
        {"ring", Ring(false), 400, 4.9, 5.6},
        {"four", Ring(true), 400, 5.3, 6.2},
        {"coarse", RandomArcs(2, 300), 12, 0, 1000},
        {"ellipses", RandomArcs(3, 300), 333, 0, 1000},
        {"helices", RandomArcs(4, 300, 0.5), 400, 0, 1000},
        {"steep helices of a part that uses A", "G0 A90\n" + RandomArcs(5, 200, 5), 400, 0, 1000},
        {"circles", circles, 400, 0, 1000},
        {"a steep helix of a whole turn", "F1200 G2 I0.5 Z-0.9", 400, 0, 1},
        {"a helix of few pulses", "F865 G2 I0.03 Z0.012", 400, 0, 1}};
    for (const auto &row : cases) {
        const auto &[name, text, pulses_per_mm, least_s, most_s] = row;
        for (const bool s_curve : {false, true}) {
            INFO(std::get<0>(row) << (s_curve ? ", S" : ", T"));
            Options options = QuietOptions();
            options.card = 3;
            options.machine.s_curve = s_curve;
            options.machine.pulses_per_unit[0] = pulses_per_mm;
            options.machine.pulses_per_unit[1] = pulses_per_mm == 333 ? 400 : pulses_per_mm;
            options.sample_ms = 0.2;
            const Report report = Ran(text, options);
            const double deviation = report.deviation.LargestPulses();
            CHECK((deviation > 0.1 && deviation <= 1)); // it was measured
            CHECK((report.machine_s > least_s && report.machine_s < most_s));
        }
    }
}

TEST_CASE("run: a helix turns axis 3 unless A is to be kept")
{
    for (const bool keep_a : {false, true}) {
        Options options = QuietOptions();
        options.machine.keep_a = keep_a;
        Ran("F1200 G2 I5 Z-1", options);
        CHECK((StandsAt(3) == 0) == keep_a);
    }
}

TEST_CASE("run: an arc takes the time of its feed; a second run starts where the first one ended")
{
    CHECK(Ran("F600 G1 X20\nG3 X40 Y20 J20\nG1 Y40").machine_s == doctest::Approx(7.14).epsilon(0.02)); // 71.4 mm
    Report report = Ran("G91 G0 X1.5");
    REQUIRE(RunPart("G91 G0 X1.5 Y-2", QuietOptions(), report) == RunEnd::completed);
    CHECK((report.position == Pulses{1200, -800, 0, 0} && report.position == report.programmed));
}

TEST_CASE("run: an interrupt slows down along the contour, also among lines too short to stop on")
{
    for (const std::string &part : {std::string("G0 X500 Y250\nX0 Y0\nX9 Y9"), Ring(false), Ring(true),
                                    RandomArcs(7, 300), std::string("F1800 G2 I8\nG2 I8 Z-3\nG2 I8 Z-6")}) {
        double last_mm_min = 0; // before the axes stood; the contour runs at 1800 and more
        Watch interrupter([&, left = 2000](const Sample &sample) mutable {
            SetInterrupted(--left <= 0);
            last_mm_min = sample.speed_mm_min > 0 ? sample.speed_mm_min : last_mm_min;
        });
        const Report report = RanBeside(interrupter, part);
        CHECK((report.end == RunEnd::interrupted && report.segments_begun < report.segments));
        CHECK(last_mm_min < 300);
        CHECK(report.deviation.LargestPulses() <= 1);
    }
}

TEST_CASE("run: a card that refuses is reported with call, code and meaning")
{
    Watch refuser([left = 50](const Sample &) mutable {
        if (--left == 0)
            TrevikVirtual_refuse(0, 0, 8, 31); // a refused status read alone passes for "moving"
    });
    Report report = RanBeside(refuser, "G0 X100 Y50");
    CHECK((report.end == RunEnd::failed && report.error.code == 31));
    CHECK(report.error.Message().find("TrevikA_") == 0);
    CHECK(trevik::test::Value(TrevikVirtual_speed_read, 0, 0) == 0); // stopped all the same
    Options options = QuietOptions();
    options.card = 7;
    CHECK(RunPart("G0 X1", options, report) == RunEnd::failed);
    CHECK(report.error.code == TREVIK_ERR_HANDLE);
}

TEST_CASE("run: nothing moves when the part has an error")
{
    FreshCard();
    Report report;
    CHECK_THROWS_AS(RunPart("G0 X10\nG2 X20 I3 F100", QuietOptions(), report), PartError);
    CHECK(StandsAt(0) == 0);
}

TEST_CASE("trace: a drawing in few points keeps the shape and the peaks")
{
    Trace trace(0.005, false);
    REQUIRE(RanBeside(trace, "G0 X30 Y10\nG1 F1200 X40\nG1 X40 Y20\nG0 X0 Y0").end == RunEnd::completed);
    REQUIRE(trace.Strokes().size() == 3);
    CHECK(trace.Strokes()[0].rapid);
    const std::vector<Point> &cut = trace.Strokes()[1].points;
    REQUIRE(cut.size() <= 5); // thousands of samples
    CHECK(cut.back().x == doctest::Approx(40).epsilon(0.001));
    CHECK(cut.back().y == doctest::Approx(20).epsilon(0.001));
    const auto slower = [](const SpeedBucket &a, const SpeedBucket &b) { return a.highest < b.highest; };
    const auto top = std::max_element(trace.Speeds().begin(), trace.Speeds().end(), slower);
    CHECK(top->highest == doctest::Approx(3000).epsilon(0.001));
    const std::string drawing = DrawSvg(trace, {"a<b.ngc", "summary"});
    CHECK(drawing.find("a&lt;b.ngc") != std::string::npos);
    CHECK(drawing.size() < 100000);
}
