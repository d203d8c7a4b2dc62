// Any text as a part program: it is refused with a place and a reason, or read, checked and planned within the time and
// memory that its length allows. Short parts are cut on a virtual card: they end exactly and stay on their path.
#include "fuzz/bytes.h"

#include "api/card_manager.h"
#include "platform/host/clock.h"
#include "trevik-run/run.h"

#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace trevik::fuzz
{
namespace
{

using namespace trevik_run;

Options TakeOptions(std::uint8_t choice)
{
    Options options;
    options.quiet = true;
    options.machine.s_curve = (choice & 1) != 0;
    options.machine.keep_a = (choice & 2) != 0;
    options.block_delete = (choice & 4) != 0;
    if ((choice & 8) != 0)
        options.machine.pulses_per_unit = {333, 400, 400, 12.5};
    if ((choice & 16) != 0)
        options.machine.start_pps = 20000;
    if ((choice & 32) != 0)
        options.machine.ramp_ms = 0;
    return options;
}

// No run that takes long: its samples would.
bool Short(const Part &part, const Options &options)
{
    constexpr double longest_s = 2;
    double seconds = part.Checked().dwell_s;
    for (const Move &move : part.Moves().moves)
        if (move.kind != MoveKind::dwell)
            seconds += static_cast<double>(move.length_pulses) /
                       std::min<double>(static_cast<double>(move.speed_pps), options.machine.start_pps);
    return seconds <= longest_s;
}

void CheckPlan(const Part &part)
{
    for (const Move &move : part.Moves().moves) {
        if (move.kind == MoveKind::dwell)
            continue;
        Require(std::isfinite(move.length_pulses) && move.speed_pps > 0 && move.entry_pps >= 0 &&
                    move.speed_pps <= static_cast<float>(max_speed_pps),
                "line %u: %g pulses at %g from %g", move.line, static_cast<double>(move.length_pulses),
                static_cast<double>(move.speed_pps), static_cast<double>(move.entry_pps));
    }
}

void Cut(std::string_view text, const Options &options)
{
    constexpr double one_pulse = 1.001;
    TrevikHost_clock_manual(1); // a run leaves it real
    host::MoveManualClock(0);
    TrevikVirtual_cards_set("0:A");
    Report report;
    const RunEnd end = RunPart(text, options, report);
    manager.StopPulserTicks(); // each start-up adds one
    Require(end == RunEnd::completed, "the run fails: %s, result %u", report.error ? report.error.call : "-",
            report.error.code);
    Require(report.position == report.programmed, "the axes end elsewhere: %d %d", report.position[0],
            report.programmed[0]);
    Require(report.deviation.LargestPulses() <= one_pulse, "%g pulses off the path",
            report.deviation.LargestPulses());
}

} // namespace
} // namespace trevik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trevik::fuzz;
    Bytes bytes(data, size);
    const trevik_run::Options options = TakeOptions(bytes.take<std::uint8_t>());
    const std::string_view text(reinterpret_cast<const char *>(bytes.rest().data()), bytes.rest().size());
    try {
        const trevik_run::Part part(text, options, {});
        CheckPlan(part);
        if (Short(part, options))
            Cut(text, options);
    } catch (const trevik_run::PartError &error) {
        Require(error.line >= 1 && error.column >= 1 && !error.what.empty(), "an error without a place: %s",
                error.Message("part").c_str());
    }
    return 0;
}
