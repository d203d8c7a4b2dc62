// A started library on a recording driver: one A card, number 0, whose axes are idle. Time stands still.
#pragma once

#include "support/recording_driver.h"

#include "api/card_manager.h"

#include <trevik/TrevikA.h>

#include <doctest/doctest.h>

#include <string>
#include <string_view>

namespace trevik::test
{

constexpr std::uint32_t Pulses(std::int32_t value)
{
    return static_cast<std::uint32_t>(value);
}

inline constexpr std::uint8_t relative[4] = {0, 0, 0, 0};

inline bool Has(const std::string &log, const std::string &lines)
{
    return log.find(lines) != std::string::npos;
}

// The lines once for each axis of a list, with its number for every '#' and its bit of an axis set for every '@'.
inline std::string EachAxis(std::string_view axes, std::string_view lines)
{
    std::string text;
    for (const char axis : axes)
        for (const char c : lines)
            text += c == '#' ? axis : c == '@' ? "1248"[axis - '0'] : c;
    return text;
}

struct StartedLibrary {
    RecordingDriver driver;

    StartedLibrary()
    {
        TrevikHost_clock_manual(1);
        REQUIRE(TrevikA_initial() == TREVIK_OK);
        driver.forget();
    }
    ~StartedLibrary()
    {
        manager.StopPulserTicks();
        TrevikHost_clock_manual(0);
    }

    void idle(std::uint32_t axis) { driver.port(MainStatusPort(axis)) = MainStatus::idle_bit; }
    void busy(std::uint32_t axis) { driver.port(MainStatusPort(axis)) = 0; }
    void preset_full(std::uint32_t axis) { driver.port(MainStatusPort(axis)) = MainStatus::preset_full_bit; }

    AxisShadow &shadow(std::uint8_t axis)
    {
        Axis checked;
        REQUIRE(manager.checked(0, axis, checked) == Result::Ok);
        return checked.shadow();
    }
};

} // namespace trevik::test
