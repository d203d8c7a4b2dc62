#include "trevik-scope/summary.h"

#include <fmt/format.h>
#include <trevik/TrevikA.h>

#include <cmath>
#include <iterator>

#include "shared/result_text.h"
#include "shared/svg_page.h"
#include "trevik-scope/ramps.h"

namespace trevik_scope
{
namespace
{

using trevik_tools::GroupedNumber;

// As many decimals as the samples resolve.
std::string Ms(const Recording &recording, double seconds)
{
    const double step_ms = recording.step_s * 1000;
    return fmt::format("{:.{}f}", seconds * 1000, step_ms > 1 ? 0 : step_ms > 0.1 ? 1 : 2);
}

bool Near(double measured, double asked, double span)
{
    constexpr double share = 0.02; // of the ramp: speeds are rounded to whole units
    return std::fabs(measured - asked) <= span * share + 1;
}

std::string AskedText(const Ramp &ramp, const std::vector<AskedRamp> &asked)
{
    for (const AskedRamp &wanted : asked) {
        const double span = std::fabs(wanted.to_pps - wanted.from_pps);
        if (Near(ramp.from_pps, wanted.from_pps, span) && Near(ramp.to_pps, wanted.to_pps, span)) {
            return fmt::format(", asked for {:.0f}", wanted.ms);
        }
    }
    return ", part of a ramp";
}

// A ramp of few samples is not measured well.
std::string ResolutionText(const Recording &recording, const Ramp &ramp)
{
    constexpr double few = 20;
    return ramp.end_s - ramp.begin_s > few * recording.step_s
               ? ""
               : fmt::format(" (seen every {:.2g} ms)", recording.step_s * 1000);
}

void AddRamps(std::string &text, const Motion &motion, const Recording &recording)
{
    const std::vector<AskedRamp> asked = AskedRampsOf(motion);
    for (const Ramp &ramp : RampsOf(recording)) {
        fmt::format_to(std::back_inserter(text), "ramp {:<4} at {} ms: {} to {} pulses/s in {} ms{}{}\n",
                       ramp.to_pps > ramp.from_pps ? "up" : "down", Ms(recording, ramp.begin_s),
                       GroupedNumber(std::round(ramp.from_pps)), GroupedNumber(std::round(ramp.to_pps)),
                       Ms(recording, ramp.end_s - ramp.begin_s), ResolutionText(recording, ramp),
                       AskedText(ramp, asked));
    }
}

const char *Ranges(const std::string &call)
{
    if (call == "TrevikA_home_mode_set") {
        return "Home modes are 0 to 12, options 0 to 15.";
    }
    if (call == "TrevikA_pulser_motion_enable") {
        return "The ratio is 1 to 1000.";
    }
    return "Speeds go up to 6,553,500 pulses/s, a move needs a distance, "
           "and each S time may be half of its ramp at most.";
}

// What one can do about a refusal.
const char *Advice(const std::string &call, std::uint32_t code)
{
    switch (code) {
    case TREVIK_ERR_PARAM:
        return Ranges(call);
    case TREVIK_ERR_NOT_MOVING:
        return call == "TrevikA_velocity_change" ? "Only a velocity move takes a new speed."
                                                 : "The move had ended by then: make the change earlier.";
    case TREVIK_ERR_BUSY:
        return "Start when the axis stands still.";
    default:
        return "";
    }
}

} // namespace

std::string Headline(const Recording &recording)
{
    return fmt::format("{} {} ms, {} at {} pulses; highest speed {} pulses/s",
                       recording.ended ? "took" : "seen for", Ms(recording, recording.EndSeconds()),
                       recording.ended ? "ended" : "then", GroupedNumber(recording.samples.back().position),
                       GroupedNumber(std::round(HighestSpeed(recording))));
}

std::string SummaryText(const Motion &motion, const Recording &recording,
                        const std::vector<RegisterGroup> &registers)
{
    std::string text;
    const auto out = std::back_inserter(text);
    for (const CallWrites &made : recording.calls) {
        fmt::format_to(out, "{}{}\n", made.call.at_s > 0 ? fmt::format("at {:g} ms: ", made.call.at_s * 1000) : "",
                       made.call.code);
    }
    for (const RegisterGroup &group : registers) {
        fmt::format_to(out, "\n{} wrote\n", group.call);
        for (const RegisterRow &row : group.rows) {
            fmt::format_to(out, "  {:<18} {:>10}  {}\n", row.name, row.value, row.meaning);
        }
    }
    fmt::format_to(out, "\n{}\n", Headline(recording));
    AddRamps(text, motion, recording);
    return text;
}

std::string FailureText(const Recording &recording)
{
    return fmt::format("{} at {:g} ms returned {}: {}. {}", recording.failed_call, recording.failed_at_s * 1000,
                       recording.failed_code, trevik_tools::ResultText(recording.failed_code),
                       Advice(recording.failed_call, recording.failed_code));
}

} // namespace trevik_scope
