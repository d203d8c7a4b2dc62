// The arithmetic of profiles against values worked out by hand, and ramp-down cases against the meaning they have.
#include "motion/line_profile.h"
#include "motion/profile.h"
#include "motion/rampdown.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace trevik;

TEST_CASE("multiplier and speed registers")
{
    struct Row {
        std::uint32_t speed, multiplier;
        double offset;
        std::uint32_t value;
    };
    const Row rows[] = {{0, 4095, 0.95, 1},        {1, 4095, 0.95, 14},        {0xFFFFFFFF, 4095, 0.95, 14},
                        {100, 4095, 0.95, 1366},   {10000, 1965, 0.95, 65534}, {10000, 1965, 0.5, 65533},
                        {65535, 299, 0.95, 65535}, {6553500, 2, 0.95, 65535},  {9999999, 2, 0.95, 65535}};
    for (const Row &row : rows) {
        CAPTURE(row.speed);
        if (row.speed <= highest_speed_pps || row.speed == 0xFFFFFFFF)
            CHECK(SelectMultiplier(row.speed) == row.multiplier);
        CHECK(SpeedToRegister(Magnitude(row.speed), row.multiplier, row.offset) == row.value);
    }
    CHECK(SpeedTooHigh(6553501));
    CHECK_FALSE(SpeedTooHigh(6553500));
    CHECK(SpeedTooHigh(0u - 6553501u));
}

TEST_CASE("rates")
{
    CHECK(TimeToRateT(0.1, 656, 65534) == 6);
    CHECK(TimeToRateT(1.0, 656, 65534) == 74);
    CHECK(TimeToRateT(0.0, 500, 500) == 1); // no time: the fastest ramp even where there is none
    CHECK(TimeToRateT(0.1, 500, 500) == 65535);
    CHECK(TimeToRateT(0.1, 501, 500) == 1); // falling: wraps to the fastest
    CHECK(TimeToRateT(60, 1, 2) == 65535);
    CHECK(TimeToRateT(4e6, 1, 2) == 1);          // only the low 32 bits of the quotient count, read as signed
    CHECK(TimeToRateS(0.1, 656, 65534, 0) == 2); // wholly curved: twice the time for the same rate
    CHECK(TimeToRateS(0.2, 3277, 65534, 10376) == 10);
    CHECK(TimeToRateS(0.1, 300, 100, 100) == 65535);
    for (const double odd : {std::numeric_limits<double>::infinity(), -1.0, std::nan("")})
        CHECK(TimeToRateT(odd, 656, 65534) == 1);
}

TEST_CASE("S-curve times, ranges and corrections")
{
    std::int32_t range = 77;
    CHECK_FALSE(CheckSCurveTimes(0, 10000, 99, 50, range));
    CHECK((CheckSCurveTimes(500, 10000, 100, 50, range) && range == 4750));
    CHECK((CheckSCurveTimes(500, 10000, 0, 0, range) && range == 0));
    CHECK((CheckSCurveTimes(10000, 500, 100, 20, range) && range == -1187));
    CHECK(SRangeToRegister(0, 1965) == 0);
    CHECK(SRangeToRegister(1, 2) == 1);
    CHECK(SRangeToRegister(1187, 1965) == 7778);
    CHECK(SRangeToRegister(6000, 1965) == 32767);
    CHECK(SRangeToRegister(-1187, 1965) == 32767);
    CHECK(CorrectionToRegister(1000, 1965) == 6553);
    CHECK(CorrectionToRegister(0, 1965) == 1);
    CHECK(CorrectionToRegister(100000, 1965) == 65535);
}

TEST_CASE("start commands")
{
    using enum Command;
    struct Row {
        std::uint32_t start, maximum;
        double accel_s, decel_s;
        Command command;
    };
    const Row rows[] = {{500, 500, 1, 1, CMD_START_HIGH_DEC},
                        {500, 501, 1, 1, CMD_START_HIGH_DEC},
                        {502, 500, 0.001, 0, CMD_START_ACC_DEC},
                        {0, 500, 0.0009, 0.001, CMD_START_HIGH_DEC},
                        {0, 500, 0.0005, 0.0005, CMD_START_HIGH}};
    for (const Row &row : rows)
        CHECK(SelectStartCommand(row.start, row.maximum, {row.accel_s, row.decel_s}) == row.command);
}

