#include "trevik-run/run.h"

#include <doctest/doctest.h>
#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <cmath>
#include <string>

#include "trevik-run/interrupt.h"
#include "trevik-run/svg.h"
#include "trevik-run/trace.h"
#include "trevik_run/random_part.h"

using namespace trevik_run;

namespace
{

constexpr const char *cam_part = R"(%
O0001 (POCKET 12)
(T1 D=3. CR=0. - ZMIN=-1. - FLAT END MILL)
N10 G90 G94 G17 G49 G40 G80
N15 G21
N20 T1 M6
N25 S12000 M3
N30 G54
N35 M8
N40 G0 X10.123 Y5.077
N45 G0 Z5.
N50 G1 Z-1. F300.
N55 G1 X30.5 F1200.
N60 X31.2 Y5.3
N65 X31.8 Y5.7
N70 X32.2 Y6.3
N75 X32.4 Y7.
N80 Y25.
N85 G4 P0.25
N90 X10.123 Y5.077
N95 G0 Z15.
N100 G28 Z15.
N105 M5
N110 M30
%
)";

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
    CHECK(report.segments_done == report.segments);
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

// Interrupts the run after so many samples.
struct Interrupter : SampleSink {
    int left;
    explicit Interrupter(int samples) : left(samples) {}
    void Take(const Sample &) override { SetInterrupted(--left <= 0); }
};

RunEnd RunWithSink(const std::string &text, SampleSink &sink, Report &report)
{
    Pulses position{};
    REQUIRE_FALSE(OpenCard(0, position));
    const Options options = QuietOptions();
    const Part part(text, options, {});
    RunOnCard(part, options, {&sink}, report);
    TrevikA_close();
    return report.end;
}

} // namespace

TEST_CASE("run: parts stay within a pulse of the programmed path and end exactly")
{
    struct Case {
        const char *name;
        std::string text;
        double least_s; // the programmed way at the programmed speeds
        double most_s;
    };
    const Case cases[] = {
        {"cam", cam_part, 5.4, 7.0}, {"ring", Ring(false), 4.9, 5.6}, {"four", Ring(true), 5.3, 6.2}};
    for (const Case &c : cases) {
        for (const bool s_curve : {false, true}) {
            CAPTURE(std::string(c.name));
            CAPTURE(s_curve);
            Options options = QuietOptions();
            options.card = 3;
            options.machine.s_curve = s_curve;
            options.sample_ms = 0.2;
            const Report report = Ran(c.text, options);
            CHECK(report.deviation.LargestPulses() <= 1);
            CHECK(report.deviation.LargestPulses() > 0.1); // it was measured
            CHECK(report.machine_s > c.least_s);
            CHECK(report.machine_s < c.most_s);
        }
    }
}

TEST_CASE("run: chained arcs, lines and helices stay within a pulse of the programmed curves and end exactly")
{
    struct Case {
        const char *name;
        std::string text;
        double pulses_per_mm_x;
    };
    const std::string circles = "F1200 G0 X30 Y1\nG2 I-10\nG3 I0.5\nG3 I0.001\nG2 I-10 Z-3\nG0 X0 Y0";
    const Case cases[] = {
        {"arcs", RandomArcs(1, 300), 400},
        {"coarse", RandomArcs(2, 300), 12},
        {"ellipses", RandomArcs(3, 300), 333},
        {"helices", RandomArcs(4, 300, 0.5), 400},
        {"steep helices", RandomArcs(5, 200, 5), 400},
        {"helices of a part that uses A", "G0 A90\n" + RandomArcs(6, 200, 0.5), 400},
        {"circles", circles, 400},
        {"a steep helix of a whole turn", "F1200 G2 I0.5 Z-0.9", 400},
        {"a helix of few pulses", "F865 G2 I0.03 Z0.012", 400},
    };
    for (const Case &c : cases) {
        CAPTURE(std::string(c.name));
        Options options = QuietOptions();
        options.machine.pulses_per_unit[0] = c.pulses_per_mm_x;
        options.machine.pulses_per_unit[1] = c.pulses_per_mm_x == 333 ? 400 : c.pulses_per_mm_x;
        options.sample_ms = 0.2;
        const Report report = Ran(c.text, options);
        CHECK(report.deviation.LargestPulses() <= 1);
        CHECK(report.deviation.LargestPulses() > 0.5); // it was measured
    }
}

TEST_CASE("run: a helix turns axis 3 unless A is to be kept")
{
    for (const bool keep_a : {false, true}) {
        Options options = QuietOptions();
        options.machine.keep_a = keep_a;
        Ran("F1200 G2 I5 Z-1", options);
        std::int32_t a_pulses = -1;
        REQUIRE(TrevikVirtual_position_read(0, 3, &a_pulses) == TREVIK_OK);
        CHECK((a_pulses == 0) == keep_a);
    }
}

