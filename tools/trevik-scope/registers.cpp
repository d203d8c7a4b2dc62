#include "trevik-scope/registers.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <map>

#include "shared/svg_page.h"

namespace trevik_scope
{
namespace
{

using trevik_tools::GroupedNumber;

constexpr double clock_hz = 19660800;
constexpr double unit_range = 300; // a speed unit is 300 / (MULTIPLIER + 1) pulses/s
constexpr std::int64_t operation_bits = 0x7F;
constexpr std::int64_t s_curve_bit = 1 << 10;
constexpr std::int64_t manual_rampdown_bit = 1 << 13;

std::string Number(double value, const char *unit)
{
    // Three digits tell a small value, and no digit of a large one is left out.
    const std::string text =
        std::fabs(value) < 100 ? fmt::format("{:.3g}", value) : GroupedNumber(std::round(value));
    return text + " " + unit;
}

// What the chip holds after one call's writes, and what it held before.
class Registers
{
  public:
    void Take(const std::vector<Write> &writes)
    {
        before_ = now_;
        written_.clear();
        for (const Write &write : writes) {
            if (!write.value.empty()) {
                now_[write.name] = written_[write.name] = std::strtoll(write.value.c_str(), nullptr, 0);
            }
        }
    }
    std::string Meaning(const std::string &name) const;

  private:
    std::int64_t Now(const char *name) const
    {
        const auto found = now_.find(name);
        return found == now_.end() ? 0 : found->second;
    }
    bool Wrote(const char *name) const { return written_.contains(name); }
    double Unit() const { return unit_range / (static_cast<double>(Now("MULTIPLIER")) + 1); }
    double Rise() const;
    std::string RampText(const char *rate, const char *s_range) const;
    std::string ModeText() const;
    std::string RampdownText() const;

    using Values = std::map<std::string, std::int64_t>;
    Values now_;
    Values before_;
    Values written_;
};

// The speed units that a ramp covers: from start to maximum speed, from the old to the new maximum, or to
// standstill.
double Registers::Rise() const
{
    const std::int64_t max = Now("MAX_SPEED");
    if (Wrote("START_SPEED")) {
        return std::fabs(static_cast<double>(max - Now("START_SPEED")));
    }
    const auto old = before_.find("MAX_SPEED");
    return Wrote("MAX_SPEED") && old != before_.end() ? std::fabs(static_cast<double>(max - old->second))
                                                      : static_cast<double>(max);
}

std::string Registers::RampText(const char *rate, const char *s_range) const
{
    const double rise = Rise();
    const auto curved = static_cast<double>(Now(s_range));
    double units = rise;
    if ((Now("MODE") & s_curve_bit) != 0) {
        const bool wholly = curved == 0 || 2 * curved > rise;
        units = wholly ? 2 * rise : rise + 2 * curved;
    }
    return units == 0
               ? "no ramp"
               : "ramp of " + Number((static_cast<double>(Now(rate)) + 1) * 4 * units / clock_hz * 1000, "ms");
}

std::string Registers::ModeText() const
{
    static const std::map<std::int64_t, const char *> operations = {
        {0x00, "runs on, +"}, {0x08, "runs on, −"}, {0x41, "positioning"}, {0x49, "with backlash"},
        {0x10, "home, +"},    {0x18, "home, −"},    {0x15, "search, +"},   {0x1D, "search, −"}};
    const auto operation = operations.find(Now("MODE") & operation_bits);
    return fmt::format("{}, {}", operation == operations.end() ? "operation" : operation->second,
                       (Now("MODE") & s_curve_bit) != 0 ? "S" : "T");
}

std::string Registers::RampdownText() const
{
    if ((Now("MODE") & manual_rampdown_bit) == 0) {
        return "automatic";
    }
    return Now("RAMPDOWN_POINT") == 0 ? "no deceleration" : "pulses before end";
}

std::string Registers::Meaning(const std::string &name) const
{
    const auto value = static_cast<double>(Now(name.c_str()));
    if ((name == "S_ACCEL_RANGE" || name == "S_DECEL_RANGE") && value == 0) {
        return "wholly curved";
    }
    if (name == "START_SPEED" || name == "MAX_SPEED" || name == "CORRECTION_SPEED" || name == "S_ACCEL_RANGE" ||
        name == "S_DECEL_RANGE") {
        return Number(value * Unit(), "pulses/s");
    }
    if (name == "ACCEL_RATE") {
        return RampText("ACCEL_RATE", "S_ACCEL_RANGE");
    }
    if (name == "DECEL_RATE") {
        return RampText("DECEL_RATE", "S_DECEL_RANGE");
    }
    if (name == "MULTIPLIER") {
        return "unit " + fmt::format("{:.4g} pulses/s", Unit());
    }
    if (name == "HOME_CONFIG") {
        const std::int64_t low = Now("HOME_CONFIG");
        return fmt::format("mode {}, option {}", low & 15, low >> 4 & 15);
    }
    return name == "DISTANCE"         ? "pulses"
           : name == "MODE"           ? ModeText()
           : name == "RAMPDOWN_POINT" ? RampdownText()
                                      : "";
}

} // namespace

std::vector<RegisterGroup> RegisterTable(const Recording &recording)
{
    Registers registers;
    std::vector<RegisterGroup> groups;
    const auto add = [&](double at_s, const std::string &title, const std::vector<Write> &writes) {
        if (writes.empty()) {
            return;
        }
        registers.Take(writes);
        RegisterGroup group = {at_s, title, {}};
        for (const Write &write : writes) {
            group.rows.push_back(
                {write.name, write.value, write.value.empty() ? "" : registers.Meaning(write.name)});
        }
        groups.push_back(std::move(group));
    };
    for (const CallWrites &made : recording.calls) {
        add(made.call.at_s, made.call.name, made.writes);
    }
    add(0, "the last tick of 20 ms", recording.last_tick);
    return groups;
}

} // namespace trevik_scope
