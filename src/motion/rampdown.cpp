#include "motion/rampdown.h"

#include <cmath>

namespace trevik
{
namespace
{

constexpr std::uint32_t highest_rampdown_point = 0xFFFFFF;

// The factor by which a fitted maximum speed stays below the speed at which the two ramps would meet.
constexpr double fitted_share = 0.9;

// The register values of one axis as real numbers, under the names that the formulas use.
struct Terms {
    double FL, FH, a, d, Sa, Sd, K, B;

    explicit Terms(const ProfileRegisters &p)
        : FL(p.StartSpeedValue),
          FH(p.MaxSpeedValue),
          a(p.AccelRateValue),
          d(p.DecelRateValue),
          Sa(p.AccelSRangeValue),
          Sd(p.DecelSRangeValue),
          K((p.MultiplierValue + 1) * 32768.0),
          B(a + d + 2)
    {
    }

    double A() const { return FH * FH - FL * FL; }
    double accel_curved() const { return (a + 1) * Sa; }
    double decel_curved() const { return (d + 1) * Sd; }
    // Distance of the whole profile with curved and linear sections.
    double linear_distance() const { return (2 * (d + 1) * Sd + 2 * (a + 1) * Sa + B * (FH - FL)) * (FL + FH) / K; }
};

// Ramp-down point with a deceleration of curved and linear sections, and with a wholly curved one.
double LinearPoint(const Terms &t)
{
    return (t.d + 1) * (2 * t.Sd + t.FH - t.FL) * (t.FL + t.FH) / t.K;
}
double PurePoint(const Terms &t)
{
    return 2 * (t.d + 1) * t.A() / t.K;
}

// Maximum speed at which two ramps with the common weight C, of which e is spent in the curved sections, just fit.
double FittedSpeed(const Terms &t, double C, double e, double D)
{
    return fitted_share * (std::sqrt(e * e + C * (t.FL * t.FL * C + D * t.K - 2 * t.FL * e)) - e) / C;
}

double PureFittedSpeed(const Terms &t, double D)
{
    return fitted_share * std::sqrt(D * t.K / (2 * t.B) + t.FL * t.FL);
}

double EqualFittedSpeed(const Terms &t, double D)
{
    const double S = t.Sa;
    return fitted_share * (std::sqrt(D * t.K / t.B + (S - t.FL) * (S - t.FL)) - S);
}

// Weight of a move whose deceleration (acceleration) is wholly curved while the other ramp is not.
double DecelCurvedWeight(const Terms &t)
{
    return 2 * t.d + t.a + 3;
}
double AccelCurvedWeight(const Terms &t)
{
    return t.d + 2 * t.a + 3;
}

RampDownCase DecideEqualRanges(const Terms &t, double D)
{
    const double S = t.Sa;
    const double P = t.B * (2 * S + t.FH - t.FL) * (t.FL + t.FH) / t.K;
    const double Q = 8 * t.B * S * (t.FL + S) / t.K;
    if (P < D || D <= Q)
        return Q < D ? RampDownCase::SFull : RampDownCase::PureReduced;
    return RampDownCase::EqualReduced;
}

// Distances below which (Q1) the ramp with the larger S range, and (Q2) both ramps have no linear section left.
RampDownCase DecideUnequalRanges(const Terms &t, double D, double Q1, double Q2, RampDownCase one_curved)
{
    if (t.linear_distance() < D || D <= Q1) {
        if (Q1 < D || D <= Q2)
            return Q2 < D ? RampDownCase::SFull : RampDownCase::PureReduced;
        return one_curved;
    }
    return RampDownCase::LinearReduced;
}

RampDownCase DecideManualS(const Terms &t, double D)
{
    if (t.Sa == 0 && t.Sd == 0)
        return 2 * t.A() * t.B / t.K < D ? RampDownCase::PureFull : RampDownCase::PureReduced;
    if (t.Sa == t.Sd)
        return DecideEqualRanges(t, D);
    if (t.Sa < t.Sd) {
        const double Q1 = 4 * (t.accel_curved() + DecelCurvedWeight(t) * t.Sd) * (t.FL + t.Sd) / t.K;
        const double Q2 = 8 * t.B * t.Sa * (t.FL + t.Sa) / t.K;
        return DecideUnequalRanges(t, D, Q1, Q2, RampDownCase::DecelCurvedReduced);
    }
    const double Q1 = 4 * (t.decel_curved() + AccelCurvedWeight(t) * t.Sa) * (t.FL + t.Sa) / t.K;
    const double Q2 = 8 * t.B * t.Sd * (t.FL + t.Sd) / t.K;
    return DecideUnequalRanges(t, D, Q1, Q2, RampDownCase::AccelCurvedReduced);
}

// The lowered maximum speed of a reduced case.
double ReducedSpeed(RampDownCase c, const Terms &t, double D)
{
    switch (c) {
    case RampDownCase::PureReduced:
        return PureFittedSpeed(t, D);
    case RampDownCase::EqualReduced:
        return EqualFittedSpeed(t, D);
    case RampDownCase::DecelCurvedReduced:
        return FittedSpeed(t, DecelCurvedWeight(t), t.accel_curved(), D);
    case RampDownCase::AccelCurvedReduced:
        return FittedSpeed(t, AccelCurvedWeight(t), t.decel_curved(), D);
    default:
        return FittedSpeed(t, t.B, t.decel_curved() + t.accel_curved(), D);
    }
}

void Reduce(RampDownCase c, ProfileRegisters &profile, double D)
{
    profile.MaxSpeedValue = TruncateToRegister(ReducedSpeed(c, Terms(profile), D));
    if (c == RampDownCase::PureReduced)
        profile.AccelSRangeValue = profile.DecelSRangeValue = 0;
}

// Ramp-down point of a manual case, after the maximum speed has been lowered.
double ManualPoint(RampDownCase c, const Terms &t, double D)
{
    switch (c) {
    case RampDownCase::Full:
        return t.A() * (t.d + 1) / t.K;
    case RampDownCase::Short:
        return (t.d + 1) * D / t.B;
    case RampDownCase::PureFull:
    case RampDownCase::PureReduced:
        return PurePoint(t);
    default:
        return LinearPoint(t);
    }
}

bool Reduced(RampDownCase c)
{
    return c == RampDownCase::PureReduced || c == RampDownCase::EqualReduced ||
           c == RampDownCase::DecelCurvedReduced || c == RampDownCase::AccelCurvedReduced ||
           c == RampDownCase::LinearReduced;
}

// The cases that depend on the times alone. True when `c` was decided.
bool DecidedByTimes(RampTimes times, RampDownCase &c)
{
    if (times.decel_s == 0.0)
        c = RampDownCase::NoDeceleration;
    else if (2 * times.accel_s >= times.decel_s)
        c = RampDownCase::Automatic;
    else
        return false;
    return true;
}

} // namespace

RampDownCase DecideRampDownT(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance)
{
    RampDownCase c{};
    return DecidedByTimes(times, c) ? c : DecideManualRampDownT(profile, times, distance);
}

RampDownCase DecideManualRampDownT(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance)
{
    if (times.decel_s == 0.0)
        return RampDownCase::NoDeceleration;
    const Terms t(profile);
    const double X = t.A() * t.B / t.K;
    return X >= distance ? RampDownCase::Short : RampDownCase::Full;
}

RampDownCase DecideRampDownS(const ProfileRegisters &profile, RampTimes times, std::uint32_t distance)
{
    RampDownCase c{};
    return DecidedByTimes(times, c) ? c : DecideManualS(Terms(profile), distance);
}

void ApplyRampDown(RampDownCase c, ProfileRegisters &profile, std::uint32_t distance)
{
    profile.RampDownValue = 0;
    if (c == RampDownCase::NoDeceleration || c == RampDownCase::Automatic)
        return;
    if (Reduced(c))
        Reduce(c, profile, distance);
    profile.RampDownValue =
        Clamp(TruncateToRegister(ManualPoint(c, Terms(profile), distance)), highest_rampdown_point);
}

} // namespace trevik