TEST_CASE("run: an arc takes the time of its feed; a second run starts where the first one ended")
{
    CHECK(Ran("F600 G1 X20\nG3 X40 Y20 J20\nG1 Y40").machine_s == doctest::Approx(7.14).epsilon(0.02)); // 71.4 mm
    Report report = Ran("G91 G0 X1.5");
    REQUIRE(RunPart("G91 G0 X1.5 Y-2", QuietOptions(), report) == RunEnd::completed);
    CHECK(report.position == Pulses{1200, -800, 0, 0});
    CHECK(report.position == report.programmed);
}

TEST_CASE("run: an interrupt stops the axes on their way, with deceleration")
{
    FreshCard();
    Interrupter interrupter(500);
    Report report;
    CHECK(RunWithSink("G0 X100 Y50\nX0 Y0", interrupter, report) == RunEnd::interrupted);
    CHECK(report.position[0] > 5000);
    CHECK(report.position[0] < 40000);
    CHECK(std::abs(report.position[0] - 2 * report.position[1]) <= 2); // still on the line
    CHECK(report.machine_s > 0.53);                                    // 0.5 s and a ramp
}

TEST_CASE("run: an interrupt among lines too short to stop on slows down along the contour")
{
    struct SlowestMoving : Interrupter {
        double speed_mm_min = 0;
        SlowestMoving() : Interrupter(2000) {}
        void Take(const Sample &sample) override
        {
            Interrupter::Take(sample);
            speed_mm_min = sample.speed_mm_min > 0 ? sample.speed_mm_min : speed_mm_min;
        }
    };
    const std::string arcs = RandomArcs(7, 300);
    for (const std::string &part :
         {Ring(false), Ring(true), arcs, std::string("F1800 G2 I8\nG2 I8 Z-3\nG2 I8 Z-6")}) {
        FreshCard();
        SlowestMoving sink;
        Report report;
        CHECK(RunWithSink(part, sink, report) == RunEnd::interrupted);
        CHECK(report.segments_done < report.segments);
        CHECK(sink.speed_mm_min < 300); // the last before the axes stood; the contour runs at 1800
        CHECK(report.deviation.LargestPulses() <= 1);
    }
}

TEST_CASE("run: a card that refuses is reported with call, code and meaning")
{
    struct Refuser : SampleSink {
        int left = 50;
        void Take(const Sample &) override
        {
            if (--left == 0) {
                TrevikVirtual_refuse(0, 0, 8, 31); // a refused status read alone passes for "moving"
            }
        }
    };
    FreshCard();
    Refuser refuser;
    Report report;
    CHECK(RunWithSink("G0 X100 Y50", refuser, report) == RunEnd::failed);
    CHECK(report.error.code == 31);
    CHECK(report.error.Message().find("TrevikA_") == 0);
    std::uint8_t idle = 0;
    Pulses position{};
    REQUIRE_FALSE(OpenCard(0, position));
    TrevikA_motion_status_read(0, 0, 0, &idle);
    CHECK(idle == 1);
    TrevikA_close();
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
    std::int32_t pulses = -1;
    CHECK(TrevikVirtual_position_read(0, 0, &pulses) == TREVIK_OK);
    CHECK(pulses == 0);
}

TEST_CASE("trace: a drawing in few points keeps the shape and the peaks")
{
    FreshCard();
    Trace trace(0.005, false);
    Report report;
    REQUIRE(RunWithSink("G0 X30 Y10\nG1 F1200 X40\nG1 X40 Y20\nG0 X0 Y0", trace, report) == RunEnd::completed);
    REQUIRE(trace.Strokes().size() == 3);
    CHECK(trace.Strokes()[0].rapid);
    const std::vector<Point> &cut = trace.Strokes()[1].points;
    REQUIRE(cut.size() <= 5); // thousands of samples
    CHECK(cut.back().x == doctest::Approx(40).epsilon(0.001));
    CHECK(cut.back().y == doctest::Approx(20).epsilon(0.001));
    double top = 0;
    for (const SpeedBucket &bucket : trace.Speeds()) {
        top = std::max(top, bucket.highest);
    }
    CHECK(top == doctest::Approx(3000).epsilon(0.001));
    const std::string drawing = DrawSvg(trace, {"a<b.ngc", "summary"});
    CHECK(drawing.find("a&lt;b.ngc") != std::string::npos);
    CHECK(drawing.size() < 100000);
}
