// Virtual cards under the manual clock, powered up for one test.
#pragma once

#include "support/captured_output.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <doctest/doctest.h>

#include <cmath>
#include <cstdint>

namespace trevik::test
{

class VirtualMachine
{
  public:
    explicit VirtualMachine(const char *cards = "0:A")
    {
        TrevikHost_driver_set(nullptr);
        TrevikHost_clock_manual(1);
        REQUIRE(TrevikVirtual_cards_set(cards) == TREVIK_OK);
        const CapturedOutput quiet;
        REQUIRE(TrevikA_initial() == TREVIK_OK);
    }
    ~VirtualMachine()
    {
        TrevikA_close();
        TrevikHost_clock_manual(0);
    }
    VirtualMachine(const VirtualMachine &) = delete;
    VirtualMachine &operator=(const VirtualMachine &) = delete;

    static bool idle(std::uint8_t axis, std::uint8_t card = 0) { return status(axis, 0, card); }
    static bool queued(std::uint8_t axis, std::uint8_t card = 0) { return status(axis, 1, card); }
    static std::int32_t at(std::uint8_t axis, std::uint8_t card = 0)
    {
        std::uint32_t position = 0;
        CHECK(TrevikA_current_position_read(card, axis, &position) == TREVIK_OK);
        return static_cast<std::int32_t>(position);
    }
    static double speed(std::uint8_t axis)
    {
        double pps = 0;
        CHECK(TrevikVirtual_speed_read(0, axis, &pps) == TREVIK_OK);
        return pps;
    }
    static double next_event(std::uint8_t card = 0)
    {
        double seconds = 0;
        CHECK(TrevikVirtual_next_event_read(card, &seconds) == TREVIK_OK);
        return seconds;
    }
    // Runs until nothing is left to happen; the time that took.
    static double run_out()
    {
        double total = 0;
        for (double seconds = next_event(); std::isfinite(seconds); seconds = next_event()) {
            TrevikHost_advance(seconds);
            total += seconds;
        }
        return total;
    }

  private:
    static bool status(std::uint8_t axis, std::uint8_t kind, std::uint8_t card)
    {
        std::uint8_t flag = 0;
        CHECK(TrevikA_motion_status_read(card, axis, kind, &flag) == TREVIK_OK);
        return flag != 0;
    }
};

} // namespace trevik::test
