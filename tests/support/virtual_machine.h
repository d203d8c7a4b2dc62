// Virtual cards under the manual clock, powered up for one test.
#pragma once

#include "support/captured_output.h"
#include "support/reading.h"

#include "api/card_manager.h"
#include "driver/registers.h"
#include "platform/host/clock.h"
#include "virtual/bus.h"

#include <trevik/TrevikA.h>
#include <trevik/TrevikHost.h>
#include <trevik/TrevikVirtual.h>

#include <doctest/doctest.h>

#include <cmath>
#include <cstdint>
#include <random>

namespace trevik::test
{

inline constexpr std::uint8_t relative[4] = {0, 0, 0, 0};
inline constexpr std::uint8_t first_axis[4] = {1, 0, 0, 0};
inline constexpr std::uint8_t all_axes[4] = {1, 1, 1, 1};

inline std::uint32_t Unsigned(std::int32_t value)
{
    return static_cast<std::uint32_t>(value);
}

// For what no public function of this library does yet.
template <class Operation>
auto OnChip(Operation operation)
{
    const auto card = virtual_card::TheBus().hold(0);
    return operation(card->chip(), host::NowNanoseconds());
}
inline void WriteRegister(unsigned axis, Register reg, std::uint32_t value)
{
    OnChip([=](auto &chip, auto now_ns) { chip.write(axis, WriteCode(reg), value, now_ns); });
}
inline std::uint32_t ReadStatus(unsigned axis, StatusRegister reg)
{
    return OnChip([=](auto &chip, auto now_ns) { return chip.read(axis, ReadCode(reg), now_ns); });
}
inline std::uint32_t Errors(unsigned axis)
{
    return ReadStatus(axis, StatusRegister::ERROR_FLAGS);
}
inline void SendCommand(unsigned axis_set, Command command)
{
    OnChip([=](auto &chip, auto now_ns) { chip.command(axis_set, static_cast<std::uint8_t>(command), now_ns); });
}

// Random numbers of a case; the seed is printed when a check in it fails.
class Draw
{
  public:
    explicit Draw(unsigned seed) : engine_(seed) {}
    std::uint32_t between(std::uint32_t low, std::uint32_t high)
    {
        return std::uniform_int_distribution<std::uint32_t>(low, high)(engine_);
    }
    // Spread over the orders of magnitude.
    std::uint32_t magnitude(double low, double high)
    {
        return static_cast<std::uint32_t>(
            std::exp(std::uniform_real_distribution<double>(std::log(low), std::log(high))(engine_)));
    }
    std::int32_t distance(double low, double high)
    {
        const auto size = static_cast<std::int32_t>(magnitude(low, high));
        return between(0, 1) != 0 ? size : -size;
    }

  private:
    std::mt19937 engine_;
};

class VirtualMachine
{
  public:
    // The handwheel's periodic task runs only when asked for: it would look at the axes 50 times a second.
    explicit VirtualMachine(const char *cards = "0:A", bool handwheel = false)
    {
        TrevikHost_driver_set(nullptr);
        TrevikHost_clock_manual(1);
        REQUIRE(TrevikVirtual_cards_set(cards) == TREVIK_OK);
        manager.StopPulserTicks();
        REQUIRE(Quietly(TrevikA_initial) == TREVIK_OK);
        if (!handwheel)
            manager.StopPulserTicks();
    }
    ~VirtualMachine()
    {
        manager.StopPulserTicks();
        TrevikA_close();
        TrevikHost_clock_manual(0);
    }
    VirtualMachine(const VirtualMachine &) = delete;
    VirtualMachine &operator=(const VirtualMachine &) = delete;

    static bool idle(std::uint8_t axis, std::uint8_t card = 0)
    {
        return Value(TrevikA_motion_status_read, card, axis, 0) != 0;
    }
    static bool queued(std::uint8_t axis) { return Value(TrevikA_motion_status_read, 0, axis, 1) != 0; }
    static std::int32_t at(std::uint8_t axis, std::uint8_t card = 0)
    {
        return static_cast<std::int32_t>(Value(TrevikA_current_position_read, card, axis));
    }
    // Where the machine stands, whatever the command counter says.
    static std::int32_t stands(std::uint8_t axis) { return Value(TrevikVirtual_position_read, 0, axis); }
    static double speed(std::uint8_t axis) { return Value(TrevikVirtual_speed_read, 0, axis); }
    static double next_event() { return Value(TrevikVirtual_next_event_read, 0); }
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
};

} // namespace trevik::test
