// The ramp that the card makes of a request.
//
// A line's speeds and its ramp times become registers: speeds in units of 300/(m+1) pulses/s of the longest axis, a
// ramp in steps of the rate register. With R = rate + 1 the ramp from FL to FH takes 4 R (FH - FL) / 19,660,800 s
// and, with A = FH^2 - FL^2 and K = 32768 (m+1), A R / K pulses of the longest axis. R is a small number for steep
// ramps, so the card's ramp may be a good deal shorter than the time that was asked for. Who chains moves without
// stops has to know how long it really is.
#pragma once

#include <cstdint>

namespace trevik_run
{

constexpr double short_move_s = 0.004; // ramps are whole milliseconds: below a few of them there is none
constexpr double same_speed = 0.99;    // speeds nearer than this are not worth a ramp

struct Ramp {
    std::uint32_t time_ms = 0; // to be asked for; 0: there is no ramp that fits
    double pulses = 0;         // of the longest axis
    double needed_pulses = 0;  // of the longest axis: the length that a move must have for this ramp
};

enum class RampKind : std::uint8_t { up, down, down_s };

class RampMaker
{
  public:
    // top_pps: the speed that the range of the axes was fixed with. wanted_pps2: the acceleration to come near to.
    RampMaker(double top_pps, double wanted_pps2);

    // What ramps may be planned with: an acceleration that the rate register can express, and a deceleration low
    // enough for the room that a ramp down needs.
    double AccelPps2() const { return accel_pps2_; }
    double DecelPps2() const { return decel_pps2_; }

    // The ramp between two path speeds, low_pps below high_pps, whose needed length is at most `room` pulses of the
    // longest axis; `factor` is longest axis / path.
    Ramp Choose(RampKind kind, double low_pps, double high_pps, double factor, double room) const;

  private:
    std::uint32_t Register(double pps) const;

    double units_per_pps_;
    double pulses_divisor_; // K
    double accel_pps2_;
    double decel_pps2_;
};

} // namespace trevik_run