namespace
{

ProfileRegisters Registers(std::uint32_t FL, std::uint32_t FH, std::uint32_t a, std::uint32_t d, std::uint32_t Sa,
                           std::uint32_t Sd)
{
    return {FL, FH, a, d, 1965, 0, Sa, Sd};
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
    struct Row {
        std::uint32_t distance;
        RampDownCase expected;
        std::uint32_t point;
    };
    using enum RampDownCase;
    const Row rows[] = {{10000, Full, 4999}, {3000, Short, 2743}, {5466, Short, 4999},
                        {5467, Full, 4999},  {0, Short, 1},       {0x80000000, Full, 4999}};
    for (const Row &row : rows) {
        CAPTURE(row.distance);
        ProfileRegisters p = Registers(656, 65534, 6, 74, 0, 0);
        CHECK(DecideRampDownT(p, {0.2, 0.4}, row.distance) == Automatic);
        CHECK(DecideRampDownT(p, {0.2, 0.0}, row.distance) == NoDeceleration);
        const RampDownCase c = DecideRampDownT(p, {0.1, 1.0}, row.distance);
        ApplyRampDown(c, p, row.distance);
        CHECK(c == row.expected);
        CHECK(p.RampDownValue == row.point);
        CHECK(p.MaxSpeedValue == 65534);
    }
}

TEST_CASE("S-curve ramp-down: every case, each with the distance that its ramps really take")
{
    // FL 656, FH 65534, a 6, d 74 throughout; distances chosen on both sides of each border.
    struct Row {
        std::uint32_t Sa, Sd, distance;
        RampDownCase expected;
    };
    using enum RampDownCase;
    const Row rows[] = {{0, 0, 10933, PureFull},           {0, 0, 10900, PureReduced},
                        {9000, 9000, 7000, SFull},         {9000, 9000, 5000, EqualReduced},
                        {9000, 9000, 100, PureReduced},    {4000, 9000, 7000, SFull},
                        {4000, 9000, 5000, LinearReduced}, {4000, 9000, 300, DecelCurvedReduced},
                        {4000, 9000, 40, PureReduced},     {9000, 4000, 7000, SFull},
                        {9000, 4000, 3000, LinearReduced}, {9000, 4000, 300, AccelCurvedReduced},
                        {9000, 4000, 40, PureReduced}};
    for (const Row &row : rows) {
        CAPTURE(row.Sa);
        CAPTURE(row.Sd);
        CAPTURE(row.distance);
        ProfileRegisters p = Registers(656, 65534, 6, 74, row.Sa, row.Sd);
        const RampDownCase c = DecideRampDownS(p, {0.1, 1.0}, row.distance);
        CHECK(c == row.expected);
        ApplyRampDown(c, p, row.distance);
        const double decel = RampPulses(656, p.MaxSpeedValue, 74, p.DecelSRangeValue);
        const double accel = RampPulses(656, p.MaxSpeedValue, 6, p.AccelSRangeValue);
        CHECK(accel + decel <= row.distance); // the fitted move really fits
        if (c != DecelCurvedReduced && c != AccelCurvedReduced)
            CHECK(std::abs(p.RampDownValue - decel) <= 1.0);
        if (ShortProfile(c))
            CHECK(p.MaxSpeedValue < 65534);
        CHECK((c == PureReduced) == (ShortProfile(c) && p.AccelSRangeValue == 0));
    }
}

TEST_CASE("linear and curved line times: clamps and wraps")
{
    struct Row {
        std::uint32_t start, maximum, accel_ms, s_accel_ms, rate, s_range;
    };
    const Row rows[] = {{500, 10000, 0, 50, 1, 31128}, // no linear part: fastest rate whatever the curved part
                        {10000, 10000, 100, 0, 65535, 0},
                        {10000, 10000, 100, 50, 65535, 1}, // no rise: the range still becomes 1
                        {500, 10000, 100, 100000, 7901, 31097}};
    for (const Row &row : rows) {
        CAPTURE(row.s_accel_ms);
        LineRamps ramps;
        ramps.kind = LineRamps::Kind::STimes;
        ramps.accel_ms = row.accel_ms;
        ramps.s_accel_ms = row.s_accel_ms;
        const std::array<std::uint32_t, 2> distances{100000, 0};
        const ProfileRegisters p = PlanLine(distances, row.start, row.maximum, ramps, 1965).profiles[0];
        CHECK(p.AccelRateValue == row.rate);
        CHECK(p.AccelSRangeValue == row.s_range);
    }
}
