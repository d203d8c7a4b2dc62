// A started library on a recording driver: one A card, number 0, unless told otherwise, whose axes are idle. Time
// stands still.
#pragma once

#include "support/recording_driver.h"
#include "support/requests.h"

#include "api/card_manager.h"

#include <trevik/TrevikA.h>

#include <doctest/doctest.h>

#include <string>

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

struct StartedLibrary {
    RecordingDriver driver;

    explicit StartedLibrary(std::vector<Device> devices = {Device{}}) : driver(std::move(devices))
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

    // What a call sent that is to give `expected`.
    std::string sent(std::uint32_t result, std::uint32_t expected = TREVIK_OK)
    {
        CHECK(result == expected);
        return driver.log();
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
