// The arithmetic of profiles against values worked out by hand, and ramp-down cases against the meaning they have.
#include "motion/profile.h"
#include "motion/rampdown.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

using namespace trevik;

TEST_CASE("multiplier and speed registers")
{
    const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t> rows[] = {
        {0, 4095, 1},      {1, 4095, 14},       {0xFFFFFFFF, 4095, 14},
        {100, 4095, 1366}, {65535, 299, 65535}, {6553500, 2, 65535}};
    for (const auto &row : rows) {
        const auto &[speed, multiplier, value] = row;
        CAPTURE(std::get<0>(row));
        CHECK(SelectMultiplier(speed) == multiplier);
        CHECK(SpeedToRegister(Magnitude(speed), multiplier, 0.95) == value);
    }
    CHECK(SpeedTooHigh(6553501));
    CHECK_FALSE(SpeedTooHigh(6553500));
    CHECK(SpeedTooHigh(0u - 6553501u));
}

TEST_CASE("rates: clamps and wraps")
{
    CHECK(TimeToRateT(0.0, 500, 500) == 1); // no time: the fastest ramp even where there is none
    CHECK(TimeToRateT(0.1, 500, 500) == 65535);
    CHECK(TimeToRateT(0.1, 501, 500) == 1); // falling: wraps to the fastest
    CHECK(TimeToRateT(60, 1, 2) == 65535);
    CHECK(TimeToRateT(0.02, 656, 65534) == 1);   // 1.5, less 1
    CHECK(TimeToRateS(0.1, 656, 65534, 0) == 2); // wholly curved: twice the time for the same rate
    CHECK(TimeToRateS(0.1, 300, 100, 100) == 65535);
    for (const double odd : {std::numeric_limits<double>::infinity(), -1.0, std::nan("")})
        CHECK(TimeToRateT(odd, 656, 65534) == 1);
}

TEST_CASE("S-curve times, ranges and corrections: clamps and signs")
{
    std::int32_t range = 77;
    CHECK((CheckSCurveTimes(500, 10000, 100, 50, range) && range == 4750));
    CHECK((CheckSCurveTimes(10000, 500, 100, 20, range) && range == -1187));
    CHECK(SRangeToRegister(1, 2) == 1);
    CHECK(SRangeToRegister(-1187, 1965) == 32767);
    CHECK(CorrectionToRegister(0, 1965) == 1);
    CHECK(CorrectionToRegister(100000, 1965) == 65535);
}

TEST_CASE("start commands")
{
    CHECK(SelectStartCommand(500, 501, {1, 1}) == Command::CMD_START_HIGH_DEC);
    CHECK(SelectStartCommand(502, 500, {0.001, 0}) == Command::CMD_START_ACC_DEC);
    CHECK(SelectStartCommand(0, 500, {0.0009, 0.001}) == Command::CMD_START_HIGH_DEC);
    CHECK(SelectStartCommand(0, 500, {0.0009, 0.0009}) == Command::CMD_START_HIGH);
}

namespace
{

// FL 656, FH 65534, a 6, d 74.
ProfileRegisters Registers(std::uint32_t Sa, std::uint32_t Sd)
{
    return {656, 65534, 6, 74, 1965, 0, Sa, Sd};
}

// Pulses that a ramp between two speed register values takes, from what the registers mean to the chip.
double RampPulses(double low, double high, double rate, double s_range)
{
    const double unit = 300.0 / 1966;
    const double rise = high - low;
    const double curved = s_range == 0 ? rise / 2 : std::min(s_range, rise / 2);
    const double seconds = (rate + 1) * 4 * (rise + 2 * curved) / reference_clock_hz;
    return (low + high) / 2 * unit * seconds;
}

} // namespace

TEST_CASE("T-curve ramp-down points")
{
    using enum RampDownCase;
    const std::tuple<std::uint32_t, RampDownCase, std::uint32_t> rows[] = {
        {10000, Full, 4999}, {5467, Full, 4999}, {5466, Short, 4999}, {0, Short, 1}, {0x80000000, Full, 4999}};
    for (const auto &row : rows) {
        const auto &[distance, expected, point] = row;
        CAPTURE(std::get<0>(row));
        ProfileRegisters p = Registers(0, 0);
        CHECK(DecideRampDownT(p, {0.2, 0.4}, distance) == Automatic);
        CHECK(DecideRampDownT(p, {0.2, 0.0}, distance) == NoDeceleration);
        const RampDownCase c = DecideRampDownT(p, {0.1, 1.0}, distance);
        ApplyRampDown(c, p, distance);
        CHECK((c == expected && p.RampDownValue == point && p.MaxSpeedValue == 65534));
    }
}

TEST_CASE("S-curve ramp-down: every case, each with the distance that its ramps really take")
{
    // S ranges and distances on both sides of each border.
    using enum RampDownCase;
    const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, RampDownCase> rows[] = {
        {0, 0, 10933, PureFull},           {0, 0, 10900, PureReduced},
        {9000, 9000, 7000, SFull},         {9000, 9000, 5000, EqualReduced},
        {9000, 9000, 880, PureReduced},    {4000, 9000, 7000, SFull},
        {4000, 9000, 5000, LinearReduced}, {4000, 9000, 300, DecelCurvedReduced},
        {4000, 9000, 185, PureReduced},    {9000, 4000, 7000, SFull},
        {9000, 4000, 3000, LinearReduced}, {9000, 4000, 300, AccelCurvedReduced},
        {9000, 4000, 185, PureReduced}};
    for (const auto &row : rows) {
        const auto &[Sa, Sd, distance, expected] = row;
        INFO(std::get<0>(row) << ", " << std::get<1>(row) << ", " << std::get<2>(row));
        ProfileRegisters p = Registers(Sa, Sd);
        const RampDownCase c = DecideRampDownS(p, {0.1, 1.0}, distance);
        CHECK(c == expected);
        ApplyRampDown(c, p, distance);
        // A lowered speed is nine tenths of that at which the ramps would meet.
        const double most = ShortProfile(c) ? p.MaxSpeedValue / 0.9 : p.MaxSpeedValue;
        const double longest =
            RampPulses(656, most, 6, p.AccelSRangeValue) + RampPulses(656, most, 74, p.DecelSRangeValue);
        CHECK((ShortProfile(c) ? std::abs(longest - distance) < 1 : longest <= distance));
        const double decel = RampPulses(656, p.MaxSpeedValue, 74, p.DecelSRangeValue);
        if (c != DecelCurvedReduced && c != AccelCurvedReduced)
            CHECK(std::abs(p.RampDownValue - decel) <= 1.0);
        if (ShortProfile(c))
            CHECK(p.MaxSpeedValue < 65534);
        CHECK((c == PureReduced) == (ShortProfile(c) && p.AccelSRangeValue == 0));
    }
}
